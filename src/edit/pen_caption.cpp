#include "edit/pen_caption.h"

#include "core/line_kind.h"
#include "core/score_line.h"

namespace tahrir::edit {

namespace {

struct GlyphRow {
    std::string_view duration;
    std::string_view note;
    std::string_view rest;
};

// Rests of "  2"/"  3" and "  4"/"  6" share a glyph: the pen shows no dot for them.
constexpr GlyphRow kGlyphs[] = {
    {"  1", "r", "\xAE"},  {"  2", "x", "d"},  {"  3", "x.", "d"},    {"  4", "e", "a"},
    {"  6", "e.", "a"},    {"  8", "q", "D"},  {" 12", "q .", "D ."}, {" 16", "h", "-"},
    {" 24", "h .", "- ."}, {" 32", "w", "--"}, {" -1", ";", ""},
};

constexpr std::string_view kAccidentalLetters = "DBSKN";
constexpr std::string_view kAccidentalGlyphs = "#b<!n";

const GlyphRow* FindRow(std::string_view duration) {
    for (const GlyphRow& row : kGlyphs)
        if (row.duration == duration) return &row;
    return nullptr;
}

} // namespace

std::string NoteCaption(std::string_view duration) {
    const GlyphRow* row = FindRow(duration);
    return row ? std::string(row->note) : std::string();
}

std::string RestCaption(std::string_view duration) {
    const GlyphRow* row = FindRow(duration);
    return row ? std::string(row->rest) : std::string();
}

std::string AccidentalGlyph(char code) {
    const auto at = kAccidentalLetters.find(code);
    if (code == ' ' || at == std::string_view::npos) return {};
    return std::string(1, kAccidentalGlyphs[at]);
}

std::string LineCaption(std::string_view text) {
    const core::ScoreLine line{std::string(text)};
    const core::LineKind kind = core::ClassifyLine(text);
    if (kind == core::LineKind::NoteLine || kind == core::LineKind::BarLine) {
        const std::string duration = line.get(core::NoteField::DurationField);
        if (line.at(1) == '0') return RestCaption(duration);
        return AccidentalGlyph(line.at(6)) + NoteCaption(duration);
    }
    if (kind == core::LineKind::TextLine) {
        std::string words(line.field(3, 30));
        const auto end = words.find_last_not_of(' ');
        const auto begin = words.find_first_not_of(' ');
        words = begin == std::string::npos ? std::string() : words.substr(begin, end - begin + 1);
        std::string framed = "(" + words;
        const std::size_t inner = static_cast<std::size_t>(TextFrameWidth - 1);
        if (framed.size() < inner) framed.resize(inner, ' ');
        return framed + ")";
    }
    return std::string(line.trimmedRight());
}

} // namespace tahrir::edit
