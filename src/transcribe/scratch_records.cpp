#include "transcribe/scratch_records.h"

#include <charconv>
#include <cmath>
#include <fstream>

namespace tahrir::transcribe {

void AppendRecord(std::string& out, std::initializer_list<double> numbers) {
    char buffer[400];
    bool first = true;
    for (double n : numbers) {
        if (!first) out += ',';
        first = false;
        // Whole numbers, the most of them, go the short way.
        const bool whole = n == std::floor(n) && std::fabs(n) < 1e15;
        const auto [end, error] =
            whole ? std::to_chars(buffer, buffer + sizeof buffer, static_cast<long long>(n))
                  : std::to_chars(buffer, buffer + sizeof buffer, n, std::chars_format::fixed);
        out += '"';
        if (error == std::errc()) out.append(buffer, end);
        else out += '0';
        out += '"';
    }
    out += "\r\n";
}

bool WriteScratch(const std::filesystem::path& file, const std::string& text) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    return static_cast<bool>(out.flush());
}

} // namespace tahrir::transcribe
