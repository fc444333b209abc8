#pragma once
// The first MIDI output port of the system, and the choice between it and the built-in
// synthesiser at start.

#include <chrono>
#include <memory>
#include <string>

#include "play/midi_message.h"

class RtMidiOut;

namespace tahrir::play {
class WaveVoices;
}

namespace tahrir::play {

class RtMidiSink : public MidiSink {
public:
    ~RtMidiSink() override;
    // Opens the first output port (on Linux through the ALSA sequencer), passing over the
    // pass-through port. Null, with `error` set, when there is no sequencer or no port.
    static std::unique_ptr<RtMidiSink> openFirstPort(std::string& error);
    // A virtual output port under `name`, for tests that read it back.
    static std::unique_ptr<RtMidiSink> openVirtual(const std::string& name, std::string& error);
    void send(std::uint32_t message, double seconds) override;
    const std::string& portName() const { return m_portName; }

private:
    // `watchPort`: look now and then whether the port is still listed (not for a virtual
    // port, which lives as long as the sink).
    RtMidiSink(std::unique_ptr<RtMidiOut> out, std::string portName, bool watchPort);
    void lost(const std::string& why);
    bool portStillThere();
    std::unique_ptr<RtMidiOut> m_out;
    std::string m_portName;
    bool m_watchPort;
    std::chrono::steady_clock::time_point m_lastLook = std::chrono::steady_clock::now();
};

// Which output the player uses; `Auto` takes the first MIDI port when one exists.
enum class OutputChoice { Auto, MidiPort, Synthesiser, None };

struct OpenedOutput {
    std::unique_ptr<MidiSink> sink; // null when nothing could open
    std::string description;        // what was opened, or why nothing was
};

// The message the user sees when neither output opens; editing goes on without sound.
inline constexpr const char* OpenMidiOutFailed = "Open MIDI Out failed";

// The wave voices, when given, sound through the synthesiser's stream; beside a MIDI port
// they get a stream of their own.
OpenedOutput OpenOutput(OutputChoice choice, WaveVoices* voices = nullptr);

// Reads "auto", "midi", "synth" or "none"; anything else is Auto.
OutputChoice OutputChoiceFromText(const std::string& text);

} // namespace tahrir::play
