#pragma once
// The texts of the MIDI dump, one routine for each kind of event.

#include <cstdint>
#include <span>
#include <string>

namespace tahrir::midifile {

// The most characters WriteDumpPrefix or WriteChannelText writes.
inline constexpr std::size_t DumpFieldMax = 48;

// "t  1.500s  Tr2  " : the time, the track (from 1, below 100000) and the two blanks
// before the text, written at `out`; returns the end.
char* WriteDumpPrefix(char* out, double ms, int track);

// The text of a channel message, written at `out`; returns the end. d2 is unused for
// one-byte messages.
char* WriteChannelText(char* out, int status, int d1, int d2);
void AppendMetaText(std::string& line, int type, std::span<const std::uint8_t> data);
void AppendSysExText(std::string& line, int status, std::size_t length);

// Microseconds a quarter from a tempo event's data, big-endian, three bytes at most.
std::uint32_t TempoMicros(std::span<const std::uint8_t> data);
// Beats a minute, rounded, held to 0..32767; 0 for a tempo of 0 microseconds.
int TempoBpm(std::uint32_t micros);

} // namespace tahrir::midifile
