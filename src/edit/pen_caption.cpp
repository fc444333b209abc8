#include "edit/pen_caption.h"

#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/text_input.h"

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
    const core::AccidentalRow* row = core::AccidentalRowOf(code);
    return row ? std::string(row->glyph) : std::string();
}

std::string LineCaption(std::string_view text) {
    const core::ScoreLine line{std::string(text)};
    const core::LineKind kind = core::ClassifyLine(text);
    if (kind == core::LineKind::NoteLine || kind == core::LineKind::BarLine) {
        const std::string duration = line.get(core::NoteField::DurationField);
        const core::NoteView note = core::ReadNote(line);
        if (note.pitched && note.step == 0) return RestCaption(duration);
        return AccidentalGlyph(note.accidentalLetter) + NoteCaption(duration);
    }
    if (kind == core::LineKind::TextLine) {
        std::string framed = "(" + std::string(core::Trim(core::LineText(line)));
        const std::size_t inner = static_cast<std::size_t>(TextFrameWidth - 1);
        if (framed.size() < inner) framed.resize(inner, ' ');
        return framed + ")";
    }
    return std::string(line.trimmedRight());
}

} // namespace tahrir::edit
