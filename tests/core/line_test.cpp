#include <gtest/gtest.h>

#include "core/cp1256.h"
#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/score_sheet.h"

using namespace tahrir::core;

TEST(ScoreLine, ScratchAndFieldsInPlace) {
    EXPECT_EQ(Scratch("13  8"), "13  8" + std::string(27, ' '));
    EXPECT_EQ(Scratch(std::string(40, 'x')), std::string(32, 'x'));
    ScoreLine line("13  8");
    EXPECT_EQ(line.get(NoteField::DurationField), "  8");
    EXPECT_EQ(line.get(NoteField::MarkCode), "  ") << "columns beyond the end read as blanks";
    line.set(NoteField::MarkCode, "TR");
    EXPECT_EQ(line.text(), "13  8  TR");
    line.set(NoteField::AccidentalCode, "KX"); // only the field's width is written
    line.set(NoteField::PitchStep, "5");
    EXPECT_EQ(line.text(), "53  8K TR");
}

TEST(LineKind, ClassificationFollowsTheGrammarOrder) {
    const std::pair<const char*, LineKind> cases[] = {
        {"03  8", LineKind::NoteLine},      {"03 -1", LineKind::BarLine},
        {"13 -1", LineKind::NoteLine},      {"0x junk", LineKind::NoteLine}, // rest needs no word
        {"13  5", LineKind::Unknown},       {"ALL5D", LineKind::DirectiveLine},
        {"L        ", LineKind::SpacerLine}, {"L^Ms=3", LineKind::TextLine},
        {"LCTRP=2", LineKind::ControlLine}, {"Lctrp=2", LineKind::ControlLine}, // read folded
        {"RHITHM6/8", LineKind::DirectiveLine}, {"tempo 60", LineKind::Unknown}, // case-sensitive
    };
    for (const auto& [text, kind] : cases) EXPECT_EQ(ClassifyLine(text), kind) << text;
    EXPECT_EQ(ClassifyLine("       G", 1), LineKind::HeaderLine);
    EXPECT_EQ(DirectiveTokenOf("RHYTHM3/4"), "RHYTHM");
}

TEST(ScoreSheet, InsertRemoveAndLimits) {
    ScoreSheet sheet;
    EXPECT_THROW(sheet[2049], SheetIndexError);
    EXPECT_NO_THROW(sheet[2048]);
    sheet.LastLine = 3;
    for (int i = 1; i <= 3; ++i) sheet.setLine(i, std::to_string(i));
    ASSERT_TRUE(sheet.insertLine(2, "x"));
    EXPECT_EQ(sheet.LastLine, 4);
    EXPECT_EQ(sheet[2].text(), "x");
    EXPECT_EQ(sheet[4].text(), "3");
    sheet.removeLines(1, 2);
    EXPECT_EQ(sheet.LastLine, 2);
    EXPECT_EQ(sheet[1].text(), "2");
    sheet.LastLine = MaxLines;
    EXPECT_FALSE(sheet.insertLine(5, "y"));
}

TEST(Cp1256, PersianRoundTrip) {
    const std::string bytes = Utf8ToCp1256("عنوان سه‌گاه ۱۲");
    EXPECT_EQ(bytes.size(), 15u) << "one byte a character";
    EXPECT_EQ(bytes.substr(13), "12") << "Persian digits are stored as plain digits";
    // A Persian keyboard types U+06CC for yeh; the code page has only the Arabic yeh (0xED).
    EXPECT_EQ(Utf8ToCp1256("بیات"), "\xC8\xED\xC7\xCA");
    EXPECT_EQ(Utf8ToCp1256("\xD9\xA3"), "3") << "Arabic-Indic three";
    EXPECT_EQ(Cp1256ToUtf8(Utf8ToCp1256("عنوان")), "عنوان");
    EXPECT_EQ(Utf8ToCp1256("\xff\xfe"), "??");
    EXPECT_EQ(Cp1256ToUtf8(std::string(1, '\xE1')), "ل");
}

TEST(LineView, NoteFieldsAndMarks) {
    const NoteView note = ReadNote("23 12SC1TAB");
    EXPECT_EQ(note.position(), 3 * 7 + 2);
    EXPECT_EQ(note.duration(), 12);
    EXPECT_EQ(note.accidental, Accidental::Sori);
    EXPECT_EQ(AccidentalRowOf(note.accidental)->bendStep, 4);
    EXPECT_EQ(note.beam, 'C');
    EXPECT_EQ(note.mark.mark, Mark::IntervalTogether);
    EXPECT_EQ(note.mark.number, 1);
    EXPECT_EQ(ChordRootName(note.chordRoot), "C");
    EXPECT_EQ(ChordKindName(note.chordKind), "m");
    EXPECT_TRUE(ReadNote("13 -1").grace());
    EXPECT_TRUE(ReadNote("03 -1").bar());
    EXPECT_TRUE(ReadNote("03  8").rest());
    EXPECT_FALSE(ReadNote("TEMPO 60").pitched);
    EXPECT_EQ(ReadNote("13  8X").accidental, Accidental::Unknown);

    const struct {
        const char* word;
        Mark mark;
        int number;
    } marks[] = {{"KM", Mark::IntervalMordent, 20}, {"L7", Mark::Tuplet, 7},
                 {"ST", Mark::Staccato, 0},        {"3B", Mark::Finger, 3},
                 {"8 ", Mark::PlectrumRight, 0},   {"8D", Mark::OctaveDown, 0},
                 {"5B", Mark::Other, 0},           {"LM", Mark::Other, 0}};
    for (const auto& m : marks) {
        const MarkWord w = ReadMark(m.word[0], m.word[1]);
        EXPECT_EQ(w.mark, m.mark) << m.word;
        EXPECT_EQ(w.number, m.number) << m.word;
    }
    EXPECT_EQ(ChordRootName('N'), "C");
    EXPECT_EQ(ChordRootName('Y'), "B");
    EXPECT_FALSE(ChordRootName('M'));
}

TEST(LineView, DirectiveNumbersFollowOneRule) {
    EXPECT_EQ(TempoOf("TEMPO 7 2"), 72);
    EXPECT_EQ(TempoOf("TEMPO-80"), -80);
    EXPECT_FALSE(TempoOf("RHYTM4/4"));
    EXPECT_EQ(MeasureTicksOfLine("RHYTM6/8"), 24);
    EXPECT_EQ(MeasureTicksOfLine("RHITM32/32"), 32);
    EXPECT_EQ(MeasureTicksOfLine("RHYTHM4/4"), 0) << "the payload is read from column 6";
    EXPECT_EQ(MeasureTicksOf("3/0"), 0);
    const auto control = ControlOf("lctfs=14");
    ASSERT_TRUE(control);
    EXPECT_EQ(control->keyword, "TFS");
    EXPECT_EQ(control->number(), 14);
    EXPECT_FALSE(ControlOf("L^Ms=3"));
}
