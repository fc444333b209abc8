// The renderer as the editor's layout service, and the reading of a typed note that the
// window and the command line both sound.

#include <gtest/gtest.h>

#include <utility>

#include "app/audition.h"
#include "app/render_layout.h"
#include "sheet_builder.h"

namespace tahrir::app {
namespace {

using render::test::MakeSheet;

TEST(RenderLayout, HandsTheEditorTheWalksPositionsAndFacts) {
    const core::ScoreSheet sheet = MakeSheet(
        {"       G", "TEMPO60", "RHYTM4/4", "73 32", "73 32", "RHYTM3/4", "73 24", "73 24"});
    RenderLayout layout;
    layout.options().LeftMargin = 5;
    core::PositionTable positions;
    const edit::LayoutFacts facts = layout.relayout(sheet, positions);
    for (int i = 1; i <= sheet.LastLine; ++i) {
        EXPECT_EQ(positions.LinePosX[i], layout.result().positions.LinePosX[i]) << i;
        EXPECT_EQ(positions.LinePosY[i], layout.result().positions.LinePosY[i]) << i;
    }
    EXPECT_GT(positions.LinePosX[5], positions.LinePosX[4]);
    EXPECT_EQ(facts.rhythmWord, "RHYTM3/4");
    EXPECT_EQ(facts.leftMargin, 5);
    // Four full measures: the numbers 2 to 4 are shown; the 5 after the closing barline of
    // the last line is hidden and is no measure to choose.
    EXPECT_EQ(facts.measureCount, 4);
}

TEST(RenderLayout, AScoreWithoutBarlinesHasOneMeasure) {
    const core::ScoreSheet sheet = MakeSheet({"       G", "TEMPO60", "RHYTM4/4", "73  8"});
    core::PositionTable positions;
    const edit::LayoutFacts facts = RenderLayout().relayout(sheet, positions);
    EXPECT_EQ(facts.measureCount, 1);
    EXPECT_EQ(facts.rhythmWord, "RHYTM4/4");
}

// Records what it was asked to sound.
struct FakePlayer {
    int step = 0, octave = 0;
    char accidental = '?';
    int auditionNote(int s, int o, char a) {
        step = s, octave = o, accidental = a;
        return 7;
    }
};

TEST(Audition, ThePlayerTakesTheLastAccidentalColumn) {
    // The editor writes " " + column 7 + column 6 of the pen; a short or missing text
    // sounds the natural note.
    for (const auto& [text, expected] :
         {std::pair<const char*, char>{" kS", 'S'}, {" k", ' '}, {"", ' '}}) {
        FakePlayer player;
        EXPECT_EQ(AuditionNote(player, edit::NoteSound{3, 4, 1, text, ""}), 7);
        EXPECT_EQ(player.step, 3);
        EXPECT_EQ(player.octave, 4);
        EXPECT_EQ(player.accidental, expected) << '"' << text << '"';
    }
}

} // namespace
} // namespace tahrir::app
