#include <gtest/gtest.h>

#include <chrono>
#include <mutex>
#include <thread>

#include "play/player.h"
#include "play_test_util.h"

namespace tahrir::play {
namespace {

using namespace std::chrono_literals;
using testing::Note;
using testing::Sheet;

// A recording sink that other threads may read while the player writes.
class LockedSink : public MidiSink {
public:
    void send(std::uint32_t message, double seconds) override {
        std::lock_guard lock(m_mutex);
        m_sink.send(message, seconds);
    }
    RecordingSink copy() {
        std::lock_guard lock(m_mutex);
        return m_sink;
    }
    std::vector<std::uint32_t> messages() { return copy().messages(); }
    // Run times of every copy of `message`.
    std::vector<double> timesOf(std::uint32_t message) {
        const RecordingSink all = copy();
        std::vector<double> out;
        for (const auto& e : all.entries())
            if (e.message == message) out.push_back(e.seconds);
        return out;
    }
    bool contains(std::uint32_t message) { return !timesOf(message).empty(); }

private:
    std::mutex m_mutex;
    RecordingSink m_sink;
};

// Polls `done` for up to two seconds.
template <class F> bool Eventually(F done) {
    for (int i = 0; i < 200; ++i) {
        if (done()) return true;
        std::this_thread::sleep_for(10ms);
    }
    return done();
}

core::ScoreSheet Scale(int notes) {
    core::ScoreSheet sheet = Sheet("  K", 60, "4/4", {});
    for (int i = 0; i < notes; ++i)
        sheet.setLine(4 + i, Note(1 + i % 7, 3, 1, ' ', i % 5 == 0 ? "TR" : "  "));
    sheet.LastLine = 3 + notes;
    return sheet;
}

const std::uint32_t Do = PackNoteOn(60, 60, 3), Re = PackNoteOn(62, 60, 3),
                    LastOff = PackNoteOff(127, 5);

// A started player at tempo 320 (a 32nd lasts 0.0234 s).
class PlayerTest : public ::testing::Test {
protected:
    PlayerTest() {
        player.startUp();
        player.controls().UserTempo = 320;
    }
    LockedSink sink;
    Player player{&sink};
};

TEST_F(PlayerTest, RealTimeRunSendsWhatTheVirtualRunSends) {
    const auto sheet = Scale(40); // under a second
    RecordingSink virtualSink;
    {
        Player offline(&virtualSink);
        offline.startUp();
        offline.controls().UserTempo = 320;
        offline.playVirtual(sheet, {});
    }
    ASSERT_TRUE(player.play(sheet, {}));
    EXPECT_TRUE(player.running());
    player.wait();
    EXPECT_FALSE(player.running());
    EXPECT_EQ(sink.messages(), virtualSink.messages());
}

TEST_F(PlayerTest, StopEndsARunAtOnceAndSilencesEverything) {
    const auto sheet = Sheet("", 60, "4/4", {Note(1, 3, 32), Note(2, 3, 32), Note(3, 3, 32)});
    player.controls().UserTempo = 20; // twelve seconds a note
    const auto start = std::chrono::steady_clock::now();
    player.play(sheet, {});
    ASSERT_TRUE(Eventually([&] { return sink.contains(Do); }));
    player.stop();
    player.wait();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_EQ(sink.messages().back(), LastOff);
    EXPECT_FALSE(sink.contains(Re));
    // A second run after Stop starts from the first line again.
    player.controls().UserTempo = 320;
    player.play(sheet, {});
    player.wait();
    EXPECT_TRUE(sink.contains(PackNoteOn(64, 60, 3)));
    // Stop pressed while nothing plays does not swallow the next run, a virtual one neither.
    player.stop();
    const std::size_t before = sink.timesOf(Do).size();
    player.playVirtual(sheet, {});
    EXPECT_EQ(sink.timesOf(Do).size(), before + 1);
}

TEST_F(PlayerTest, AnEndMarkHoldsARealTimeRunUntilStopUnlessNobodyCanStopIt) {
    const auto sheet =
        Sheet("", 60, "4/4", {Note(1, 3, 1), testing::Directive("LCFIN"), Note(2, 3, 1)});
    player.play(sheet, {});
    ASSERT_TRUE(Eventually([&] { return sink.contains(Do); }));
    std::this_thread::sleep_for(200ms); // the 32nd has long run out: the walk rests
    EXPECT_TRUE(player.running());
    player.stop();
    ASSERT_TRUE(Eventually([&] { return !player.running(); }));
    player.wait();
    // The command line's run: nobody is there to press Stop, so the mark ends it.
    RunOptions unattended;
    unattended.EndAtFin = true;
    player.play(sheet, unattended);
    const bool ended = Eventually([&] { return !player.running(); });
    if (!ended) player.stop();
    player.wait();
    EXPECT_TRUE(ended);
    EXPECT_FALSE(sink.contains(Re));
}

TEST_F(PlayerTest, SlidersAndInstrumentActDuringARunAndWhenIdle) {
    player.setSoriBend(0); // idle: sent at once
    EXPECT_EQ(sink.messages().back(), 0x004000E4u);
    player.setSoriBend(99); // held at the top of its range
    EXPECT_EQ(sink.messages().back(), 0x006000E4u);
    const auto sheet = Scale(60); // play() keeps a reference
    player.play(sheet, {});
    player.setKoronBend(-40);   // held at the bottom of its range, -32
    player.chooseInstrument(3); // the piano, between two events
    player.wait();
    EXPECT_TRUE(sink.contains(PackPitchBend(0, 32, 2)));
    EXPECT_TRUE(sink.contains(PackProgramChange(0, 3)));
}

TEST_F(PlayerTest, PauseHoldsTheRunUntilPlay) {
    player.pause();
    const auto sheet = Scale(20);
    player.play(sheet, {});
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(player.running()); // 20 32nds take under half a second
    const auto held = sink.messages().size();
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(sink.messages().size(), held);
    player.resume();
    player.wait();
    EXPECT_EQ(sink.messages().back(), LastOff);
}

TEST_F(PlayerTest, LoopPlaysThePassAgainUntilStop) {
    player.controls().Loop = true; // a pass of two quarters takes 0.375 s
    const auto sheet = Sheet("", 60, "4/4", {Note(1, 3, 8), Note(2, 3, 8)});
    player.play(sheet, {});
    ASSERT_TRUE(Eventually([&] { return sink.timesOf(Do).size() >= 3; }));
    player.stop();
    player.wait();
    EXPECT_EQ(sink.messages().back(), LastOff);
    // Each pass keeps time: the last note lasts its quarter and is stopped by the first
    // note of the next pass, which comes a whole pass after the one before.
    const auto doOn = sink.timesOf(Do);
    const auto reOff = sink.timesOf(PackNoteOff(62, 3));
    ASSERT_GE(reOff.size(), 2u);
    for (std::size_t i = 1; i < doOn.size(); ++i)
        EXPECT_NEAR(doOn[i] - doOn[i - 1], 0.375, 1e-9) << "pass " << i;
    EXPECT_NEAR(reOff[0], doOn[1], 1e-9);
    EXPECT_NEAR(reOff[1], doOn[2], 1e-9);
}

TEST_F(PlayerTest, DraggingTheStartMeasureRestartsThePass) {
    core::ScoreSheet sheet = Sheet("", 60, "4/4", {});
    for (int m = 0; m < 6; ++m) { // one whole note a measure, Do to La: 0.75 s each
        sheet.setLine(4 + 2 * m, Note(1 + m, 3, 32));
        sheet.setLine(5 + 2 * m, testing::Bar());
    }
    sheet.LastLine = 15;
    player.play(sheet, {});
    ASSERT_TRUE(Eventually([&] { return sink.contains(Do); }));
    player.controls().StartMeasure = 5;
    player.wait();
    EXPECT_FALSE(sink.contains(PackNoteOn(64, 60, 3))); // measure 3 was passed over
    EXPECT_TRUE(sink.contains(PackNoteOn(67, 60, 3)));  // measure 5 sounded
}

TEST_F(PlayerTest, AuditionTimerEndsTheTypedNote) {
    ASSERT_TRUE(player.auditionNote(2, 3, 'S', 30));
    EXPECT_EQ(sink.messages().back(), PackNoteOn(62, 127, 4));
    EXPECT_TRUE(Eventually([&] { return sink.messages().back() == PackNoteOff(62, 4); }));
}

// An output that fails when it is sent `failAt` (a chosen message) and drops what follows,
// as a port that is unplugged or an audio device that stops.
class FailingSink : public LockedSink {
public:
    explicit FailingSink(std::uint32_t failAt) : m_failAt(failAt) {}
    void send(std::uint32_t message, double seconds) override {
        if (failed()) return;
        if (message == m_failAt) return reportFailure("gone");
        LockedSink::send(message, seconds);
    }

private:
    std::uint32_t m_failAt;
};

TEST(PlayerDevice, AnOutputThatFailsEndsTheRunOnceAndAnotherTakesOver) {
    const auto sheet = Sheet("", 60, "4/4", {Note(1, 3, 32), Note(2, 3, 32), Note(3, 3, 32)});
    // Directly at the first note of a long run, which must not hang, or through a tee later.
    for (const auto& [throughTee, failAt] : {std::pair{false, Do}, std::pair{true, Re}}) {
        SCOPED_TRACE(::testing::Message()
                     << "tee " << throughTee << " fail at " << std::hex << failAt);
        FailingSink failing(failAt);
        TeeSink tee;
        tee.add(&failing);
        LockedSink fallback; // every sink outlives the player that holds it
        Player player(throughTee ? static_cast<MidiSink*>(&tee) : &failing);
        player.startUp();
        player.controls().UserTempo = failAt == Do ? 20 : 320; // Do fails a 36 s run
        const auto start = std::chrono::steady_clock::now();
        ASSERT_TRUE(player.play(sheet, {}));
        player.wait();
        EXPECT_LT(std::chrono::steady_clock::now() - start, 5s) << "no hang on a dead output";
        EXPECT_EQ(player.deviceFailure(), "gone");
        EXPECT_FALSE(failing.contains(failAt));
        EXPECT_FALSE(failing.contains(PackNoteOn(64, 60, 3)))
            << "nothing goes out after the failure";
        // The built-in synthesiser (here a recording) plays the next run whole.
        ASSERT_TRUE(player.replaceSink(&fallback));
        EXPECT_EQ(player.deviceFailure(), "");
        player.controls().UserTempo = 320;
        ASSERT_TRUE(player.play(sheet, {}));
        player.wait();
        EXPECT_TRUE(fallback.contains(PackNoteOn(64, 60, 3)));
        EXPECT_EQ(player.deviceFailure(), "");
    }
}

} // namespace
} // namespace tahrir::play
