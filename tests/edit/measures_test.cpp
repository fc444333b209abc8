// The measure range, the tempo and rhythm dialogs, and octave moves of a selection.

#include "editor_fixture.h"

namespace tahrir::edit::test {

namespace {
// Three measures of 4/4 in quarters, each behind its barline.
std::vector<std::string> ThreeMeasures() {
    std::vector<std::string> body;
    for (int m = 0; m < 3; ++m) {
        body.push_back("03 -1                 ");
        for (int beat = 0; beat < 4; ++beat)
            body.push_back("13  8    ");
    }
    return body;
}
} // namespace

using Measures = EditorTest;

TEST_F(Measures, TempoAnswersOutsideTheBandsDeleteABodyLine) {
    struct Case {
        const char* answer;
        const char* line; // what stands at line 4 afterwards
    };
    const Case cases[] = {{"20", "TEMPO20"},   {"320", "TEMPO320"}, {"-20", "TEMPO-20"},
                          {" 75 ", "TEMPO75"}, {"19", "13  8"},     {"321", "13  8"},
                          {"", "13  8"},       {"abc", "13  8"}};
    for (const Case& c : cases) {
        load({"13  8    "});
        host.answers = {std::string(c.answer)};
        key(K('T'));
        EXPECT_EQ(trimmed(4), c.line) << "answer '" << c.answer << "'";
    }
    load({"13  8    "});
    key(K('T')); // a cancelled box is an empty answer
    EXPECT_EQ(trimmed(4), "13  8");
    EXPECT_EQ(last(), 4);
}

TEST_F(Measures, HeadTempoKeepsItsValueOrTakesTheHiddenForms) {
    load({"13  8    "});
    key(Key::Home);
    host.answers = {std::string("500")};
    key(K('T'));
    EXPECT_EQ(trimmed(2), "TEMPO60");
    EXPECT_EQ(last(), 4);
    host.answers = {std::string("-5")};
    key(K('T'));
    EXPECT_EQ(trimmed(2), "TEMPO-5");
    EXPECT_EQ(current(), 3); // stored and committed by the closing step
    key(Key::Home);
    host.answers = {std::string("-150")};
    key(K('T'));
    EXPECT_EQ(trimmed(2), "TEMPO-150");
    EXPECT_DOUBLE_EQ(doc.InitialTempo, 150);
}

TEST_F(Measures, RhythmKeyInsertsTheCurrentWordAndRewritesSpellings) {
    load({"13  8    ", "23  8    "});
    host.answers = {std::string("3/4")};
    key(K('R'));
    EXPECT_EQ(trimmed(4), "RHYTM3/4");
    key(Key::Left);
    host.answers = {std::string("")}; // empty on a body line: the line goes
    key(K('R'));
    EXPECT_EQ(trimmed(4), "13  8");

    doc.Sheet.setLine(3, "RHITHM6/8"); // lit, but not a spelling the dialog knows
    key(Key::Home);
    key(Key::Right);
    host.answers = {std::string("2/4")};
    key(K('R'));
    EXPECT_EQ(trimmed(3), "RHITHM6/8");
    EXPECT_TRUE(host.titles.size() == 2);

    doc.Sheet.setLine(3, "RHYTHM6/8");
    key(Key::Left);
    key(Key::Right);
    key(K('R'));
    EXPECT_EQ(trimmed(3), "RHYTM2/4");
    host.answers = {std::string("")};
    key(Key::Left);
    key(Key::Right);
    key(K('R')); // empty on the head line: stays
    EXPECT_EQ(trimmed(3), "RHYTM2/4");
}

TEST_F(Measures, NumericKeysMoveAndExtendTheRange) {
    load(ThreeMeasures());
    ASSERT_EQ(editor->measures.Maximum, 3);
    key(Key::NumPlus);
    EXPECT_EQ(editor->measures.StartMess, 2);
    EXPECT_EQ(editor->measures.EndMess, 2);
    key(Key::NumPlus, kShift);
    EXPECT_EQ(editor->measures.StartMess, 2);
    EXPECT_EQ(editor->measures.EndMess, 3);
    key(Key::NumPlus, kShift); // beyond the last measure: nothing
    EXPECT_EQ(editor->measures.EndMess, 3);
    key(Key::NumMinus, kShift);
    EXPECT_EQ(editor->measures.StartMess, 1);
    EXPECT_EQ(editor->measures.LabelColour[2], ColourBlue);
    key(Key::NumPlus); // the end plus one, clamped to the last measure
    EXPECT_EQ(editor->measures.StartMess, 3);
    EXPECT_EQ(editor->measures.EndMess, 3);
    key(Key::NumPlus);
    EXPECT_EQ(editor->measures.StartMess, 3);
    EXPECT_EQ(editor->measures.LabelColour[1], ColourYellow);
}

TEST_F(Measures, MouseDownOnMeasureLabels) {
    load(ThreeMeasures());
    editor->measureDoubleClick(3);
    editor->measureMouseDown(1, 2, 0); // right button: the end, even before the start
    EXPECT_EQ(editor->measures.StartMess, 3);
    EXPECT_EQ(editor->measures.EndMess, 1);
    EXPECT_EQ(editor->measures.LabelColour[2], ColourYellow);
    editor->measureMouseDown(2, 2, kShift); // Shift: the whole score, whatever the button
    EXPECT_EQ(editor->measures.StartMess, 1);
    EXPECT_EQ(editor->measures.EndMess, 3);
    editor->measureMouseDown(5, 1, 0);
    EXPECT_EQ(editor->measures.Maximum, 5);
    EXPECT_EQ(editor->measures.EndMess, 5);
}

TEST_F(Measures, OctaveMovesOfTheSelectionHaveUnequalLimits) {
    load({"13  8", "11  8", "14  8", "15  8", "03  8", "L^abc"});
    key(K('A'), kCtrl);
    key(K('T'), kShift);
    EXPECT_EQ(editor->SelStart, 5);
    EXPECT_EQ(trimmed(4), "13  8"); // line 4 is left out
    EXPECT_EQ(trimmed(5), "11  8"); // 1 is not above 1
    EXPECT_EQ(trimmed(6), "15  8");
    EXPECT_EQ(trimmed(7), "15  8"); // 5 is not below 5
    EXPECT_EQ(trimmed(8), "04  8"); // a rest moves too
    EXPECT_EQ(trimmed(9), "L^abc");
    key(K('T'), kCtrl);
    key(K('T'), kCtrl);
    EXPECT_EQ(trimmed(6), "13  8");
    EXPECT_EQ(trimmed(7), "13  8");
    EXPECT_EQ(trimmed(5), "11  8");
    key(Key::Esc);
    key(K('T'), kShift); // no selection: nothing
    EXPECT_EQ(trimmed(6), "13  8");
}

} // namespace tahrir::edit::test
