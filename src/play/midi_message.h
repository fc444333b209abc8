#pragma once
// MIDI short messages packed as one 32-bit word, and the sinks that receive them.

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "play/wave_command.h"

namespace tahrir::play {

// Every argument is a 16-bit number added into its byte position without masking, so an
// out-of-range value spills into the next byte exactly as the packed sum says.
std::uint32_t PackNoteOn(int note, int velocity, int channel);
std::uint32_t PackNoteOff(int note, int channel);
std::uint32_t PackControlChange(int controller, int value, int channel);
std::uint32_t PackProgramChange(int program, int channel);
std::uint32_t PackPitchBend(int lsb, int msb, int channel);

// The bytes of a packed word as they go on the wire: status first, then the data bytes a
// message of that status carries (none for an unknown system status).
struct WireMessage {
    std::uint8_t bytes[3];
    int length;
};
WireMessage Unpack(std::uint32_t message);

// Where packed messages go. `seconds` is the time of the message from the start of the
// run; live outputs ignore it because the dispatcher sends each message on time.
class MidiSink {
public:
    MidiSink() = default;
    // A copy (a recording kept for later) starts without a handler and not failed.
    MidiSink(const MidiSink&) {}
    MidiSink& operator=(const MidiSink&) { return *this; }
    virtual ~MidiSink() = default;
    virtual void send(std::uint32_t message, double seconds) = 0;
    // A command to the wave voices; outputs without them pass it over.
    virtual void wave(const WaveCommand& /*command*/, double /*seconds*/) {}

    // `handler` is told once, with the reason, when the device stops taking messages (a
    // port that vanished, an audio output that stopped); it runs on the sending thread.
    void onFailure(std::function<void(const std::string&)> handler) { m_onFailure = std::move(handler); }
    bool failed() const { return m_failed.load(); }

protected:
    // For the outputs: the first report reaches the handler; a failed output drops what
    // it is sent from then on.
    void reportFailure(const std::string& why) {
        if (!m_failed.exchange(true) && m_onFailure) m_onFailure(why);
    }

private:
    std::function<void(const std::string&)> m_onFailure;
    std::atomic<bool> m_failed{false};
};

// Keeps every message with its time, for tests and for the command line's message list.
class RecordingSink : public MidiSink {
public:
    struct Entry {
        double seconds;
        std::uint32_t message;
    };
    void send(std::uint32_t message, double seconds) override {
        m_entries.push_back({seconds, message});
    }
    struct WaveEntry {
        double seconds;
        WaveCommand command;
    };
    void wave(const WaveCommand& command, double seconds) override {
        m_waves.push_back({seconds, command});
    }
    const std::vector<Entry>& entries() const { return m_entries; }
    const std::vector<WaveEntry>& waves() const { return m_waves; }
    std::vector<std::uint32_t> messages() const;
    void clear() {
        m_entries.clear();
        m_waves.clear();
    }

private:
    std::vector<Entry> m_entries;
    std::vector<WaveEntry> m_waves;
};

// Hands every message to several sinks in turn (a recording beside a live output).
class TeeSink : public MidiSink {
public:
    // The tee fails with the first of its outputs that fails.
    void add(MidiSink* sink) {
        if (!sink) return;
        m_sinks.push_back(sink);
        sink->onFailure([this](const std::string& why) { reportFailure(why); });
    }
    void send(std::uint32_t message, double seconds) override {
        for (MidiSink* s : m_sinks)
            s->send(message, seconds);
    }
    void wave(const WaveCommand& command, double seconds) override {
        for (MidiSink* s : m_sinks)
            s->wave(command, seconds);
    }

private:
    std::vector<MidiSink*> m_sinks;
};

} // namespace tahrir::play
