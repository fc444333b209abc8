// MusicXML export: golden files of small scores, the alters under other bends, the
// key signature forms and the compressed container.

#include <gtest/gtest.h>
#include <zip.h>

#include "cli_run.h"
#include "core/rhythm_pass.h"
#include "core/score_reader.h"
#include "golden_text.h"
#include "musicxml/score_export.h"
#include "temp_folder.h"

namespace tahrir::musicxml {
namespace {

core::Document Score(const std::string& description, std::initializer_list<std::string> lines) {
    std::string bytes = "\"Sv5\"\r\n\"" + description + "\"\r\n";
    for (const std::string& l : lines)
        bytes += l + "\r\n";
    core::Document doc;
    core::ParseScore(bytes, false, doc);
    core::RhythmPass(doc.Sheet);
    return doc;
}

void ExpectGolden(const std::string& name, const std::string& actual) {
    tahrir::test::ExpectGoldenText(std::string(TAHRIR_TEST_DATA) + "/musicxml/" + name, actual);
}

// Every family of sign on a few measures: a non-traditional key, accidentals and the
// measure's memory, a key change to a standard key, a time and tempo change, a tuplet, a
// grace note, a tie and a slur, chord symbols, lyrics, marks, fingering, octave shifts
// and an interval pair.
core::Document SignsScore() {
    return Score("\xDA\xE4\xE6\xC7\xE4\r\nA test & more",
                 {
                     "   S  KG",  "TEMPO72",        "RHYTM4/4",  "L_\xC8\xC7-", "13  4K TI",
                     "13  4",     "L_\xD1\xC7\xE4", "43  4  TR", "43  4",       "63  8  . AM",
                     "73  8N",    "73  8",          "33  4  L3", "23  4",       "13  4",
                     "53 -1",     "43  8  T ",      "L^Text",    "03  8",       "ALL7N",
                     "ALL4D",     "ALL8U",          "RHYTM3/4",  "TEMPO-90",    "43  8D AC",
                     "43  8",     "44  8S 3 ",      "ALL8N",     "54 12  D ",   "14  4  O ",
                     "34  4  8 ", "23  8  2T",      "13 16  8U", "63  8B 7 ",   "44  4  TB",
                     "44  4  M ", "44  4  1 ",      "74 16  2M", "03 16",
                 });
}

// Repeats, voltas, signs, a measure repeat, a pickup and free rhythm.
core::Document RepeatsScore() {
    return Score("", {
                         "      BF", "TEMPO60", "RHYTM2/4", "13  8", "03 -1", "REP{",  "23  8",
                         "33  8",    "VOL{1",   "43 16",    "REP}",  "VOL{2", "53 16", "REPS{",
                         "63  4",    "63  4",   "REPB1",    "REPS}", "73  4", "73  4", "RHYTM0/0",
                         "14  8",    "24  8",   "03 -1",    "34  4", "L-FIN",
                     });
}

TEST(MusicXmlExport, GoldenFiles) {
    ExpectGolden("signs.musicxml", ExportMusicXml(SignsScore()));
    ExpectGolden("repeats.musicxml", ExportMusicXml(RepeatsScore()));
}

// The alters follow the bends that playback gives koron and sori: the koron C and the
// sori F of the signs score, in 32nds of a semitone.
TEST(MusicXmlExport, AltersFollowTheBends) {
    const std::string xml = ExportMusicXml(SignsScore(), ExportOptions{-10, 24});
    EXPECT_NE(xml.find("<step>C</step><alter>-0.3125</alter>"), std::string::npos);
    EXPECT_NE(xml.find("<step>F</step><alter>0.75</alter>"), std::string::npos);
}

TEST(MusicXmlExport, KeySignatureForms) {
    const struct {
        const char* header;
        const char* key;
    } cases[] = {
        {"       G", "<key><fifths>0</fifths></key>"},
        {"   D   G", "<key><fifths>1</fifths></key>"},
        {"D  DD  G", "<key><fifths>3</fifths></key>"},
        {"  B   BG", "<key><fifths>-2</fifths></key>"},
        {"D      G", "<key><key-step>C</key-step><key-alter>1</key-alter>"
                     "<key-accidental>sharp</key-accidental></key>"},
        {"  K N BG", "<key><key-step>E</key-step><key-alter>-0.5</key-alter>"
                     "<key-accidental>koron</key-accidental><key-step>B</key-step>"
                     "<key-alter>-1</key-alter><key-accidental>flat</key-accidental></key>"},
    };
    for (const auto& c : cases) {
        const std::string xml =
            ExportMusicXml(Score("", {c.header, "TEMPO60", "RHYTM4/4", "13 32"}));
        EXPECT_NE(xml.find(c.key), std::string::npos) << c.header;
    }
}

TEST(MusicXmlExport, CompressedContainer) {
    const test::TempFolder folder;
    const std::string xml = ExportMusicXml(RepeatsScore());
    ASSERT_EQ(WriteMusicXmlFile(folder / "out.MXL", xml), "");
    zip_t* zip = zip_open((folder / "out.MXL").c_str(), ZIP_RDONLY, nullptr);
    ASSERT_NE(zip, nullptr);
    const auto entry = [&](const char* name) {
        zip_stat_t st;
        if (zip_stat(zip, name, 0, &st) != 0) return std::string("(missing)");
        std::string data(st.size, '\0');
        zip_file_t* f = zip_fopen(zip, name, 0);
        zip_fread(f, data.data(), st.size);
        zip_fclose(f);
        return data;
    };
    EXPECT_STREQ(zip_get_name(zip, 0, 0), "mimetype");
    EXPECT_EQ(entry("mimetype"), "application/vnd.recordare.musicxml");
    EXPECT_NE(entry("META-INF/container.xml").find("full-path=\"score.musicxml\""),
              std::string::npos);
    EXPECT_EQ(entry("score.musicxml"), xml);
    zip_close(zip);

    EXPECT_NE(WriteMusicXmlFile(folder / "no" / "such.musicxml", xml), "");
    EXPECT_NE(WriteMusicXmlFile(folder / "no" / "such.mxl", xml), "");
}

// The command's exit codes: 0 written, 1 a usage error, 2 a file that cannot be read.
TEST(MusicXmlExport, CommandLine) {
    const test::TempFolder folder;
    const std::string demo = std::string(TAHRIR_DATA_DIR) + "/demo/shur-daramad.srv";
    const auto run = [&](std::vector<std::string> args) {
        args.insert(args.begin(), "export-musicxml");
        return test::RunCli(folder, args).code;
    };
    const std::string out = (folder / "shur.mxl").string();
    EXPECT_EQ(run({demo, "-o", out}), 0);
    EXPECT_TRUE(std::filesystem::exists(out));
    EXPECT_EQ(run({demo}), 1);
    EXPECT_EQ(run({(folder / "missing.srv").string(), "-o", out}), 2);
    EXPECT_EQ(run({demo, "-o", (folder / "no" / "x.musicxml").string()}), 2);
}

} // namespace
} // namespace tahrir::musicxml
