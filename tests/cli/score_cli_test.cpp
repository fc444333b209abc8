#include <gtest/gtest.h>

#include "cli_run.h"
#include "core/page_store.h"
#include "score_files.h"

using namespace tahrir::test;
using tahrir::core::Scratch;

namespace {
const std::string kScore = Sv5File("\xDA\xE4\xE6\xC7\xE4 \\\r\nT", {
    "       G", "TEMPO 72", "RHYTM4/4", "03 -1", "L^Ms=1", "13  8 CTRAB", "ALL5D", "ALL8U",
    "LCTRP=2", "RHITHM6/8", "bad line"});

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// A folder holding s.srv (kScore); run() calls the CLI with files named inside it.
class Cli : public ::testing::Test {
protected:
    void SetUp() override { WriteBytes(folder / "s.srv", kScore); }
    std::string at(const std::string& name) const { return (folder / name).string(); }
    CliRun run(const std::vector<std::string>& args) const { return RunCli(folder, args); }
    TempFolder folder;
};
} // namespace

TEST_F(Cli, LinesPlainAndJsonReports) {
    const CliRun lines = run({"lines", at("s.srv")});
    ASSERT_EQ(lines.code, 0) << lines.err;
    const std::string& out = lines.out;
    EXPECT_EQ(out.substr(0, out.find('\n')), "1\tHeaderLine\t       G" + std::string(24, ' '));
    EXPECT_TRUE(Has(out, "\n4\tBarLine\t03 -1" + std::string(17, ' ') + "\n"));
    EXPECT_TRUE(Has(out, "\n6\tNoteLine\t13  8 "));
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 10) << "the bad line is dropped";
    // The load goes through the editor's open command: undo store and recent list.
    EXPECT_EQ(std::filesystem::file_size(folder / "app" / "tmp.ctz"),
              tahrir::core::PageStore::FileBytes);
    EXPECT_TRUE(std::filesystem::exists(folder / "app" / "RecentList.TXT"));
    const CliRun report = run({"lines", at("s.srv"), "--json"});
    ASSERT_EQ(report.code, 0) << report.err;
    const std::string& j = report.out;
    EXPECT_EQ(j.rfind("{\"file\": \"" + at("s.srv") + "\", \"generation\": \"sv5\", "
                      "\"scrambled\": false, \"description\": \"عنوان \\\\\\r\\nT\", \"lastLine\": 10, "
                      "\"currentLine\": 4, \"dirty\": false, \"lines\": [", 0), 0u) << j;
    const std::string parts[] = {
        "{\"index\": 1, \"kind\": \"HeaderLine\", \"text\": \"       G" + std::string(24, ' ') +
            "\", \"fields\": {}}",
        "\"kind\": \"NoteLine\", \"text\": \"13  8  TRAB" + std::string(11, ' ') +
            "\", \"fields\": {\"PitchStep\": \"1\", \"PitchOctave\": \"3\", "
            "\"DurationField\": \"  8\", \"AccidentalCode\": \" \", \"BeamCode\": \" \", "
            "\"MarkCode\": \"TR\", \"ChordRootCode\": \"A\", \"ChordKindCode\": \"B\"}",
        "\"fields\": {\"token\": \"ALL\", \"payload\": \"5D\"}",
        "\"fields\": {\"token\": \"ALL8U\", \"payload\": \"\"}",
        "\"fields\": {\"token\": \"TEMPO\", \"payload\": \" 72\"}",
        "\"kind\": \"TextLine\", \"text\": \"L^Ms=1" + std::string(16, ' ') +
            "\", \"fields\": {\"head\": \"L^\", \"payload\": \"Ms=1\"}",
        "\"kind\": \"ControlLine\""};
    for (const auto& part : parts) EXPECT_TRUE(Has(j, part)) << part << "\n" << j;
    EXPECT_EQ(j.substr(j.size() - 3), "]}\n");
}

TEST_F(Cli, LinesErrorsAndExitCodes) {
    const CliRun missing = run({"lines", at("nope.srv")});
    EXPECT_EQ(missing.code, 2);
    EXPECT_TRUE(Has(missing.err, "nope.srv"));
    EXPECT_EQ(run({"lines"}).code, 1);
    EXPECT_EQ(run({"lines", "a.srv", "--bogus"}).code, 1);
    const CliRun question = run({"lines", at("a?.srv")});
    EXPECT_EQ(question.code, 2);
    EXPECT_TRUE(Has(question.err, "Can't read File Name"));
    const CliRun dir = run({"lines", folder.path().string()});
    EXPECT_EQ(dir.code, 2);
    EXPECT_TRUE(Has(dir.err, folder.path().string())) << dir.err;
    std::string big = Sv5File("d", {"       G", "TEMPO 60", "RHYTM4/4"});
    for (int i = 0; i < 2046; ++i) big += "13  8\r\n";
    WriteBytes(folder / "big.srv", big);
    const CliRun tooMany = run({"lines", at("big.srv")});
    EXPECT_EQ(tooMany.code, 2);
    EXPECT_TRUE(Has(tooMany.err, "big.srv") && Has(tooMany.err, "2048")) << tooMany.err;
}

TEST_F(Cli, LinesHostileInputsGiveAReport) {
    WriteBytes(folder / "empty.srv", "");
    const CliRun empty = run({"lines", at("empty.srv"), "--json"});
    ASSERT_EQ(empty.code, 0) << empty.err;
    EXPECT_TRUE(Has(empty.out, "\"generation\": \"oldest\"")) << empty.out;
    EXPECT_TRUE(Has(empty.out, "\"lastLine\": 0, \"currentLine\": 4"));
    EXPECT_TRUE(Has(empty.out, "\"lines\": []}"));
    // Control bytes in a description and a line come out escaped, never raw.
    WriteBytes(folder / "ctl.srv",
               Sv5File("a\x01" "b\tc", {"       G", "TEMPO60", "RHYTM4/4", "L^x\x1fy"}));
    const CliRun ctl = run({"lines", at("ctl.srv"), "--json"});
    ASSERT_EQ(ctl.code, 0) << ctl.err;
    EXPECT_TRUE(Has(ctl.out, "\"description\": \"a\\u0001b\\tc\"")) << ctl.out;
    EXPECT_TRUE(Has(ctl.out, "\"payload\": \"x\\u001fy\"")) << ctl.out;
    EXPECT_FALSE(Has(ctl.out, "\x1f"));
    // Random bytes load as an old file: no crash, one report line per sheet index.
    std::string noise;
    for (int i = 0; i < 4000; ++i) noise += static_cast<char>((i * 7919 + i / 13) % 256);
    WriteBytes(folder / "noise.srv", noise);
    const CliRun garbage = run({"lines", at("noise.srv")});
    ASSERT_EQ(garbage.code, 0) << garbage.err;
    EXPECT_EQ(garbage.out.rfind("1\tHeaderLine\t", 0), 0u) << garbage.out.substr(0, 80);
}

TEST_F(Cli, NewAnswersMakeTheScore) {
    const CliRun made = run({"new", "--tempo", "500", "--rhythm", "7/8", "--measures", "2", "-o",
                             at("new.srv"), "--description", "عنوان\nT"});
    ASSERT_EQ(made.code, 0) << made.err;
    const std::string bytes = ReadBytes(folder / "new.srv");
    EXPECT_EQ(bytes.rfind("\"Sv5", 0), 0u);
    EXPECT_TRUE(Has(bytes, "\"\xDA\xE4\xE6\xC7\xE4\r\nT\"\r\n"));
    EXPECT_TRUE(Has(bytes, "\r\n" + Scratch("TEMPO500") + "\r\n" + Scratch("RHYTM4/8") + "\r\n"));
    EXPECT_TRUE(Has(bytes, Scratch("L^Ms=2")));
    // Two header fields (the description on two lines), three head lines, two measures.
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 2 + 1 + 3 + 2 * 6);
    const CliRun defaults = run({"new", "-o", at("new.srv")});
    ASSERT_EQ(defaults.code, 0) << defaults.err;
    EXPECT_TRUE(Has(ReadBytes(folder / "new.srv"), "TEMPO60"));
    EXPECT_EQ(run({"new"}).code, 1) << "no output file";
    EXPECT_EQ(run({"new", "-o", at("no/dir/x.srv")}).code, 2);
    // Typed text takes the code page forms: the keyboard's yeh (U+06CC), Persian digits.
    ASSERT_EQ(run({"new", "-o", at("b.srv"), "--description", "بیات ۲"}).code, 0);
    EXPECT_TRUE(Has(ReadBytes(folder / "b.srv"), "\"\xC8\xED\xC7\xCA 2\"\r\n"));
    ASSERT_EQ(run({"new", "-o", at("b.srv"), "--tempo", "۷۲"}).code, 0);
    EXPECT_TRUE(Has(ReadBytes(folder / "b.srv"), "\r\nTEMPO72 "));
}

TEST_F(Cli, SaveRoundTripsAndAFailedSaveKeepsTheOldFile) {
    const CliRun saved = run({"save", at("s.srv"), "-o", at("out.srv")});
    ASSERT_EQ(saved.code, 0) << saved.err;
    const std::string bytes = ReadBytes(folder / "out.srv");
    EXPECT_EQ(bytes.rfind("\"Sv5", 0), 0u);
    EXPECT_TRUE(Has(bytes, "\"\xDA\xE4\xE6\xC7\xE4 \\\r\nT\"\r\n")) << "description unchanged";
    EXPECT_TRUE(Has(bytes, "\r\n" + Scratch("ALL5D") + "\r\n")) << "lines padded to 32";
    EXPECT_EQ(run({"save", at("s.srv")}).code, 1);
    EXPECT_EQ(run({"save", at("x.srv"), "-o", at("out.srv")}).code, 2);
    std::filesystem::remove(folder / "out.srv");
    std::filesystem::create_directory(folder / "taken");
    const CliRun blocked = run({"save", at("s.srv"), "-o", at("taken")});
    EXPECT_EQ(blocked.code, 2);
    EXPECT_TRUE(Has(blocked.err, "taken")) << blocked.err;
    EXPECT_TRUE(std::filesystem::is_directory(folder / "taken"));
    int files = 0; // no temporary file is left beside the target
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        files += entry.is_regular_file();
    EXPECT_EQ(files, 3) << "s.srv, stdout and stderr";
}
