#include <gtest/gtest.h>

#include <sstream>

#include "cli_run.h"
#include "core/load_file.h"
#include "core/session.h"
#include "fingering/fingering_table.h"
#include "fingering/sounding_notes.h"
#include "play_test_util.h"
#include "temp_folder.h"

namespace tahrir::fingering {
namespace {

using play::testing::Note;
using play::testing::Sheet;

const std::filesystem::path kData = TAHRIR_DATA_DIR;

FingeringTable Load(Instrument instrument) {
    std::string error;
    auto table = FingeringTable::load(TableFile(instrument, {}), error);
    EXPECT_TRUE(table) << error;
    return table.value_or(FingeringTable{});
}

TEST(Fingering, EveryShippedTableLoadsAndEveryDemoNoteHasATarPosition) {
    for (Instrument i : kInstruments)
        EXPECT_FALSE(Load(i).empty()) << InstrumentName(i);
    const FingeringTable tar = Load(Instrument::Tar);
    for (const auto& entry : std::filesystem::directory_iterator(kData / "demo")) {
        test::TempFolder folder;
        core::Session session;
        core::StartSession(session, folder.path());
        core::Document doc;
        ASSERT_TRUE(
            core::OpenScoreFile(doc, session, nullptr, entry.path().string()).load.loaded());
        SoundingNotes notes;
        notes.compute(doc.Sheet);
        EXPECT_GT(notes.noteLines().size(), 20u) << entry.path();
        for (int line : notes.noteLines()) {
            const auto note = notes.at(line);
            ASSERT_TRUE(note) << entry.path() << " line " << line;
            EXPECT_TRUE(tar.find(*note)) << entry.path() << " line " << line << " note " << *note;
        }
    }
}

// The expected fret is counted from the course's open note with the tar's usual frets:
// koron 2nd = fret 2 (1.5 semitones), koron 3rd = 5 (3.5), sori 4th = 8 (5.5),
// koron 6th = 13 (8.5), koron 7th = 16 (10.5). Course 1 is C4, course 3 is C3.
TEST(Fingering, KoronAndSoriNotesOfTheDastgahsLandOnTheirFrets) {
    struct Case {
        const char* what;
        const char* signature; // columns 1..7: C D E F G A B
        std::string line;
        int transpose;
        double note;
        const char* place;
    };
    const Case cases[] = {
        {"Shur on G: A koron", "  B  KB", Note(6, 3, 8), 0, 68.5, "1 13"},
        {"Shur on G: A natural by N", "  B  KB", Note(6, 3, 8, 'N'), 0, 69, "1 14"},
        {"Segah: E koron", "  K   K", Note(3, 3, 8), 0, 63.5, "1 5"},
        {"Segah: low E koron", "  K   K", Note(3, 2, 8), 0, 51.5, "3 5"},
        {"Segah: B koron", "  K   K", Note(7, 3, 8), 0, 70.5, "1 16"},
        {"Chahargah: D koron", " K   K ", Note(2, 3, 8), 0, 61.5, "1 2"},
        {"Chahargah: F sori by S", " K   K ", Note(4, 3, 8, 'S'), 0, 65.5, "1 8"},
        // A whole tone up, D koron (61.5) sounds as E koron (63.5).
        {"Chahargah transposed +2", " K   K ", Note(2, 3, 8), 2, 63.5, "1 5"},
    };
    const FingeringTable tar = Load(Instrument::Tar);
    for (const Case& c : cases) {
        SoundingNotes notes;
        notes.compute(Sheet(c.signature, 60, "4/4", {c.line}), play::TransposeCentre + c.transpose);
        const auto note = notes.at(4);
        ASSERT_TRUE(note) << c.what;
        EXPECT_EQ(*note, c.note) << c.what;
        const Position* where = tar.find(*note);
        ASSERT_TRUE(where) << c.what;
        EXPECT_EQ(where->place, c.place) << c.what;
    }
}

TEST(Fingering, NotesOutOfRangeAndBrokenTablesAreMarkedNotFatal) {
    const FingeringTable hang = Load(Instrument::Hang);
    EXPECT_EQ(hang.find(65.5), nullptr); // F sori on a D minor hang
    ASSERT_TRUE(hang.nearest(65.5));
    EXPECT_EQ(hang.nearest(65.5)->note, 65);
    EXPECT_EQ(hang.find(20), nullptr);
    EXPECT_EQ(hang.find(62.25), nullptr);

    std::string error;
    EXPECT_FALSE(FingeringTable::parse("note\tposition\tplace\n60\tx\t1\n61\tgap\t1\n", error));
    EXPECT_NE(error.find("line 3"), std::string::npos) << error;
    EXPECT_FALSE(FingeringTable::parse("60\tonly two cells\n", error));
    EXPECT_FALSE(FingeringTable::load("/nonexistent/tar.tsv", error));

    // The demo with its first note far below the tar and its second off the pitch table.
    test::TempFolder folder;
    std::string text = test::ReadBytes(kData / "demo" / "shur-daramad.srv");
    std::istringstream in(text);
    std::string out, row;
    for (int number = 1; std::getline(in, row); ++number) {
        if (number == 12) row.replace(0, 2, "10");
        if (number == 13) row.replace(0, 2, "19");
        out += row + "\n";
    }
    test::WriteBytes(folder / "low.srv", out);
    const auto run =
        test::RunCli(folder, {"fingering", (folder / "low.srv").string(), "--instrument", "tar"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.out.find("8\t24\t-\n9\t-\t-\n10\t"), std::string::npos) << run.out;
    EXPECT_EQ(test::RunCli(folder, {"fingering", "x.srv", "--instrument", "lute"}).code, 1);
}

} // namespace
} // namespace tahrir::fingering
