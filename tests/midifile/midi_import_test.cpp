#include "midifile/midi_import.h"

#include <gtest/gtest.h>

#include "core/score_reader.h"

#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

using test::BuildSmf;
using test::TrackBuilder;

// A conductor at 90 beats in 3/4, and "Ney" with Do a quarter, Do sharp an eighth and La
// sharp a half.
const std::filesystem::path Ney = test::CorpusFile("valid/ney.mid");

struct MidiImportTrack : ::testing::Test {
    ImportResult import(int track, int shift = 0) {
        return ImportTrack(info, track, shift, doc, file);
    }
    const ::tahrir::test::TempFolder folder;
    const std::filesystem::path file = folder.path() / "ney.srv";
    const MidiFileInfo info = test::Info(::tahrir::test::ReadByteVector(Ney));
    core::Document doc;
};

TEST_F(MidiImportTrack, WritesTheScoreFileThatReadsBackAndLeavesTheSheet) {
    const ImportResult r = import(2);
    ASSERT_EQ(r.status, ImportStatus::Imported) << r.message;
    EXPECT_EQ(r.notes, 3);
    EXPECT_EQ(::tahrir::test::ReadBytes(file),
              "\"Sv5 Tahrir score\"\r\n\"Ney\"\r\n       G   \r\nTEMPO90\r\nRHYTM3/4\r\n"
              "LCINS=1\r\nLCTRP=0\r\nLCOCT=0\r\nLCPED=OFF\r\n13  8      \r\n13  4D     \r\n62 16D  "
              "   \r\n");
    EXPECT_EQ(doc.Sheet[4].text(), "LCINS=HUMAN");
    EXPECT_EQ(doc.Sheet[10].text(), "62 16D     ");
    // The importer's count: three notes give LastLine 6, though they run to line 10.
    EXPECT_EQ(doc.Sheet.LastLine, 6);
    EXPECT_EQ(doc.Description, "Ney\r");

    // The score reader takes the file back whole, shifted an octave up.
    ASSERT_EQ(import(2, 1).status, ImportStatus::Imported);
    core::Document opened;
    const core::LoadResult load = core::ParseScore(::tahrir::test::ReadBytes(file), false, opened);
    ASSERT_TRUE(load.loaded()) << load.message;
    EXPECT_EQ(load.droppedLines, 0);
    EXPECT_EQ(opened.Description, "Ney");
    EXPECT_EQ(opened.Sheet.LastLine, 10); // seven plain head lines and three notes
    EXPECT_EQ(opened.Sheet[8].get(core::NoteField::PitchOctave), "4");
}

TEST_F(MidiImportTrack, EmptyTrackKeepsTheHeadLinesAndTracksOutsideTheFrameAreRefused) {
    ASSERT_EQ(import(1).status, ImportStatus::Imported);
    EXPECT_EQ(doc.Sheet[8].text(), "LCTFS=1");
    EXPECT_EQ(doc.Sheet[9].text(), "L>Midi In");
    EXPECT_EQ(doc.Sheet.LastLine, 3);
    for (int track : {0, 3, 19}) {
        const ImportResult r = import(track);
        EXPECT_EQ(r.status, ImportStatus::Failed) << track;
        EXPECT_NE(r.message.find(std::to_string(track)), std::string::npos) << r.message;
    }
}

TEST(MidiImport, TrackLongerThanTheSheetEndsWithAMessage) {
    // Notes go to lines 8 onward, so 2041 of them reach line 2048 and the next one cannot.
    TrackBuilder t;
    for (int i = 0; i < 2042; ++i)
        t.event(0, {0x90, 60, 90}).event(120, {0x80, 60, 0});
    const ::tahrir::test::TempFolder folder;
    core::Document doc;
    const auto file = folder.path() / "long.srv";
    const ImportResult r = ImportTrack(test::Info(BuildSmf(0, 480, {t.end()})), 1, 0, doc, file);
    EXPECT_EQ(r.status, ImportStatus::Failed);
    EXPECT_NE(r.message.find("2042"), std::string::npos) << r.message;
    EXPECT_EQ(r.notes, 2041);
    EXPECT_EQ(doc.Sheet[2048].text(), "13  2      ");
    EXPECT_EQ(test::Lines(::tahrir::test::ReadBytes(file)).size(), 9u + 2041);
}

class Chooser : public ImportChooser {
public:
    std::optional<int> chooseTrack(const MidiFileInfo& info,
                                   const std::vector<std::string>& dump) override {
        tracks = info.MidiTracks.size();
        dumped = dump.size();
        return track;
    }
    std::string askOctave(const std::string& prompt, const std::string& trackName) override {
        asked = prompt + "|" + trackName;
        return " 1";
    }
    std::optional<int> track;
    std::size_t tracks = 0, dumped = 0;
    std::string asked;
};

TEST(MidiImport, FilesTheReaderRefusesFailWithItsError) {
    // The parser stops before it collects any note; the message says why rather than that
    // the track is missing.
    Chooser chooser;
    chooser.track = 1;
    const ::tahrir::test::TempFolder folder;
    const std::pair<std::string, std::string> cases[] = {
        {"[ERROR] Not a standard MIDI file (missing MThd)", "invalid/not_midi/riff.mid"},
        {"[ERROR] Missing MTrk at track 3", "invalid/missing_mtrk/two_of_three.mid"},
    };
    for (const auto& [error, name] : cases) {
        core::Document doc;
        DumpList shown;
        const ImportResult r =
            ImportMidiFile(test::CorpusFile(name), folder.path() / "out.srv", chooser, shown, doc);
        EXPECT_EQ(r.status, ImportStatus::Failed) << error;
        EXPECT_NE(r.message.find(error.substr(8)), std::string::npos) << r.message;
        EXPECT_EQ(shown.lines.back(), error);
        EXPECT_FALSE(std::filesystem::exists(folder.path() / "out.srv")) << error;
    }
}

TEST(MidiImport, ChooserTakesTrackAndOctave) {
    Chooser chooser;
    const ::tahrir::test::TempFolder folder;
    const auto out = folder.path() / "out.srv";
    core::Document doc;
    DumpList shown;
    ImportResult r = ImportMidiFile(Ney, out, chooser, shown, doc);
    EXPECT_EQ(r.status, ImportStatus::Cancelled);
    EXPECT_FALSE(std::filesystem::exists(out));
    EXPECT_EQ(chooser.tracks, 2u);
    EXPECT_EQ(chooser.dumped, shown.lines.size());
    EXPECT_EQ(shown.lines.back(), "===== Done =====");

    chooser.track = 2;
    r = ImportMidiFile(Ney, out, chooser, shown, doc);
    ASSERT_EQ(r.status, ImportStatus::Imported) << r.message;
    EXPECT_EQ(chooser.asked, "Octave Transpose|Ney");
    EXPECT_EQ(doc.Sheet[8].text(), "14  8      ");

    r = ImportMidiFile(folder.path() / "none.mid", out, chooser, shown, doc);
    EXPECT_EQ(r.status, ImportStatus::Failed);
    EXPECT_NE(r.message.find("none.mid"), std::string::npos);
}

} // namespace
} // namespace tahrir::midifile
