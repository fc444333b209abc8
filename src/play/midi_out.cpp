#include "play/midi_out.h"

#include <algorithm>

#include "core/instrument_table.h"

namespace tahrir::play {

void MidiOut::send(std::uint32_t message) {
    MidiLastMessage = message;
    if (m_sink) m_sink->send(message, m_time);
}

void MidiOut::wave(const WaveCommand& command) {
    if (m_sink) m_sink->wave(command, m_time);
}

void MidiOut::soundWaves(int note, int channel, bool on) {
    const int index = WaveIndex(note, channel);
    const WaveAction action = on ? WaveAction::Play : WaveAction::Stop;
    auto sound = [&](WaveBank bank, int n, std::bitset<WaveSlots + 1>& started) {
        const auto i = static_cast<std::size_t>(n);
        if (!on && !started[i]) return;
        started[i] = on;
        wave({bank, action, n});
    };
    if (const auto slot = TarSlot(index); TarOn && slot) sound(WaveBank::Tar, *slot, m_tarStarted);
    if (DafOn && WaveIndexSounds(index)) sound(WaveBank::Daf, index, m_dafStarted);
}

// The wave voices come first; MIDI goes out only through the two gates.
void MidiOut::MidiNoteOn(int note, int velocity, int channel) {
    if (!CountInActive) soundWaves(note, channel, true);
    if (MidiOutputOn || CountInActive) send(PackNoteOn(note, velocity, channel));
}

void MidiOut::MidiNoteOff(int note, int channel) {
    if (!CountInActive) soundWaves(note, channel, false);
    if (MidiOutputOn || CountInActive) send(PackNoteOff(note, channel));
}

void MidiOut::toggleTar() {
    TarOn = !TarOn;
    m_tarStarted.reset();
    wave({WaveBank::Tar, WaveAction::StopAll, 0});
}

void MidiOut::MidiControlChange(int controller, int value, int channel) {
    send(PackControlChange(controller, value, channel));
}

void MidiOut::MidiProgramChange(int program, int channel) {
    send(PackProgramChange(program, channel));
}

void MidiOut::MidiPitchBend(int lsb, int msb, int channel) {
    send(PackPitchBend(lsb, msb, channel));
}

void MidiOut::MidiResetProgram(int program, int channel) {
    send(static_cast<std::uint32_t>(176 + channel));
    send(static_cast<std::uint32_t>(8368 + channel));
    send(PackProgramChange(program, channel));
}

void MidiOut::AllNotesOff() {
    for (int note = 0; note <= 127; ++note)
        for (int channel = SpareChannelLow; channel <= SpareChannelHigh; ++channel)
            MidiNoteOff(note, channel);
}

void MidiOut::StartUp() {
    MidiResetProgram(72, 60);
    MidiResetProgram(6, 1);
}

void MidiOut::PrepareChannels(int firstChannel) {
    const int program = core::ProgramByte(m_programIndex);
    for (int channel = firstChannel; channel <= SpareChannelHigh; ++channel) {
        MidiControlChange(33, 0, channel);
        MidiProgramChange(program, channel);
    }
    MidiPitchBend(0, 64, NaturalChannel);
    MidiPitchBend(0, 64 + m_koronBend, KoronChannel);
    MidiPitchBend(0, 64 + m_soriBend, SoriChannel);
}

void MidiOut::PrepareCountIn() {
    MidiControlChange(33, 0, CountInChannel);
    MidiProgramChange(CountInProgram, CountInChannel);
}

void MidiOut::setKoronBend(int value) {
    m_koronBend = std::clamp(value, -32, 0);
    MidiPitchBend(0, 64 + m_koronBend, KoronChannel);
}

void MidiOut::setSoriBend(int value) {
    m_soriBend = std::clamp(value, 0, 32);
    MidiPitchBend(0, 64 + m_soriBend, SoriChannel);
}

void MidiOut::setProgramIndex(int index) {
    if (core::InstrumentAt(index)) m_programIndex = index;
}

} // namespace tahrir::play
