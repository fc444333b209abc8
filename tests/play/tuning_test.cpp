#include <gtest/gtest.h>

#include "play/midi_out.h"
#include "play/pitch_table.h"
#include "play/rtmidi_sink.h"
#include "play/tuning.h"

namespace tahrir::play {
namespace {

// The grid positions a mask marks.
std::vector<int> Marked(const ScaleMask& mask) {
    std::vector<int> out;
    for (int i = 0; i < GridSize; ++i)
        if (mask[static_cast<std::size_t>(i)] == -1) out.push_back(i);
    return out;
}

TEST(Tuning, ParsesQuotedAndPlainPairsAndStopsCleanlyOnOddInput) {
    TuningFile t = ParseTuning("\"Shur (Sol), Re koron\",\" K   KBG\"\r\nMahur,       G\r\n");
    ASSERT_EQ(t.entries.size(), 2u);
    EXPECT_TRUE(t.complete);
    EXPECT_EQ(t.entries[0].name, "Shur (Sol), Re koron"); // a comma inside quotes stays
    EXPECT_EQ(t.entries[0].line, " K   KBG");
    EXPECT_EQ(t.entries[1].name, "Mahur");
    EXPECT_EQ(t.entries[1].line, "G");
    t = ParseTuning("\"A\",\"  K    G\"\r\n\"B\"\r\n"); // an odd entry count
    EXPECT_FALSE(t.complete);
    ASSERT_EQ(t.entries.size(), 1u);
    EXPECT_EQ(t.entries[0].name, "A");
    t = ParseTuning("\"A\",\"  K"); // an unclosed quote runs to the end
    ASSERT_EQ(t.entries.size(), 1u);
    EXPECT_EQ(t.entries[0].line, "  K");
    EXPECT_TRUE(ParseTuning("").entries.empty());
    EXPECT_FALSE(LoadTuning("/nonexistent/Kookha.tun").opened);
}

TEST(Tuning, ApplyingAScaleOrTheDastgahBoxesRewritesLineOne) {
    core::ScoreSheet sheet;
    sheet.setLine(1, "       G              ");
    const TuningFile t = ParseTuning("\"Shur (Mi)\",\"   S   G\"\r\n");
    EXPECT_FALSE(ApplyScale(sheet, t, -1)); // nothing chosen: line 1 stays
    EXPECT_FALSE(ApplyScale(sheet, t, 1));
    EXPECT_EQ(sheet[1].text(), "       G              ");
    EXPECT_TRUE(ApplyScale(sheet, t, 0));
    EXPECT_EQ(sheet[1].text(), "   S   G  ");
    EXPECT_EQ(DastgahRow('N'), DastgahRow(' ')); // a natural sign ticks the natural box
    EXPECT_EQ(DastgahRow('x'), -1);
    sheet.setLine(1, "  K    G  ");
    SetStepLetters(sheet, {2, 2, 2, 1, 2, 3, 4});
    EXPECT_EQ(sheet[1].text(), "   S KBG  ");
}

TEST(Tuning, ScaleMaskMovesEachStepToItsLetter) {
    const std::pair<const char*, std::vector<int>> rows[] = {
        {"       ", {1, 5, 9, 11, 15, 19, 23, 25}},
        {"K      ", {0, 5, 9, 11, 15, 19, 23, 24}}, // koron Do marks 24 and 0, its octave moves
        {"B      ", {5, 9, 11, 15, 19, 23}},
        {"S      ", {2, 5, 9, 11, 15, 19, 23, 26}},
        {"     KB", {1, 5, 9, 11, 15, 18, 21, 25}}, // Shur on Sol: La koron, Si flat
        {"   D", {1, 5, 9, 13, 15, 19, 23, 25}},
        {"D      ", {3, 5, 9, 11, 15, 19, 23}}, // sharp Do's octave, 27, is beyond the grid
    };
    for (const auto& [letters, marked] : rows)
        EXPECT_EQ(Marked(BuildScaleMask(letters)), marked) << '"' << letters << '"';
}

TEST(Tuning, BaseFrequencyBendsMirrorTheMainPlan) {
    RecordingSink sink;
    MidiOut midi(&sink);
    BaseFrequencyTuner tuner;
    tuner.apply(midi, 466.2); // just out of range: only channel 4 moves, from the old centre
    tuner.apply(midi, 452);
    const std::vector<std::uint32_t> expected = {PackPitchBend(0, 48, 4), PackPitchBend(0, 95, 2),
                                                 PackPitchBend(0, 79, 3), PackPitchBend(0, 63, 4)};
    EXPECT_EQ(sink.messages(), expected);
    // Below 440 the logarithm rounds down; cutting toward zero would give 68, 52 and 36.
    sink.clear();
    tuner.apply(midi, 430);
    EXPECT_EQ(sink.messages(),
              (std::vector<std::uint32_t>{PackPitchBend(0, 67, 2), PackPitchBend(0, 51, 3),
                                          PackPitchBend(0, 35, 4)}));
}

TEST(Outputs, OpenEitherSucceedsOrSaysWhy) {
    EXPECT_EQ(OpenOutput(OutputChoice::None).sink, nullptr);
    const OpenedOutput port = OpenOutput(OutputChoice::MidiPort);
    EXPECT_FALSE(port.description.empty());
    EXPECT_EQ(OutputChoiceFromText("bogus"), OutputChoice::Auto);
}

} // namespace
} // namespace tahrir::play
