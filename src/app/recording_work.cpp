#include "app/recording_work.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "play/midi_message.h"
#include "play/synth_sink.h"
#include "transcribe/wave_file.h"

namespace tahrir::app {

using namespace tahrir::transcribe;

namespace {

// Seconds tracked at a time: short enough for the progress bar to move and the stop
// button to be heard, long enough that the joins do not matter.
constexpr double kStretchSeconds = 20;

void PutLittle(std::string& out, std::size_t at, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out[at + static_cast<std::size_t>(i)] = static_cast<char>((value >> (8 * i)) & 0xff);
}

} // namespace

void BuildPeaks(WaveAnalysis& a) {
    const std::vector<float>& s = a.recording.samples;
    const std::size_t blocks = (s.size() + PeakBlock - 1) / PeakBlock;
    a.blockMin.assign(blocks, 0);
    a.blockMax.assign(blocks, 0);
    for (std::size_t b = 0; b < blocks; ++b) {
        const auto from = s.begin() + static_cast<std::ptrdiff_t>(b * PeakBlock);
        const auto to = s.begin() + static_cast<std::ptrdiff_t>(std::min(s.size(), (b + 1) * PeakBlock));
        const auto [lo, hi] = std::minmax_element(from, to);
        a.blockMin[b] = *lo;
        a.blockMax[b] = *hi;
    }
}

std::optional<WaveAnalysis> LoadForView(const std::filesystem::path& file, std::string& error) {
    WaveAnalysis a;
    a.file = file;
    auto rec = LoadRecording(file, TrackerRate, error);
    if (!rec) return std::nullopt;
    a.recording = std::move(*rec);
    a.hopSeconds = static_cast<double>(PyinTracker(a.recording.rate).hop()) / a.recording.rate;
    BuildPeaks(a);
    return a;
}

std::optional<std::vector<PitchFrame>> TrackPitch(const WaveAnalysis& a, const Progress& progress) {
    const std::vector<float>& s = a.recording.samples;
    PyinTracker tracker(a.recording.rate);
    std::vector<PitchFrame> frames;
    const auto stretch = static_cast<std::size_t>(kStretchSeconds * a.recording.rate);
    for (std::size_t from = 0; from < s.size(); from += stretch) {
        if (progress && !progress(static_cast<double>(from) / static_cast<double>(s.size())))
            return std::nullopt;
        const std::size_t to = std::min(s.size(), from + stretch);
        const std::vector<float> part(s.begin() + static_cast<std::ptrdiff_t>(from),
                                      s.begin() + static_cast<std::ptrdiff_t>(to));
        const double offset = static_cast<double>(from) / a.recording.rate;
        for (PitchFrame f : tracker.track(part)) {
            f.seconds += offset;
            frames.push_back(f);
        }
    }
    if (progress) progress(1);
    return frames;
}

std::string PcmWaveHeader(int rate, int bits, std::uint32_t dataBytes) {
    const auto bytesPerSample = static_cast<std::uint32_t>(bits / 8);
    std::string out(WaveHeaderBytes, '\0');
    out.replace(0, 4, "RIFF");
    PutLittle(out, 4, 36 + dataBytes, 4);
    out.replace(8, 8, "WAVEfmt ");
    PutLittle(out, 16, 16, 4);
    PutLittle(out, 20, 1, 2); // PCM
    PutLittle(out, 22, 1, 2); // mono
    PutLittle(out, 24, static_cast<std::uint32_t>(rate), 4);
    PutLittle(out, 28, static_cast<std::uint32_t>(rate) * bytesPerSample, 4);
    PutLittle(out, 32, bytesPerSample, 2);
    PutLittle(out, 34, static_cast<std::uint32_t>(bits), 2);
    out.replace(36, 4, "data");
    PutLittle(out, 40, dataBytes, 4);
    return out;
}

std::string EightBitWave(const std::vector<float>& samples, int rate) {
    std::string out = PcmWaveHeader(rate, 8, static_cast<std::uint32_t>(samples.size()));
    out.resize(WaveHeaderBytes + samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const long v = std::lround(128 + 127 * std::clamp(samples[i], -1.0f, 1.0f));
        out[WaveHeaderBytes + i] = static_cast<char>(static_cast<unsigned char>(v));
    }
    return out;
}

TrackedNotes ClassicTrack(std::string_view wave, const PassOptions& options,
                          const std::filesystem::path& folder, bool raw, PassResult* result) {
    TrackedNotes tracked;
    const PassResult passes = RunPasses(wave, options, folder);
    tracked.error = passes.error;
    tracked.rate = passes.rate;
    tracked.shift = options.Silent && passes.FirstNoteStart >= 1 ? passes.FirstNoteStart : 0;
    if (result) *result = passes;
    if (!passes.error.empty()) return tracked;
    const auto records = ReadNoteRecords(folder / (raw ? "tmp2" : "tmp3"));
    if (!records) return tracked;
    for (const NoteRecord& n : *records) tracked.notes.push_back({n.start, n.end, n.note, false});
    return tracked;
}

TrackedNotes ModernTrack(const std::vector<RecordingNote>& notes, double rate, bool silent) {
    TrackedNotes tracked;
    tracked.rate = rate;
    for (const RecordingNote& n : notes)
        tracked.notes.push_back({n.onset * rate, n.offset * rate, n.note, false});
    if (silent && !tracked.notes.empty()) tracked.shift = tracked.notes.front().start;
    return tracked;
}

bool RenderNotes(const TrackedNotes& tracked, const std::filesystem::path& wav, std::string& error) {
    auto synth = play::SynthSink::openOffline(play::DefaultSoundFont(), wav, error);
    if (!synth) return false;
    // A flute holds its pitch like a voice; channel 1 sounds a quarter tone higher
    // (a quarter of the two-semitone bend range).
    constexpr int kFlute = 73;
    for (int channel = 0; channel < 2; ++channel) {
        synth->send(play::PackProgramChange(kFlute, channel), 0);
        synth->send(play::PackPitchBend(0, channel ? 80 : 64, channel), 0);
    }
    for (const TimedNote& n : tracked.notes) {
        if (n.rest || n.end <= n.start) continue;
        const int key = static_cast<int>(std::floor(n.note));
        const int channel = n.note - key >= 0.25 ? 1 : 0;
        synth->send(play::PackNoteOn(key, 90, channel), n.start / tracked.rate);
        synth->send(play::PackNoteOff(key, channel), n.end / tracked.rate);
    }
    if (!synth->finish(0.5)) {
        error = "Can't write " + wav.string();
        return false;
    }
    return true;
}

} // namespace tahrir::app
