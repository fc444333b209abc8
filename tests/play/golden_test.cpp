#include <gtest/gtest.h>

#include <cstdio>

#include "core/score_reader.h"
#include "golden_text.h"
#include "play/player.h"
#include "play_test_util.h"
#include "temp_folder.h"

namespace tahrir::play {
namespace {

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
TEST(GoldenRun, MessagesAndEventLogOfAPiece) {
    const std::string data = std::string(TAHRIR_TEST_DATA) + "/play/";
    core::Document piece;
    ASSERT_TRUE(
        core::ParseScore(::tahrir::test::ReadBytes(data + "piece.srv"), false, piece).loaded());
    RecordingSink sink;
    Player player(&sink);
    player.startUp();
    sink.clear();
    player.controls().UserTempo = 90;
    player.controls().CountIn = true;
    player.playVirtual(piece.Sheet, {});
    ::tahrir::test::ExpectGoldenText(data + "piece_messages.txt", MessageList(sink));
    ::tahrir::test::ExpectGoldenText(data + "piece_tmpmid.txt", player.notes().eventLog().text());
}

} // namespace
} // namespace tahrir::play
