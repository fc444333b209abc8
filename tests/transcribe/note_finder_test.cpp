// The note finder on the three grids, worked by hand from the ladders.

#include <gtest/gtest.h>

#include "transcribe/note_finder.h"

namespace tahrir::transcribe {
namespace {

// Do of octave 0 at La 440: 440 / 1.682 / 8 = 32.699 Hz.
constexpr double kBaseC = 440 / 1.682 / 8;

double PeriodOf(double hz) { return 11000 / hz; }

struct Case {
    const char* what;
    double hz;
    NoteGrid grid;
    const char* signature;
    double note;
};

TEST(NoteFinder, PlacesFrequenciesOnEachGrid) {
    const Case cases[] = {
        // 440 Hz: 440 / 32.699 = 13.46, octave 3, ratio 1.682: index 10, 3 × 12 + 10 + 23.
        {"La on semitones", 440, NoteGrid::Semitone, "", 69},
        {"La on quarter tones", 440, NoteGrid::QuarterTone, "", 69},
        {"La natural degree", 440, NoteGrid::Dastgah, "", 69},
        // A quarter tone above La: ratio 1.7313, index 10.5 of the quarter-tone ladder only.
        {"La sori on quarter tones", 452.89, NoteGrid::QuarterTone, "", 69.5},
        {"La sori on semitones", 452.89, NoteGrid::Semitone, "", 69},
        // La koron in the signature: the degree at 1.634 (index 18 / 2 + 0.5 = 9.5) is nearer.
        {"La under La koron", 440, NoteGrid::Dastgah, "     K ", 68.5},
        // Do koron marks 24 and 0: a Si a little high goes up to position 24, index 12.5.
        {"Si sori under Do koron", 8 * kBaseC * 1.95, NoteGrid::Dastgah, "K      ", 3 * 12 + 12.5 + 23},
        // The semitone ladder's rung 13 starts at 1.944: below it is 12.
        {"just under 1.944", 8 * kBaseC * 1.9439, NoteGrid::Semitone, "", 3 * 12 + 12 + 23},
        {"just over 1.944", 8 * kBaseC * 1.9441, NoteGrid::Semitone, "", 3 * 12 + 13 + 23},
        // Do of octave 0 itself is MIDI 24.
        {"base Do", kBaseC * 1.0001, NoteGrid::QuarterTone, "", 24},
    };
    for (const Case& c : cases) {
        NoteFinderSettings settings;
        settings.grid = c.grid;
        settings.mask = core::BuildScaleMask(c.signature);
        const auto found = FindNote(PeriodOf(c.hz), settings);
        ASSERT_TRUE(found) << c.what;
        EXPECT_DOUBLE_EQ(found->note, c.note) << c.what;
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
