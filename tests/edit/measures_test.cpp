// The measure range, the tempo and rhythm dialogs, and octave moves of a selection.

#include "editor_fixture.h"

namespace tahrir::edit::test {

namespace {
// Three measures of 4/4 in quarters, each behind its barline.
Lines ThreeMeasures() {
    Lines body;
    for (int m = 0; m < 3; ++m) {
        body.push_back("03 -1                 ");
        body.insert(body.end(), 4, "13  8    ");
    }
    return body;
}
} // namespace

class Measures : public EditorTest {
protected:
    Pair range() const { return {editor->state().measures.StartMess, editor->state().measures.EndMess}; }
    Pair range(int code, int shift = 0) {
        key(code, shift);
        return range();
    }
    // The dialog key, answered.
    void ask(char letter, const char* reply) {
        answer(reply);
        key(K(letter));
    }
};

TEST_F(Measures, TempoAnswersOutsideTheBandsDeleteABodyLine) {
    // What stands at line 4 after each answer; a cancelled box is an empty answer.
    const std::pair<const char*, const char*> cases[] = {
        {"20", "TEMPO20"},   {"320", "TEMPO320"}, {"-20", "TEMPO-20"},
        {" 75 ", "TEMPO75"}, {"19", "13  8"},     {"321", "13  8"},
        {"", "13  8"},       {"abc", "13  8"},    {nullptr, "13  8"}};
    for (const auto& [reply, expected] : cases) {
        load({"13  8    "});
        if (reply) host.answers = {std::string(reply)};
        key(K('T'));
        EXPECT_EQ(trimmed(4), expected) << "answer '" << (reply ? reply : "cancel") << "'";
        EXPECT_EQ(last(), expected[0] == 'T' ? 5 : 4);
    }
}

TEST_F(Measures, HeadTempoKeepsItsValueOrTakesTheHiddenForms) {
    load({"13  8    "});
    key(Key::Home);
    ask('T', "500");
    EXPECT_EQ(trimmed(2), "TEMPO60");
    EXPECT_EQ(last(), 4);
    ask('T', "-5");
    EXPECT_EQ(trimmed(2), "TEMPO-5");
    EXPECT_EQ(current(), 3); // stored and committed by the closing step
    key(Key::Home);
    ask('T', "-150");
    EXPECT_EQ(trimmed(2), "TEMPO-150");
    EXPECT_DOUBLE_EQ(doc.InitialTempo, 150);
}

TEST_F(Measures, RhythmKeyInsertsTheCurrentWordAndRewritesSpellings) {
    load({"13  8    ", "23  8    "});
    ask('R', "3/4");
    EXPECT_EQ(trimmed(4), "RHYTM3/4");
    key(Key::Left);
    ask('R', ""); // empty on a body line: the line goes
    EXPECT_EQ(trimmed(4), "13  8");

    doc.Sheet.setLine(3, "RHITHM6/8"); // lit, but not a spelling the dialog knows
    keys({Key::Home, Key::Right});
    ask('R', "2/4");
    EXPECT_EQ(trimmed(3), "RHITHM6/8");
    EXPECT_EQ(host.titles.size(), 2u);

    doc.Sheet.setLine(3, "RHYTHM6/8");
    keys({Key::Left, Key::Right, K('R')});
    EXPECT_EQ(trimmed(3), "RHYTM2/4");
    keys({Key::Left, Key::Right});
    ask('R', ""); // empty on the head line: stays
    EXPECT_EQ(trimmed(3), "RHYTM2/4");
}

TEST_F(Measures, NumericKeysMoveAndExtendTheRange) {
    load(ThreeMeasures());
    ASSERT_EQ(editor->state().measures.Maximum, 3);
    EXPECT_EQ(range(Key::NumPlus), Pair(2, 2));
    EXPECT_EQ(range(Key::NumPlus, kShift), Pair(2, 3));
    EXPECT_EQ(range(Key::NumPlus, kShift), Pair(2, 3)); // beyond the last measure: nothing
    EXPECT_EQ(range(Key::NumMinus, kShift), Pair(1, 3));
    EXPECT_EQ(editor->state().measures.LabelColour[2], ColourBlue);
    EXPECT_EQ(range(Key::NumPlus), Pair(3, 3)); // the end plus one, clamped to the last
    EXPECT_EQ(range(Key::NumPlus), Pair(3, 3));
    EXPECT_EQ(editor->state().measures.LabelColour[1], ColourYellow);
}

TEST_F(Measures, MouseDownOnMeasureLabels) {
    load(ThreeMeasures());
    editor->measureDoubleClick(3);
    editor->measureMouseDown(1, 2, 0); // right button: the end, even before the start
    EXPECT_EQ(range(), Pair(3, 1));
    EXPECT_EQ(editor->state().measures.LabelColour[2], ColourYellow);
    editor->measureMouseDown(2, 2, kShift); // Shift: the whole score, whatever the button
    EXPECT_EQ(range(), Pair(1, 3));
    editor->measureMouseDown(5, 1, 0);
    EXPECT_EQ(editor->state().measures.Maximum, 5);
    EXPECT_EQ(editor->state().measures.EndMess, 5);
}

TEST_F(Measures, OctaveMovesOfTheSelectionHaveUnequalLimits) {
    load({"13  8", "11  8", "14  8", "15  8", "03  8", "L^abc"});
    ctrl('A');
    key(K('T'), kShift);
    EXPECT_EQ(editor->state().SelStart, 5);
    // Line 4 is left out, 1 is not above 1, 5 is not below 5, and a rest moves too.
    EXPECT_EQ(trimmed(4, 9), (Lines{"13  8", "11  8", "15  8", "15  8", "04  8", "L^abc"}));
    repeat(2, K('T'), kCtrl);
    EXPECT_EQ(trimmed(5, 7), (Lines{"11  8", "13  8", "13  8"}));
    key(Key::Esc);
    key(K('T'), kShift); // no selection: nothing
    EXPECT_EQ(trimmed(6), "13  8");
}

} // namespace tahrir::edit::test
