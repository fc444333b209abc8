#pragma once
// The event log of a play run ("tmpmid.txt"): one record per note on and note off, the
// seconds since the previous record first, so that a MIDI file made from it keeps time.

#include <filesystem>
#include <string>
#include <vector>

#include "core/event_record.h"

namespace tahrir::play {

class EventLog {
public:
    void reset();
    // Silence waiting to be put in front of the next record (`EventLogRest`).
    void addRest(double seconds) { m_rest += seconds; }
    double pendingRest() const { return m_rest; }
    // A note on after the waiting rest, and its note off `seconds` later.
    void addNote(double seconds, int note, int channel, int velocity);
    // A tied note: its seconds lengthen the last logged note.
    void extendLast(double seconds);
    // A note that starts with the last logged note and ends with it.
    void addConcurrent(int note, int channel, int velocity);

    const std::vector<core::EventRecord>& records() const { return m_records; }
    // The records in the quoting write form, comma separated, one a line (CR LF).
    std::string text() const;
    bool write(const std::filesystem::path& file) const;

private:
    std::vector<core::EventRecord> m_records;
    double m_rest = 0;
};

// A number as the log writes it: no leading blank, "0.5", "1E-07".
std::string FormatLogNumber(double value);

} // namespace tahrir::play
