#include "midifile/event_log.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "core/text_input.h"

namespace tahrir::midifile {
namespace {

// A field or line without its blanks and the CR of its line end.
std::string_view TrimLine(std::string_view s) {
    while (!s.empty() && s.back() == '\r')
        s.remove_suffix(1);
    return core::Trim(s);
}

// A number as the log writes it: "0", ".5", "-1.5E-07". Nothing else may follow it.
bool ParseNumber(std::string_view field, double& out) {
    field = TrimLine(field);
    if (field.empty() || field.size() > 64) return false;
    const std::string copy(field);
    char* end = nullptr;
    out = std::strtod(copy.c_str(), &end);
    return end == copy.c_str() + copy.size() && std::isfinite(out);
}

bool ParseInt(std::string_view field, int& out) {
    double value = 0;
    if (!ParseNumber(field, value) || value < -1e9 || value > 1e9) return false;
    out = static_cast<int>(std::lround(value));
    return true;
}

bool ParseRecord(std::string_view line, EventRecord& record) {
    std::string_view fields[4];
    for (int i = 0; i < 4; ++i) {
        const auto comma = line.find(',');
        if ((comma == std::string_view::npos) != (i == 3)) return false;
        fields[i] = line.substr(0, comma);
        line = comma == std::string_view::npos ? std::string_view{} : line.substr(comma + 1);
    }
    return ParseNumber(fields[0], record.seconds) && ParseInt(fields[1], record.key) &&
           ParseInt(fields[2], record.channel) && ParseInt(fields[3], record.velocity);
}

} // namespace

EventLog ParseEventLog(std::string_view text) {
    EventLog log;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const std::string_view line = TrimLine(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
        if (line.empty()) continue;
        EventRecord record;
        if (ParseRecord(line, record))
            log.records.push_back(record);
        else
            ++log.skippedLines;
    }
    return log;
}

EventLog ReadEventLog(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return {};
    std::ostringstream text;
    text << in.rdbuf();
    return ParseEventLog(text.str());
}

} // namespace tahrir::midifile
