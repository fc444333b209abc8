#pragma once
// The event log of a play run ("tmpmid.txt"): one record per note on and note off, the
// seconds since the previous record first, so that a MIDI file made from it keeps time.

#include <filesystem>
#include <string>
#include <vector>

namespace tahrir::play {

struct LogRecord {
    double seconds; // since the previous record
    int note;
    int channel;  // the pitch-bend step of the note: 3 plain, 2 koron, 4 sori
    int velocity; // 0 for the note off
};

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

    const std::vector<LogRecord>& records() const { return m_records; }
    // The records in the quoting write form, comma separated, one a line (CR LF).
    std::string text() const;
    bool write(const std::filesystem::path& file) const;

private:
    std::vector<LogRecord> m_records;
    double m_rest = 0;
};

// A number as the log writes it: no leading blank, "0.5", "1E-07".
std::string FormatLogNumber(double value);

} // namespace tahrir::play
