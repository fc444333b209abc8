#include "play/event_log.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace tahrir::play {

void EventLog::reset() {
    m_records.clear();
    m_rest = 0;
}

void EventLog::addNote(double seconds, int note, int channel, int velocity) {
    m_records.push_back({m_rest, note, channel, velocity});
    m_records.push_back({seconds, note, channel, 0});
    m_rest = 0;
}

void EventLog::extendLast(double seconds) {
    if (m_records.empty()) return addNote(seconds, 0, 3, 0);
    m_records.back().seconds += seconds;
}

void EventLog::addConcurrent(int note, int channel, int velocity) {
    if (m_records.empty() || m_records.back().velocity != 0) return;
    const LogRecord off = m_records.back();
    m_records.back() = {0, note, channel, velocity};
    m_records.push_back(off);
    m_records.push_back({0, note, channel, 0});
}

std::string FormatLogNumber(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.7G", value);
    std::string text = buffer;
    // Single precision shows seven digits; an exponent keeps two digits, as "1E-07".
    const auto e = text.find('E');
    if (e != std::string::npos && text.size() - e == 3) text.insert(e + 2, "0");
    return text;
}

std::string EventLog::text() const {
    std::string out;
    for (const LogRecord& r : m_records) {
        out += FormatLogNumber(r.seconds) + ',' + std::to_string(r.note) + ',' +
               std::to_string(r.channel) + ',' + std::to_string(r.velocity) + "\r\n";
    }
    return out;
}

bool EventLog::write(const std::filesystem::path& file) const {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out << text();
    return static_cast<bool>(out.flush());
}

} // namespace tahrir::play
