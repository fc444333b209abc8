#include "ui/key_translate.h"

#include <gtest/gtest.h>

namespace tahrir::ui {
namespace {

// The rules around the key table: keypad keys apart from the main ones, shifted digits
// read as their digit, modifiers added up, keys without a number refused, and keys of a
// Persian layout read by their place (the X11 key code) when they type another script.
TEST(KeyTranslation, KeypadShiftedDigitsModifiersAndPersianPlaces) {
    constexpr auto None = Qt::NoModifier, Shift = Qt::ShiftModifier, Ctrl = Qt::ControlModifier,
                   Pad = Qt::KeypadModifier;
    const struct {
        int qtKey;
        Qt::KeyboardModifiers modifiers;
        quint32 scan;
        int key, shift;
    } rows[] = {
        {Qt::Key_Plus, Pad | Shift, 0, 107, 1}, // numeric plus: next measure, not equals
        {Qt::Key_Plus, None, 0, 187, 0},
        {Qt::Key_5, Pad, 0, 101, 0},
        {Qt::Key_7, None, 0, 55, 0},
        {Qt::Key_Exclam, Shift, 0, 49, 1}, // Shift+1 arrives as "!"
        {Qt::Key_T, Ctrl | Shift, 0, 84, 3},
        {Qt::Key_F4, Qt::AltModifier, 0, 115, 4},
        {0x0646, Ctrl, 45, 'K', 2},    // noon on the K key: koron
        {0x067E, Ctrl, 49, 192, 2},    // the key left of 1
        {0x06F5, Ctrl, 14, '5', 2},    // Persian digit five on the 5 key
        {Qt::Key_A, None, 45, 'A', 0}, // a Latin key keeps its own number anywhere
    };
    for (const auto& r : rows) {
        const auto k = TranslateKey(r.qtKey, r.modifiers, r.scan);
        ASSERT_TRUE(k.has_value()) << "Qt key " << std::hex << r.qtKey;
        EXPECT_EQ(std::pair(k->key, k->shift), std::pair(r.key, r.shift))
            << "Qt key " << std::hex << r.qtKey;
    }
    // Modifiers alone, keys without a character, and places outside the main block.
    const std::pair<int, quint32> refused[] = {{Qt::Key_Shift, 0},
                                               {Qt::Key_VolumeUp, 45},
                                               {Qt::Key_unknown, 0},
                                               {0x0646, 200},
                                               {0x06C7, 0}};
    for (const auto& [qtKey, scan] : refused)
        EXPECT_FALSE(TranslateKey(qtKey, None, scan).has_value()) << std::hex << qtKey;
    EXPECT_FALSE(VirtualKeyFromScanCode(9).has_value()); // Escape's place, not a character
}

} // namespace
} // namespace tahrir::ui
