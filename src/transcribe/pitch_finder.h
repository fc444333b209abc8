#pragma once
// The period of sound frames by a cumulative-mean-normalised difference search (YIN, after
// de Cheveigné and Kawahara, 2002), taking the first lag under the threshold as it stands.

#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace tahrir::transcribe {

inline constexpr int PitchFrameSize = 256;
inline constexpr double LowestPitch = 20; // Hz: a frame at or below gives no answer

// Frequency in Hz of the samples' period at `rate` samples a second; 0 when no lag
// dips under the threshold.
double YinPitch(std::span<const float> samples, int rate);

// The first frame of 256 samples, from the start, whose pitch is above 20 Hz; 0 when none
// is, or when the load is empty.
double WaveFilePitch(std::span<const float> samples);
// The same for a file, reading only as far as the first answer; nullopt when the file
// cannot be read.
std::optional<double> WaveFilePitch(const std::filesystem::path& file);

// The pitch of every whole frame of 256 samples, as the wave view draws them.
std::vector<double> FramePitches(std::span<const float> samples);

} // namespace tahrir::transcribe
