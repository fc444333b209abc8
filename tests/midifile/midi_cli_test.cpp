// tahrir-cli export-midi, dump-midi and import-midi run as a script would run them: exit
// codes, messages on stderr, and the files they leave.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <sstream>

#include "midifile/midi_reader.h"
#include "midifile/midi_writer.h"
#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

namespace fs = std::filesystem;
using test::BuildSmf;
using test::TrackBuilder;

struct CliRun {
    int code = -1;
    std::string out;
    std::string err;
};

std::string Quote(const std::string& arg) {
    std::string out = "'";
    for (char c : arg) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

CliRun Cli(const ::tahrir::test::TempFolder& folder, const std::vector<std::string>& args) {
    std::string command = Quote(TAHRIR_CLI);
    for (const auto& a : args) command += " " + Quote(a);
    command += " --app-folder " + Quote((folder.path() / "app").string());
    command += " >" + Quote((folder.path() / "stdout").string());
    command += " 2>" + Quote((folder.path() / "stderr").string());
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            ::tahrir::test::ReadBytes(folder.path() / "stdout"),
            ::tahrir::test::ReadBytes(folder.path() / "stderr")};
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// One track named "Ney" with Do for a quarter and Re for an eighth.
test::Bytes NeyFile() {
    TrackBuilder t;
    t.meta(0, 0x03, "Ney").event(0, {0x90, 60, 90}).event(480, {0x80, 60, 0});
    t.event(0, {0x90, 62, 90}).event(240, {62, 0}).end();
    return BuildSmf(0, 480, {t});
}

TEST(MidiCli, ImportOptionsAndExitCodes) {
    const ::tahrir::test::TempFolder folder;
    const std::string midi = (folder.path() / "ney.mid").string();
    const std::string out = (folder.path() / "ney.srv").string();
    ::tahrir::test::WriteBytes(midi, NeyFile());

    // An answer that is no number, a fraction or an impossible track is a usage error.
    for (const std::vector<std::string>& bad :
         {std::vector<std::string>{"--octave-shift", "up"}, {"--octave-shift", "1.5"},
          {"--octave-shift", "inf"}, {"--track", "0"}, {"--track", "1e300"}, {"--track", "nan"}}) {
        std::vector<std::string> args = {"import-midi", midi, "--track", "1", "-o", out};
        args.insert(args.end(), bad.begin(), bad.end());
        const CliRun run = Cli(folder, args);
        EXPECT_EQ(run.code, 1) << bad[0] << " " << bad[1];
        EXPECT_FALSE(fs::exists(out)) << bad[1];
    }

    // Unreadable input and refused files name the file on stderr.
    CliRun run = Cli(folder, {"import-midi", (folder.path() / "none.mid").string(), "--track", "1", "-o", out});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("none.mid"), std::string::npos) << run.err;
    ::tahrir::test::WriteBytes(folder.path() / "text.mid", {'h', 'e', 'l', 'l', 'o'});
    run = Cli(folder, {"import-midi", (folder.path() / "text.mid").string(), "--track", "1", "-o", out});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("text.mid"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("missing MThd"), std::string::npos) << run.err;

    // Octave 3 - 1 = 2; the eighth is 4 32nds.
    run = Cli(folder, {"import-midi", midi, "--track", "1", "--octave-shift", "-1", "-o", out});
    ASSERT_EQ(run.code, 0) << run.err;
    const auto lines = Lines(::tahrir::test::ReadBytes(out));
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[1], "\"Ney\"");
    EXPECT_EQ(lines[9], "12  8      ");
    EXPECT_EQ(lines[10], "22  4      ");
}

TEST(MidiCli, DumpPrintsOneLineForEachEntry) {
    const ::tahrir::test::TempFolder folder;
    // A lyric with a line break inside stays one line of the dump.
    TrackBuilder t;
    t.meta(0, 0x05, "ya\r\nna").event(0, {0x90, 60, 90}).end(480);
    const fs::path midi = folder.path() / "song.mid";
    ::tahrir::test::WriteBytes(midi, BuildSmf(0, 480, {t}));
    CliRun run = Cli(folder, {"dump-midi", midi.string()});
    ASSERT_EQ(run.code, 0) << run.err;
    DumpList expected;
    ReadMidiBytes(::tahrir::test::ReadByteVector(midi), expected);
    const auto lines = Lines(run.out);
    ASSERT_EQ(lines.size(), expected.lines.size());
    EXPECT_EQ(lines[4], "t  0.000s  Tr1  Meta Lyric: ya  na");
    EXPECT_EQ(lines.back(), "===== Done =====");

    run = Cli(folder, {"dump-midi", (folder.path() / "gone.mid").string()});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("gone.mid"), std::string::npos) << run.err;
    EXPECT_EQ(Cli(folder, {"dump-midi"}).code, 1);
}

TEST(MidiCli, ExportWritesTheLogOfItsPlayRun) {
    const ::tahrir::test::TempFolder folder;
    const fs::path score = folder.path() / "two.srv";
    std::ofstream(score, std::ios::binary) << "\"Sv5 x\"\r\n\"Two\"\r\n       G   \r\nTEMPO60\r\n"
                                              "RHYTM4/4\r\n13  8      \r\n23  8K     \r\n";
    const fs::path exact = folder.path() / "two.mid";
    CliRun run = Cli(folder, {"export-midi", score.string(), "-o", exact.string(), "--tempo", "90"});
    ASSERT_EQ(run.code, 0) << run.err;
    // The copy, the program's own "TestMid.Mid" and the writer on the run's log agree,
    // with the tempo bar at 90: 666666 us a quarter.
    const fs::path app = folder.path() / "app";
    const auto bytes = ::tahrir::test::ReadByteVector(exact);
    EXPECT_EQ(bytes, ::tahrir::test::ReadByteVector(app / TestMidName));
    const EventLog log = ReadEventLog(app / EventLogName);
    EXPECT_EQ(log.records.size(), 4u);
    EXPECT_EQ(bytes, WriteMidiFile(log.records, 90).bytes);

    // A tempo beyond the bar stops at its end, 320.
    run = Cli(folder, {"export-midi", score.string(), "-o", exact.string(), "--tempo", "1e300"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(::tahrir::test::ReadByteVector(exact),
              WriteMidiFile(ReadEventLog(app / EventLogName).records, 320).bytes);
    EXPECT_EQ(Cli(folder, {"export-midi", score.string(), "-o", exact.string(), "--tempo", "inf"}).code, 1);

    const fs::path micro = folder.path() / "micro.mid";
    run = Cli(folder, {"export-midi", score.string(), "-o", micro.string(), "--microtonal"});
    ASSERT_EQ(run.code, 0) << run.err;
    DumpList dump;
    const MidiFileInfo info = ReadMidiFile(micro, dump);
    ASSERT_TRUE(info.complete());
    EXPECT_EQ(info.format, 1);
    ASSERT_EQ(info.MidiTracks.size(), 2u);
    EXPECT_EQ(info.MidiTracks[1].size(), 2u);

    run = Cli(folder, {"export-midi", score.string(), "-o", (folder.path() / "no" / "x.mid").string()});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("x.mid"), std::string::npos) << run.err;
}

} // namespace
} // namespace tahrir::midifile
