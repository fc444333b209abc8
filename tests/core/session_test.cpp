#include <gtest/gtest.h>

#include <algorithm>

#include "core/cp1256.h"
#include "core/session.h"
#include "temp_folder.h"

using namespace tahrir::core;
using tahrir::test::TempFolder;
using tahrir::test::WriteBytes;

TEST(SessionTables, ListsKeepTheirOrderAndHintsFitCodePage1256) {
    const auto& table = InstrumentTable();
    ASSERT_EQ(table.size(), 8u);
    EXPECT_EQ(table[3].name, "Viola");
    EXPECT_EQ(table[3].program, 42) << "programs count from 1";
    const auto& hints = PaletteHintTable();
    // Two blanks between "در" and "انتهاي" belong to the text.
    EXPECT_EQ(hints[20], "علامت انتهاي تکرار، که حتما بايد در  انتهاي ميزان باشد");
    EXPECT_EQ(hints[63], "خواهد شد Mi نت قرمز نت");
    EXPECT_EQ(hints[48], hints[53]);
    // The accidental keys tell the plain, the Shift and the Ctrl use on two lines.
    for (int i = 12; i <= 16; ++i)
        EXPECT_EQ(std::count(hints[i].begin(), hints[i].end(), '\n'), 1) << i;
    for (int unused : {73, 74, 75, 76, 77}) EXPECT_TRUE(hints[unused].empty()) << unused;
    for (int i = 0; i < PaletteHintCount; ++i) // each hint survives the score's code page
        EXPECT_EQ(Cp1256ToUtf8(Utf8ToCp1256(hints[i])), hints[i]) << i;
}

TEST(Session, StartFillsTablesAndReadsCalibration) {
    TempFolder folder;
    Session session;
    StartSession(session, folder.path());
    EXPECT_EQ(session.AppFolder, folder.path());
    EXPECT_EQ(session.CalibrationValue, DefaultCalibration) << "no initialize.vel: not an error";
    ASSERT_EQ(session.InsList.size(), 8u);
    EXPECT_EQ(session.PaletteHints[35], PaletteHintTable()[35]);
    WriteBytes(folder / "initialize.vel", " 123456789 \r\n");
    StartSession(session, folder.path());
    EXPECT_EQ(session.CalibrationValue, 123456789);
    // "-5" is refused, and so is a number beyond any loop count.
    const std::vector<std::string> refused = {"fast please", "-5", std::string(5000, '9')};
    for (const std::string& bad : refused) {
        WriteBytes(folder / "initialize.vel", bad);
        EXPECT_FALSE(ReadCalibration(folder / "initialize.vel")) << bad.substr(0, 12);
    }
    StartSession(session, folder.path());
    EXPECT_EQ(session.CalibrationValue, DefaultCalibration);
}
