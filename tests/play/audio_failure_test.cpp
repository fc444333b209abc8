// The built-in synthesiser's live stream stopping in the middle of a run: the run ends with
// one clear message, never a hang, also when the audio system holds the driver for ever.

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "play/player.h"
#include "play/synth_sink.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using namespace std::chrono_literals;

// Shared by a test and its driver, which may outlive the sink that owned it.
struct DriverState {
    std::mutex mutex;
    std::condition_variable changed;
    bool released = false; // lets a hung driver go
    bool closed = false;   // the driver is gone
};

// Pulls blocks at about the pace of a sound card; after `blocks` blocks it stops: its
// thread ends (a driver that gave up after an error), or, when `hangs`, it waits inside
// the audio system until released.
class StoppingDriver : public AudioDriver {
public:
    StoppingDriver(RenderAudio render, int blocks, bool hangs, std::shared_ptr<DriverState> state)
        : m_state(std::move(state)), m_thread([this, render, blocks, hangs] {
              std::array<float, 512> left{}, right{};
              for (int i = 0; i != blocks && !stopping(); ++i) {
                  render(512, left.data(), right.data());
                  std::this_thread::sleep_for(10ms);
              }
              std::unique_lock lock(m_state->mutex);
              if (hangs) m_state->changed.wait(lock, [this] { return m_state->released; });
          }) {}
    ~StoppingDriver() override {
        {
            std::lock_guard lock(m_state->mutex);
            m_stopping = true;
        }
        m_thread.join();
        std::lock_guard lock(m_state->mutex);
        m_state->closed = true;
        m_state->changed.notify_all();
    }

private:
    bool stopping() {
        std::lock_guard lock(m_state->mutex);
        return m_stopping;
    }
    std::shared_ptr<DriverState> m_state;
    bool m_stopping = false;
    std::thread m_thread;
};

TEST(SynthSinkLive, AStreamThatStopsEndsTheRunWithOneMessage) {
    std::vector<std::string> music(24, testing::Note(1, 3, 2)); // 6 s of sixteenths
    core::ScoreSheet sheet = testing::Sheet("", 60, "4/4", {});
    for (const std::string& line : music) sheet.setLine(++sheet.LastLine, line);
    const struct {
        const char* name;
        int blocks; // -1: never stops
        bool hangs;
    } cases[] = {{"keeps going", -1, false}, {"driver gives up", 20, false}, {"driver hangs", 20, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto state = std::make_shared<DriverState>();
        std::string error;
        auto sink = SynthSink::openLive(DefaultSoundFont(), error, nullptr,
                                        [&](int, RenderAudio render, std::string&) {
                                            return std::make_unique<StoppingDriver>(render, c.blocks, c.hangs, state);
                                        });
        ASSERT_TRUE(sink) << error;
        {
            Player player(sink.get());
            player.startUp();
            const auto start = std::chrono::steady_clock::now();
            ASSERT_TRUE(player.play(sheet, {}));
            player.wait();
            const auto took = std::chrono::steady_clock::now() - start;
            if (c.blocks < 0) {
                EXPECT_EQ(player.deviceFailure(), "");
                EXPECT_GT(took, 5s);
                continue;
            }
            EXPECT_EQ(player.deviceFailure(), "The audio output of the built-in synthesiser stopped");
            EXPECT_LT(took, 5s) << "the run ends soon after the stream stops";
        }
        const auto closing = std::chrono::steady_clock::now();
        sink.reset();
        EXPECT_LT(std::chrono::steady_clock::now() - closing, 1s) << "closing never waits on a stuck driver";
        std::unique_lock lock(state->mutex);
        state->released = true;
        state->changed.notify_all();
        EXPECT_TRUE(state->changed.wait_for(lock, 5s, [&] { return state->closed; }));
    }
}

} // namespace
} // namespace tahrir::play
