#include "core/text_input.h"

#include <cmath>

namespace tahrir::core {

namespace {
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
} // namespace

void TextInput::skipLineEnd() {
    if (eof()) return;
    if (m_bytes[m_pos] == '\r') {
        ++m_pos;
        if (!eof() && m_bytes[m_pos] == '\n') ++m_pos;
    } else if (m_bytes[m_pos] == '\n') {
        ++m_pos;
    }
}

// After a field: anything up to a comma or a line end is skipped, then the delimiter.
void TextInput::skipToDelimiter() {
    while (!eof() && m_bytes[m_pos] != ',' && !IsLineEnd(m_bytes[m_pos])) ++m_pos;
    if (eof()) return;
    if (m_bytes[m_pos] == ',') {
        ++m_pos;
        return;
    }
    skipLineEnd();
}

std::string TextInput::readField() {
    while (!eof() && IsBlank(m_bytes[m_pos])) ++m_pos;
    std::string field;
    if (!eof() && m_bytes[m_pos] == '"') {
        const std::size_t start = ++m_pos;
        const std::size_t close = m_bytes.find('"', start);
        const std::size_t end = close == std::string_view::npos ? m_bytes.size() : close;
        field.assign(m_bytes.substr(start, end - start));
        m_pos = close == std::string_view::npos ? m_bytes.size() : close + 1;
    } else {
        const std::size_t start = m_pos;
        while (!eof() && m_bytes[m_pos] != ',' && !IsLineEnd(m_bytes[m_pos])) ++m_pos;
        field.assign(m_bytes.substr(start, m_pos - start));
        while (!field.empty() && IsBlank(field.back())) field.pop_back();
    }
    skipToDelimiter();
    return field;
}

std::string TextInput::readLine() {
    const std::size_t start = m_pos;
    while (!eof() && !IsLineEnd(m_bytes[m_pos])) ++m_pos;
    std::string line(m_bytes.substr(start, m_pos - start));
    skipLineEnd();
    return line;
}

std::optional<double> LeadingNumber(std::string_view text) {
    std::size_t i = 0;
    auto skipBlanks = [&] {
        while (i < text.size() && IsBlank(text[i])) ++i;
    };
    skipBlanks();
    double sign = 1;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        if (text[i] == '-') sign = -1;
        ++i;
    }
    double value = 0;
    double scale = 0; // 0 before the decimal point, then the weight of the next digit
    bool digits = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (IsBlank(c)) continue; // blanks inside a number are skipped
        if (c == '.' && scale == 0) {
            scale = 0.1;
        } else if (c >= '0' && c <= '9') {
            digits = true;
            if (scale == 0) {
                value = value * 10 + (c - '0');
            } else {
                value += (c - '0') * scale;
                scale /= 10;
            }
        } else {
            break;
        }
    }
    if (!digits || !std::isfinite(value)) return std::nullopt;
    return sign * value;
}

double Val(std::string_view text) { return LeadingNumber(text).value_or(0); }

std::string_view TrimRight(std::string_view text) {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view Trim(std::string_view text) {
    text = TrimRight(text);
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    return text;
}

std::string UpperAscii(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return out;
}

} // namespace tahrir::core
