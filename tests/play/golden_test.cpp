#include <gtest/gtest.h>

#include <cstdio>

#include "golden_text.h"
#include "play/player.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using testing::Bar;
using testing::Directive;
using testing::Note;
using testing::Rest;
using testing::Sheet;

// Compares `text` with a file under tests/data/play.
void ExpectGolden(const std::string& text, const std::string& name) {
    ::tahrir::test::ExpectGoldenText(std::string(TAHRIR_TEST_DATA) + "/play/" + name, text);
}

// Every message of a run as "milliseconds<TAB>word", the closing all-notes-off folded.
std::string MessageList(const RecordingSink& sink) {
    std::string out;
    const auto& entries = sink.entries();
    const std::size_t shown = entries.size() >= 640 ? entries.size() - 640 : entries.size();
    char line[48];
    for (std::size_t i = 0; i < shown; ++i) {
        std::snprintf(line, sizeof line, "%.3f\t0x%08X\n", entries[i].seconds * 1000,
                      static_cast<unsigned>(entries[i].message));
        out += line;
    }
    return out + "all notes off\n";
}

// A short piece in Shur on Sol (La koron, Si flat) with a count-in, a repeat with its
// voltas, a tuplet, the ornaments, a tie, a rest and a mid-score koron on Mi.
core::ScoreSheet Piece() {
    // clang-format off
    return Sheet("     KB", 90, "3/4", {
        Note(5, 3, 8), Note(6, 3, 8, ' ', "T "), Note(7, 3, 8, ' ', "TR"), Bar(),
        Directive("REP{"), Note(6, 3, 4, ' ', "L3"), Note(5, 3, 4), Note(4, 3, 4),
        Note(6, 3, 8, ' ', "D "), Note(5, 3, 8, ' ', "M "), Bar(),
        Directive("VOL{1"), Note(4, 3, 8, ' ', ". "), Note(3, 3, 8, 'K', "3T"), Rest(8), Bar(),
        Directive("REP}"),
        Directive("VOL{2"), Note(5, 3, 16, ' ', "TI"), Note(5, 3, 8, 'S'), Bar(),
        Directive("ALL3K"), Note(3, 3, 8, ' ', "AC"), Note(5, 3, 16), Bar()});
    // clang-format on
}

TEST(GoldenRun, MessagesAndEventLogOfAPiece) {
    RecordingSink sink;
    Player player(&sink);
    player.startUp();
    sink.clear();
    player.controls().UserTempo = 90;
    player.controls().CountIn = true;
    player.playVirtual(Piece(), {});
    ExpectGolden(MessageList(sink), "piece_messages.txt");
    ExpectGolden(player.notes().eventLog().text(), "piece_tmpmid.txt");
}

} // namespace
} // namespace tahrir::play
