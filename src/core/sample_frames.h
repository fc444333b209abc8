#pragma once
// Frames read from a sound file, made safe for what follows them.

#include <cstddef>

namespace tahrir::core {

// Averages `frames` interleaved frames of `channels` channels into `mono`. A sample that
// is not finite reads as silence and one beyond full scale is clipped to it, so whatever
// a damaged file holds, every sample handed on lies within [-1, 1].
void MixFramesToMono(const float* interleaved, std::size_t frames, std::size_t channels,
                     float* mono);

} // namespace tahrir::core
