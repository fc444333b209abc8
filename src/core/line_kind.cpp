#include "core/line_kind.h"

#include <algorithm>
#include <charconv>

namespace tahrir::core {

namespace {
std::string_view Columns(std::string_view text, std::size_t column, std::size_t length) {
    if (text.size() < column) return {};
    return text.substr(column - 1, length);
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// Columns 3..5 padded with blanks, as a field read of a short line gives them.
std::string_view DurationColumns(std::string_view text, char (&buffer)[3]) {
    for (std::size_t i = 0; i < 3; ++i) buffer[i] = i + 2 < text.size() ? text[i + 2] : ' ';
    return {buffer, 3};
}
} // namespace

const char* LineKindName(LineKind kind) {
    switch (kind) {
    case LineKind::HeaderLine: return "HeaderLine";
    case LineKind::NoteLine: return "NoteLine";
    case LineKind::BarLine: return "BarLine";
    case LineKind::DirectiveLine: return "DirectiveLine";
    case LineKind::SpacerLine: return "SpacerLine";
    case LineKind::TextLine: return "TextLine";
    case LineKind::ControlLine: return "ControlLine";
    case LineKind::Unknown: return "Unknown";
    }
    return "Unknown";
}

bool IsDurationWord(std::string_view word) {
    return std::find(std::begin(kDurationWords), std::end(kDurationWords), word) !=
           std::end(kDurationWords);
}

std::optional<int> DurationTicks(std::string_view word) {
    const auto first = word.find_first_not_of(' ');
    if (first == std::string_view::npos) return std::nullopt;
    word.remove_prefix(first);
    int value = 0;
    const auto [ptr, ec] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (ec != std::errc() || ptr != word.data() + word.size() || value < 0) return std::nullopt;
    return value;
}

std::string_view DirectiveTokenOf(std::string_view text) {
    // Longest match first so that "RHYTHM" is not read as a shorter token.
    std::string_view best;
    auto consider = [&](std::string_view token) {
        if (StartsWith(text, token) && token.size() > best.size()) best = token;
    };
    for (auto t : kReaderTokens) consider(t);
    for (auto t : kClefTokens) consider(t);
    return best;
}

LineKind ClassifyLine(std::string_view text, int index) {
    if (index == 1) return LineKind::HeaderLine;
    char buffer[3];
    const std::string_view duration = DurationColumns(text, buffer);
    const char first = text.empty() ? ' ' : text[0];
    if (first == '0' && duration != " -1") return LineKind::NoteLine;
    if (IsDurationWord(duration))
        return first == '0' ? LineKind::BarLine : LineKind::NoteLine;
    if (StartsWith(text, "ALL")) return LineKind::DirectiveLine;
    if (first == 'L') {
        const std::string_view head = Columns(text, 2, 1);
        if (head.empty() || head == " ") return LineKind::SpacerLine;
        // Control keywords are read folded to upper case, "Lc" as well as "LC".
        if (head == "C" || head == "c") return LineKind::ControlLine;
        return LineKind::TextLine;
    }
    if (!DirectiveTokenOf(text).empty()) return LineKind::DirectiveLine;
    return LineKind::Unknown;
}

bool IsRhythmLine(std::string_view text) {
    return StartsWith(text, "RHYTM") || StartsWith(text, "RHITM") || StartsWith(text, "RHYTHM") ||
           StartsWith(text, "RHITHM");
}

bool IsTempoLine(std::string_view text) { return StartsWith(text, "TEMPO"); }

} // namespace tahrir::core
