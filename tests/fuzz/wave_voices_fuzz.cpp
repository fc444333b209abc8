// libFuzzer entry: any bytes as a wave voice's file, loaded as the accompaniment and
// played, sought, paused and stopped while the voices mix at one of the output rates.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_support.h"
#include "play/wave_voices.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir;
    using play::WaveAction;
    const auto file = fuzz::WriteScratch("accompaniment.wav", {reinterpret_cast<const char*>(data), size});
    // The last bytes of the file choose the output rate and the moves.
    fuzz::ByteReader tail(size > 8 ? data + size - 8 : data, size > 8 ? 8 : size);
    constexpr std::array<int, 4> kRates{44100, 48000, 22050, 8000};
    play::WaveVoices voices(kRates[tail.byte() % kRates.size()]);
    std::string error;
    if (!voices.loadAccompaniment(file, error)) {
        if (error.empty()) __builtin_trap();
        return 0;
    }
    std::array<float, 2 * 512> out{};
    auto run = [&](WaveAction action, int value) {
        voices.post({play::WaveBank::Accompaniment, action, value});
        out.fill(0.0f);
        voices.mix(out.data(), out.data() + 1, 512, 2);
        if (voices.accompanimentPosition() < 0) __builtin_trap();
        for (float v : out)
            if (!std::isfinite(v)) __builtin_trap(); // the whole stream would go silent
    };
    run(WaveAction::Play, 0);
    while (!tail.done()) {
        const std::uint8_t move = tail.byte();
        run(static_cast<WaveAction>(move % 6), (move >> 3) * 997);
    }
    run(WaveAction::Stop, 0);
    return 0;
}
