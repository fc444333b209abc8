#pragma once
// The event log of a play run ("tmpmid.txt"): one record for each note on or note off.

#include <filesystem>
#include <string_view>
#include <vector>

#include "core/event_record.h"

namespace tahrir::midifile {

using core::EventLogName;
using core::EventRecord;

struct EventLog {
    std::vector<EventRecord> records;
    int skippedLines = 0; // lines that were not four numbers, passed over silently
};

// Reads the comma-separated records; a missing file gives an empty log, as for a session
// that never played.
EventLog ReadEventLog(const std::filesystem::path& path);
EventLog ParseEventLog(std::string_view text);

} // namespace tahrir::midifile
