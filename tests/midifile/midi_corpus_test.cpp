// The corpus under tests/data/midifile/corpus: folder names state the verdict, and each
// file's dump is pinned in a golden file beside it ("NAME.mid.dump").

#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "golden_text.h"
#include "smf_builder.h"

namespace tahrir::midifile {
namespace {

namespace fs = std::filesystem;
using Verdict = std::function<bool(const MidiFileInfo&, const test::Strings&)>;

const std::map<std::string, Verdict> Verdicts = {
    {"valid", [](const MidiFileInfo& i, const auto& l) {
         return i.complete() && i.unfinishedTracks == 0 && l.back() == "===== Done =====";
     }},
    {"missing_mtrk", [](const MidiFileInfo& i, const auto& l) {
         return i.outcome == ReadOutcome::MissingTrack && l.back().rfind("[ERROR] Missing MTrk", 0) == 0;
     }},
    {"not_midi", [](const MidiFileInfo& i, const auto& l) {
         return i.outcome == ReadOutcome::NotMidi &&
                l == test::Strings{"[ERROR] Not a standard MIDI file (missing MThd)"};
     }},
    {"truncated", [](const MidiFileInfo& i, const auto&) { return !i.complete() || i.unfinishedTracks > 0; }},
    {"bad_smpte", [](const MidiFileInfo& i, const auto& l) {
         return i.complete() && test::Count(l, "[WARN] Invalid SMPTE division") > 0;
     }},
};

TEST(MidiCorpus, EveryFileMeetsItsFolderVerdictAndGoldenDump) {
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(TAHRIR_TEST_DATA) / "midifile" / "corpus")) {
        if (entry.path().extension() != ".mid") continue;
        ++files;
        const std::string folder = entry.path().parent_path().filename().string();
        ASSERT_TRUE(Verdicts.count(folder)) << "no verdict for folder " << folder;
        DumpList dump;
        const MidiFileInfo info = ReadMidiFile(entry.path(), dump);
        ASSERT_FALSE(dump.lines.empty());
        EXPECT_TRUE(Verdicts.at(folder)(info, dump.lines)) << entry.path();
        std::string text;
        for (const auto& l : dump.lines) text += l + "\n";
        ::tahrir::test::ExpectGoldenText(entry.path().string() + ".dump", text);
    }
    EXPECT_GE(files, 8);
}

} // namespace
} // namespace tahrir::midifile
