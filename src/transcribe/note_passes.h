#pragma once
// A recording into timed notes in three passes: the samples become period markers, runs of
// steady periods become notes, and the notes are cleaned and snapped to the smallest note.
// Each pass leaves its result in a scratch file of quoted text records in the data folder.

#include <array>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "transcribe/note_finder.h"

namespace tahrir::transcribe {

// Pass 1's detector, numbered as its option buttons "Simple", "Women", "Men".
enum class Detector { Simple = 0, Women = 1, Men = 2 };

// A marker's position (a byte offset of the file, counted from 1) and its distances to
// the nine markers before it.
struct MarkerRecord {
    std::int64_t position = 0;
    std::array<std::int64_t, 9> distance{};
};

// One note in samples: start, end, frequency in Hz, MIDI number with .5 for a quarter tone.
struct NoteRecord {
    double start = 0;
    double end = 0;
    double frequency = 0;
    double note = 0;
};

inline constexpr int MaxCleanNotes = 400;
inline constexpr std::int64_t FirstWorkPosition = 50;

struct PassOptions {
    Detector Method = Detector::Simple;
    int CutOff = 10;     // threshold around the silence level 128, in sample units
    int k = 4;           // which earlier marker measures the period, 1 to 9
    int MinDuration = 1; // smallest note in 32nds
    double tempo = 60;
    bool Silent = false; // move the result to start at the first note
    NoteFinderSettings finder; // grid, base and mask; its rate is set from the file
    // The marked stretch, file positions from and to, when only it is to be worked on.
    std::optional<std::array<std::int64_t, 2>> stretch;
};

// Pass 1 over file positions first..last. `view`, when given, receives the "tmp5" text of
// the threshold detector: each position's offset from `first` and the running sum.
std::vector<MarkerRecord> FindMarkers(std::string_view bytes, std::int64_t first,
                                      std::int64_t last, const PassOptions& options,
                                      std::ostream* view);

// Pass 2: runs of more than 15 steady periods. `firstNoteStart` gets the first note's start.
std::vector<NoteRecord> SteadyRuns(const std::vector<MarkerRecord>& markers,
                                   const PassOptions& options, double rate,
                                   double& firstNoteStart);

// Pass 3 on at most 400 notes: short notes merged into their neighbours of the same pitch,
// starts and lengths snapped to `gridSamples`. `shift` is taken off every time first.
std::vector<NoteRecord> CleanNotes(std::vector<NoteRecord> notes, double gridSamples,
                                   double shift);

// The smallest note in samples at the tempo.
double GridSamplesFor(int minDuration, double rate, double tempo);

struct PassResult {
    int rate = 0;               // WaveByteRate, 11000 when the header gives 0
    double FirstNoteStart = 0;  // 0 when no note was found
    std::size_t markers = 0;
    std::vector<NoteRecord> raw;     // "tmp2"
    std::optional<std::vector<NoteRecord>> cleaned; // "tmp3", when pass 3 ran
    std::string error;          // a scratch file that could not be written
};

// The three passes over a wave file's bytes, writing "tmp1", "tmp5", "tmp2" and "tmp3" in
// `folder`.
PassResult RunPasses(std::string_view bytes, const PassOptions& options,
                     const std::filesystem::path& folder);

// The note records of a "tmp2" or "tmp3" file; an incomplete last record is dropped.
// nullopt when the file is missing.
std::optional<std::vector<NoteRecord>> ReadNoteRecords(const std::filesystem::path& file);

} // namespace tahrir::transcribe
