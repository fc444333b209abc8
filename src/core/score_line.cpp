#include "core/score_line.h"

#include <algorithm>

namespace tahrir::core {

std::string Scratch(std::string_view text) {
    std::string out(text.substr(0, RecordLength));
    out.resize(RecordLength, ' ');
    return out;
}

namespace {
constexpr FieldSpec kNoteFields[8] = {
    {NoteField::PitchStep, 1, 1, "PitchStep"},
    {NoteField::PitchOctave, 2, 1, "PitchOctave"},
    {NoteField::DurationField, 3, 3, "DurationField"},
    {NoteField::AccidentalCode, 6, 1, "AccidentalCode"},
    {NoteField::BeamCode, 7, 1, "BeamCode"},
    {NoteField::MarkCode, 8, 2, "MarkCode"},
    {NoteField::ChordRootCode, 10, 1, "ChordRootCode"},
    {NoteField::ChordKindCode, 11, 1, "ChordKindCode"},
};
} // namespace

const FieldSpec (&NoteFields())[8] { return kNoteFields; }

const FieldSpec& SpecOf(NoteField field) { return kNoteFields[static_cast<int>(field)]; }

char ScoreLine::at(int column) const {
    if (column < 1 || static_cast<std::size_t>(column) > m_text.size()) return ' ';
    return m_text[static_cast<std::size_t>(column - 1)];
}

std::string ScoreLine::field(int column, int length) const {
    std::string out(static_cast<std::size_t>(std::max(length, 0)), ' ');
    for (int i = 0; i < length; ++i) out[static_cast<std::size_t>(i)] = at(column + i);
    return out;
}

void ScoreLine::setField(int column, std::string_view value) {
    if (column < 1) return;
    const std::size_t start = static_cast<std::size_t>(column - 1);
    if (m_text.size() < start + value.size()) m_text.resize(start + value.size(), ' ');
    std::copy(value.begin(), value.end(), m_text.begin() + static_cast<std::ptrdiff_t>(start));
}

bool ScoreLine::startsWith(std::string_view prefix) const {
    return std::string_view(m_text).substr(0, prefix.size()) == prefix;
}

std::string ScoreLine::get(NoteField f) const {
    const FieldSpec& s = SpecOf(f);
    return field(s.column, s.length);
}

void ScoreLine::set(NoteField f, std::string_view value) {
    const FieldSpec& s = SpecOf(f);
    std::string v(value.substr(0, static_cast<std::size_t>(s.length)));
    v.resize(static_cast<std::size_t>(s.length), ' ');
    setField(s.column, v);
}

std::string_view ScoreLine::trimmedRight() const {
    std::string_view v(m_text);
    const auto end = v.find_last_not_of(' ');
    return end == std::string_view::npos ? std::string_view() : v.substr(0, end + 1);
}

void ScoreLine::padTo(std::size_t length) {
    if (m_text.size() < length) m_text.resize(length, ' ');
}

} // namespace tahrir::core
