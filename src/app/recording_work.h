#pragma once
// The transcription's wiring that the window and the command line share: a recording
// loaded and tracked once, the classic passes run on its 8-bit form, and either
// tracker's notes handed over as timed notes for the insertion.

#include <filesystem>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "transcribe/note_insertion.h"
#include "transcribe/note_passes.h"
#include "transcribe/recording_loader.h"
#include "transcribe/recording_notes.h"

namespace tahrir::app {

// Samples summed up into blocks of this many for drawing long files.
inline constexpr int PeakBlock = 64;

struct WaveAnalysis {
    std::filesystem::path file;
    transcribe::Recording recording; // mono at the tracker's rate
    std::vector<transcribe::PitchFrame> frames;
    double hopSeconds = 0;
    std::vector<float> blockMin, blockMax; // per PeakBlock samples
};

// Called with the part done (0 to 1); returning false stops the work.
using Progress = std::function<bool(double)>;

// Loads `file` and sums its samples up for drawing, without its pitch track; nullopt
// with a message naming the file in `error` on failure.
std::optional<WaveAnalysis> LoadForView(const std::filesystem::path& file, std::string& error);

// The pitch track of the loaded samples, tracked in stretches so that `progress` is
// heard; nullopt when stopped.
std::optional<std::vector<transcribe::PitchFrame>> TrackPitch(const WaveAnalysis& analysis,
                                                             const Progress& progress);

// The minimum and maximum of every PeakBlock samples.
void BuildPeaks(WaveAnalysis& analysis);

// The 44-byte header of a mono PCM wave of `bits` (8 or 16) a sample at `rate` with
// `dataBytes` bytes of samples after it.
std::string PcmWaveHeader(int rate, int bits, std::uint32_t dataBytes);

// The samples as the classic passes read a file: a 44-byte header giving `rate` and one
// unsigned byte a sample with 128 as silence.
std::string EightBitWave(const std::vector<float>& samples, int rate);

// The notes a tracker found, in samples at `rate`, and what is taken off their times.
struct TrackedNotes {
    std::vector<transcribe::TimedNote> notes;
    double rate = 11000;
    double shift = 0;
    std::string error;
};

// The three passes over wave bytes, then the notes read back from the scratch file the
// insertion takes: the raw ones of pass 2 (`raw`) or the cleaned ones of pass 3.
// `passes` is the result of the passes, for a note list.
TrackedNotes ClassicTrack(std::string_view wave, const transcribe::PassOptions& options,
                          const std::filesystem::path& folder, bool raw,
                          transcribe::PassResult* passes = nullptr);

// The modern tracker's notes as the insertion takes them, at `rate` samples a second.
TrackedNotes ModernTrack(const std::vector<transcribe::RecordingNote>& notes, double rate,
                         bool silent);

// The notes rendered by the built-in synthesiser into `wav` at the times they were
// found, quarter tones on a channel bent up by a quarter; false with `error` on failure.
bool RenderNotes(const TrackedNotes& notes, const std::filesystem::path& wav, std::string& error);

} // namespace tahrir::app
