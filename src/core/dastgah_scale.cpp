#include "core/dastgah_scale.h"

#include <algorithm>
#include <cstddef>

#include "core/line_view.h"
#include "core/notation_tables.h"

namespace tahrir::core {

namespace {

struct GridPosition {
    double ratio;
    std::string_view name;
};

// The quarter-tone grid from Do koron to the Do sori of the next octave.
constexpr GridPosition kGrid[GridSize] = {
    {0.972, "Ck"}, {1, "C "},     {1.029, "Cs"}, {1.059, "Cd"}, {1.091, "Dk"}, {1.122, "D "},
    {1.155, "Ds"}, {1.189, "Dd"}, {1.224, "Ek"}, {1.26, "E "},  {1.297, "Es"}, {1.335, "F "},
    {1.374, "Fs"}, {1.414, "Fd"}, {1.456, "Gk"}, {1.498, "G "}, {1.542, "Gs"}, {1.587, "Gd"},
    {1.634, "Ak"}, {1.682, "A "}, {1.731, "As"}, {1.782, "Ad"}, {1.834, "Bk"}, {1.888, "B "},
    {1.943, "Bs"}, {2, "C "},     {2.058, "Cs"},
};

// Natural grid positions of Do..Si.
constexpr int kNatural[7] = {1, 5, 9, 11, 15, 19, 23};

// A letter's place among a step's quarter tones: B -2, K -1, S +1, D +2, else 0.
int LetterShift(char letter) {
    const AccidentalRow* row = AccidentalRowOf(letter);
    return row ? row->quarterTones : 0;
}

char LetterAt(std::string_view letters, int step) {
    return step < static_cast<int>(letters.size()) ? letters[static_cast<std::size_t>(step)] : ' ';
}

} // namespace

const std::array<double, GridSize>& QuarterToneRatios() {
    static const std::array<double, GridSize> ratios = [] {
        std::array<double, GridSize> r{};
        for (std::size_t i = 0; i < r.size(); ++i) r[i] = kGrid[i].ratio;
        return r;
    }();
    return ratios;
}

const std::array<std::string_view, GridSize>& QuarterToneNames() {
    static const std::array<std::string_view, GridSize> names = [] {
        std::array<std::string_view, GridSize> n{};
        for (std::size_t i = 0; i < n.size(); ++i) n[i] = kGrid[i].name;
        return n;
    }();
    return names;
}

ScaleMask BuildScaleMask(std::string_view letters) {
    ScaleMask mask{};
    for (int n : kNatural) mask[static_cast<std::size_t>(n)] = -1;
    mask[25] = -1;
    for (int s = 0; s < 7; ++s) {
        const int shift = LetterShift(LetterAt(letters, s));
        if (shift == 0) continue;
        const int n = kNatural[s];
        mask[static_cast<std::size_t>(n)] = 0;
        const int at = n + shift;
        if (at >= 1) mask[static_cast<std::size_t>(at)] = -1;
        if (s == 0) { // Do repeats at the octave: 25 moves with it, and below 1 wraps to 23/24
            mask[25] = 0;
            if (25 + shift < GridSize) mask[static_cast<std::size_t>(25 + shift)] = -1;
            if (at < 1) mask[static_cast<std::size_t>(at + 24)] = -1;
            if (at == 0) mask[0] = -1;
        }
    }
    return mask;
}

std::string SignatureAt(const ScoreSheet& sheet, int line) {
    const auto key = HeaderKeyLetters(sheet[1]);
    std::string letters(key.begin() + 1, key.end());
    const int last = std::min(line, MaxLines);
    for (int i = 4; i <= last; ++i) {
        const auto change = AllChangeOf(sheet[i]);
        if (change && change->digit >= 1 && change->digit <= 7)
            letters[static_cast<std::size_t>(change->digit - 1)] = change->letter;
    }
    return letters;
}

DastgahBoxes BoxesOf(std::string_view letters) {
    DastgahBoxes boxes{};
    for (int s = 0; s < 7; ++s) {
        // Flat, koron, natural, sori, sharp: the shift of the letter, counted from flat.
        const int k = LetterShift(LetterAt(letters, s)) + 2;
        boxes[static_cast<std::size_t>(5 * s + k)] = true;
    }
    return boxes;
}

} // namespace tahrir::core
