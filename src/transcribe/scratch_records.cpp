#include "transcribe/scratch_records.h"

#include <charconv>
#include <cmath>
#include <fstream>

namespace tahrir::transcribe {

void AppendRecord(std::string& out, std::initializer_list<double> numbers) {
    // The record is put together in one buffer and appended once: pass 1 writes one for
    // every sample of the file.
    char buffer[1024];
    char* p = buffer;
    char* const end = buffer + sizeof buffer;
    for (double n : numbers) {
        if (p != buffer) *p++ = ',';
        *p++ = '"';
        // Whole numbers, the most of them, go the short way; a number too long for the
        // buffer is written as 0.
        const bool whole = n == std::floor(n) && std::fabs(n) < 1e15;
        const auto [next, error] =
            whole ? std::to_chars(p, end - 8, static_cast<long long>(n))
                  : std::to_chars(p, end - 8, n, std::chars_format::fixed);
        if (error == std::errc()) p = next;
        else *p++ = '0';
        *p++ = '"';
        if (end - p < 64) break;
    }
    *p++ = '\r';
    *p++ = '\n';
    out.append(buffer, p);
}

bool WriteScratch(const std::filesystem::path& file, const std::string& text) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    return static_cast<bool>(out.flush());
}

} // namespace tahrir::transcribe
