#pragma once
// The MIDI writer: the event log of the last play run as a one-track standard MIDI file,
// byte for byte as the program has always written "TestMid.Mid".

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "midifile/event_log.h"

namespace tahrir::midifile {

inline constexpr const char* TestMidName = "TestMid.Mid";

using Bytes = std::vector<std::uint8_t>;

// The bytes of a file, or why none could be written.
struct WriteResult {
    Bytes bytes;
    std::string error; // empty on success

    bool ok() const { return error.empty(); }
};

// Appends `value` as a variable-length quantity of up to four bytes; false when it is
// negative or beyond 0x0FFFFFFF.
bool AppendVlq(Bytes& out, long long value);
// The same, held to the three bytes "TestMid.Mid" allows: false from 2097152 on.
bool AppendDelta(Bytes& out, long long value);

// Why record `index` (from 0) of the play log cannot be written: "Event 3 of the play log ...".
std::string RecordError(std::size_t index, const std::string& what);

// Ticks of a log record at `tempo` beats a minute with 480 ticks a quarter:
// seconds * 8 * tempo, rounded half to even, so that the file plays at the speed heard.
long long SecondsToTicks(double seconds, double tempo);

// The whole file for a play run at `tempo` beats a minute.
WriteResult WriteMidiFile(const std::vector<EventRecord>& records, double tempo);

// Reads "tmpmid.txt" in `appFolder` and writes "TestMid.Mid" beside it. Returns the error
// text, empty on success.
std::string WriteTestMid(const std::filesystem::path& appFolder, double tempo);

// Writes bytes to a file; false when it cannot be created or written.
bool SaveBytes(const std::filesystem::path& path, const Bytes& bytes);

} // namespace tahrir::midifile
