#include "syllables.h"

#include <espeak-ng/speak_lib.h>
#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "instrument_models.h"

namespace tahrir::wavegen {

namespace {

std::vector<short> g_speech; // filled by the synthesiser's callback

int Collect(short* wav, int count, espeak_EVENT*) {
    if (wav) g_speech.insert(g_speech.end(), wav, wav + count);
    return 0;
}

// Fundamental of the loudest 100 ms of voice, by autocorrelation between 70 and 500 Hz.
double Fundamental(const std::vector<float>& x, int rate) {
    const std::size_t window = static_cast<std::size_t>(rate / 10);
    if (x.size() < window * 2) return 0;
    std::size_t best = 0;
    double bestEnergy = -1;
    for (std::size_t at = 0; at + window < x.size(); at += window / 4) {
        double e = 0;
        for (std::size_t i = at; i < at + window; ++i)
            e += x[i] * x[i];
        if (e > bestEnergy) bestEnergy = e, best = at;
    }
    const int minLag = rate / 500, maxLag = rate / 70;
    double bestScore = -1e9;
    int bestLag = minLag;
    for (int lag = minLag; lag <= maxLag; ++lag) {
        double s = 0;
        for (std::size_t i = best; i + static_cast<std::size_t>(lag) < best + window && i + static_cast<std::size_t>(lag) < x.size(); ++i)
            s += x[i] * x[i + static_cast<std::size_t>(lag)];
        s /= static_cast<double>(window - static_cast<std::size_t>(lag));
        if (s > bestScore) bestScore = s, bestLag = lag;
    }
    return static_cast<double>(rate) / bestLag;
}

} // namespace

std::vector<float> SungSyllable(const std::string& name, double midiPitch, std::string& error) {
    static const int rate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, 0);
    if (rate <= 0) {
        error = "the speech synthesiser did not start";
        return {};
    }
    espeak_SetSynthCallback(Collect);
    espeak_SetVoiceByName("it");
    // Slow and monotone, so the vowel is held like a sung note.
    espeak_SetParameter(espeakRATE, 80, 0);
    espeak_SetParameter(espeakPITCH, 45, 0);
    espeak_SetParameter(espeakRANGE, 0, 0);
    g_speech.clear();
    const std::string text = name;
    espeak_Synth(text.c_str(), text.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_AUTO, nullptr, nullptr);
    espeak_Synchronize();
    // The voice without the silence around it.
    auto loud = [](short s) { return std::abs(s) > 300; };
    const auto first = std::find_if(g_speech.begin(), g_speech.end(), loud);
    const auto last = std::find_if(g_speech.rbegin(), g_speech.rend(), loud).base();
    std::vector<float> voice;
    for (auto it = first; it < last; ++it)
        voice.push_back(static_cast<float>(*it) / 32768.0f);
    const double spoken = Fundamental(voice, rate);
    if (spoken <= 0) {
        error = "the speech synthesiser gave no voice for " + name;
        return {};
    }
    // Played faster by the pitch ratio, the syllable lands on the step's pitch.
    const double ratio = spoken / PitchHz(midiPitch) * kSyllableRate / rate;
    std::vector<float> out(static_cast<std::size_t>(static_cast<double>(voice.size()) * ratio) + 16);
    SRC_DATA data{};
    data.data_in = voice.data();
    data.input_frames = static_cast<long>(voice.size());
    data.data_out = out.data();
    data.output_frames = static_cast<long>(out.size());
    data.src_ratio = ratio;
    if (const int e = src_simple(&data, SRC_SINC_MEDIUM_QUALITY, 1)) {
        error = src_strerror(e);
        return {};
    }
    out.resize(static_cast<std::size_t>(data.output_frames_gen));
    return out;
}

} // namespace tahrir::wavegen
