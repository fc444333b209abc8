#pragma once
// Reading the score file's text: quoted fields, whole lines and the number at the start
// of a text, each tolerant of any bytes.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tahrir::core {

// A cursor over the bytes of a text file. A line ends at CR LF, CR or LF.
class TextInput {
public:
    explicit TextInput(std::string_view bytes) : m_bytes(bytes) {}

    bool eof() const { return m_pos >= m_bytes.size(); }
    std::size_t position() const { return m_pos; }

    // One field as a quoting write stored it: a quoted field runs to the next double
    // quote, line breaks included; an unquoted one to the next comma or line end.
    // The delimiter after the field is consumed.
    std::string readField();
    // The rest of the current line, without its line end.
    std::string readLine();

private:
    void skipLineEnd();
    void skipToDelimiter();

    std::string_view m_bytes;
    std::size_t m_pos = 0;
};

// The number a text begins with, blanks skipped, as the old numeric reading did:
// "  72" is 72, "-2x" is -2; nullopt when no digit comes first.
std::optional<double> LeadingNumber(std::string_view text);
// LeadingNumber, 0 when the text holds no number.
double Val(std::string_view text);

// Upper-case folding of the ASCII letters; other bytes stay.
std::string UpperAscii(std::string_view text);
// The text without leading and trailing blanks (spaces and tabs), or without trailing ones.
std::string_view Trim(std::string_view text);
std::string_view TrimRight(std::string_view text);

} // namespace tahrir::core
