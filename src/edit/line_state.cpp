#include "edit/line_state.h"

#include <string>

namespace tahrir::edit {

namespace {

// A column test: the text at [column, column + value length) equals value.
struct LitRow {
    int column;
    std::string_view value;
    int key;
};

// Each row is tested on its own; the order follows the palette.
constexpr LitRow kLitRows[] = {
    {1, "0", 0},       {3, " -1", 1},     {3, "  1", 2},    {3, "  2", 3},    {3, "  3", 4},
    {3, "  4", 5},     {3, "  6", 6},     {3, "  8", 7},    {3, " 12", 8},    {3, " 16", 9},
    {3, " 24", 10},    {3, " 32", 11},    {6, "D", 12},     {6, "B", 13},     {6, "S", 14},
    {6, "K", 15},      {6, "N", 16},      {1, "L ", 18},    {1, "REP{", 19},  {1, "REP}", 20},
    {1, "VOL{1", 21},  {1, "VOL{2", 22},  {1, "REPB1", 23}, {1, "REPB2", 24}, {1, "REPS{", 25},
    {1, "REPS}", 26},  {1, "ALL8U", 27},  {1, "ALL8D", 28}, {1, "ALL8N", 29}, {8, "M ", 32},
    {8, "8U", 33},     {8, "8D", 34},     {8, "TR", 35},    {8, "TB", 36},    {8, "T ", 37},
    {8, "D ", 38},     {8, "O ", 39},     {8, ". ", 40},    {8, "ST", 40},    {8, "AC", 41},
    {8, "L3", 42},     {8, "L5", 43},     {8, "L7", 44},    {8, "L9", 45},    {8, "TI", 46},
    {8, "+ ", 47},     {8, "0 ", 48},     {8, "5 ", 53},    {1, "RHYTM", 54}, {1, "RHITM", 54},
    {1, "RHYTHM", 54}, {1, "RHITHM", 54}, {1, "TEMPO", 55}, {8, "7 ", 56},    {8, "8 ", 57},
};

constexpr std::string_view kAccidentalLetters = "DBSKN";

char At(std::string_view line, int column) {
    const auto i = static_cast<std::size_t>(column - 1);
    return i < line.size() ? line[i] : ' ';
}

bool FieldIs(std::string_view line, int column, std::string_view value) {
    for (std::size_t i = 0; i < value.size(); ++i)
        if (At(line, column + static_cast<int>(i)) != value[i]) return false;
    return true;
}

bool IsIntervalDigit(char c) {
    return (c >= '1' && c <= '9') || (c >= 'A' && c <= 'K');
}

} // namespace

LitSet ShowLineState(std::string_view line, const LitSet& before) {
    LitSet lit = before;
    for (int key = 0; key <= 67; ++key)
        lit.reset(static_cast<std::size_t>(key));
    for (int key : {58, 59, 60, 71, 72})
        lit.set(static_cast<std::size_t>(key));

    for (const LitRow& row : kLitRows)
        if (FieldIs(line, row.column, row.value)) lit.set(static_cast<std::size_t>(row.key));

    // A key change in mid-score: "ALL", the step digit 0..7, the accidental letter.
    if (FieldIs(line, 1, "ALL") && At(line, 4) >= '0' && At(line, 4) <= '7') {
        lit.set(17);
        const auto letter = kAccidentalLetters.find(At(line, 5));
        if (letter != std::string_view::npos) lit.set(12 + letter);
    }

    const char mark = At(line, 8);
    const char family = At(line, 9);
    if (IsIntervalDigit(mark) && family == 'T') lit.set(30);
    if (IsIntervalDigit(mark) && family == 'M') lit.set(31);
    if (mark >= '1' && mark <= '4' && family != 'T' && family != 'M')
        lit.set(static_cast<std::size_t>(49 + (mark - '1')));

    if (const int step = SyllableStep(line)) lit.set(static_cast<std::size_t>(60 + step));
    return lit;
}

int SyllableStep(std::string_view line) {
    const char c = At(line, 1);
    return c >= '1' && c <= '7' ? c - '0' : 0;
}

} // namespace tahrir::edit
