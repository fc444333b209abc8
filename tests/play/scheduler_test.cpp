#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/line_view.h"
#include "play/player.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using testing::Bar;
using testing::Note;
using testing::NoteEvent;
using testing::NoteEvents;
using testing::NoteOns;
using testing::OnTimes;
using testing::Sheet;
using Ons = std::vector<std::pair<int, int>>;

// A plain note of octave 3, a directive, and a sheet with no signature at tempo 60.
const auto N = [](int step, int duration) { return Note(step, 3, duration); };
const auto Dir = [](const char* text) { return testing::Directive(text); };
core::ScoreSheet Plain(const char* rhythm, std::initializer_list<std::string> music) {
    return Sheet("", 60, rhythm, music);
}

// A whole run in virtual time on a recording sink; the keys sounded in order.
class WalkTest : public ::testing::Test {
protected:
    WalkTest() : player(&sink) {
        player.startUp();
        player.controls().UserTempo = 60;
    }
    std::vector<int> keys(const core::ScoreSheet& sheet, RunOptions options = {}) {
        sink.clear();
        seconds = player.playVirtual(sheet, options);
        std::vector<int> out;
        for (const NoteEvent& e : NoteEvents(sink))
            if (e.kind == 'N' && e.channel != CountInChannel) out.push_back(e.note);
        return out;
    }
    RecordingSink sink;
    Player player;
    double seconds = 0;
};

TEST_F(WalkTest, TimeFollowsTempoMarksScaledByTheTempoBar) {
    // A 6/8 measure is 24 32nds: three seconds at 60.
    auto sheet = Plain("6/8", {N(1, 12), N(2, 12), Bar(), N(3, 8)});
    keys(sheet);
    EXPECT_NEAR(OnTimes(sink).back(), 3.0, 1e-6); // a barline is a silence of 1e-7 s
    EXPECT_NEAR(seconds, 4.0, 1e-6); // the run ends with its last note, no closing rest
    // A tempo mark of 120 halves the time; the bar at 120 against the score's 60 doubles
    // every mark, a hidden negative mark included.
    sheet = Plain("4/4", {N(1, 8), Dir("TEMPO120"), N(2, 8), Dir("TEMPO-30"), N(3, 8), N(4, 8)});
    keys(sheet);
    EXPECT_EQ(OnTimes(sink), (std::vector<double>{0, 1, 1.5, 3.5}));
    player.controls().UserTempo = 120;
    keys(sheet);
    EXPECT_EQ(OnTimes(sink), (std::vector<double>{0, 0.5, 0.75, 1.75}));
    player.controls().UserTempo = 60;
    sheet = Plain("4/4", {Dir("TEMPO999"), N(1, 8), N(2, 8)});
    keys(sheet);
    EXPECT_EQ(OnTimes(sink).back(), 1.0); // out of range: ignored
    // Blanks inside the number are skipped: "TEMPO 7 2" is 72, and a mark of 144 twice
    // the score's tempo.
    sheet = Plain("4/4", {N(1, 8), Dir("TEMPO14 4"), N(2, 8), N(3, 8)});
    sheet.setLine(2, Dir("TEMPO 7 2"));
    keys(sheet);
    EXPECT_EQ(OnTimes(sink), (std::vector<double>{0, 1, 1.5}));
}

TEST_F(WalkTest, RepeatsVoltasRepeatSignsAndEndMarks) {
    const struct {
        const char* what;
        core::ScoreSheet sheet;
        std::vector<int> keys;
    } rows[] = {
        {"a closing repeat alone goes back to the head once",
         Plain("2/4", {N(1, 16), Bar(), Dir("REP}"), N(2, 16)}),
         {60, 60, 62}},
        {"end mark", Plain("2/4", {N(1, 16), Bar(), Dir("LCfin"), N(2, 16)}), {60}},
        {"text end mark", Plain("2/4", {N(1, 16), Dir("L-FIN"), N(2, 16)}), {60}},
        {"repeat sign replays the last measure",
         Plain("2/4", {N(1, 16), Bar(), N(2, 8), N(3, 8), Bar(), Dir("REPB1"), Bar(), N(5, 16)}),
         {60, 62, 64, 62, 64, 67}},
        {"repeat sign right after the first barline rewinds to the head",
         Plain("2/4", {N(1, 16), Bar(), Dir("REPB1"), Bar(), N(2, 16)}),
         {60, 60, 62}},
        {"three 8ths marked L3 take a quarter: the measure still counts four beats",
         Plain("2/4", {Note(1, 3, 4, ' ', "L3"), N(2, 4), N(3, 4), N(4, 8), Bar(), Dir("REPB1"),
                       Bar(), N(5, 8)}),
         {60, 62, 64, 65, 60, 62, 64, 65, 67}},
        {"repeat sign of two measures",
         Plain("2/4",
               {N(1, 16), Bar(), N(2, 16), Bar(), N(3, 16), Bar(), Dir("REPB2"), Bar(), N(5, 16)}),
         {60, 62, 64, 62, 64, 67}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(keys(row.sheet), row.keys) << row.what;
}

TEST_F(WalkTest, MeasureRangeAndSelection) {
    const auto sheet =
        Plain("2/4", {N(1, 16), Bar(), N(2, 16), Bar(), N(3, 16), Bar(), N(4, 16), Bar()});
    player.controls().StartMeasure = 2;
    player.controls().EndMeasure = 3;
    EXPECT_EQ(keys(sheet), (std::vector<int>{62, 64}));
    EXPECT_NEAR(OnTimes(sink).front(), 0.0, 1e-6); // measures before the start take no time
    player.controls().StartMeasure = 0;
    player.controls().EndMeasure = 0;
    // A selection of lines wins: it sounds lines 6 to 8 only.
    EXPECT_EQ(keys(sheet, RunOptions{6, 8, {}}), (std::vector<int>{62, 64}));
    // Free rhythm has no measures to range over.
    const auto free = Plain("4/0", {N(1, 16), Bar(), N(2, 16)});
    player.controls().StartMeasure = 2;
    EXPECT_EQ(keys(free), (std::vector<int>{60, 62}));
}

TEST_F(WalkTest, SignatureOctaveAndInstrumentDirectives) {
    const auto sheet = Sheet("  K", 60, "4/4",
                             {N(3, 8), Dir("ALL3N"), N(3, 8), Dir("ALL8U"), N(1, 8), Dir("ALL8N"),
                              Dir("LCTRP=2"), N(1, 8), Dir("LCINS=1"), N(1, 8)});
    keys(sheet); // Mi koron from line 1, then natural
    EXPECT_EQ(NoteOns(sink), (Ons{{64, 2}, {64, 3}, {72, 3}, {62, 3}, {62, 3}}));
    // "LCINS=1" is instrument button 0: Koto on the five voices.
    EXPECT_EQ(std::ranges::count(sink.messages(), PackProgramChange(107, 3)), 1);
    player.controls().Transpose = TransposeCentre; // undo LCTRP=2
    // A large repeat that opens the music goes back to line 1's signature: the Si made
    // koron in mid-score is natural again on the second pass.
    keys(Plain("2/4", {Dir("REPS{"), N(7, 8), Dir("ALL7K"), N(7, 8), Bar(), Dir("REPS}")}));
    EXPECT_EQ(NoteOns(sink), (Ons{{71, 3}, {71, 2}, {71, 3}, {71, 2}}));
}

TEST_F(WalkTest, MarkerFollowsTheSoundedLines) {
    struct Lines : PlayObserver {
        void lineSounded(int line) override { seen.push_back(line); }
        std::vector<int> seen;
    } lines;
    player.notes().setObserver(&lines);
    keys(Plain("4/4", {Note(1, 3, 8, ' ', "D "), Dir("L^x"), N(2, 8)}));
    player.notes().setObserver(nullptr);
    EXPECT_EQ(lines.seen, (std::vector<int>{4, 4, 4, 6}));
}

TEST_F(WalkTest, EmptyAndHostileSheetsEndCleanly) {
    EXPECT_TRUE(keys(core::ScoreSheet{}).empty());
    keys(Sheet("KKKKKKK", 0, "x/y",
               {Note(9, 9, 8), "1x 8", N(1, 999), Dir("REPB2"), Dir("REP}"), Dir("REP}")}));
    EXPECT_TRUE(std::isfinite(seconds));
    EXPECT_EQ(sink.messages().back(), PackNoteOff(127, 5));
    // A tempo bar set below its range (a score whose tempo is 0 leaves it unset) plays at
    // the bar's minimum of 20: a quarter lasts 3 seconds.
    player.controls().UserTempo = 0;
    keys(Sheet("", 0, "4/4", {N(1, 8), N(2, 8)}));
    EXPECT_EQ(OnTimes(sink), (std::vector<double>{0, 3}));
}

// Random sheets built from every kind of line: each run ends, whatever the jumps.
TEST_F(WalkTest, RandomSheetsAlwaysEnd) {
    std::vector<std::string> pool = {N(1, 8),
                                     Note(5, 4, 4, 'K', "TR"),
                                     Note(3, 3, 2, 'S', "L3"),
                                     Note(2, 3, -1),
                                     testing::Rest(8),
                                     Bar(),
                                     Note(7, 9, 48, 'D', "8U")};
    for (const char* d : {"REP{", "REP}", "REPS{", "REPS}", "VOL{1", "REPB1", "REPB2", "TEMPO200",
                          "RHYTM3/8", "ALL8D", "LCTRP=12"})
        pool.push_back(Dir(d));
    unsigned seed = 12345;
    for (int run = 0; run < 200; ++run) {
        core::ScoreSheet sheet = Plain("2/4", {});
        const int lines = 4 + static_cast<int>(seed % 60);
        for (int i = 4; i < lines; ++i) {
            seed = seed * 1103515245 + 12345;
            sheet.setLine(i, pool[(seed >> 16) % pool.size()]);
        }
        sheet.LastLine = lines - 1;
        keys(sheet);
        ASSERT_EQ(sink.messages().back(), PackNoteOff(127, 5)) << "run " << run;
    }
    player.controls().Transpose = TransposeCentre;
    // A repeat sign that rewinds past the opening repeat sends the walk round for ever.
    const auto endless = Plain("2/4", {Dir("REP{"), N(1, 16), Dir("REPB1"), Dir("REP}")});
    EXPECT_GT(keys(endless).size(), 1000u);
    EXPECT_EQ(sink.messages().back(), PackNoteOff(127, 5));
}

} // namespace
} // namespace tahrir::play
