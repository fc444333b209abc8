#include <gtest/gtest.h>

#include "cli_run.h"
#include "core/page_store.h"
#include "score_files.h"

using namespace tahrir::test;
using tahrir::core::Scratch;

namespace {
const std::string kScore =
    Sv5File("\xDA\xE4\xE6\xC7\xE4 \\\r\nT",
            {"       G", "TEMPO 72", "RHYTM4/4", "03 -1", "L^Ms=1", "13  8 CTRAB", "ALL5D", "ALL8U",
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
    EXPECT_EQ(
        j.rfind(
            "{\"file\": \"" + at("s.srv") +
                "\", \"generation\": \"sv5\", "
                "\"scrambled\": false, \"description\": \"عنوان \\\\\\r\\nT\", \"lastLine\": 10, "
                "\"currentLine\": 4, \"dirty\": false, \"lines\": [",
            0),
        0u)
        << j;
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
    for (const auto& part : parts)
        EXPECT_TRUE(Has(j, part)) << part << "\n" << j;
    EXPECT_EQ(j.substr(j.size() - 3), "]}\n");
}

// 1 a usage error, 2 a file that cannot be read or written, named in the message. What a
// failed load or save leaves behind is core's to check.
TEST_F(Cli, ExitCodesOfTheScoreCommands) {
    std::string big = Sv5File("d", {"       G", "TEMPO 60", "RHYTM4/4"});
    for (int i = 0; i < 2046; ++i)
        big += "13  8\r\n";
    WriteBytes(folder / "big.srv", big);
    std::filesystem::create_directory(folder / "taken");
    const struct {
        std::vector<std::string> args;
        int code;
        std::string message;
    } cases[] = {
        {{"lines", at("nope.srv")}, 2, "nope.srv"},
        {{"lines"}, 1, ""},
        {{"lines", "a.srv", "--bogus"}, 1, ""},
        {{"lines", at("a?.srv")}, 2, "Can't read File Name"},
        {{"lines", folder.path().string()}, 2, folder.path().string()},
        {{"lines", at("big.srv")}, 2, "2048"},
        {{"new"}, 1, ""},
        {{"new", "-o", at("no/dir/x.srv")}, 2, "x.srv"},
        {{"save", at("s.srv")}, 1, ""},
        {{"save", at("x.srv"), "-o", at("out.srv")}, 2, "x.srv"},
        {{"save", at("s.srv"), "-o", at("taken")}, 2, "taken"},
    };
    for (const auto& c : cases) {
        const CliRun r = run(c.args);
        EXPECT_EQ(r.code, c.code) << c.args[0] << " " << c.message;
        EXPECT_TRUE(Has(r.err, c.message)) << r.err;
    }
}

TEST_F(Cli, LinesHostileInputsGiveAReport) {
    WriteBytes(folder / "empty.srv", "");
    const CliRun empty = run({"lines", at("empty.srv"), "--json"});
    ASSERT_EQ(empty.code, 0) << empty.err;
    EXPECT_TRUE(Has(empty.out, "\"generation\": \"oldest\"")) << empty.out;
    EXPECT_TRUE(Has(empty.out, "\"lastLine\": 0, \"currentLine\": 4"));
    EXPECT_TRUE(Has(empty.out, "\"lines\": []}"));
    // Control bytes in a description and a line come out escaped, never raw.
    WriteBytes(folder / "ctl.srv", Sv5File("a\x01"
                                           "b\tc",
                                           {"       G", "TEMPO60", "RHYTM4/4", "L^x\x1fy"}));
    const CliRun ctl = run({"lines", at("ctl.srv"), "--json"});
    ASSERT_EQ(ctl.code, 0) << ctl.err;
    EXPECT_TRUE(Has(ctl.out, "\"description\": \"a\\u0001b\\tc\"")) << ctl.out;
    EXPECT_TRUE(Has(ctl.out, "\"payload\": \"x\\u001fy\"")) << ctl.out;
    EXPECT_FALSE(Has(ctl.out, "\x1f"));
}

TEST_F(Cli, NewAnswersMakeTheScore) {
    const CliRun made = run({"new", "--tempo", "500", "--rhythm", "7/8", "--measures", "2", "-o",
                             at("new.srv"), "--description", "عنوان\nT"});
    ASSERT_EQ(made.code, 0) << made.err;
    const std::string bytes = ReadBytes(folder / "new.srv");
    EXPECT_EQ(bytes.rfind("\"Sv5", 0), 0u);
    EXPECT_TRUE(Has(bytes, "\"\xDA\xE4\xE6\xC7\xE4\r\nT\"\r\n"));
    EXPECT_TRUE(Has(bytes, "\r\n" + Scratch("TEMPO500") + "\r\n" + Scratch("RHYTM4/8") + "\r\n"));
    // Two header fields (the description on two lines), three head lines, two measures.
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 2 + 1 + 3 + 2 * 6);
    const CliRun defaults = run({"new", "-o", at("new.srv")});
    ASSERT_EQ(defaults.code, 0) << defaults.err;
    EXPECT_TRUE(Has(ReadBytes(folder / "new.srv"), "TEMPO60"));
    // Typed text takes the code page forms: the keyboard's yeh (U+06CC), Persian digits.
    ASSERT_EQ(run({"new", "-o", at("b.srv"), "--description", "بیات ۲", "--tempo", "۷۲"}).code, 0);
    EXPECT_TRUE(Has(ReadBytes(folder / "b.srv"), "\"\xC8\xED\xC7\xCA 2\"\r\n"));
    EXPECT_TRUE(Has(ReadBytes(folder / "b.srv"), "\r\nTEMPO72 "));
}

TEST_F(Cli, SaveRoundTrips) {
    const CliRun saved = run({"save", at("s.srv"), "-o", at("out.srv")});
    ASSERT_EQ(saved.code, 0) << saved.err;
    const std::string bytes = ReadBytes(folder / "out.srv");
    EXPECT_EQ(bytes.rfind("\"Sv5", 0), 0u);
    EXPECT_TRUE(Has(bytes, "\"\xDA\xE4\xE6\xC7\xE4 \\\r\nT\"\r\n")) << "description unchanged";
    EXPECT_TRUE(Has(bytes, "\r\n" + Scratch("ALL5D") + "\r\n")) << "lines padded to 32";
}
