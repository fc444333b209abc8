#pragma once
// One record of the score: at most 32 code page 1256 bytes, addressed by 1-based column.

#include <cstddef>
#include <string>
#include <string_view>

namespace tahrir::core {

inline constexpr int RecordLength = 32; // bytes of a stored line and of a PageStore record
inline constexpr int MinLoadedLength = 22;

// Every store into a line passes through here: cut to 32 bytes, pad with blanks to 32.
std::string Scratch(std::string_view text);

// The named fields of a note line, with their columns.
enum class NoteField {
    PitchStep,      // column 1
    PitchOctave,    // column 2
    DurationField,  // columns 3..5
    AccidentalCode, // column 6
    BeamCode,       // column 7
    MarkCode,       // columns 8..9
    ChordRootCode,  // column 10
    ChordKindCode,  // column 11
};

struct FieldSpec {
    NoteField field;
    int column;
    int length;
    const char* name;
};

// The table of note fields in column order.
const FieldSpec (&NoteFields())[8];
const FieldSpec& SpecOf(NoteField field);

class ScoreLine {
public:
    ScoreLine() = default;
    ScoreLine(std::string text) : m_text(std::move(text)) {} // NOLINT: lines convert from text
    ScoreLine(const char* text) : m_text(text) {}            // NOLINT

    const std::string& text() const { return m_text; }
    std::string& text() { return m_text; }
    std::size_t size() const { return m_text.size(); }
    bool empty() const { return m_text.empty(); }

    // The character at a 1-based column; a blank beyond the end of the line.
    char at(int column) const;
    // Columns [column, column + length), blank-padded where the line is shorter.
    std::string field(int column, int length) const;
    // Overwrites columns in place, widening the line with blanks when needed.
    void setField(int column, std::string_view value);
    bool startsWith(std::string_view prefix) const;

    std::string get(NoteField f) const;
    void set(NoteField f, std::string_view value);

    // The line with trailing blanks removed.
    std::string_view trimmedRight() const;
    // Pads with blanks to at least `length` bytes.
    void padTo(std::size_t length);

    friend bool operator==(const ScoreLine& a, const ScoreLine& b) = default;

private:
    std::string m_text;
};

} // namespace tahrir::core
