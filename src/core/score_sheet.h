#pragma once
// The score as one flat list of lines, indices 0..2048; element 0 is the pen.

#include <array>
#include <stdexcept>
#include <string>

#include "core/score_line.h"

namespace tahrir::core {

inline constexpr int MaxLines = 2048;
inline constexpr int SheetSize = MaxLines + 1;

// An index outside 0..2048: a score can never grow past line 2048.
class SheetIndexError : public std::out_of_range {
public:
    explicit SheetIndexError(int index);
    int index() const { return m_index; }

private:
    int m_index;
};

class ScoreSheet {
public:
    ScoreSheet();

    // Checked access: an index outside 0..2048 throws SheetIndexError.
    ScoreLine& operator[](int index);
    const ScoreLine& operator[](int index) const;

    ScoreLine& PenLine() { return m_lines[0]; }
    const ScoreLine& PenLine() const { return m_lines[0]; }

    // Stores text as it is (no cut); line commands pass it through Scratch first.
    void setLine(int index, std::string text);

    // Inserts before `at` (1..LastLine+1), shifting the following lines down by one.
    // Returns false, changing nothing, when the sheet is full.
    bool insertLine(int at, std::string text);
    // Removes `count` lines from `at`, shifting the following lines up.
    void removeLines(int at, int count = 1);
    // Sets every element 0..2048 to `text` and LastLine to 0.
    void fill(const std::string& text);

    int LastLine = 0;    // index of the last used line
    int CurrentLine = 0; // the line under the cursor

private:
    std::array<ScoreLine, SheetSize> m_lines;
};

} // namespace tahrir::core
