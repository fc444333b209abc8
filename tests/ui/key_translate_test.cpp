#include "ui/key_translate.h"

#include <gtest/gtest.h>

namespace tahrir::ui {
namespace {

// The codes the editor's key map is written in.
TEST(KeyTranslation, QtKeysBecomeTheEditorsNumbers) {
    constexpr auto None = Qt::NoModifier, Shift = Qt::ShiftModifier, Ctrl = Qt::ControlModifier,
                   Pad = Qt::KeypadModifier;
    // Keys whose number is not their own code; the named keys are one table in the code.
    const struct { int qtKey; Qt::KeyboardModifiers modifiers; int key, shift; } rows[] = {
        {Qt::Key_QuoteLeft, None, 192, 0},       // the grave key: a rest
        {Qt::Key_AsciiTilde, Shift, 192, 1},     // Shift+grave: a grace note
        {Qt::Key_Plus, Pad, 107, 0},             // numeric plus: next measure, not equals
        {Qt::Key_Minus, Pad, 109, 0},            {Qt::Key_Plus, Pad | Shift, 107, 1},
        {Qt::Key_Equal, Ctrl, 187, 2},           // Ctrl+equals: the thumb mark
        {Qt::Key_Z, Ctrl, 90, 2},                {Qt::Key_7, None, 55, 0},
        {Qt::Key_Exclam, Shift, 49, 1},          // Shift+1 arrives as "!"
        {Qt::Key_ParenRight, Shift, 48, 1},      // Shift+0
        {Qt::Key_F12, Ctrl, 123, 2},             {Qt::Key_Enter, Pad, 13, 0},
        {Qt::Key_Home, Shift, 36, 1},            {Qt::Key_F4, Qt::AltModifier, 115, 4},
        {Qt::Key_T, Ctrl | Shift, 84, 3},        // acts as plain T
        {Qt::Key_5, Pad, 101, 0},                // keypad digits are not the digit row
    };
    for (const auto& r : rows) {
        const auto k = TranslateKey(r.qtKey, r.modifiers);
        ASSERT_TRUE(k.has_value()) << "Qt key " << std::hex << r.qtKey;
        EXPECT_EQ(std::pair(k->key, k->shift), std::pair(r.key, r.shift)) << "Qt key " << std::hex << r.qtKey;
    }
    for (const int qtKey : {int(Qt::Key_Shift), int(Qt::Key_Control), int(Qt::Key_Meta),
                            int(Qt::Key_VolumeUp), int(Qt::Key_unknown), 0x06C7 /* Arabic letter */})
        EXPECT_FALSE(TranslateKey(qtKey, None).has_value()) << "no number for " << std::hex << qtKey;
}

// With a Persian layout the letters arrive as Arabic script; their places still count.
TEST(KeyTranslation, PersianLayoutKeysAreReadByTheirPlace) {
    // What the Persian layout types, the X11 key code of the physical key, and its number.
    const struct { int qtKey; quint32 scan; int key; } places[] = {
        {0x0646, 45, 'K'}, // noon on the K key: koron
        {0x0633, 39, 'S'}, // seen on the S key: sori
        {0x0628, 56, 'B'}, {0x06A9, 26, 'E'},
        {0x067E, 49, 192}, // the key left of 1
        {0x0648, 60, 190},
        {0x06F5, 14, '5'}, // Persian digit five on the 5 key
    };
    for (const auto& p : places) {
        const auto k = TranslateKey(p.qtKey, Qt::ControlModifier, p.scan);
        ASSERT_TRUE(k.has_value()) << std::hex << p.qtKey;
        EXPECT_EQ(std::pair(k->key, k->shift), std::pair(p.key, 2)) << std::hex << p.qtKey;
    }
    // A Latin key keeps its own number whatever its place, and keys outside the main
    // block or without a character are not guessed.
    EXPECT_EQ(TranslateKey(Qt::Key_A, Qt::NoModifier, 45)->key, 'A');
    EXPECT_FALSE(TranslateKey(0x0646, Qt::NoModifier, 200).has_value());
    EXPECT_FALSE(TranslateKey(Qt::Key_VolumeUp, Qt::NoModifier, 45).has_value());
    EXPECT_FALSE(VirtualKeyFromScanCode(9).has_value()); // Escape's place, not a character
}

} // namespace
} // namespace tahrir::ui
