#include <gtest/gtest.h>

#include <algorithm>

#include "core/cp1256.h"
#include "core/session.h"
#include "temp_folder.h"

using namespace tahrir::core;
using tahrir::test::TempFolder;
using tahrir::test::WriteBytes;

TEST(SessionTables, InstrumentsInListOrderWithPrograms) {
    const auto& table = InstrumentTable();
    ASSERT_EQ(table.size(), 8u);
    EXPECT_EQ(table[0].name, "Acoustic Grand Piano");
    EXPECT_EQ(table[0].program, 1);
    EXPECT_EQ(table[3].name, "Viola");
    EXPECT_EQ(table[3].program, 42);
    EXPECT_EQ(table[7].name, "Koto");
    EXPECT_EQ(table[7].program, 108);
}

TEST(SessionTables, ChordNamesBySpelling) {
    EXPECT_EQ(SharpChordNames()[1], "C#");
    EXPECT_EQ(FlatChordNames()[1], "Db");
    EXPECT_EQ(FlatChordNames()[10], "Bb");
    EXPECT_EQ(ChordKindNames()[11], "m(maj7)");
    EXPECT_EQ(ChordKindNames().back(), "dim7");
}

TEST(SessionTables, PaletteHintsAreExactAndFitCodePage1256) {
    const auto& hints = PaletteHintTable();
    EXPECT_EQ(hints[1], "براي وارد کردن نت زينت");
    EXPECT_EQ(hints[7], "براي وارد کردن کشش سياه");
    EXPECT_EQ(hints[38], "اجراي دُرّاب");
    // Two blanks between "در" and "انتهاي" belong to the text.
    EXPECT_EQ(hints[20], "علامت انتهاي تکرار، که حتما بايد در  انتهاي ميزان باشد");
    EXPECT_EQ(hints[56], " ـ(مضراب چپ) مورد استفاده در مضراب گذاري ");
    EXPECT_EQ(hints[63], "خواهد شد Mi نت قرمز نت");
    EXPECT_EQ(hints[48], hints[53]);
    // The rest key has a hint of its own; the duration hints keep their double blank.
    EXPECT_EQ(hints[0], "براي وارد کردن سکوت با هر مقدار کشش");
    EXPECT_EQ(hints[2], "براي وارد کردن کشش  سه لاچنگ");
    // The accidental keys tell the plain, the Shift and the Ctrl use on two lines.
    EXPECT_EQ(hints[15], "ابتدا يک نت انتخاب کنيد، سپس با زدن اين کليد نت انتخاب شده در اين ميزان "
                         "کُرُن مي شود\nبا همراه گرفتن کليد شيفت نت انتخاب شده از اين ميزان به بعد "
                         "کُرُن مي شود و با همراه گرفتن کليد کنترل نت انتخاب شده در سر کليد کُرُن مي گردد");
    EXPECT_EQ(hints[17], "معادلِ گرفتن کليد شيفت، و زدن علامت هاي عَرَضي بوده و علامت انتخاب شده را، "
                         "از اين  ميزان به بعد گذاشته و يا آن را برمي دارد");
    EXPECT_EQ(hints[31], "اجراي دو نت بصورت مردانت، با هر بار زدن اين علامت يک نت  از نت اولي پايين "
                         "تر، با آن همزمان خواهد شد");
    for (int i = 12; i <= 16; ++i) EXPECT_EQ(std::count(hints[i].begin(), hints[i].end(), '\n'), 1) << i;
    for (int unused : {73, 74, 75, 76, 77}) EXPECT_TRUE(hints[unused].empty()) << unused;
    for (int i = 0; i < PaletteHintCount; ++i) {
        if (hints[i].empty()) continue;
        // Every hint survives the trip through the score's code page unchanged.
        EXPECT_EQ(Cp1256ToUtf8(Utf8ToCp1256(hints[i])), hints[i]) << "hint " << i;
    }
}

TEST(Session, StartFillsTablesAndReadsCalibration) {
    TempFolder folder;
    Session session;
    StartSession(session, folder.path());
    EXPECT_EQ(session.AppFolder, folder.path());
    EXPECT_EQ(session.CalibrationValue, DefaultCalibration) << "no initialize.vel: not an error";
    ASSERT_EQ(session.InsList.size(), 8u);
    EXPECT_EQ(session.InsList[5].name, "Flute");
    EXPECT_EQ(session.PaletteHints[35], "اجراي تريل با نت بعدي");
    EXPECT_EQ(session.TopMargin, 26);
    EXPECT_EQ(session.StaffSpacing, 45);

    WriteBytes(folder / "initialize.vel", " 123456789 \r\n");
    StartSession(session, folder.path());
    EXPECT_EQ(session.CalibrationValue, 123456789);
}

TEST(Session, BadCalibrationFileFallsBackToTheDefault) {
    TempFolder folder;
    WriteBytes(folder / "initialize.vel", "fast please");
    EXPECT_FALSE(ReadCalibration(folder / "initialize.vel"));
    WriteBytes(folder / "initialize.vel", "-5");
    EXPECT_FALSE(ReadCalibration(folder / "initialize.vel"));
    WriteBytes(folder / "initialize.vel", std::string(5000, '9'));
    EXPECT_FALSE(ReadCalibration(folder / "initialize.vel")) << "a number beyond any loop count";
    Session session;
    StartSession(session, folder.path());
    EXPECT_EQ(session.CalibrationValue, DefaultCalibration);
}
