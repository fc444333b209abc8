// Cross-checks with an independent tool: midicsv must read every file we write.

#include <gtest/gtest.h>

#include "midifile/microtonal_writer.h"
#include "midifile/midi_writer.h"
#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

using test::Count;
using test::Quote;

bool HaveMidiCsv() {
    return std::system("command -v midicsv >/dev/null 2>&1") == 0;
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

const std::vector<EventRecord> Log = {{0, 60, 3, 100},  {0.5, 60, 3, 0},  {0, 63, 2, 90},
                                      {0.25, 63, 2, 0}, {0.1, 66, 4, 80}, {1, 66, 4, 0}};

// The bytes themselves are pinned by the writers' own tests and the golden file; here an
// independent reader takes each kind of file whole.
TEST(MidiCsv, ReadsOurPlainAndMicrotonalFiles) {
    if (!HaveMidiCsv()) GTEST_SKIP() << "midicsv is not installed";
    const ::tahrir::test::TempFolder folder;
    const std::pair<Bytes, std::string> files[] = {
        {WriteMidiFile(Log, 60).bytes, "0, 0, Header, 1, 1, 480"},
        {WriteMidiFile(Log, 1000).bytes, "0, 0, Header, 1, 1, 480"}, // the tempo's filler byte
        {WriteMicrotonalFile(Log, {.tempo = 120}).bytes, "0, 0, Header, 1, 2, 480"},
    };
    for (const auto& [bytes, header] : files) {
        const auto rows = MidiCsv(folder, bytes);
        ASSERT_FALSE(rows.empty()) << header;
        EXPECT_EQ(rows.front(), header);
        EXPECT_EQ(Count(rows, "Note_on_c, ") + Count(rows, "Note_off_c, "), 6u) << header;
        EXPECT_EQ(rows.back(), "0, 0, End_of_file");
    }
}

} // namespace
} // namespace tahrir::midifile
