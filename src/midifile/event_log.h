#pragma once
// The event log of a play run ("tmpmid.txt"): one record for each note on or note off.

#include <filesystem>
#include <string_view>
#include <vector>

namespace tahrir::midifile {

inline constexpr const char* EventLogName = "tmpmid.txt";

// One record as the play run writes it: seconds since the previous record, the MIDI key,
// the voice channel (3 natural, 2 koron, 4 sori, 6 count-in) and the velocity (0 = note off).
struct EventRecord {
    double seconds = 0;
    int key = 0;
    int channel = 3;
    int velocity = 0;
};

struct EventLog {
    std::vector<EventRecord> records;
    int skippedLines = 0; // lines that were not four numbers, passed over silently
};

// Reads the comma-separated records; a missing file gives an empty log, as for a session
// that never played.
EventLog ReadEventLog(const std::filesystem::path& path);
EventLog ParseEventLog(std::string_view text);

} // namespace tahrir::midifile
