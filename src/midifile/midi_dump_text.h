#pragma once
// The texts of the MIDI dump, one routine for each kind of event.

#include <cstdint>
#include <span>
#include <string>

namespace tahrir::midifile {

// "t  1.500s  Tr2  " : the time, the track (from 1) and the two blanks before the text.
void AppendDumpPrefix(std::string& line, double ms, int track);

// The text of a channel message; d2 is unused for one-byte messages.
void AppendChannelText(std::string& line, int status, int d1, int d2);
void AppendMetaText(std::string& line, int type, std::span<const std::uint8_t> data);
void AppendSysExText(std::string& line, int status, std::size_t length);

// Microseconds a quarter from a tempo event's data, big-endian, three bytes at most.
std::uint32_t TempoMicros(std::span<const std::uint8_t> data);
// Beats a minute, rounded, held to 0..32767; 0 for a tempo of 0 microseconds.
int TempoBpm(std::uint32_t micros);

} // namespace tahrir::midifile
