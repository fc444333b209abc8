#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

#include "play/player.h"
#include "play_test_util.h"
#include "temp_folder.h"

namespace tahrir::play {
namespace {

using testing::Bar;
using testing::Directive;
using testing::Note;
using testing::NoteEvent;
using testing::NoteEvents;
using testing::Sheet;

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
    std::vector<double> onTimes() const {
        std::vector<double> out;
        for (const NoteEvent& e : NoteEvents(sink))
            if (e.kind == 'N') out.push_back(e.seconds);
        return out;
    }
    RecordingSink sink;
    Player player;
    double seconds = 0;
};

TEST_F(WalkTest, RunPreparesChannelsAndEndsWithAllNotesOff) {
    const auto sheet = Sheet("", 60, "4/4", {Note(1, 3, 8)});
    keys(sheet);
    const auto m = sink.messages();
    // Controller 33 and Flute on channels 1..5, three bends, then the count-in channel.
    EXPECT_EQ(m[0], PackControlChange(33, 0, 1));
    EXPECT_EQ(m[1], PackProgramChange(73, 1));
    EXPECT_EQ(m[12], 0x005000E4u);
    EXPECT_EQ(m[13], PackControlChange(33, 0, 6));
    EXPECT_EQ(m[14], PackProgramChange(115, 6));
    EXPECT_EQ(m[15], PackNoteOn(60, 60, 3));
    EXPECT_EQ(m[16], PackNoteOff(60, 3)); // the closing rest of one 32nd
    EXPECT_EQ(m.size(), 17u + 640u);
    EXPECT_EQ(m.back(), PackNoteOff(127, 5));
    EXPECT_DOUBLE_EQ(seconds, 1.0); // the closing rest is not waited for
}

TEST_F(WalkTest, TimeFollowsTempoMarksScaledByTheTempoBar) {
    // A 6/8 measure is 24 32nds: three seconds at 60.
    auto sheet = Sheet("", 60, "6/8", {Note(1, 3, 12), Note(2, 3, 12), Bar(), Note(3, 3, 8)});
    keys(sheet);
    EXPECT_NEAR(onTimes().back(), 3.0, 1e-6); // a barline is a silence of 1e-7 s
    // A tempo mark of 120 halves the time; the bar at 120 against the score's 60 doubles
    // every mark, a hidden negative mark included.
    sheet = Sheet("", 60, "4/4",
                  {Note(1, 3, 8), Directive("TEMPO120"), Note(2, 3, 8), Directive("TEMPO-30"),
                   Note(3, 3, 8), Note(4, 3, 8)});
    keys(sheet);
    EXPECT_EQ(onTimes(), (std::vector<double>{0, 1, 1.5, 3.5}));
    player.controls().UserTempo = 120;
    keys(sheet);
    EXPECT_EQ(onTimes(), (std::vector<double>{0, 0.5, 0.75, 1.75}));
    player.controls().UserTempo = 60;
    sheet = Sheet("", 60, "4/4", {Directive("TEMPO999"), Note(1, 3, 8), Note(2, 3, 8)});
    keys(sheet);
    EXPECT_EQ(onTimes().back(), 1.0); // out of range: ignored
}

TEST_F(WalkTest, TupletPlaysFasterAndFitsTheMeasure) {
    // Three 8ths marked "L3" take one quarter, and the measure still counts four beats.
    const auto sheet = Sheet("", 60, "2/4",
                             {Note(1, 3, 4, ' ', "L3"), Note(2, 3, 4), Note(3, 3, 4), Note(4, 3, 8),
                              Bar(), Directive("REPB1"), Bar(), Note(5, 3, 8)});
    EXPECT_EQ(keys(sheet), (std::vector<int>{60, 62, 64, 65, 60, 62, 64, 65, 67}));
    const auto t = onTimes();
    EXPECT_NEAR(t[3], 1.0, 1e-9);
    EXPECT_NEAR(t[4], 2.0, 1e-6);
    EXPECT_NEAR(t[8], 4.0, 1e-6);
}

TEST_F(WalkTest, RepeatsAndFirstVolta) {
    // |: A B | volta 1: C :| volta 2: D |
    const auto sheet = Sheet("", 60, "2/4",
                             {Directive("REP{"), Note(1, 3, 8), Note(2, 3, 8), Bar(),
                              Directive("VOL{1"), Note(3, 3, 16), Bar(), Directive("REP}"),
                              Directive("VOL{2"), Note(4, 3, 16), Bar()});
    EXPECT_EQ(keys(sheet), (std::vector<int>{60, 62, 64, 60, 62, 65}));
    // A closing repeat without its opening goes back to the head once.
    const auto bare =
        Sheet("", 60, "2/4", {Note(1, 3, 16), Bar(), Directive("REP}"), Note(2, 3, 16)});
    EXPECT_EQ(keys(bare), (std::vector<int>{60, 60, 62}));
}

TEST_F(WalkTest, LargeRepeatAndFin) {
    const auto sheet = Sheet(
        "", 60, "2/4",
        {Directive("REPS{"), Note(1, 3, 16), Bar(), Directive("REPS}"), Note(2, 3, 16), Bar()});
    EXPECT_EQ(keys(sheet), (std::vector<int>{60, 60, 62}));
    // An end mark stops the music; what follows it is never reached.
    const auto fin =
        Sheet("", 60, "2/4", {Note(1, 3, 16), Bar(), Directive("LCfin"), Note(2, 3, 16)});
    EXPECT_EQ(keys(fin), (std::vector<int>{60}));
    const auto textFin = Sheet("", 60, "2/4", {Note(1, 3, 16), Directive("L-FIN"), Note(2, 3, 16)});
    EXPECT_EQ(keys(textFin), (std::vector<int>{60}));
    // A large repeat that opens the music goes back to line 1's signature: the Si made
    // koron in mid-score is natural again on the second pass.
    const auto signature = Sheet("", 60, "2/4",
                                 {Directive("REPS{"), Note(7, 3, 8), Directive("ALL7K"),
                                  Note(7, 3, 8), Bar(), Directive("REPS}")});
    keys(signature);
    std::vector<int> channels;
    for (const NoteEvent& e : NoteEvents(sink))
        if (e.kind == 'N') channels.push_back(e.channel);
    EXPECT_EQ(channels, (std::vector<int>{3, 2, 3, 2}));
}

TEST_F(WalkTest, RepeatSignsReplayTheLastMeasures) {
    const auto one = Sheet("", 60, "2/4",
                           {Note(1, 3, 16), Bar(), Note(2, 3, 8), Note(3, 3, 8), Bar(),
                            Directive("REPB1"), Bar(), Note(5, 3, 16)});
    EXPECT_EQ(keys(one), (std::vector<int>{60, 62, 64, 62, 64, 67}));
    // Right after the first barline the sign rewinds to the head of the music.
    const auto head =
        Sheet("", 60, "2/4", {Note(1, 3, 16), Bar(), Directive("REPB1"), Bar(), Note(2, 3, 16)});
    EXPECT_EQ(keys(head), (std::vector<int>{60, 60, 62}));
    const auto two = Sheet("", 60, "2/4",
                           {Note(1, 3, 16), Bar(), Note(2, 3, 16), Bar(), Note(3, 3, 16), Bar(),
                            Directive("REPB2"), Bar(), Note(5, 3, 16)});
    EXPECT_EQ(keys(two), (std::vector<int>{60, 62, 64, 62, 64, 67}));
}

TEST_F(WalkTest, MeasureRangeAndSelection) {
    const auto sheet = Sheet("", 60, "2/4",
                             {Note(1, 3, 16), Bar(), Note(2, 3, 16), Bar(), Note(3, 3, 16), Bar(),
                              Note(4, 3, 16), Bar()});
    player.controls().StartMeasure = 2;
    player.controls().EndMeasure = 3;
    EXPECT_EQ(keys(sheet), (std::vector<int>{62, 64}));
    EXPECT_NEAR(onTimes().front(), 0.0, 1e-6); // measures before the start take no time
    player.controls().StartMeasure = 0;
    player.controls().EndMeasure = 0;
    // A selection of lines wins: it sounds lines 6 to 8 only.
    EXPECT_EQ(keys(sheet, RunOptions{6, 8, {}}), (std::vector<int>{62, 64}));
    // Free rhythm has no measures to range over.
    const auto free = Sheet("", 60, "4/0", {Note(1, 3, 16), Bar(), Note(2, 3, 16)});
    player.controls().StartMeasure = 2;
    EXPECT_EQ(keys(free), (std::vector<int>{60, 62}));
    player.controls().StartMeasure = 0;
}

TEST_F(WalkTest, SignatureOctaveAndInstrumentDirectives) {
    const auto sheet = Sheet("  K", 60, "4/4",
                             {Note(3, 3, 8), Directive("ALL3N"), Note(3, 3, 8), Directive("ALL8U"),
                              Note(1, 3, 8), Directive("ALL8N"), Directive("LCTRP=2"),
                              Note(1, 3, 8), Directive("LCINS=1"), Note(1, 3, 8)});
    EXPECT_EQ(keys(sheet), (std::vector<int>{64, 64, 72, 62, 62}));
    const auto ons = NoteEvents(sink);
    EXPECT_EQ(ons[0].channel, 2); // koron from line 1
    EXPECT_EQ(ons[1].channel, 3);
    // "LCINS=1" is instrument button 0: Koto on the five voices.
    const auto m = sink.messages();
    EXPECT_NE(std::find(m.begin(), m.end(), PackProgramChange(107, 3)), m.end());
    player.controls().Transpose = TransposeCentre;
}

TEST_F(WalkTest, CountInClicksOnTheWoodblockBeforeTheMusic) {
    player.controls().CountIn = true;
    const auto sheet = Sheet("", 60, "3/4", {Note(1, 3, 8)});
    keys(sheet);
    const auto events = NoteEvents(sink);
    std::vector<int> clicks;
    for (const NoteEvent& e : events)
        if (e.kind == 'N' && e.channel == CountInChannel) clicks.push_back(e.note);
    EXPECT_EQ(clicks, (std::vector<int>{69, 72, 72}));
    EXPECT_DOUBLE_EQ(onTimes().back(), 3.0);
    player.controls().CountIn = false;
}

TEST_F(WalkTest, MarkerFollowsTheSoundedLines) {
    struct Lines : PlayObserver {
        void lineSounded(int line) override { seen.push_back(line); }
        std::vector<int> seen;
    } lines;
    player.notes().setObserver(&lines);
    const auto sheet =
        Sheet("", 60, "4/4", {Note(1, 3, 8, ' ', "D "), Directive("L^x"), Note(2, 3, 8)});
    keys(sheet);
    player.notes().setObserver(nullptr);
    EXPECT_EQ(lines.seen, (std::vector<int>{4, 4, 4, 6}));
}

TEST_F(WalkTest, EventLogFileKeepsTheRun) {
    const ::tahrir::test::TempFolder dir;
    const auto sheet =
        Sheet("", 60, "4/4", {Note(1, 3, 8), Directive("L^text"), Note(2, 3, 4, 'K')});
    keys(sheet, RunOptions{0, 0, dir / "tmpmid.txt"});
    std::ifstream in(dir / "tmpmid.txt", std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(text, "0,60,3,60\r\n1,60,3,0\r\n0,62,2,60\r\n0.5,62,2,0\r\n");
}

TEST_F(WalkTest, EmptyAndHostileSheetsEndCleanly) {
    core::ScoreSheet empty;
    EXPECT_TRUE(keys(empty).empty());
    auto odd = Sheet("KKKKKKK", 0, "x/y",
                     {Note(9, 9, 8), "1x 8", Note(1, 3, 999), Directive("REPB2"), Directive("REP}"),
                      Directive("REP}")});
    keys(odd);
    EXPECT_TRUE(std::isfinite(seconds));
    EXPECT_EQ(sink.messages().back(), PackNoteOff(127, 5));
    // A tempo bar set below its range (a score whose tempo is 0 leaves it unset) plays at
    // the bar's minimum of 20: a quarter lasts 3 seconds.
    player.controls().UserTempo = 0;
    keys(Sheet("", 0, "4/4", {Note(1, 3, 8), Note(2, 3, 8)}));
    EXPECT_EQ(onTimes(), (std::vector<double>{0, 3}));
    player.controls().UserTempo = 60;
}

} // namespace
} // namespace tahrir::play

namespace tahrir::play {
namespace {

// Random sheets built from every kind of line: each run ends, whatever the jumps.
TEST_F(WalkTest, RandomSheetsAlwaysEnd) {
    const std::string pool[] = {
        Note(1, 3, 8),      Note(5, 4, 4, 'K', "TR"), Note(3, 3, 2, 'S', "L3"),
        Note(2, 3, -1),     testing::Rest(8),         Bar(),
        Directive("REP{"),  Directive("REP}"),        Directive("REPS{"),
        Directive("REPS}"), Directive("VOL{1"),       Directive("REPB1"),
        Directive("REPB2"), Directive("TEMPO200"),    Directive("RHYTM3/8"),
        Directive("ALL8D"), Directive("LCTRP=12"),    Note(7, 9, 48, 'D', "8U")};
    unsigned seed = 12345;
    for (int run = 0; run < 200; ++run) {
        core::ScoreSheet sheet = Sheet("", 60, "2/4", {});
        const int lines = 4 + static_cast<int>(seed % 60);
        for (int i = 4; i < lines; ++i) {
            seed = seed * 1103515245 + 12345;
            sheet.setLine(i, pool[(seed >> 16) % std::size(pool)]);
        }
        sheet.LastLine = lines - 1;
        keys(sheet);
        ASSERT_EQ(sink.messages().back(), PackNoteOff(127, 5)) << "run " << run;
    }
    player.controls().Transpose = TransposeCentre;
    // A repeat sign that rewinds past the opening repeat sends the walk round for ever.
    const auto endless = Sheet(
        "", 60, "2/4", {Directive("REP{"), Note(1, 3, 16), Directive("REPB1"), Directive("REP}")});
    EXPECT_GT(keys(endless).size(), 1000u);
    EXPECT_EQ(sink.messages().back(), PackNoteOff(127, 5));
}

} // namespace
} // namespace tahrir::play
