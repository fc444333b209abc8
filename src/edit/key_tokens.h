#pragma once
// Key tokens: a key press or a click on the editor, spelled as the command line takes them
// ("Shift+S", "F1", "Enter", "Click:5", "ShiftClick:5", "Band:5-7", "Palette:27").

#include <optional>
#include <string>

namespace tahrir::edit {

class Editor;

struct KeyToken {
    enum Kind { KeyPress, Click, BandDrag, PaletteClick } kind = KeyPress;
    int a = 0;     // key code, line, first line of the band, palette entry
    int b = 0;     // last line of the band
    int shift = 0; // shift state
};

// The token's action, or nothing for a token that names no key or click.
std::optional<KeyToken> ParseKeyToken(const std::string& token);

// Gives the token to the editor as the score view would: a key press, a mouse down on a
// line's label, a band drawn from one line's symbol to another's, a palette click.
void RunKeyToken(Editor& editor, const KeyToken& token);

} // namespace tahrir::edit
