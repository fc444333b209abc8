#include "core/sample_frames.h"

#include <algorithm>
#include <cmath>

namespace tahrir::core {

void MixFramesToMono(const float* interleaved, std::size_t frames, std::size_t channels,
                     float* mono) {
    const auto count = static_cast<float>(channels);
    for (std::size_t i = 0; i < frames; ++i) {
        float sum = 0;
        for (std::size_t c = 0; c < channels; ++c) {
            const float v = interleaved[i * channels + c];
            sum += std::isfinite(v) ? std::clamp(v, -1.0f, 1.0f) : 0.0f;
        }
        mono[i] = sum / count;
    }
}

} // namespace tahrir::core
