#include "ui/key_translate.h"

#include <array>
#include <string_view>
#include <utility>

#include "edit/key_codes.h"

namespace tahrir::ui {

namespace {

namespace K = edit::Key;

// Qt keys whose virtual numbers are not simply their own code.
constexpr std::array<std::pair<int, int>, 27> kNamedKeys = {{
    {Qt::Key_Backspace, K::Backspace}, {Qt::Key_Return, K::Enter},   {Qt::Key_Enter, K::Enter},
    {Qt::Key_Escape, K::Esc},          {Qt::Key_Space, K::Space},    {Qt::Key_PageUp, K::PageUp},
    {Qt::Key_PageDown, K::PageDown},   {Qt::Key_End, K::End},        {Qt::Key_Home, K::Home},
    {Qt::Key_Left, K::Left},           {Qt::Key_Up, K::Up},          {Qt::Key_Right, K::Right},
    {Qt::Key_Down, K::Down},           {Qt::Key_Insert, K::Ins},     {Qt::Key_Delete, K::Del},
    {Qt::Key_QuoteLeft, K::Grave},     {Qt::Key_AsciiTilde, K::Grave}, {Qt::Key_Equal, K::Equals},
    {Qt::Key_Plus, K::Equals},         {Qt::Key_Comma, K::Comma},    {Qt::Key_Less, K::Comma},
    {Qt::Key_Period, K::Period},       {Qt::Key_Greater, K::Period}, {Qt::Key_Minus, 189},
    {Qt::Key_Underscore, 189},         {Qt::Key_Tab, 9},             {Qt::Key_Backtab, 9},
}};

// Shifted digits arrive as their symbols on a US keyboard; the key is still the digit.
constexpr std::array<std::pair<int, int>, 10> kShiftedDigits = {{
    {Qt::Key_Exclam, 1}, {Qt::Key_At, 2},        {Qt::Key_NumberSign, 3}, {Qt::Key_Dollar, 4},
    {Qt::Key_Percent, 5}, {Qt::Key_AsciiCircum, 6}, {Qt::Key_Ampersand, 7}, {Qt::Key_Asterisk, 8},
    {Qt::Key_ParenLeft, 9}, {Qt::Key_ParenRight, 0},
}};

// X11 key codes of the main block, row by row, and the virtual keys on them.
struct ScanRow {
    quint32 first;
    std::string_view keys; // one character per key: letters, digits, or a code below
};
constexpr std::array<ScanRow, 5> kScanRows = {{
    {10, "1234567890-="}, {24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {49, "`"}, {52, "ZXCVBNM,."},
}};

int CharKey(char c) {
    switch (c) {
    case '-': return 189;
    case '=': return K::Equals;
    case '`': return K::Grave;
    case ',': return K::Comma;
    case '.': return K::Period;
    default: return c;
    }
}

} // namespace

std::optional<int> VirtualKeyFromScanCode(quint32 scanCode) {
    for (const ScanRow& row : kScanRows)
        if (scanCode >= row.first && scanCode < row.first + row.keys.size())
            return CharKey(row.keys[scanCode - row.first]);
    return std::nullopt;
}

std::optional<EditorKey> TranslateKey(int qtKey, Qt::KeyboardModifiers modifiers, quint32 scanCode) {
    if (const auto key = TranslateKey(qtKey, modifiers)) return key;
    // Only a key that types a character of another script is read by its place.
    if (qtKey < 0x80 || qtKey >= Qt::Key_Escape) return std::nullopt;
    const auto vk = VirtualKeyFromScanCode(scanCode);
    if (!vk) return std::nullopt;
    return EditorKey{*vk, ShiftState(modifiers)};
}

std::optional<int> VirtualKey(int qtKey, bool keypad) {
    if (keypad && (qtKey == Qt::Key_Plus || qtKey == Qt::Key_Minus))
        return qtKey == Qt::Key_Plus ? K::NumPlus : K::NumMinus;
    if (keypad && qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) return 96 + (qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) return K::A + (qtKey - Qt::Key_A);
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) return K::Digit(qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12) return K::F(qtKey - Qt::Key_F1 + 1);
    for (const auto& [qt, vk] : kNamedKeys)
        if (qt == qtKey) return vk;
    for (const auto& [qt, digit] : kShiftedDigits)
        if (qt == qtKey) return K::Digit(digit);
    return std::nullopt;
}

int ShiftState(Qt::KeyboardModifiers modifiers) {
    int state = 0;
    if (modifiers & Qt::ShiftModifier) state |= edit::Shift::Shift;
    if (modifiers & Qt::ControlModifier) state |= edit::Shift::Ctrl;
    if (modifiers & Qt::AltModifier) state |= edit::Shift::Alt;
    return state;
}

std::optional<EditorKey> TranslateKey(int qtKey, Qt::KeyboardModifiers modifiers) {
    const auto vk = VirtualKey(qtKey, modifiers & Qt::KeypadModifier);
    if (!vk) return std::nullopt;
    return EditorKey{*vk, ShiftState(modifiers)};
}

} // namespace tahrir::ui
