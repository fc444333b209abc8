// libFuzzer entry: any bytes as a recording in whatever format libsndfile makes of them,
// loaded at the file's own rate and brought to the tracker's working rate.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_support.h"
#include "transcribe/recording_loader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir;
    const auto file = fuzz::WriteScratch("take.wav", {reinterpret_cast<const char*>(data), size});
    for (int workRate : {0, 11025}) {
        std::string error;
        const auto rec = transcribe::LoadRecording(file, workRate, error);
        if (!rec) {
            if (error.find(file.string()) == std::string::npos) __builtin_trap();
            continue;
        }
        if (rec->rate <= 0 || rec->fileChannels < 1) __builtin_trap();
        for (float v : rec->samples)
            if (!std::isfinite(v)) __builtin_trap();
    }
    return 0;
}
