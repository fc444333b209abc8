#pragma once
// The built-in synthesiser: a General MIDI SoundFont played by FluidSynth, either live
// through FluidSynth's own audio driver or offline into a WAV file in message time.

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "play/midi_message.h"
#include "play/wave_voices.h"

namespace tahrir::play {

// The larger Fluid R3 GM SoundFont when installed, otherwise TimGM6mb.
std::filesystem::path DefaultSoundFont();

// What carries the live stream to the speakers: it calls the render function from its own
// thread, block after block, until it is destroyed.
class AudioDriver {
public:
    virtual ~AudioDriver() = default;
};
// Fills `frames` frames of the two channels; false when the synthesiser failed.
using RenderAudio = std::function<bool(int frames, float* left, float* right)>;
// Opens a driver for a stream at `sampleRate`; null with `error` set when none opens.
using AudioDriverOpener = std::function<std::unique_ptr<AudioDriver>(
    int sampleRate, RenderAudio render, std::string& error)>;

class SynthSink : public MidiSink {
public:
    ~SynthSink() override;
    SynthSink(const SynthSink&) = delete;
    SynthSink& operator=(const SynthSink&) = delete;

    // Null with `error` set when the SoundFont or the audio output cannot be opened. The
    // wave voices, when given, are mixed into the same stream; with an empty SoundFont
    // the stream carries the wave voices alone.
    // A live stream that stops, or whose synthesiser fails, is reported through
    // onFailure at the next message. `driver` replaces the desktop's audio output (tests).
    static std::unique_ptr<SynthSink> openLive(const std::filesystem::path& soundFont,
                                               std::string& error, WaveVoices* voices = nullptr,
                                               const AudioDriverOpener& driver = {});
    static std::unique_ptr<SynthSink> openOffline(const std::filesystem::path& soundFont,
                                                  const std::filesystem::path& wav,
                                                  std::string& error, int sampleRate = 44100);

    // Offline, audio is rendered up to `seconds` before the message takes effect; a
    // message earlier than the audio already written takes effect at once.
    void send(std::uint32_t message, double seconds) override;
    // Offline the voices are rendered to the command's time first; live the command waits
    // for the audio thread.
    void wave(const WaveCommand& command, double seconds) override;
    // Offline: the wave voices mixed into the file (their rate must be the file's).
    void attachVoices(WaveVoices* voices);
    // Offline: renders `tailSeconds` more so the last notes ring out, and closes the file.
    // Returns false when writing failed.
    bool finish(double tailSeconds = 1.0);
    // Seconds of audio written so far (offline).
    double renderedSeconds() const;

    struct Impl; // the stream's state, also read by the audio callback

private:
    explicit SynthSink(std::unique_ptr<Impl> impl);
    void renderUntil(long long frame);
    void checkStream();
    std::unique_ptr<Impl> m_impl;
};

} // namespace tahrir::play
