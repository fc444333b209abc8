#pragma once
// The glyph text that a line's label shows in the music font.

#include <string>
#include <string_view>

namespace tahrir::edit {

// Caption of a note of this duration word; empty for an unknown word.
std::string NoteCaption(std::string_view duration);
// Caption of a rest of this duration word; empty for " -1" and unknown words.
std::string RestCaption(std::string_view duration);
// Glyph shown in front of a caption for an accidental letter; empty for others.
std::string AccidentalGlyph(char code);

// Width of the frame a text line's caption is padded to.
inline constexpr int TextFrameWidth = 12;

// The caption of any line: notes with their accidental, rests, framed text, or the
// line's own text for the rest.
std::string LineCaption(std::string_view line);

} // namespace tahrir::edit
