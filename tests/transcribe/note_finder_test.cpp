// The note finder on the three grids, worked by hand from the ladders.

#include <gtest/gtest.h>

#include <sstream>

#include "case_files.h"
#include "transcribe/note_finder.h"

namespace tahrir::transcribe {
namespace {

// Do of octave 0 at La 440: 440 / 1.682 / 8 = 32.699 Hz.
constexpr double kBaseC = 440 / 1.682 / 8;

double PeriodOf(double hz) { return 11000 / hz; }

TEST(NoteFinder, PlacesFrequenciesOnEachGrid) {
    for (const test::CaseRow& c : test::ReadCases("transcribe/note_finder.txt")) {
        // The frequency is the product of its factors, "Do0" standing for the base Do.
        double hz = 1;
        std::istringstream factors(c[1]);
        for (std::string f; factors >> f;) hz *= f == "Do0" ? kBaseC : std::stod(f);
        NoteFinderSettings settings;
        settings.grid = GridNamed(c[2]).value();
        settings.mask = core::BuildScaleMask(c[3]);
        const auto found = FindNote(PeriodOf(hz), settings);
        ASSERT_TRUE(found) << c.where << " " << c[0];
        EXPECT_DOUBLE_EQ(found->note, c.number(4)) << c.where << " " << c[0];
    }
}

TEST(NoteFinder, ErrorMeterAndWhatIsNoNote) {
    NoteFinderSettings settings;
    // At half the reference of quarter-tone index 10 (3.3645) the meter reads 1000; a
    // ratio 1 % higher reads 1010.
    const double onNote = 8 * kBaseC * 3.3645 / 2;
    EXPECT_EQ(FindNote(PeriodOf(onNote), settings)->errorNote, 1000);
    EXPECT_EQ(FindNote(PeriodOf(onNote * 1.01), settings)->errorNote, 1010);
    // A period of 0 and a frequency below the base Do leave the note to the caller.
    EXPECT_FALSE(FindNote(0, settings));
    EXPECT_FALSE(FindNote(PeriodOf(kBaseC * 0.99), settings));
    // The base frequency moves the grid: with La at 466.16 Hz, 440 Hz is a semitone lower.
    settings.BaseFrequency = 466.16;
    EXPECT_DOUBLE_EQ(FindNote(PeriodOf(440), settings)->note, 68);
}

} // namespace
} // namespace tahrir::transcribe
