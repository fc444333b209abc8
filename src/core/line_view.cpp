#include "core/line_view.h"

#include <cmath>

#include "core/text_input.h"

namespace tahrir::core {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

NoteView ReadNote(const ScoreLine& line) {
    NoteView v;
    const char first = line.at(1);
    v.pitched = IsDigit(first);
    v.step = v.pitched ? first - '0' : 0;
    v.octave = IsDigit(line.at(2)) ? line.at(2) - '0' : 0;
    if (v.pitched) {
        const int word = static_cast<int>(Val(line.field(3, 3)));
        if (word >= 0) v.ticks = word;
    }
    v.accidentalLetter = line.at(6);
    v.accidental = AccidentalOf(v.accidentalLetter);
    v.beam = line.at(7);
    v.mark = ReadMark(line.at(8), line.at(9));
    v.chordRoot = line.at(10);
    v.chordKind = line.at(11);
    return v;
}

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

std::optional<double> TempoOf(const ScoreLine& line) {
    if (!line.startsWith("TEMPO")) return std::nullopt;
    return Val(line.field(6, 4));
}

int MeasureTicksOf(std::string_view payload) {
    const auto slash = payload.find('/');
    if (slash == std::string_view::npos) return 0;
    const double numerator = Val(payload.substr(0, slash));
    const double denominator = Val(payload.substr(slash + 1));
    if (numerator <= 0 || denominator <= 0) return 0;
    return static_cast<int>(std::floor(numerator / denominator * 32));
}

int MeasureTicksOfLine(const ScoreLine& line) {
    return MeasureTicksOf(line.field(6, RecordLength - 5));
}

char LinePlacement(const ScoreLine& line) {
    return line.at(2);
}

std::string LineText(const ScoreLine& line) {
    const std::string_view text = line.trimmedRight();
    return text.size() > 2 ? std::string(text.substr(2)) : std::string();
}

double ControlView::number(int width) const {
    return Val(std::string_view(text).substr(0, static_cast<std::size_t>(width)));
}

std::optional<ControlView> ControlOf(const ScoreLine& line) {
    if (UpperAscii(line.field(1, 2)) != "LC") return std::nullopt;
    ControlView v;
    v.keyword = UpperAscii(TrimRight(line.field(3, 3)));
    v.text = std::string(TrimRight(line.field(7, RecordLength - 6)));
    v.assigns = line.at(6) == '=';
    return v;
}

MeasureFraction MeasureFractionOfLine(const ScoreLine& line) {
    const std::string payload = line.field(6, RecordLength - 5);
    const auto slash = payload.find('/');
    const std::string_view text(payload);
    if (slash == std::string_view::npos) return {Val(text), 0};
    return {Val(text.substr(0, slash)), Val(text.substr(slash + 1))};
}

std::optional<double> SpeedMarkOf(const ScoreLine& line) {
    if (!line.startsWith("LvT=")) return std::nullopt;
    return Val(line.field(5, RecordLength - 4));
}

bool IsEndMark(const ScoreLine& line) {
    const std::string text = UpperAscii(line.trimmedRight());
    if (text == "FIN" || text == "LCFIN") return true;
    return text.size() == 5 && text[0] == 'L' && text.compare(2, 3, "FIN") == 0;
}

} // namespace tahrir::core
