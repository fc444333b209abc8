#include "play/play_clock.h"

#include <algorithm>
#include <thread>

namespace tahrir::play {

namespace {
// The scheduler may wake this late; the rest is waited for with yields.
constexpr auto kWakeEarly = std::chrono::microseconds(400);
// Long waits sleep in slices so that Stop is seen within one.
constexpr auto kSlice = std::chrono::milliseconds(20);
} // namespace

void RealtimeClock::start() {
    m_origin = Clock::now();
}

void RealtimeClock::waitUntil(double seconds) {
    const auto due = m_origin + std::chrono::duration_cast<Clock::duration>(
                                    std::chrono::duration<double>(seconds));
    while (due - Clock::now() > kWakeEarly) {
        if (interrupted()) return;
        std::this_thread::sleep_until(std::min(due - kWakeEarly, Clock::now() + kSlice));
    }
    while (Clock::now() < due && !interrupted())
        std::this_thread::yield();
}

void RealtimeClock::pauseFor(double seconds) {
    const auto d =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    std::this_thread::sleep_for(d);
    m_origin += d;
}

double RealtimeClock::runSeconds() const {
    return std::chrono::duration<double>(Clock::now() - m_origin).count();
}

} // namespace tahrir::play
