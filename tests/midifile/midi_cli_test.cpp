// tahrir-cli export-midi, dump-midi and import-midi run as a script would run them: exit
// codes, messages on stderr, and the files they leave.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <fstream>

#include "midifile/midi_writer.h"
#include "smf_builder.h"
#include "temp_folder.h"

namespace tahrir::midifile {
namespace {

namespace fs = std::filesystem;
using ::tahrir::test::ReadByteVector;
using test::Quote;

struct CliRun {
    int code = -1;
    std::string out, err;
};

struct MidiCli : ::testing::Test {
    CliRun run(const std::vector<std::string>& args) {
        std::string command = Quote(TAHRIR_CLI);
        for (const auto& a : args)
            command += " " + Quote(a);
        command += " --app-folder " + Quote(app) + " >" + Quote(at("stdout")) + " 2>" +
                   Quote(at("stderr"));
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
                ::tahrir::test::ReadBytes(at("stdout")), ::tahrir::test::ReadBytes(at("stderr"))};
    }
    std::string at(const std::string& name) const { return (folder.path() / name).string(); }
    const ::tahrir::test::TempFolder folder;
    const fs::path app = folder.path() / "app";
};

TEST_F(MidiCli, ImportOptionsAndExitCodes) {
    const std::string midi = test::CorpusFile("valid/ney.mid").string(), out = at("ney.srv");

    // An answer that is no number, a fraction or an impossible track is a usage error.
    const std::pair<std::string, std::string> bad[] = {
        {"--octave-shift", "up"}, {"--octave-shift", "1.5"}, {"--octave-shift", "inf"},
        {"--track", "0"},         {"--track", "1e300"},      {"--track", "nan"}};
    for (const auto& [option, value] : bad) {
        EXPECT_EQ(run({"import-midi", midi, "--track", "2", "-o", out, option, value}).code, 1)
            << option << " " << value;
        EXPECT_FALSE(fs::exists(out)) << value;
    }

    // Unreadable input and refused files name the file on stderr.
    ::tahrir::test::WriteBytes(at("text.mid"), {'h', 'e', 'l', 'l', 'o'});
    CliRun r;
    for (const char* bad : {"none.mid", "text.mid"}) {
        r = run({"import-midi", at(bad), "--track", "2", "-o", out});
        EXPECT_EQ(r.code, 2) << bad;
        EXPECT_NE(r.err.find(bad), std::string::npos) << r.err;
    }
    EXPECT_NE(r.err.find("missing MThd"), std::string::npos) << r.err;

    // Octave 3 - 1 = 2: the options reach the importer, whose file is pinned by its own tests.
    r = run({"import-midi", midi, "--track", "2", "--octave-shift", "-1", "-o", out});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(test::Lines(::tahrir::test::ReadBytes(out)).at(9), "12  8      ");
}

TEST_F(MidiCli, DumpPrintsOneLineForEachEntry) {
    // A lyric with a line break inside stays one line of the dump.
    test::TrackBuilder t;
    t.meta(0, 0x05, "ya\r\nna").event(0, {0x90, 60, 90}).end(480);
    const Bytes bytes = test::BuildSmf(0, 480, {t});
    ::tahrir::test::WriteBytes(at("song.mid"), bytes);
    CliRun r = run({"dump-midi", at("song.mid")});
    ASSERT_EQ(r.code, 0) << r.err;
    const auto lines = test::Lines(r.out);
    ASSERT_EQ(lines.size(), test::Dump(bytes).size());
    EXPECT_EQ(lines[4], "t  0.000s  Tr1  Meta Lyric: ya  na");
    EXPECT_EQ(lines.back(), "===== Done =====");

    r = run({"dump-midi", at("gone.mid")});
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("gone.mid"), std::string::npos) << r.err;
    EXPECT_EQ(run({"dump-midi"}).code, 1);
}

TEST_F(MidiCli, ExportWritesTheLogOfItsPlayRun) {
    const std::string score = at("two.srv"), exact = at("two.mid");
    std::ofstream(score, std::ios::binary) << "\"Sv5 x\"\r\n\"Two\"\r\n       G   \r\nTEMPO60\r\n"
                                              "RHYTM4/4\r\n13  8      \r\n23  8K     \r\n";
    CliRun r = run({"export-midi", score, "-o", exact, "--tempo", "90"});
    ASSERT_EQ(r.code, 0) << r.err;
    // The copy, the program's own "TestMid.Mid" and the writer on the run's log agree,
    // with the tempo bar at 90: 666666 us a quarter.
    const auto bytes = ReadByteVector(exact);
    EXPECT_EQ(bytes, ReadByteVector(app / TestMidName));
    const EventLog log = ReadEventLog(app / EventLogName);
    EXPECT_EQ(log.records.size(), 4u);
    EXPECT_EQ(bytes, WriteMidiFile(log.records, 90).bytes);

    // A tempo beyond the bar stops at its end, 320.
    r = run({"export-midi", score, "-o", exact, "--tempo", "1e300"});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(ReadByteVector(exact),
              WriteMidiFile(ReadEventLog(app / EventLogName).records, 320).bytes);
    EXPECT_EQ(run({"export-midi", score, "-o", exact, "--tempo", "inf"}).code, 1);

    r = run({"export-midi", score, "-o", at("micro.mid"), "--microtonal"});
    ASSERT_EQ(r.code, 0) << r.err;
    const MidiFileInfo info = test::Info(ReadByteVector(at("micro.mid")));
    ASSERT_TRUE(info.complete());
    EXPECT_EQ(info.format, 1);
    ASSERT_EQ(info.MidiTracks.size(), 2u);
    EXPECT_EQ(info.MidiTracks[1].size(), 2u);

    r = run({"export-midi", score, "-o", (folder.path() / "no" / "x.mid").string()});
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("x.mid"), std::string::npos) << r.err;
}

} // namespace
} // namespace tahrir::midifile
