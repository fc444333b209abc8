#include "core/line_payload.h"

namespace tahrir::core {

std::array<char, 8> HeaderKeyLetters(const ScoreLine& header) {
    std::array<char, 8> letters{};
    letters[0] = ' ';
    for (int step = 1; step <= 7; ++step)
        letters[static_cast<std::size_t>(step)] = header.at(step);
    return letters;
}

char HeaderClef(const ScoreLine& header) {
    return header.at(8) == 'F' ? 'F' : 'G';
}

std::optional<AllChange> AllChangeOf(const ScoreLine& line) {
    const char digit = line.at(4);
    if (!line.startsWith("ALL") || digit < '0' || digit > '8') return std::nullopt;
    return AllChange{digit - '0', line.at(5)};
}

std::string DirectivePayload(const ScoreLine& line, int length) {
    return line.field(6, length);
}

char LinePlacement(const ScoreLine& line) {
    return line.at(2);
}

std::string LineText(const ScoreLine& line) {
    const std::string_view text = line.trimmedRight();
    return text.size() > 2 ? std::string(text.substr(2)) : std::string();
}

} // namespace tahrir::core
