// The corpus under tests/data/midifile/corpus: folder names state the verdict, and each
// file's dump is pinned in a golden file beside it ("NAME.mid.dump"), refreshed only with
// TAHRIR_UPDATE_GOLDEN=1.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>

#include "midifile/midi_reader.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

namespace fs = std::filesystem;

const fs::path CorpusRoot = fs::path(TAHRIR_TEST_DATA) / "midifile" / "corpus";

bool Contains(const std::vector<std::string>& lines, const std::string& prefix) {
    for (const auto& l : lines)
        if (l.rfind(prefix, 0) == 0) return true;
    return false;
}

using Verdict = std::function<bool(const MidiFileInfo&, const std::vector<std::string>&)>;

const std::map<std::string, Verdict>& Verdicts() {
    static const std::map<std::string, Verdict> verdicts = {
        {"valid", [](const MidiFileInfo& i, const auto& l) {
             return i.complete() && i.unfinishedTracks == 0 && l.back() == "===== Done =====";
         }},
        {"missing_mtrk", [](const MidiFileInfo& i, const auto& l) {
             return i.outcome == ReadOutcome::MissingTrack && l.back().rfind("[ERROR] Missing MTrk", 0) == 0;
         }},
        {"not_midi", [](const MidiFileInfo& i, const auto& l) {
             return i.outcome == ReadOutcome::NotMidi &&
                    l == std::vector<std::string>{"[ERROR] Not a standard MIDI file (missing MThd)"};
         }},
        {"truncated", [](const MidiFileInfo& i, const auto&) {
             return !i.complete() || i.unfinishedTracks > 0;
         }},
        {"bad_smpte", [](const MidiFileInfo& i, const auto& l) {
             return i.complete() && Contains(l, "[WARN] Invalid SMPTE division");
         }},
    };
    return verdicts;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const auto& l : lines) text += l + "\n";
    return text;
}

TEST(MidiCorpus, EveryFileMeetsItsFolderVerdictAndGoldenDump) {
    const bool update = std::getenv("TAHRIR_UPDATE_GOLDEN") != nullptr &&
                        std::string(std::getenv("TAHRIR_UPDATE_GOLDEN")) == "1";
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(CorpusRoot)) {
        if (entry.path().extension() != ".mid") continue;
        ++files;
        const std::string folder = entry.path().parent_path().filename().string();
        ASSERT_TRUE(Verdicts().count(folder)) << "no verdict for folder " << folder;
        DumpList dump;
        const MidiFileInfo info = ReadMidiFile(entry.path(), dump);
        ASSERT_FALSE(dump.lines.empty());
        EXPECT_TRUE(Verdicts().at(folder)(info, dump.lines)) << entry.path();
        const fs::path golden = entry.path().string() + ".dump";
        if (update) std::ofstream(golden, std::ios::binary) << Joined(dump.lines);
        EXPECT_EQ(Joined(dump.lines), ::tahrir::test::ReadBytes(golden)) << golden;
    }
    EXPECT_GE(files, 8);
}

} // namespace
} // namespace tahrir::midifile
