// Cross-checks with an independent tool: midicsv must read every file we write, and files
// that csvmidi builds must import as expected.

#include <gtest/gtest.h>

#include <fstream>

#include "midifile/microtonal_writer.h"
#include "midifile/midi_import.h"
#include "midifile/midi_writer.h"
#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

using test::Count;
using test::Quote;

bool HaveTools() {
    return std::system("command -v midicsv >/dev/null 2>&1 && command -v csvmidi >/dev/null 2>&1") == 0;
}

// The CSV rows midicsv gives for a file; empty when it refuses the file.
test::Strings MidiCsv(const ::tahrir::test::TempFolder& folder, const Bytes& bytes) {
    const auto mid = folder.path() / "check.mid", csv = folder.path() / "check.csv";
    const auto errors = folder.path() / "errors.txt";
    ::tahrir::test::WriteBytes(mid, bytes);
    const std::string command = "midicsv " + Quote(mid) + " " + Quote(csv) + " 2>" + Quote(errors);
    if (std::system(command.c_str()) != 0 || !::tahrir::test::ReadBytes(errors).empty()) return {};
    return test::Lines(::tahrir::test::ReadBytes(csv));
}

const std::vector<EventRecord> Log = {{0, 60, 3, 100}, {0.5, 60, 3, 0}, {0, 63, 2, 90},
                                      {0.25, 63, 2, 0}, {0.1, 66, 4, 80}, {1, 66, 4, 0}};

TEST(MidiCsv, ReadsOurPlainMicrotonalAndGoldenFiles) {
    if (!HaveTools()) GTEST_SKIP() << "midicsv is not installed";
    const ::tahrir::test::TempFolder folder;
    for (double tempo : {60.0, 1000.0}) {
        const auto rows = MidiCsv(folder, WriteMidiFile(Log, tempo).bytes);
        ASSERT_FALSE(rows.empty()) << tempo;
        EXPECT_EQ(rows.front(), "0, 0, Header, 1, 1, 480");
        EXPECT_EQ(Count(rows, "Note_on_c, 0, "), 3u);
        EXPECT_EQ(Count(rows, "Note_off_c, 0, "), 3u);
        EXPECT_EQ(rows.back(), "0, 0, End_of_file");
    }
    auto rows = MidiCsv(folder, WriteMidiFile(Log, 60).bytes);
    EXPECT_EQ(Count(rows, "1, 0, Tempo, 1000000"), 1u);
    EXPECT_EQ(Count(rows, "1, 0, Time_signature, 4, 2, 24, 32"), 1u);
    // At 60 beats half a second is 240 ticks; the next note off comes 120 later.
    EXPECT_EQ(Count(rows, "1, 240, Note_off_c, 0, 60, 32"), 1u);
    EXPECT_EQ(Count(rows, "1, 360, Note_off_c, 0, 63, 32"), 1u);

    rows = MidiCsv(folder, WriteMicrotonalFile(Log, {.tempo = 120}).bytes);
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front(), "0, 0, Header, 1, 2, 480");
    // At 120 beats a second is 960 ticks.
    for (const char* row : {"2, 0, Pitch_bend_c, 2, 6144", "2, 816, Note_on_c, 4, 66, 80"})
        EXPECT_EQ(Count(rows, row), 1u) << row;
}

TEST(MidiCsv, FileFromCsvmidiImports) {
    if (!HaveTools()) GTEST_SKIP() << "csvmidi is not installed";
    const ::tahrir::test::TempFolder folder;
    const auto csv = folder.path() / "in.csv", mid = folder.path() / "in.mid";
    std::ofstream(csv) << "0, 0, Header, 1, 2, 96\n1, 0, Start_track\n1, 0, Tempo, 400000\n"
                          "1, 0, Time_signature, 6, 3, 24, 8\n1, 0, End_track\n2, 0, Start_track\n"
                          "2, 0, Title_t, \"Santur\"\n2, 0, Note_on_c, 0, 69, 90\n2, 144, Note_on_c, 0, 69, 0\n"
                          "2, 144, Note_on_c, 0, 70, 90\n2, 168, Note_off_c, 0, 70, 0\n"
                          "2, 168, Note_on_c, 0, 48, 90\n2, 552, Note_off_c, 0, 48, 0\n2, 552, End_track\n"
                          "0, 0, End_of_file\n";
    ASSERT_EQ(std::system(("csvmidi " + Quote(csv) + " " + Quote(mid)).c_str()), 0);
    DumpList dump;
    const MidiFileInfo info = ReadMidiFile(mid, dump);
    ASSERT_TRUE(info.complete());
    core::Document doc;
    const ImportResult r = ImportTrack(info, 2, 0, doc, folder.path() / "out.srv");
    ASSERT_EQ(r.status, ImportStatus::Imported) << r.message;
    // 144 of 96 ticks is a dotted quarter, 24 a sixteenth, 384 a whole.
    EXPECT_EQ(doc.Sheet[2].text(), "TEMPO150");
    EXPECT_EQ(doc.Sheet[3].text(), "RHYTM6/8");
    EXPECT_EQ(doc.Sheet[8].text(), "63 12      ");
    EXPECT_EQ(doc.Sheet[9].text(), "63  2D     ");
    EXPECT_EQ(doc.Sheet[10].text(), "12 32      ");
    EXPECT_EQ(doc.Description, "Santur\r");
}

} // namespace
} // namespace tahrir::midifile
