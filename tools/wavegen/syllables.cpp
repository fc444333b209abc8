#include "syllables.h"

#include <espeak-ng/speak_lib.h>
#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

#include "instrument_models.h"

namespace tahrir::wavegen {

namespace {

std::vector<short> g_speech; // filled by the synthesiser's callback

int Collect(short* wav, int count, espeak_EVENT*) {
    if (wav) g_speech.insert(g_speech.end(), wav, wav + count);
    return 0;
}

// Period in samples of 40 ms of voice from `at`, by the normalised difference function
// of YIN (the first dip below 0.3); 0 where the stretch is not voiced.
double PeriodAt(const std::vector<float>& x, std::size_t at, int rate) {
    const std::size_t window = static_cast<std::size_t>(rate / 25);
    const std::size_t maxLag = static_cast<std::size_t>(rate / 60);
    std::vector<double> d(maxLag + 1, 1.0);
    double running = 0;
    for (std::size_t lag = 1; lag <= maxLag; ++lag) {
        double sum = 0;
        for (std::size_t i = at; i < at + window; ++i)
            sum += (x[i] - x[i + lag]) * (x[i] - x[i + lag]);
        running += sum;
        d[lag] = running > 0 ? sum * static_cast<double>(lag) / running : 1.0;
    }
    for (std::size_t lag = static_cast<std::size_t>(rate / 500); lag < maxLag; ++lag) {
        if (d[lag] >= 0.3) continue;
        while (lag + 1 < maxLag && d[lag + 1] < d[lag])
            ++lag;
        return static_cast<double>(lag);
    }
    return 0;
}

// The median fundamental of the voiced stretches, between 60 and 500 Hz; 0 for none.
double Fundamental(const std::vector<float>& x, int rate) {
    const auto span = static_cast<std::size_t>(rate / 25 + rate / 60 + 1);
    std::vector<double> periods;
    for (std::size_t at = 0; at + span < x.size(); at += static_cast<std::size_t>(rate / 100))
        if (const double p = PeriodAt(x, at, rate); p > 0) periods.push_back(p);
    if (periods.empty()) return 0;
    std::nth_element(periods.begin(), periods.begin() + static_cast<std::ptrdiff_t>(periods.size() / 2), periods.end());
    return rate / periods[periods.size() / 2];
}

// The syllable spoken on one pitch (0..99 of the synthesiser), without the silence
// around it.
std::vector<float> Speak(const std::string& text, int pitch) {
    espeak_SetParameter(espeakPITCH, pitch, 0);
    g_speech.clear();
    espeak_Synth(text.c_str(), text.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_AUTO, nullptr, nullptr);
    espeak_Synchronize();
    auto loud = [](short s) { return std::abs(s) > 300; };
    const auto first = std::find_if(g_speech.begin(), g_speech.end(), loud);
    const auto last = std::find_if(g_speech.rbegin(), g_speech.rend(), loud).base();
    std::vector<float> voice;
    for (auto it = first; it < last; ++it)
        voice.push_back(static_cast<float>(*it) / 32768.0f);
    return voice;
}

} // namespace

std::vector<float> SungSyllable(const std::string& name, double midiPitch, std::string& error) {
    static const int rate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, 0);
    if (rate <= 0) {
        error = "the speech synthesiser did not start";
        return {};
    }
    espeak_SetSynthCallback(Collect);
    espeak_SetVoiceByName("it+f3"); // a woman's voice reaches the steps of octave 2 and 3
    // Slow and monotone, so the vowel is held like a sung note.
    espeak_SetParameter(espeakRATE, 80, 0);
    espeak_SetParameter(espeakRANGE, 0, 0);
    // The syllable as phonemes, its vowel held long as in singing.
    static const std::map<std::string, std::string> kPhonemes = {
        {"Do", "[[d'o::]]"}, {"Re", "[[r'E::]]"}, {"Mi", "[[m'i::]]"}, {"Fa", "[[f'a::]]"},
        {"Sol", "[[s'O::l]]"}, {"La", "[[l'a::]]"}, {"Si", "[[s'i::]]"}};
    const auto phonemes = kPhonemes.find(name);
    const std::string text = phonemes != kPhonemes.end() ? phonemes->second : name;
    // The voice's own pitch is brought near the step first (its pitch setting is close
    // to linear in hertz), so that little is left for the resampling to change.
    const double target = PitchHz(midiPitch);
    const double low = Fundamental(Speak(text, 20), rate);
    const double high = Fundamental(Speak(text, 80), rate);
    const int setting =
        high > low ? std::clamp(static_cast<int>(std::lround(20 + 60 * (target - low) / (high - low))), 0, 99) : 50;
    const std::vector<float> voice = Speak(text, setting);
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
