#pragma once
// The built-in synthesiser: a General MIDI SoundFont played by FluidSynth, either live
// through FluidSynth's own audio driver or offline into a WAV file in message time.

#include <filesystem>
#include <memory>
#include <string>

#include "play/midi_message.h"

namespace tahrir::play {

// The larger Fluid R3 GM SoundFont when installed, otherwise TimGM6mb.
std::filesystem::path DefaultSoundFont();

class SynthSink : public MidiSink {
public:
    ~SynthSink() override;
    SynthSink(const SynthSink&) = delete;
    SynthSink& operator=(const SynthSink&) = delete;

    // Null with `error` set when the SoundFont or the audio output cannot be opened.
    static std::unique_ptr<SynthSink> openLive(const std::filesystem::path& soundFont,
                                               std::string& error);
    static std::unique_ptr<SynthSink> openOffline(const std::filesystem::path& soundFont,
                                                  const std::filesystem::path& wav,
                                                  std::string& error, int sampleRate = 44100);

    // Offline, audio is rendered up to `seconds` before the message takes effect; a
    // message earlier than the audio already written takes effect at once.
    void send(std::uint32_t message, double seconds) override;
    // Offline: renders `tailSeconds` more so the last notes ring out, and closes the file.
    // Returns false when writing failed.
    bool finish(double tailSeconds = 1.0);
    // Seconds of audio written so far (offline).
    double renderedSeconds() const;

private:
    struct Impl;
    explicit SynthSink(std::unique_ptr<Impl> impl);
    void renderUntil(long long frame);
    std::unique_ptr<Impl> m_impl;
};

} // namespace tahrir::play
