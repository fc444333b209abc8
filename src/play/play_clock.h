#pragma once
// The clock a run keeps time with. Events carry times in seconds from the start of the
// run; the virtual clock never waits, the real-time clock sleeps until shortly before an
// event and then waits the last stretch without sleeping.

#include <atomic>
#include <chrono>

namespace tahrir::play {

class PlayClock {
public:
    virtual ~PlayClock() = default;
    virtual void start() {}
    // Returns when run time `seconds` has come.
    virtual void waitUntil(double /*seconds*/) {}
    // Sleeps `seconds` of wall time without advancing the run (pause handling).
    virtual void pauseFor(double /*seconds*/) {}
    virtual bool realTime() const { return false; }
    // True once the run has been told to stop: waits return at once.
    virtual bool interrupted() const { return false; }
};

class RealtimeClock : public PlayClock {
public:
    using Clock = std::chrono::steady_clock;
    void start() override;
    void waitUntil(double seconds) override;
    void pauseFor(double seconds) override;
    bool realTime() const override { return true; }
    // A wait ends early when `stop` becomes true (the Stop button).
    void setInterrupt(const std::atomic<bool>* stop) { m_stop = stop; }
    bool interrupted() const override { return m_stop && m_stop->load(std::memory_order_relaxed); }
    // Run time now: wall time since the start minus the time spent paused.
    double runSeconds() const;
    // Wall time spent paused is not run time.
    void addPause(Clock::duration d) { m_origin += d; }

private:
    Clock::time_point m_origin = Clock::now();
    const std::atomic<bool>* m_stop = nullptr;
};

} // namespace tahrir::play
