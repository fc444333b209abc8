#pragma once
// Qt key events to the virtual key numbers and shift states of the score view.

#include <Qt>
#include <optional>

namespace tahrir::ui {

struct EditorKey {
    int key = 0;   // virtual key number
    int shift = 0; // 0 plain, 1 Shift, 2 Ctrl, 4 Alt, their sum when combined
};

// The virtual key of a Qt key; nullopt for keys the editor has no number for. `keypad`
// tells the numeric plus and minus from those of the main keyboard.
std::optional<int> VirtualKey(int qtKey, bool keypad);

// The shift state of a set of modifiers: Shift 1, Ctrl 2, Alt 4, added up.
int ShiftState(Qt::KeyboardModifiers modifiers);

// Both at once; nullopt when the key has no number.
std::optional<EditorKey> TranslateKey(int qtKey, Qt::KeyboardModifiers modifiers);

} // namespace tahrir::ui
