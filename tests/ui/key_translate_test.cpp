#include "ui/key_translate.h"

#include <gtest/gtest.h>

namespace tahrir::ui {
namespace {

struct Row {
    int qtKey;
    Qt::KeyboardModifiers modifiers;
    int key;
    int shift;
};

// The codes the editor's key map is written in, one row per kind of key.
TEST(KeyTranslation, QtKeysBecomeTheEditorsNumbers) {
    const Row rows[] = {
        {Qt::Key_QuoteLeft, Qt::NoModifier, 192, 0},      // the grave key: a rest
        {Qt::Key_AsciiTilde, Qt::ShiftModifier, 192, 1},  // Shift+grave: a grace note
        {Qt::Key_Plus, Qt::KeypadModifier, 107, 0},       // numeric plus: next measure
        {Qt::Key_Minus, Qt::KeypadModifier, 109, 0},      // numeric minus
        {Qt::Key_Plus, Qt::KeypadModifier | Qt::ShiftModifier, 107, 1},
        {Qt::Key_Equal, Qt::ControlModifier, 187, 2},     // Ctrl+equals: the thumb mark
        {Qt::Key_Comma, Qt::NoModifier, 188, 0},
        {Qt::Key_Period, Qt::NoModifier, 190, 0},
        {Qt::Key_A, Qt::NoModifier, 65, 0},
        {Qt::Key_Z, Qt::ControlModifier, 90, 2},
        {Qt::Key_0, Qt::NoModifier, 48, 0},
        {Qt::Key_7, Qt::NoModifier, 55, 0},
        {Qt::Key_Exclam, Qt::ShiftModifier, 49, 1},       // Shift+1 arrives as "!"
        {Qt::Key_ParenRight, Qt::ShiftModifier, 48, 1},   // Shift+0
        {Qt::Key_AsciiCircum, Qt::ShiftModifier, 54, 1},  // Shift+6: a quarter
        {Qt::Key_F1, Qt::NoModifier, 112, 0},
        {Qt::Key_F12, Qt::ControlModifier, 123, 2},
        {Qt::Key_Return, Qt::NoModifier, 13, 0},
        {Qt::Key_Enter, Qt::KeypadModifier, 13, 0},
        {Qt::Key_Insert, Qt::NoModifier, 45, 0},
        {Qt::Key_Delete, Qt::NoModifier, 46, 0},
        {Qt::Key_Backspace, Qt::NoModifier, 8, 0},
        {Qt::Key_Escape, Qt::NoModifier, 27, 0},
        {Qt::Key_Space, Qt::ControlModifier, 32, 2},
        {Qt::Key_PageUp, Qt::NoModifier, 33, 0},
        {Qt::Key_PageDown, Qt::NoModifier, 34, 0},
        {Qt::Key_End, Qt::NoModifier, 35, 0},
        {Qt::Key_Home, Qt::ShiftModifier, 36, 1},
        {Qt::Key_Left, Qt::NoModifier, 37, 0},
        {Qt::Key_Up, Qt::NoModifier, 38, 0},
        {Qt::Key_Right, Qt::NoModifier, 39, 0},
        {Qt::Key_Down, Qt::ControlModifier, 40, 2},
        {Qt::Key_F4, Qt::AltModifier, 115, 4},
        {Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier, 84, 3}, // acts as plain T
        {Qt::Key_5, Qt::KeypadModifier, 101, 0},          // keypad digits are not the digit row
    };
    for (const Row& r : rows) {
        const auto k = TranslateKey(r.qtKey, r.modifiers);
        ASSERT_TRUE(k.has_value()) << "Qt key " << std::hex << r.qtKey;
        EXPECT_EQ(k->key, r.key) << "Qt key " << std::hex << r.qtKey;
        EXPECT_EQ(k->shift, r.shift) << "Qt key " << std::hex << r.qtKey;
    }
}

TEST(KeyTranslation, KeysWithoutANumberAreDropped) {
    for (const int qtKey : {int(Qt::Key_Shift), int(Qt::Key_Control), int(Qt::Key_Meta),
                            int(Qt::Key_VolumeUp), int(Qt::Key_unknown), 0x06C7 /* Arabic letter */})
        EXPECT_FALSE(TranslateKey(qtKey, Qt::NoModifier).has_value()) << std::hex << qtKey;
}

// With a Persian layout the letters arrive as Arabic script; their places still count.
TEST(KeyTranslation, PersianLayoutKeysAreReadByTheirPlace) {
    struct Place {
        int qtKey;       // what the Persian layout types
        quint32 scan;    // the X11 key code of the physical key
        int key;
    };
    const Place places[] = {
        {0x0646, 45, 'K'},  // noon on the K key: koron
        {0x0633, 39, 'S'},  // seen on the S key: sori
        {0x0628, 56, 'B'},  // beh on the B key
        {0x06A9, 26, 'E'},
        {0x067E, 49, 192},  // the key left of 1
        {0x0648, 60, 190},
        {0x06F5, 14, '5'},  // Persian digit five on the 5 key
    };
    for (const Place& p : places) {
        const auto k = TranslateKey(p.qtKey, Qt::ControlModifier, p.scan);
        ASSERT_TRUE(k.has_value()) << std::hex << p.qtKey;
        EXPECT_EQ(k->key, p.key) << std::hex << p.qtKey;
        EXPECT_EQ(k->shift, 2);
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
