#pragma once
// The MIDI output layer: packs each operation into one short message, carries the gates
// that decide whether a note is sent, and keeps the channel plan with its standing bends.

#include <array>
#include <bitset>
#include <cstdint>

#include "play/midi_message.h"

namespace tahrir::play {

// Channels are the raw low nibble of the status byte.
inline constexpr int SpareChannelLow = 1;
inline constexpr int KoronChannel = 2;
inline constexpr int NaturalChannel = 3;
inline constexpr int SoriChannel = 4;
inline constexpr int SpareChannelHigh = 5;
inline constexpr int CountInChannel = 6;
inline constexpr int CountInProgram = 115; // General MIDI woodblock, 0-based

// Slider ranges of the two bends: koron 0..-32 (start -16), sori 0..32 (start 16).
inline constexpr int DefaultKoronBend = -16;
inline constexpr int DefaultSoriBend = 16;

class MidiOut {
public:
    explicit MidiOut(MidiSink* sink = nullptr) : m_sink(sink) {}

    // The sink may be null: messages then go nowhere, as after a failed open.
    void setSink(MidiSink* sink) { m_sink = sink; }
    MidiSink* sink() const { return m_sink; }
    // Time stamp given to the messages that follow.
    void setTime(double seconds) { m_time = seconds; }
    double time() const { return m_time; }

    void MidiNoteOn(int note, int velocity, int channel);
    void MidiNoteOff(int note, int channel);
    void MidiControlChange(int controller, int value, int channel);
    void MidiProgramChange(int program, int channel);
    void MidiPitchBend(int lsb, int msb, int channel);
    // Controller reset, bank select 0, then the program; the odd start-up calls pass a
    // number too large for a channel and send the sums as they come.
    void MidiResetProgram(int program, int channel);
    // Note off for every note 0..127 on channels 1 to 5, channel innermost.
    void AllNotesOff();

    // The start-up sequence of the main window.
    void StartUp();
    // Controller 33 and the program on each voice channel from `firstChannel` to 5, then
    // the three standing bends of the natural, koron and sori voices.
    void PrepareChannels(int firstChannel = SpareChannelLow);
    // Controller 33 and the woodblock on the count-in channel.
    void PrepareCountIn();
    // The slider moves: store the value and retune the voice at once.
    void setKoronBend(int value);
    void setSoriBend(int value);
    int koronBend() const { return m_koronBend; }
    int soriBend() const { return m_soriBend; }

    // Instrument list index 1..8 (out-of-range indices are ignored); the caller reprograms.
    void setProgramIndex(int index);
    int programIndex() const { return m_programIndex; }

    // Commands to the wave voices go to the sink with the current time.
    void wave(const WaveCommand& command);
    // A click on picture 8: the tar voice toggles and all its voices stop.
    void toggleTar();
    void toggleDaf() { DafOn = !DafOn; }

    bool MidiOutputOn = false;
    bool CountInActive = false;
    bool TarOn = false; // picture 8
    bool DafOn = false; // picture 9
    std::uint32_t MidiLastMessage = 0;

private:
    void send(std::uint32_t message);
    // The tar and daf voices of a note; a voice is told to stop only when it was started.
    void soundWaves(int note, int channel, bool on);

    MidiSink* m_sink;
    double m_time = 0;
    int m_programIndex = 6; // Flute
    int m_koronBend = DefaultKoronBend;
    int m_soriBend = DefaultSoriBend;
    std::bitset<WaveSlots + 1> m_tarStarted, m_dafStarted;
};

} // namespace tahrir::play
