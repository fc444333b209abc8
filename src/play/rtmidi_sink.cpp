#include "play/rtmidi_sink.h"

#include <RtMidi.h>

#include <chrono>

#include "play/synth_sink.h"

namespace tahrir::play {

namespace {

// The constructor throws when the ALSA sequencer is missing (no sound hardware).
std::unique_ptr<RtMidiOut> MakeOut(std::string& error) {
    try {
        return std::make_unique<RtMidiOut>(RtMidi::LINUX_ALSA, "Tahrir");
    } catch (const RtMidiError& e) {
        error = "no MIDI sequencer: " + e.getMessage();
    } catch (const std::exception& e) {
        error = std::string("no MIDI sequencer: ") + e.what();
    }
    return nullptr;
}

} // namespace

RtMidiSink::RtMidiSink(std::unique_ptr<RtMidiOut> out, std::string portName, bool watchPort)
    : m_out(std::move(out)), m_portName(std::move(portName)), m_watchPort(watchPort) {
    // RtMidi reports a failed send through this callback rather than by throwing.
    m_out->setErrorCallback(
        [](RtMidiError::Type type, const std::string& text, void* self) {
            if (type != RtMidiError::WARNING && type != RtMidiError::DEBUG_WARNING)
                static_cast<RtMidiSink*>(self)->lost(text);
        },
        this);
}

void RtMidiSink::lost(const std::string& why) {
    reportFailure("The MIDI port " + m_portName + " stopped (" + why + ")");
}

// A port that vanishes (a device unplugged) takes messages silently: once a second the
// port is looked for among those the sequencer still lists.
bool RtMidiSink::portStillThere() {
    const auto now = std::chrono::steady_clock::now();
    if (!m_watchPort || now - m_lastLook < std::chrono::seconds(1)) return true;
    m_lastLook = now;
    for (unsigned i = 0; i < m_out->getPortCount(); ++i)
        if (m_out->getPortName(i) == m_portName) return true;
    return false;
}

RtMidiSink::~RtMidiSink() {
    try {
        m_out->closePort();
    } catch (...) {
        // nothing to do at close
    }
}

std::unique_ptr<RtMidiSink> RtMidiSink::openFirstPort(std::string& error) {
    auto out = MakeOut(error);
    if (!out) return nullptr;
    try {
        // The sequencer's pass-through port is always there and sounds nowhere: the first
        // port is the first other one.
        for (unsigned i = 0; i < out->getPortCount(); ++i) {
            std::string name = out->getPortName(i);
            if (name.find("Midi Through") != std::string::npos) continue;
            out->openPort(i);
            return std::unique_ptr<RtMidiSink>(new RtMidiSink(std::move(out), name, true));
        }
        error = "no MIDI output port";
    } catch (const RtMidiError& e) {
        error = e.getMessage();
    }
    return nullptr;
}

std::unique_ptr<RtMidiSink> RtMidiSink::openVirtual(const std::string& name, std::string& error) {
    auto out = MakeOut(error);
    if (!out) return nullptr;
    try {
        out->openVirtualPort(name);
        return std::unique_ptr<RtMidiSink>(new RtMidiSink(std::move(out), name, false));
    } catch (const RtMidiError& e) {
        error = e.getMessage();
    }
    return nullptr;
}

void RtMidiSink::send(std::uint32_t message, double) {
    const WireMessage wire = Unpack(message);
    if (wire.length == 0 || failed()) return;
    try {
        if (!portStillThere()) return lost("it is no longer there");
        m_out->sendMessage(wire.bytes, static_cast<std::size_t>(wire.length));
    } catch (const RtMidiError& e) {
        lost(e.getMessage());
    }
}

namespace {

// A MIDI port and the audio stream of the wave voices, owned together.
class PortWithVoices : public TeeSink {
public:
    PortWithVoices(std::unique_ptr<MidiSink> port, std::unique_ptr<MidiSink> voices)
        : m_port(std::move(port)), m_voices(std::move(voices)) {
        add(m_port.get());
        add(m_voices.get());
    }

private:
    std::unique_ptr<MidiSink> m_port, m_voices;
};

} // namespace

OpenedOutput OpenOutput(OutputChoice choice, WaveVoices* voices) {
    OpenedOutput result;
    std::string midiError;
    std::string synthError;
    if (choice == OutputChoice::Auto || choice == OutputChoice::MidiPort) {
        if (auto port = RtMidiSink::openFirstPort(midiError)) {
            result.description = "MIDI port " + port->portName();
            std::unique_ptr<MidiSink> waves;
            if (voices) waves = SynthSink::openLive({}, synthError, voices);
            if (waves)
                result.sink = std::make_unique<PortWithVoices>(std::move(port), std::move(waves));
            else
                result.sink = std::move(port);
            return result;
        }
    }
    if (choice == OutputChoice::Auto || choice == OutputChoice::Synthesiser) {
        if (auto synth = SynthSink::openLive(DefaultSoundFont(), synthError, voices)) {
            result.description = "built-in synthesiser";
            result.sink = std::move(synth);
            return result;
        }
    }
    result.description = midiError.empty()    ? synthError
                         : synthError.empty() ? midiError
                                              : midiError + "; " + synthError;
    return result;
}

OutputChoice OutputChoiceFromText(const std::string& text) {
    if (text == "midi") return OutputChoice::MidiPort;
    if (text == "synth") return OutputChoice::Synthesiser;
    if (text == "none") return OutputChoice::None;
    return OutputChoice::Auto;
}

} // namespace tahrir::play
