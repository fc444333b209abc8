// tahrir-cli render and layout run as a script would run them: exit codes, messages on
// stderr, the files of each format and the keys and numbers of the layout JSON.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <QJsonDocument>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <utility>

#include "case_files.h"
#include "golden_text.h"
#include "temp_folder.h"

namespace tahrir::render {
namespace {

namespace fs = std::filesystem;

using ::tahrir::test::ReadBytes;
using ::tahrir::test::WriteBytes;

class RenderCli : public ::testing::Test {
protected:
    void SetUp() override {
        // One measure of a whole note in 4/4 at tempo 60.
        WriteBytes(Path("one.srv"), "\"Sv5 Tahrir score\"\r\n\"Test\r\n\"\r\n       G\r\n"
                                    "TEMPO60\r\nRHYTM4/4\r\n73 32\r\n");
    }

    fs::path Path(const std::string& name) const { return m_dir / name; }

    struct Run {
        int code = -1;
        std::string out, err;
    };
    Run Cli(const std::string& args) const {
        const std::string command =
            std::string("'") + TAHRIR_CLI + "' " + args + " --app-folder '" + Path("app").string() +
            "' >'" + Path("stdout").string() + "' 2>'" + Path("stderr").string() + "'";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(Path("stdout")),
                ReadBytes(Path("stderr"))};
    }
    std::string Arg(const std::string& name) const { return "'" + Path(name).string() + "'"; }
    Run Layout(const std::string& in, const std::string& more) const {
        return Cli("layout " + Arg(in) + " --json" + more);
    }

    ::tahrir::test::TempFolder m_dir;
};

// The golden DXF drawing opens with the title at half the page less 6 (A4's 11906 twips at
// zoom 3 / 5, 250 twips a unit, less the margin of 4, is 75.3733 units, so x = 31.69) on
// the finger layer; then the score's name.
TEST_F(RenderCli, EachFormatWritesItsFile) {
    const std::pair<const char*, std::string> formats[] = {
        {"page.png", "\x89PNG"}, {"page.pdf", "%PDF"}, {"page.svg", "<?xml"}, {"page.dxf", ""}};
    for (const auto& [name, head] : formats) {
        const Run r = Cli("render " + Arg("one.srv") + " -o " + Arg(name));
        EXPECT_EQ(r.code, 0) << name << ": " << r.err;
        EXPECT_EQ(ReadBytes(Path(name)).substr(0, head.size()), head) << name;
    }
    EXPECT_NE(ReadBytes(Path("page.svg")).find("<svg"), std::string::npos);
    ::tahrir::test::ExpectGoldenText(std::string(TAHRIR_TEST_DATA) + "/render/one_page.dxf",
                                     ReadBytes(Path("page.dxf")));
    // Only the .dxf asks for the stream: the page files leave no drawing beside them.
    EXPECT_FALSE(fs::exists(Path("one.srvDXF")));
}

TEST_F(RenderCli, BadInputsOptionsAndTargets) {
    using Args = std::vector<std::string>;
    const auto run = [this](const Args& a, std::size_t from) {
        std::string args;
        for (std::size_t i = from; i < a.size(); ++i)
            args += (i > from ? " " : "") + (a[i][0] == '@' ? Arg(a[i].substr(1)) : a[i]);
        return Cli(args);
    };
    ::tahrir::test::RunCaseFile(
        std::string(TAHRIR_TEST_DATA) + "/render/cli_cases.txt",
        {{"unusable",
          [&](const Args& a) {
              const Run r = run(a, 1);
              return std::to_string(r.code) + (r.err.find(a[0]) == std::string::npos
                                                   ? ", not naming " + a[0] + ": " + r.err
                                                   : "");
          }},
         {"usage", [&](const Args& a) {
              const Run r = run(a, 0);
              return std::to_string(r.code) + (r.err.empty() ? ", no message" : "");
          }}});
}

TEST_F(RenderCli, AnyBytesDrawWithoutFault) {
    std::mt19937 random(7);
    std::string garbage(4000, '\0');
    for (char& c : garbage)
        c = static_cast<char>(random());
    WriteBytes(Path("garbage.srv"), garbage);
    WriteBytes(Path("empty.srv"), "");
    WriteBytes(Path("long.srv"), std::string(200000, '7') + "\r\n");
    for (const char* name : {"garbage.srv", "empty.srv", "long.srv"}) {
        const Run page = Cli("render " + Arg(name) + " -o " + Arg("x.png"));
        EXPECT_TRUE(page.code == 0 || page.code == 2) << name << ": " << page.code;
        const Run layout = Layout(name, " --view working");
        EXPECT_TRUE(layout.code == 0 || layout.code == 2) << name << ": " << layout.code;
        if (layout.code == 0) {
            EXPECT_TRUE(QJsonDocument::fromJson(QByteArray::fromStdString(layout.out)).isObject())
                << name;
        }
    }
}

TEST_F(RenderCli, PageWidthOutOfRangeBecomesHundred) {
    const Run hundred = Layout("one.srv", " --width-units 100");
    ASSERT_EQ(hundred.code, 0) << hundred.err;
    for (const char* w : {"600", "0", "-3"}) {
        const Run r = Layout("one.srv", std::string(" --width-units ") + w);
        EXPECT_EQ(r.code, 0) << w << ": " << r.err;
        EXPECT_EQ(r.out, hundred.out) << w;
    }
    EXPECT_NE(Layout("one.srv", " --width-units 50").out, hundred.out);
}

// The golden JSON: one row; the staves end at A4's 11906 twips at zoom 3 / 5, 250 twips a
// unit, less the margin of 4; the row measures 25.8 of it (clef and row start 10, the header
// 0.8, the time signature 5, the whole note 8, the barline 2). The whole note's drawing ends
// behind its place and before the staff end; the header lines draw nothing of their own. The
// first measure's number stands 1.2 before the note, 6.5 above the staff base; the second,
// over the final barline, is never shown.
TEST_F(RenderCli, LayoutJsonKeysAndFullNumbers) {
    const Run r = Layout("one.srv", "");
    ASSERT_EQ(r.code, 0) << r.err;
    ::tahrir::test::ExpectGoldenText(std::string(TAHRIR_TEST_DATA) + "/render/one_layout.json",
                                     r.out);
}

TEST_F(RenderCli, PagedOutputWritesAPageAFileOrOnePdf) {
    // Forty measures of eighths: more than one page of A4 or Letter.
    std::string score =
        "\"Sv5 Tahrir score\"\r\n\"Long\r\n\"\r\n       G\r\nTEMPO60\r\nRHYTM4/4\r\n";
    for (int k = 0; k < 320; ++k)
        score += std::to_string(k % 7 + 1) + "4  4\r\n";
    WriteBytes(Path("long.srv"), score);
    for (const char* paper : {"", " --paper letter"}) {
        const Run pdf =
            Cli("render " + Arg("long.srv") + " --paged" + paper + " -o " + Arg("long.pdf"));
        ASSERT_EQ(pdf.code, 0) << pdf.err;
        const std::string bytes = ReadBytes(Path("long.pdf"));
        int pages = 0;
        for (auto at = bytes.find("/Type /Page"); at != std::string::npos;
             at = bytes.find("/Type /Page", at + 1))
            pages += bytes.compare(at, 12, "/Type /Pages") != 0;
        EXPECT_GE(pages, 2) << paper;
        const Run png =
            Cli("render " + Arg("long.srv") + " --paged" + paper + " -o " + Arg("long.png"));
        ASSERT_EQ(png.code, 0) << png.err;
        for (int n = 1; n <= pages; ++n)
            EXPECT_TRUE(fs::exists(Path("long-" + std::to_string(n) + ".png"))) << n;
        EXPECT_FALSE(fs::exists(Path("long-" + std::to_string(pages + 1) + ".png")));
        fs::remove(Path("long-1.png"));
    }
    for (const std::string& bad :
         {" --paged --paper a5 -o " + Arg("x.pdf"), " --paged -o " + Arg("x.dxf"),
          " --paper a4 -o " + Arg("x.pdf")}) {
        const Run r = Cli("render " + Arg("long.srv") + bad);
        EXPECT_EQ(r.code, 1) << bad;
        EXPECT_FALSE(r.err.empty()) << bad;
    }
}

} // namespace
} // namespace tahrir::render
