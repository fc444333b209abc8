#include "play/wave_voices.h"

#include <sndfile.h>

#include <algorithm>
#include <cctype>
#include <cmath>

#include "core/load_file.h"
#include "core/sample_frames.h"

namespace tahrir::play {

namespace fs = std::filesystem;

namespace {

constexpr const char* kSyllables[8] = {"", "Do", "Re", "Mi", "Fa", "Sol", "La", "Si"};
constexpr double kFadeSeconds = 0.005; // a stop fades this long, so nothing clicks
constexpr float kVoiceGain = 0.7f;
constexpr sf_count_t kReadFrames = 4096;

std::string Lower(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

} // namespace

bool ReadWaveSample(const fs::path& file, WaveSample& out, std::string& error) {
    SF_INFO info{};
    SNDFILE* f = sf_open(file.string().c_str(), SFM_READ, &info);
    if (!f) {
        error = "Can't read " + file.string();
        return false;
    }
    if (info.channels < 1 || info.samplerate < 1000 || info.frames < 0) {
        sf_close(f);
        error = "Not a sound file " + file.string();
        return false;
    }
    // Read in blocks: the header's frame count may be a lie, and only what the file
    // really holds is kept.
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<float> block(static_cast<std::size_t>(kReadFrames) * channels);
    out.rate = info.samplerate;
    out.frames.clear();
    for (sf_count_t got; (got = sf_readf_float(f, block.data(), kReadFrames)) > 0;) {
        const std::size_t at = out.frames.size();
        out.frames.resize(at + static_cast<std::size_t>(got));
        core::MixFramesToMono(block.data(), static_cast<std::size_t>(got), channels,
                              out.frames.data() + at);
    }
    sf_close(f);
    return true;
}

std::string TarSampleName(int n) {
    return "Wav/H3-" + std::to_string(n) + ".Wav";
}
std::string DafSampleName(int n) {
    return "4-" + std::to_string(n) + ".Wav";
}
std::string SyllableSampleName(int step) {
    return step >= 1 && step <= 7 ? std::string(kSyllables[step]) + ".Wav" : std::string();
}

fs::path AccompanimentFile(const fs::path& score, int tempo) {
    if (score.empty()) return {};
    const fs::path named = core::CompanionRecording(score.string(), tempo);
    const fs::path folder = named.parent_path().empty() ? fs::path(".") : named.parent_path();
    // The name is the score's folded to lower case; any file that differs only in case
    // is the same recording.
    const std::string wanted = Lower(named.filename().string());
    std::error_code ec;
    if (fs::is_regular_file(folder / wanted, ec)) return folder / wanted;
    for (auto it = fs::directory_iterator(folder, ec); !ec && it != fs::directory_iterator();
         it.increment(ec))
        if (Lower(it->path().filename().string()) == wanted && it->is_regular_file(ec))
            return it->path();
    return {};
}

WaveVoices::WaveVoices(int outputRate)
    : m_outputRate(std::max(outputRate, 1000)),
      m_fadeStep(static_cast<float>(1.0 / (kFadeSeconds * m_outputRate))) {}

WaveVoices::~WaveVoices() = default;

int WaveVoices::loadSamples(const fs::path& folder, const fs::path& fallback) {
    int loaded = 0;
    auto load = [&](WaveSample& sample, const std::string& name) {
        std::string error;
        std::error_code ec;
        const fs::path own = folder / name;
        const fs::path file = fs::is_regular_file(own, ec) || fallback.empty() ? own : fallback / name;
        sample = {};
        if (ReadWaveSample(file, sample, error)) ++loaded;
    };
    for (int n = 1; n <= WaveSlots; ++n) {
        load(m_tar[static_cast<std::size_t>(n)], TarSampleName(n));
        load(m_daf[static_cast<std::size_t>(n)], DafSampleName(n));
    }
    for (int step = 1; step <= 7; ++step)
        load(m_syllable[static_cast<std::size_t>(step)], SyllableSampleName(step));
    return loaded;
}

bool WaveVoices::loadAccompaniment(const fs::path& file, std::string& error) {
    std::error_code ec;
    const auto written = fs::last_write_time(file, ec);
    // The same unchanged file again (each Play asks for it) is not read again.
    if (!ec && !m_recordings.empty() && file == m_recordingFile && written == m_recordingTime) {
        m_nextRecording.store(m_recordings.back().get(), std::memory_order_release);
        return true;
    }
    auto sample = std::make_unique<WaveSample>();
    if (!ReadWaveSample(file, *sample, error)) return false;
    m_recordingFile = file;
    m_recordingTime = written;
    m_nextRecording.store(sample.get(), std::memory_order_release);
    m_recordings.push_back(std::move(sample));
    return true;
}

void WaveVoices::post(const WaveCommand& command) {
    std::lock_guard lock(m_posting);
    const std::size_t tail = m_tail.load(std::memory_order_relaxed);
    if (tail - m_head.load(std::memory_order_acquire) >= kRing) return; // full: dropped
    m_ring[tail % kRing] = command;
    m_tail.store(tail + 1, std::memory_order_release);
}

void WaveVoices::takeRecording() {
    if (const WaveSample* next = m_nextRecording.exchange(nullptr, std::memory_order_acquire)) {
        m_accompaniment = Voice{};
        m_accompaniment.sample = next;
    }
}

void WaveVoices::takeCommands() {
    takeRecording();
    std::size_t head = m_head.load(std::memory_order_relaxed);
    const std::size_t tail = m_tail.load(std::memory_order_acquire);
    for (; head != tail; ++head)
        apply(m_ring[head % kRing]);
    m_head.store(head, std::memory_order_release);
}

WaveVoices::Voice* WaveVoices::voiceOf(WaveBank bank, int n) {
    switch (bank) {
    case WaveBank::Tar:
    case WaveBank::Daf: {
        if (n < 1 || n > WaveSlots) return nullptr;
        const auto i = static_cast<std::size_t>(n);
        Voice& v = bank == WaveBank::Tar ? m_tarVoice[i] : m_dafVoice[i];
        v.sample = bank == WaveBank::Tar ? &m_tar[i] : &m_daf[i];
        return &v;
    }
    case WaveBank::Syllable: {
        if (n < 1 || n > 7) return nullptr;
        const auto i = static_cast<std::size_t>(n);
        m_syllableVoice[i].sample = &m_syllable[i];
        return &m_syllableVoice[i];
    }
    case WaveBank::Accompaniment:
        return m_accompaniment.sample ? &m_accompaniment : nullptr;
    }
    return nullptr;
}

void WaveVoices::apply(const WaveCommand& c) {
    if (c.action == WaveAction::StopAll) {
        auto fadeAll = [](auto& voices) {
            for (Voice& v : voices)
                v.fading = v.playing;
        };
        if (c.bank == WaveBank::Tar) fadeAll(m_tarVoice);
        if (c.bank == WaveBank::Daf) fadeAll(m_dafVoice);
        if (c.bank == WaveBank::Syllable) fadeAll(m_syllableVoice);
        return;
    }
    if (c.bank == WaveBank::Accompaniment) takeRecording();
    Voice* v = voiceOf(c.bank, c.value);
    if (!v || v->sample->frames.empty()) return;
    v->step = static_cast<double>(v->sample->rate) / m_outputRate;
    switch (c.action) {
    case WaveAction::Play:
        if (c.bank != WaveBank::Accompaniment) v->position = 0;
        [[fallthrough]];
    case WaveAction::Resume:
        v->playing = true;
        v->fading = false;
        v->gain = 1;
        break;
    case WaveAction::Stop:
        v->fading = v->playing;
        break;
    case WaveAction::Pause:
        v->playing = false;
        break;
    case WaveAction::Seek:
        v->position = std::max(0, c.value) / 1000.0 * v->sample->rate;
        m_accompanimentMs.store(std::max(0, c.value), std::memory_order_relaxed);
        break;
    case WaveAction::StopAll:
        break;
    }
}

void WaveVoices::mixVoice(Voice& v, float* left, float* right, int frames, int stride) {
    const std::vector<float>& x = v.sample->frames;
    const double last = static_cast<double>(x.size()) - 1;
    for (int i = 0; i < frames && v.playing; ++i) {
        if (v.position >= last) {
            v.playing = false;
            break;
        }
        const auto k = static_cast<std::size_t>(v.position);
        const auto t = static_cast<float>(v.position - static_cast<double>(k));
        const float s = (x[k] + t * (x[k + 1] - x[k])) * v.gain * kVoiceGain;
        left[i * stride] += s;
        right[i * stride] += s;
        v.position += v.step;
        if (v.fading && (v.gain -= m_fadeStep) <= 0) {
            v.playing = v.fading = false;
            v.gain = 0;
        }
    }
}

void WaveVoices::mix(float* left, float* right, int frames, int stride) {
    takeCommands();
    for (Voice& v : m_tarVoice)
        if (v.playing) mixVoice(v, left, right, frames, stride);
    for (Voice& v : m_dafVoice)
        if (v.playing) mixVoice(v, left, right, frames, stride);
    for (Voice& v : m_syllableVoice)
        if (v.playing) mixVoice(v, left, right, frames, stride);
    if (m_accompaniment.playing) {
        mixVoice(m_accompaniment, left, right, frames, stride);
        m_accompanimentMs.store(static_cast<int>(m_accompaniment.position * 1000 /
                                                 m_accompaniment.sample->rate),
                                std::memory_order_relaxed);
    }
}

} // namespace tahrir::play
