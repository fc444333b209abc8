#include "play/synth_sink.h"

#include <fluidsynth.h>
#include <sndfile.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

namespace tahrir::play {

namespace {

constexpr const char* kFluidR3 = "/usr/share/sounds/sf2/FluidR3_GM.sf2";
constexpr const char* kTimGM6mb = "/usr/share/sounds/sf2/TimGM6mb.sf2";
constexpr int kBlockFrames = 512;
// A live stream that has taken no block for this long has stopped: the drivers ask for
// one every few milliseconds.
constexpr std::chrono::seconds kStreamStall{2};
constexpr const char* kStreamStopped = "The audio output of the built-in synthesiser stopped";

// FluidSynth reports a missing SoundFont on its own; the caller gets our message instead.
void QuietLog(int, const char*, void*) {}

void AddOption(void* list, const char*, const char* option) {
    static_cast<std::vector<std::string>*>(list)->push_back(option);
}

// The live stream: the synthesiser, then the wave voices added on top, on the audio
// thread of the driver.
int RenderLive(void* data, int len, int nfx, float* fx[], int nout, float* out[]);

// FluidSynth's own driver for the desktop's sound server or the sound card.
class FluidDriver : public AudioDriver {
public:
    explicit FluidDriver(fluid_audio_driver_t* driver) : m_driver(driver) {}
    ~FluidDriver() override { delete_fluid_audio_driver(m_driver); }

private:
    fluid_audio_driver_t* m_driver;
};

} // namespace

std::filesystem::path DefaultSoundFont() {
    std::error_code ec;
    if (std::filesystem::exists(kFluidR3, ec)) return kFluidR3;
    return kTimGM6mb;
}

struct SynthSink::Impl {
    fluid_settings_t* settings = nullptr;
    fluid_synth_t* synth = nullptr;
    std::unique_ptr<AudioDriver> driver;
    SNDFILE* file = nullptr;
    int sampleRate = 44100;
    long long frames = 0;
    bool writeFailed = false;
    std::vector<float> block = std::vector<float>(kBlockFrames * 2);
    WaveVoices* voices = nullptr;
    // The live stream's progress, written by the audio thread, watched by the sender.
    std::atomic<long long> liveFrames{0};
    std::atomic<bool> liveBroken{false};
    long long seenFrames = -1;
    std::chrono::steady_clock::time_point seenAt = std::chrono::steady_clock::now();

    ~Impl() {
        driver.reset();
        if (synth) delete_fluid_synth(synth);
        if (settings) delete_fluid_settings(settings);
        if (file) sf_close(file);
    }

    // Settings and synthesiser with the SoundFont loaded; false with `error` set.
    bool open(const std::filesystem::path& soundFont, int rate, std::string& error) {
        fluid_set_log_function(FLUID_ERR, QuietLog, nullptr);
        fluid_set_log_function(FLUID_WARN, QuietLog, nullptr);
        sampleRate = rate;
        settings = new_fluid_settings();
        if (!settings) return fail(error, "cannot create synthesiser settings");
        fluid_settings_setnum(settings, "synth.sample-rate", rate);
        // A solo line at moderate velocity peaks near -30 dBFS at the usual gain; this brings
        // it to a comfortable level while two-note forms still stay clear of clipping.
        fluid_settings_setnum(settings, "synth.gain", 1.6);
        if (soundFont.empty()) return true; // the wave voices alone
        synth = new_fluid_synth(settings);
        if (!synth) return fail(error, "cannot create the synthesiser");
        if (fluid_synth_sfload(synth, soundFont.string().c_str(), 1) == FLUID_FAILED)
            return fail(error, "cannot load the SoundFont " + soundFont.string());
        return true;
    }
    static bool fail(std::string& error, const std::string& text) {
        error = text;
        return false;
    }
};

SynthSink::SynthSink(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}
SynthSink::~SynthSink() {
    finish(0);
    // A driver that stopped may be stuck in the audio system; closing it could wait for
    // ever, so it closes on a thread of its own and nobody waits for it.
    if (m_impl->driver && failed()) std::thread([impl = std::move(m_impl)]() mutable { impl.reset(); }).detach();
}

namespace {

int RenderLive(void* data, int len, int nfx, float* fx[], int nout, float* out[]) {
    auto& s = *static_cast<SynthSink::Impl*>(data);
    if (nout < 2) return FLUID_FAILED;
    for (int c = 0; c < nout; ++c)
        std::fill(out[c], out[c] + len, 0.0f);
    if (s.synth) {
        // Without effect buffers from the driver, reverb and chorus go into the output.
        const int status = fx ? fluid_synth_process(s.synth, len, nfx, fx, nout, out)
                              : fluid_synth_process(s.synth, len, nout, out, nout, out);
        if (status != FLUID_OK) return status;
    }
    if (s.voices) s.voices->mix(out[0], out[1], len, 1);
    s.liveFrames.fetch_add(len, std::memory_order_relaxed);
    return FLUID_OK;
}

int RenderChecked(void* data, int len, int nfx, float* fx[], int nout, float* out[]) {
    const int status = RenderLive(data, len, nfx, fx, nout, out);
    if (status != FLUID_OK) static_cast<SynthSink::Impl*>(data)->liveBroken = true;
    return status;
}

// The desktop's sound server first, then the sound card; only drivers this build has.
std::unique_ptr<AudioDriver> OpenFluidDriver(fluid_settings_t* settings, void* impl) {
    std::vector<std::string> built;
    fluid_settings_foreach_option(settings, "audio.driver", &built, AddOption);
    for (const char* name : {"pulseaudio", "pipewire", "alsa", "sdl2"}) {
        if (std::find(built.begin(), built.end(), name) == built.end()) continue;
        fluid_settings_setstr(settings, "audio.driver", name);
        if (auto* driver = new_fluid_audio_driver2(settings, RenderChecked, impl))
            return std::make_unique<FluidDriver>(driver);
    }
    return nullptr;
}

} // namespace

std::unique_ptr<SynthSink> SynthSink::openLive(const std::filesystem::path& soundFont,
                                               std::string& error, WaveVoices* voices,
                                               const AudioDriverOpener& driver) {
    auto impl = std::make_unique<Impl>();
    if (!impl->open(soundFont, 44100, error)) return nullptr;
    impl->voices = voices;
    if (driver) {
        Impl* live = impl.get();
        impl->driver = driver(impl->sampleRate, [live](int frames, float* left, float* right) {
            float* out[2] = {left, right};
            return RenderChecked(live, frames, 0, nullptr, 2, out) == FLUID_OK;
        }, error);
        if (!impl->driver) return nullptr;
    } else {
        impl->driver = OpenFluidDriver(impl->settings, impl.get());
    }
    if (!impl->driver) {
        error = "cannot open an audio output for the synthesiser";
        return nullptr;
    }
    return std::unique_ptr<SynthSink>(new SynthSink(std::move(impl)));
}

std::unique_ptr<SynthSink> SynthSink::openOffline(const std::filesystem::path& soundFont,
                                                  const std::filesystem::path& wav,
                                                  std::string& error, int sampleRate) {
    auto impl = std::make_unique<Impl>();
    if (!impl->open(soundFont, sampleRate, error)) return nullptr;
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    impl->file = sf_open(wav.string().c_str(), SFM_WRITE, &info);
    if (!impl->file) {
        error = "cannot write " + wav.string();
        return nullptr;
    }
    return std::unique_ptr<SynthSink>(new SynthSink(std::move(impl)));
}

void SynthSink::renderUntil(long long frame) {
    Impl& s = *m_impl;
    while (s.frames < frame) {
        const int n = static_cast<int>(std::min<long long>(kBlockFrames, frame - s.frames));
        if (s.synth)
            fluid_synth_write_float(s.synth, n, s.block.data(), 0, 2, s.block.data(), 1, 2);
        else
            std::fill(s.block.begin(), s.block.end(), 0.0f);
        if (s.voices) s.voices->mix(s.block.data(), s.block.data() + 1, n, 2);
        if (sf_writef_float(s.file, s.block.data(), n) != n) s.writeFailed = true;
        s.frames += n;
    }
}

void SynthSink::attachVoices(WaveVoices* voices) {
    m_impl->voices = voices;
}

// Live: a stream whose synthesiser failed or that has taken no block for a while has
// stopped; the run is told once, and what is sent from then on is dropped.
void SynthSink::checkStream() {
    Impl& s = *m_impl;
    if (s.file || failed()) return;
    const auto now = std::chrono::steady_clock::now();
    const long long frames = s.liveFrames.load(std::memory_order_relaxed);
    if (frames != s.seenFrames) {
        s.seenFrames = frames;
        s.seenAt = now;
    }
    if (s.liveBroken.load() || now - s.seenAt > kStreamStall) reportFailure(kStreamStopped);
}

void SynthSink::wave(const WaveCommand& command, double seconds) {
    Impl& s = *m_impl;
    checkStream();
    if (!s.voices || failed()) return;
    if (!s.file) return s.voices->post(command);
    if (seconds > 0) renderUntil(std::llround(seconds * s.sampleRate));
    s.voices->apply(command);
}

void SynthSink::send(std::uint32_t message, double seconds) {
    Impl& s = *m_impl;
    checkStream();
    if (s.file && seconds > 0) renderUntil(std::llround(seconds * s.sampleRate));
    if (!s.synth || failed()) return;
    const WireMessage wire = Unpack(message);
    if (wire.length == 0) return;
    const int channel = wire.bytes[0] & 0x0F;
    const int d1 = wire.bytes[1];
    const int d2 = wire.bytes[2];
    switch (wire.bytes[0] >> 4) {
    case 0x8:
        fluid_synth_noteoff(s.synth, channel, d1);
        break;
    case 0x9:
        if (d2 == 0)
            fluid_synth_noteoff(s.synth, channel, d1);
        else
            fluid_synth_noteon(s.synth, channel, d1, d2);
        break;
    case 0xB:
        fluid_synth_cc(s.synth, channel, d1, d2);
        break;
    case 0xC:
        fluid_synth_program_change(s.synth, channel, d1);
        break;
    case 0xE:
        fluid_synth_pitch_bend(s.synth, channel, d1 + d2 * 128);
        break;
    default:
        break; // system and pressure messages do not change this synthesiser
    }
}

bool SynthSink::finish(double tailSeconds) {
    Impl& s = *m_impl;
    if (!s.file) return true;
    renderUntil(s.frames + std::llround(std::max(0.0, tailSeconds) * s.sampleRate));
    const bool ok = !s.writeFailed && sf_close(s.file) == 0;
    s.file = nullptr;
    return ok;
}

double SynthSink::renderedSeconds() const {
    return static_cast<double>(m_impl->frames) / m_impl->sampleRate;
}

} // namespace tahrir::play
