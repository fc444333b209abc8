#pragma once
// The whole road from a recording to notes on a grid: load, track, segment, snap.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "transcribe/grid_snap.h"
#include "transcribe/note_segmenter.h"
#include "transcribe/pyin_tracker.h"

namespace tahrir::transcribe {

// The rate the tracker works at: a quarter of 44.1 kHz keeps fundamentals up to 2 kHz
// with room and makes a 3-minute track cheap.
inline constexpr int TrackerRate = 11025;

struct RecordingNote {
    double onset = 0;  // seconds from the file's start
    double offset = 0;
    double hz = 0;     // median frequency
    double note = 0;   // MIDI number on the grid, .5 for koron and sori
};

struct RecordingTranscript {
    int fileRate = 0;
    std::vector<PitchFrame> frames;
    std::vector<RecordingNote> notes;
};

struct NotesOptions {
    NoteGrid grid = NoteGrid::QuarterTone;
    GridTuning tuning;
    core::ScaleMask mask = core::BuildScaleMask(""); // the dastgah grid's degrees
};

// Segments a decoded track (frames a hop of `hopSeconds` apart) and snaps the notes.
std::vector<RecordingNote> NotesOfFrames(const std::vector<PitchFrame>& frames,
                                         double hopSeconds, const NotesOptions& options);

// Tracks and segments mono samples at `rate`, then snaps the notes to the grid.
RecordingTranscript TranscribeSamples(const std::vector<float>& samples, int rate,
                                      const NotesOptions& options);

// The same from a file of any format; nullopt and a message naming the file on failure.
std::optional<RecordingTranscript> TranscribeRecording(const std::filesystem::path& path,
                                                       const NotesOptions& options,
                                                       std::string& error);

} // namespace tahrir::transcribe
