#include <gtest/gtest.h>

#include "case_files.h"
#include "core/cp1256.h"
#include "core/farsi_text.h"
#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/load_file.h"
#include "core/new_score.h"
#include "core/score_reader.h"
#include "core/score_sheet.h"
#include "core/text_input.h"

using namespace tahrir::core;
using tahrir::test::CaseNumber;
using tahrir::test::RunCaseFile;
using Args = std::vector<std::string>;

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
    EXPECT_EQ(Cp1256ToUtf8(Utf8ToCp1256("عنوان")), "عنوان");
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

// The single-line readers, each case a line of the data file.
TEST(LineView, ReadersOfSingleLinesAndWords) {
    const auto optional = [](const auto& value) {
        return value ? CaseNumber(*value) : std::string("none");
    };
    RunCaseFile(
        std::string(TAHRIR_TEST_DATA) + "/core/lines.txt",
        {{"kind",
          [](const Args& a) {
              return LineKindName(ClassifyLine(a[0], a.size() > 1 ? std::stoi(a[1]) : 0));
          }},
         {"token", [](const Args& a) { return std::string(DirectiveTokenOf(a[0])); }},
         {"to1256", [](const Args& a) { return Utf8ToCp1256(a[0]); }},
         {"from1256", [](const Args& a) { return Cp1256ToUtf8(a[0]); }},
         {"tempo", [&](const Args& a) { return optional(TempoOf(a[0])); }},
         {"ticks", [](const Args& a) { return CaseNumber(MeasureTicksOfLine(a[0])); }},
         {"payloadticks", [](const Args& a) { return CaseNumber(MeasureTicksOf(a[0])); }},
         {"rhythmtext",
          [](const Args& a) {
              const RhythmText text = RhythmTextOf(a[0]);
              return text.numerator + "/" + text.denominator;
          }},
         {"control",
          [](const Args& a) {
              const auto control = ControlOf(a[0]);
              return control ? control->keyword + "=" + CaseNumber(control->number()) : "none";
          }},
         {"val", [](const Args& a) { return CaseNumber(Val(a[0])); }},
         {"leading", [&](const Args& a) { return optional(LeadingNumber(a[0])); }},
         {"upper", [](const Args& a) { return UpperAscii(a[0]); }},
         {"measurecount", [](const Args& a) { return CaseNumber(ParseMeasureCount(a[0])); }},
         {"farsi", [](const Args& a) { return FarsiToCp1256(a[0]); }},
         {"unscramble", [](const Args& a) { return UnscrambleLine(a[0]); }},
         {"input",
          [](const Args& a) {
              TextInput in(a[0]);
              std::string out;
              for (char step : a[1])
                  out += "|" + (step == 'f'   ? in.readField()
                                : step == 'l' ? in.readLine()
                                : in.eof()    ? "end"
                                              : "more");
              return out.substr(1);
          }},
         {"filename", [](const Args& a) { return CheckFileName(a[0]).value_or("ok"); }},
         {"recording", [](const Args& a) { return CompanionRecording(a[0], std::stod(a[1])); }}});
}
