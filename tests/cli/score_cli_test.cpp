#include <gtest/gtest.h>

#include "cli_run.h"
#include "core/page_store.h"
#include "score_files.h"

using namespace tahrir::test;

namespace {
const std::string kScore = Sv5File("\xDA\xE4\xE6\xC7\xE4 \\\r\nT", {
    "       G", "TEMPO 72", "RHYTM4/4", "03 -1", "L^Ms=1", "13  8 CTRAB", "ALL5D", "ALL8U",
    "LCTRP=2", "RHITHM6/8", "bad line"});
}

TEST(CliLines, PlainOutputOneLinePerIndex) {
    TempFolder folder;
    WriteBytes(folder / "s.srv", kScore);
    const CliRun run = RunCli(folder, {"lines", (folder / "s.srv").string()});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out.substr(0, run.out.find('\n')), "1\tHeaderLine\t       G" + std::string(24, ' '));
    EXPECT_NE(run.out.find("\n4\tBarLine\t03 -1" + std::string(17, ' ') + "\n"), std::string::npos);
    EXPECT_NE(run.out.find("\n6\tNoteLine\t13  8 "), std::string::npos);
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 10) << "the bad line is dropped";
    // The load goes through the editor's open command: undo store and recent list.
    EXPECT_EQ(std::filesystem::file_size(folder / "app" / "tmp.ctz"),
              tahrir::core::PageStore::FileBytes);
    EXPECT_TRUE(std::filesystem::exists(folder / "app" / "RecentList.TXT"));
}

TEST(CliLines, JsonReport) {
    TempFolder folder;
    WriteBytes(folder / "s.srv", kScore);
    const CliRun run = RunCli(folder, {"lines", (folder / "s.srv").string(), "--json"});
    ASSERT_EQ(run.code, 0) << run.err;
    const std::string& j = run.out;
    EXPECT_EQ(j.rfind("{\"file\": \"" + (folder / "s.srv").string() + "\", \"generation\": \"sv5\", "
                      "\"scrambled\": false, \"description\": \"عنوان \\\\\\r\\nT\", \"lastLine\": 10, "
                      "\"currentLine\": 4, \"dirty\": false, \"lines\": [", 0), 0u) << j;
    EXPECT_NE(j.find("{\"index\": 1, \"kind\": \"HeaderLine\", \"text\": \"       G" +
                     std::string(24, ' ') + "\", \"fields\": {}}"), std::string::npos);
    EXPECT_NE(j.find("\"kind\": \"NoteLine\", \"text\": \"13  8  TRAB" + std::string(11, ' ') +
                     "\", \"fields\": {\"PitchStep\": \"1\", \"PitchOctave\": \"3\", "
                     "\"DurationField\": \"  8\", \"AccidentalCode\": \" \", \"BeamCode\": \" \", "
                     "\"MarkCode\": \"TR\", \"ChordRootCode\": \"A\", \"ChordKindCode\": \"B\"}"),
              std::string::npos) << j;
    EXPECT_NE(j.find("\"fields\": {\"token\": \"ALL\", \"payload\": \"5D\"}"), std::string::npos);
    EXPECT_NE(j.find("\"fields\": {\"token\": \"ALL8U\", \"payload\": \"\"}"), std::string::npos);
    EXPECT_NE(j.find("\"fields\": {\"token\": \"TEMPO\", \"payload\": \" 72\"}"), std::string::npos);
    EXPECT_NE(j.find("\"kind\": \"TextLine\", \"text\": \"L^Ms=1" + std::string(16, ' ') +
                     "\", \"fields\": {\"head\": \"L^\", \"payload\": \"Ms=1\"}"), std::string::npos);
    EXPECT_NE(j.find("\"kind\": \"ControlLine\""), std::string::npos);
    EXPECT_EQ(j.substr(j.size() - 3), "]}\n");
}

TEST(CliLines, ErrorsAndExitCodes) {
    TempFolder folder;
    const CliRun missing = RunCli(folder, {"lines", (folder / "nope.srv").string()});
    EXPECT_EQ(missing.code, 2);
    EXPECT_NE(missing.err.find("nope.srv"), std::string::npos);
    EXPECT_EQ(RunCli(folder, {"lines"}).code, 1);
    EXPECT_EQ(RunCli(folder, {"lines", "a.srv", "--bogus"}).code, 1);
    const CliRun question = RunCli(folder, {"lines", (folder / "a?.srv").string()});
    EXPECT_EQ(question.code, 2);
    EXPECT_NE(question.err.find("Can't read File Name"), std::string::npos);

    std::string big = Sv5File("d", {"       G", "TEMPO 60", "RHYTM4/4"});
    for (int i = 0; i < 2046; ++i) big += "13  8\r\n";
    WriteBytes(folder / "big.srv", big);
    const CliRun tooMany = RunCli(folder, {"lines", (folder / "big.srv").string()});
    EXPECT_EQ(tooMany.code, 2);
    EXPECT_NE(tooMany.err.find("big.srv"), std::string::npos);
    EXPECT_NE(tooMany.err.find("2048"), std::string::npos);
}

TEST(CliNew, AnswersMakeTheScore) {
    TempFolder folder;
    const auto out = folder / "new.srv";
    const CliRun run = RunCli(folder, {"new", "--tempo", "500", "--rhythm", "7/8", "--measures",
                                       "2", "-o", out.string(), "--description", "عنوان\nT"});
    ASSERT_EQ(run.code, 0) << run.err;
    const std::string bytes = ReadBytes(out);
    EXPECT_EQ(bytes.rfind("\"Sv5", 0), 0u);
    EXPECT_NE(bytes.find("\"\xDA\xE4\xE6\xC7\xE4\r\nT\"\r\n"), std::string::npos);
    EXPECT_NE(bytes.find("\r\n" + tahrir::core::Scratch("TEMPO500") + "\r\n" +
                         tahrir::core::Scratch("RHYTM4/8") + "\r\n"), std::string::npos);
    EXPECT_NE(bytes.find(tahrir::core::Scratch("L^Ms=2")), std::string::npos);
    // Two header fields (the description on two lines), three head lines, two measures.
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 2 + 1 + 3 + 2 * 6);

    const CliRun defaults = RunCli(folder, {"new", "-o", out.string()});
    ASSERT_EQ(defaults.code, 0) << defaults.err;
    EXPECT_NE(ReadBytes(out).find("TEMPO60"), std::string::npos);
    EXPECT_EQ(RunCli(folder, {"new"}).code, 1) << "no output file";
    EXPECT_EQ(RunCli(folder, {"new", "-o", (folder / "no/dir/x.srv").string()}).code, 2);
}

TEST(CliSave, RoundTripPadsLinesTo32) {
    TempFolder folder;
    WriteBytes(folder / "s.srv", kScore);
    const auto out = folder / "out.srv";
    const CliRun run = RunCli(folder, {"save", (folder / "s.srv").string(), "-o", out.string()});
    ASSERT_EQ(run.code, 0) << run.err;
    const std::string bytes = ReadBytes(out);
    EXPECT_EQ(bytes.rfind("\"Sv5", 0), 0u);
    EXPECT_NE(bytes.find("\"\xDA\xE4\xE6\xC7\xE4 \\\r\nT\"\r\n"), std::string::npos)
        << "the description is written unchanged";
    EXPECT_NE(bytes.find("\r\n" + tahrir::core::Scratch("ALL5D") + "\r\n"), std::string::npos);
    EXPECT_EQ(RunCli(folder, {"save", (folder / "s.srv").string()}).code, 1);
    EXPECT_EQ(RunCli(folder, {"save", (folder / "x.srv").string(), "-o", out.string()}).code, 2);
}

TEST(CliLines, HostileInputsGiveAReportOrANamedError) {
    TempFolder folder;
    WriteBytes(folder / "empty.srv", "");
    const CliRun empty = RunCli(folder, {"lines", (folder / "empty.srv").string(), "--json"});
    ASSERT_EQ(empty.code, 0) << empty.err;
    EXPECT_NE(empty.out.find("\"generation\": \"oldest\""), std::string::npos) << empty.out;
    EXPECT_NE(empty.out.find("\"lastLine\": 0, \"currentLine\": 4"), std::string::npos);
    EXPECT_NE(empty.out.find("\"lines\": []}"), std::string::npos);

    // Control bytes in a description and a line come out escaped, never raw.
    WriteBytes(folder / "ctl.srv", Sv5File("a\x01" "b\tc", {"       G", "TEMPO60", "RHYTM4/4",
                                                           "L^x\x1fy"}));
    const CliRun ctl = RunCli(folder, {"lines", (folder / "ctl.srv").string(), "--json"});
    ASSERT_EQ(ctl.code, 0) << ctl.err;
    EXPECT_NE(ctl.out.find("\"description\": \"a\\u0001b\\tc\""), std::string::npos) << ctl.out;
    EXPECT_NE(ctl.out.find("\"payload\": \"x\\u001fy\""), std::string::npos) << ctl.out;
    EXPECT_EQ(ctl.out.find('\x1f'), std::string::npos);

    const CliRun dir = RunCli(folder, {"lines", folder.path().string()});
    EXPECT_EQ(dir.code, 2);
    EXPECT_NE(dir.err.find(folder.path().string()), std::string::npos) << dir.err;

    // Random bytes load as an old file: no crash, one report line per sheet index.
    std::string noise;
    for (int i = 0; i < 4000; ++i) noise += static_cast<char>((i * 7919 + i / 13) % 256);
    WriteBytes(folder / "noise.srv", noise);
    const CliRun garbage = RunCli(folder, {"lines", (folder / "noise.srv").string()});
    ASSERT_EQ(garbage.code, 0) << garbage.err;
    EXPECT_EQ(garbage.out.rfind("1\tHeaderLine\t", 0), 0u) << garbage.out.substr(0, 80);
}

TEST(CliNew, PersianTypedTextTakesTheCodePageForms) {
    TempFolder folder;
    const auto out = folder / "bayat.srv";
    // Yeh as a Persian keyboard types it (U+06CC) and a Persian digit.
    const CliRun run = RunCli(folder, {"new", "-o", out.string(), "--description", "بیات ۲"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_NE(ReadBytes(out).find("\"\xC8\xED\xC7\xCA 2\"\r\n"), std::string::npos);
    // Answers are typed text too: a tempo in Persian digits is the number 72.
    const CliRun digits = RunCli(folder, {"new", "-o", out.string(), "--tempo", "۷۲"});
    ASSERT_EQ(digits.code, 0) << digits.err;
    EXPECT_NE(ReadBytes(out).find("\r\nTEMPO72 "), std::string::npos);
}

TEST(CliSave, FailedSaveKeepsTheOldFile) {
    TempFolder folder;
    WriteBytes(folder / "s.srv", kScore);
    std::filesystem::create_directory(folder / "taken");
    const CliRun run = RunCli(folder, {"save", (folder / "s.srv").string(), "-o",
                                       (folder / "taken").string()});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.err.find("taken"), std::string::npos) << run.err;
    EXPECT_TRUE(std::filesystem::is_directory(folder / "taken"));
    // No temporary file is left beside the target.
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        files += entry.is_regular_file();
    EXPECT_EQ(files, 3) << "s.srv, stdout and stderr";
}
