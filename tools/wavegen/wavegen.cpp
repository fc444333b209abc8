// Writes the sample files of the wave voices into a data folder: the tar ("Wav/H3-" n
// ".Wav"), the daf ("4-" n ".Wav") and the sung note names ("Do.Wav" .. "Si.Wav").

#include <sndfile.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "instrument_models.h"
#include "play/wave_command.h"
#include "play/wave_voices.h"
#include "syllables.h"

namespace {

using namespace tahrir;

bool Write(const std::filesystem::path& file, const std::vector<float>& x, int rate) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* f = sf_open(file.string().c_str(), SFM_WRITE, &info);
    if (!f) return false;
    const auto frames = static_cast<sf_count_t>(x.size());
    const bool ok = sf_writef_float(f, x.data(), frames) == frames;
    return sf_close(f) == 0 && ok;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: wavegen DATA_FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code ec;
    std::filesystem::create_directories(folder / "Wav", ec);
    using wavegen::kInstrumentRate;
    for (int n = 1; n <= play::WaveSlots; ++n) {
        auto tar = wavegen::TarNote(play::TarSamplePitch(n), 1.2, static_cast<std::uint32_t>(n));
        wavegen::Finish(tar, 0.5f, 0.15, kInstrumentRate);
        auto daf = wavegen::DafStroke(play::DafSamplePitch(n), 0.6, static_cast<std::uint32_t>(1000 + n));
        wavegen::Finish(daf, 0.5f, 0.1, kInstrumentRate);
        if (!Write(folder / play::TarSampleName(n), tar, kInstrumentRate) ||
            !Write(folder / play::DafSampleName(n), daf, kInstrumentRate)) {
            std::fprintf(stderr, "wavegen: cannot write into %s\n", folder.string().c_str());
            return 1;
        }
    }
    // The steps of octave 2 of the staff, a comfortable singing range (C3 .. B3).
    static constexpr int kStepPitch[8] = {0, 48, 50, 52, 53, 55, 57, 59};
    for (int step = 1; step <= 7; ++step) {
        const std::string file = play::SyllableSampleName(step);
        std::string error;
        auto voice = wavegen::SungSyllable(file.substr(0, file.size() - 4), kStepPitch[step], error);
        if (voice.empty()) {
            std::fprintf(stderr, "wavegen: %s\n", error.c_str());
            return 1;
        }
        wavegen::Finish(voice, 0.5f, 0.05, wavegen::kSyllableRate);
        if (!Write(folder / file, voice, wavegen::kSyllableRate)) return 1;
    }
    return 0;
}
