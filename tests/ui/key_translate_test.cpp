#include "ui/key_translate.h"

#include <gtest/gtest.h>

#include <sstream>

#include "case_files.h"

namespace tahrir::ui {
namespace {

// The rules around the key table, as cases read from a file.
TEST(KeyTranslation, KeypadShiftedDigitsModifiersAndPersianPlaces) {
    for (const test::CaseRow& r : test::ReadCases("ui/key_translate.txt")) {
        Qt::KeyboardModifiers modifiers;
        std::istringstream names(r[2]);
        for (std::string n; names >> n;)
            modifiers |= n == "Pad"     ? Qt::KeypadModifier
                         : n == "Shift" ? Qt::ShiftModifier
                         : n == "Ctrl"  ? Qt::ControlModifier
                                        : Qt::AltModifier;
        const auto k = TranslateKey(r.integer(1), modifiers, static_cast<quint32>(r.integer(3)));
        if (r[4] == "-") {
            EXPECT_FALSE(k.has_value()) << r.where << " " << r[0];
            continue;
        }
        ASSERT_TRUE(k.has_value()) << r.where << " " << r[0];
        EXPECT_EQ(std::pair(k->key, k->shift), std::pair(r.integer(4), r.integer(5)))
            << r.where << " " << r[0];
    }
    EXPECT_FALSE(VirtualKeyFromScanCode(9).has_value()); // Escape's place, not a character
}

} // namespace
} // namespace tahrir::ui
