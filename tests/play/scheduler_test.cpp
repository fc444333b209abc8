#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <utility>

#include "core/line_view.h"
#include "play/player.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using testing::Bar;
using testing::Note;
using testing::NoteEvent;
using testing::NoteEvents;
using testing::Sheet;

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

// One case of walks.txt: the sheet, the controls and what the run must show.
struct Walk {
    std::string what, head = "|60|4/4";
    std::vector<std::string> music;
    std::vector<std::pair<int, std::string>> placed;
    std::vector<std::pair<std::string, int>> settings;
    RunOptions options;
    std::vector<std::pair<std::string, std::string>> expected;
};

std::vector<Walk> ReadWalks() {
    std::ifstream in(std::string(TAHRIR_TEST_DATA) + "/play/walks.txt");
    std::vector<Walk> walks;
    Walk walk;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() && !walk.what.empty()) walks.push_back(std::exchange(walk, {}));
        if (line.empty() || line[0] == '#') continue;
        const auto space = std::min(line.find(' '), line.size());
        const std::string word = line.substr(0, space);
        const std::string rest = line.substr(std::min(space + 1, line.size()));
        std::istringstream args(rest);
        int number = 0;
        if (word == "case") walk.what += rest + " ";
        else if (word == "head") walk.head = rest;
        else if (word == "|") walk.music.push_back(rest);
        else if (word == "line" && args >> number)
            walk.placed.emplace_back(number, rest.substr(rest.find(' ') + 1));
        else if (std::string name; word == "set" && args >> name >> number)
            walk.settings.emplace_back(name, number);
        else if (word == "select")
            args >> walk.options.SelectionStartLine >> walk.options.SelectionEndLine;
        else walk.expected.emplace_back(word, rest);
    }
    if (!walk.what.empty()) walks.push_back(walk);
    return walks;
}

// Seconds to the microsecond, shortest form.
std::string Seconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", std::round(seconds * 1e6) / 1e6);
    return text;
}

// What a whole run of `walk` shows, by the names of the data file's expectations.
std::map<std::string, std::string> Outcome(const Walk& walk) {
    const auto bar1 = walk.head.find('|'), bar2 = walk.head.rfind('|');
    core::ScoreSheet sheet = Sheet(walk.head.substr(0, bar1),
                                   std::stoi(walk.head.substr(bar1 + 1, bar2 - bar1 - 1)),
                                   walk.head.substr(bar2 + 1).c_str(), {});
    sheet.LastLine = 3 + static_cast<int>(walk.music.size());
    for (std::size_t i = 0; i < walk.music.size(); ++i)
        sheet.setLine(4 + static_cast<int>(i), Dir(walk.music[i].c_str()));
    for (const auto& [line, text] : walk.placed)
        sheet.setLine(line, Dir(text.c_str()));
    RecordingSink sink;
    Player player(&sink);
    player.startUp();
    PlayControls& controls = player.controls();
    controls.UserTempo = 60;
    for (const auto& [name, value] : walk.settings) {
        if (name == "bar") controls.UserTempo = value;
        else if (name == "from") controls.StartMeasure = value;
        else if (name == "to") controls.EndMeasure = value;
        else ADD_FAILURE() << "no control " << name;
    }
    std::map<std::string, std::string> out = {{"keys", ""}, {"ons", ""}, {"times", ""}};
    out["length"] = Seconds(player.playVirtual(sheet, walk.options));
    for (const NoteEvent& e : NoteEvents(sink)) {
        if (e.kind != 'N' || e.channel == CountInChannel) continue;
        const std::string blank = out["keys"].empty() ? "" : " ";
        out["keys"] += blank + std::to_string(e.note);
        out["ons"] += blank + std::to_string(e.note) + "/" + std::to_string(e.channel);
        out["times"] += blank + Seconds(e.seconds);
        out.emplace("first", Seconds(e.seconds));
        out["last"] = Seconds(e.seconds);
    }
    return out;
}

TEST(Walks, EveryCaseOfTheDataFile) {
    const std::vector<Walk> walks = ReadWalks();
    EXPECT_GE(walks.size(), 18u);
    for (const Walk& walk : walks) {
        const auto outcome = Outcome(walk);
        for (const auto& [kind, text] : walk.expected) {
            ASSERT_TRUE(outcome.count(kind)) << "no outcome " << kind << " in " << walk.what;
            EXPECT_EQ(outcome.at(kind), text) << walk.what;
        }
    }
}

TEST_F(WalkTest, InstrumentDirectiveSetsTheProgram) {
    // "LCINS=1" is instrument button 0: Koto on the five voices.
    keys(Plain("4/4", {Dir("LCINS=1"), N(1, 8)}));
    EXPECT_EQ(std::ranges::count(sink.messages(), PackProgramChange(107, 3)), 1);
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
