#pragma once
// Qt key events to the virtual key numbers and shift states of the score view.

#include <QtGlobal>
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

// The virtual key of a physical key by its X11 key code (evdev code plus 8), for keys that
// a Persian or other non-Latin layout reports as letters of its own script: the editor's
// keys stay where they are on the keyboard whatever layout is active.
std::optional<int> VirtualKeyFromScanCode(quint32 scanCode);

// TranslateKey, falling back to the physical key when the layout's key has no number.
std::optional<EditorKey> TranslateKey(int qtKey, Qt::KeyboardModifiers modifiers, quint32 scanCode);

} // namespace tahrir::ui
