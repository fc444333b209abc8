#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <utility>
#include <vector>

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

// Seconds to the microsecond, shortest form.
std::string Seconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", std::round(seconds * 1e6) / 1e6);
    return text;
}

// Adds `item` to a list of items separated by blanks.
void Add(std::string& list, const std::string& item) {
    list += (list.empty() ? "" : " ") + item;
}

// What a run sent and logged, under the names of the data file's expectations; the notes
// stop before the closing all-notes-off.
std::map<std::string, std::string> Seen(const RecordingSink& sink, const std::string& log) {
    std::map<std::string, std::string> seen;
    // The log's records one after the other, each ended by CR LF.
    for (std::size_t at = 0, end; (end = log.find("\r\n", at)) != std::string::npos; at = end + 2)
        Add(seen["log"], log.substr(at, end - at));
    const std::vector<NoteEvent> events = NoteEvents(sink);
    int offs = 0;
    for (std::size_t i = 0; i + 128 * 5 < events.size(); ++i) {
        const NoteEvent& e = events[i];
        const std::string key = std::to_string(e.note), channel = std::to_string(e.channel);
        const std::string velocity = std::to_string(e.velocity), at = "@" + Seconds(e.seconds);
        Add(seen["events"], e.kind + key + "/" + channel + "/" + velocity + at);
        offs += e.kind == 'F';
        if (e.kind != 'N' || e.channel == CountInChannel) continue;
        Add(seen["keys"], key);
        Add(seen["ons"], key + "/" + channel);
        Add(seen["times"], Seconds(e.seconds));
        Add(seen["velocities"], velocity);
    }
    seen["offs"] = std::to_string(offs);
    const char* const actions[] = {"play", "stop", "stop all", "pause", "resume", "seek"};
    for (const auto& w : sink.waves()) {
        if (w.command.bank != WaveBank::Accompaniment) continue;
        std::string& text = seen["accompaniment"];
        text += text.empty() ? "" : ", ";
        text += actions[static_cast<int>(w.command.action)];
        if (w.command.action == WaveAction::Seek) text += " " + std::to_string(w.command.value);
        if (w.command.action == WaveAction::Resume) text += " at " + Seconds(w.seconds);
    }
    return seen;
}

// The controls a case may move, each to a number, by the word that names it.
const std::map<std::string, void (*)(PlayControls&, int)> Settings = {
    {"bar", [](PlayControls& c, int v) { c.UserTempo = v; }},
    {"from", [](PlayControls& c, int v) { c.StartMeasure = v; }},
    {"to", [](PlayControls& c, int v) { c.EndMeasure = v; }},
    {"volume", [](PlayControls& c, int v) { c.VolScr = v; }},
    {"pedal", [](PlayControls& c, int v) { c.Pedal = v != 0; }},
    {"accompaniment", [](PlayControls& c, int v) { c.Accompaniment = v != 0; }},
};

// Runs one case of walks.txt, given as its lines, and checks what it expects.
void CheckWalk(const std::vector<std::string>& lines) {
    struct Marker : PlayObserver {
        void lineSounded(int line) override { Add(marked, std::to_string(line)); }
        std::string marked;
    } marker;
    RecordingSink sink;
    Player player(&sink);
    player.startUp();
    player.notes().setObserver(&marker);
    PlayControls& controls = player.controls();
    controls.UserTempo = 60;
    core::ScoreSheet sheet;
    RunOptions options;
    std::string what;
    std::map<std::string, std::string> expected;
    for (const std::string& line : lines) {
        const std::string word = line.substr(0, line.find(' '));
        const std::string rest = line.substr(std::min(word.size() + 1, line.size()));
        std::istringstream args(rest);
        int value = 0;
        if (word == "case")
            what += rest + " ";
        else if (word == "|")
            sheet.setLine(++sheet.LastLine, Dir(rest.c_str()));
        else if (Settings.count(word) && args >> value)
            Settings.at(word)(controls, value);
        else if (word == "select")
            args >> options.SelectionStartLine >> options.SelectionEndLine;
        else
            expected[word] = rest;
    }
    const double length = player.playVirtual(sheet, options);
    std::map<std::string, std::string> seen = Seen(sink, player.notes().eventLog().text());
    seen["length"] = Seconds(length);
    seen["marked"] = marker.marked;
    for (const auto& [kind, text] : expected)
        EXPECT_EQ(seen[kind], text) << kind << " of: " << what;
}

TEST(Walks, EveryCaseOfTheDataFile) {
    std::ifstream in(std::string(TAHRIR_TEST_DATA) + "/play/walks.txt");
    std::vector<std::string> lines;
    int cases = 0;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line[0] != '#') lines.push_back(line);
        if (!line.empty() || lines.empty()) continue;
        CheckWalk(std::exchange(lines, {}));
        ++cases;
    }
    EXPECT_TRUE(lines.empty()) << "the last case needs a blank line after it";
    EXPECT_GE(cases, 39);
}

TEST_F(WalkTest, InstrumentDirectiveSetsTheProgram) {
    // "LCINS=1" is instrument button 0: Koto on the five voices.
    keys(Plain("4/4", {Dir("LCINS=1"), N(1, 8)}));
    EXPECT_EQ(std::ranges::count(sink.messages(), PackProgramChange(107, 3)), 1);
}

TEST_F(WalkTest, HostileSheetsEndCleanly) {
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
