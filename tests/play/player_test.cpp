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
        m_messages.push_back(message);
        m_times.push_back(seconds);
    }
    // Run times of every copy of `message`.
    std::vector<double> timesOf(std::uint32_t message) {
        std::lock_guard lock(m_mutex);
        std::vector<double> out;
        for (std::size_t i = 0; i < m_messages.size(); ++i)
            if (m_messages[i] == message) out.push_back(m_times[i]);
        return out;
    }
    std::vector<std::uint32_t> messages() {
        std::lock_guard lock(m_mutex);
        return m_messages;
    }
    bool contains(std::uint32_t message) {
        const auto m = messages();
        return std::find(m.begin(), m.end(), message) != m.end();
    }

private:
    std::mutex m_mutex;
    std::vector<std::uint32_t> m_messages;
    std::vector<double> m_times;
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

TEST(Player, RealTimeRunSendsWhatTheVirtualRunSends) {
    const auto sheet = Scale(40); // 40 32nds at tempo 320: under a second
    RecordingSink virtualSink;
    {
        Player player(&virtualSink);
        player.startUp();
        player.controls().UserTempo = 320;
        player.playVirtual(sheet, {});
    }
    LockedSink liveSink;
    Player player(&liveSink);
    player.startUp();
    player.controls().UserTempo = 320;
    ASSERT_TRUE(player.play(sheet, {}));
    EXPECT_TRUE(player.running());
    player.wait();
    EXPECT_FALSE(player.running());
    EXPECT_EQ(liveSink.messages(), virtualSink.messages());
}

TEST(Player, StopEndsARunAtOnceAndSilencesEverything) {
    core::ScoreSheet sheet = Sheet("", 60, "4/4", {Note(1, 3, 32), Note(2, 3, 32), Note(3, 3, 32)});
    LockedSink sink;
    Player player(&sink);
    player.startUp();
    player.controls().UserTempo = 20; // twelve seconds a note
    const auto start = std::chrono::steady_clock::now();
    player.play(sheet, {});
    ASSERT_TRUE(Eventually([&] { return sink.contains(PackNoteOn(60, 60, 3)); }));
    player.stop();
    player.wait();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_EQ(sink.messages().back(), PackNoteOff(127, 5));
    EXPECT_FALSE(sink.contains(PackNoteOn(62, 60, 3)));
    // A second run after Stop starts from the first line again.
    player.controls().UserTempo = 320;
    player.play(sheet, {});
    player.wait();
    EXPECT_TRUE(sink.contains(PackNoteOn(64, 60, 3)));
    // Stop pressed while nothing plays does not swallow the next run, in virtual time
    // (the export's run) neither.
    player.stop();
    const std::size_t before = sink.messages().size();
    player.playVirtual(sheet, {});
    const auto after = sink.messages();
    EXPECT_NE(std::find(after.begin() + static_cast<std::ptrdiff_t>(before), after.end(),
                        PackNoteOn(60, 60, 3)),
              after.end());
}

TEST(Player, AnEndMarkHoldsARealTimeRunUntilStopUnlessNobodyCanStopIt) {
    const auto sheet = Sheet("", 60, "4/4",
                             {Note(1, 3, 1), testing::Directive("LCFIN"), Note(2, 3, 1)});
    LockedSink sink;
    Player player(&sink);
    player.startUp();
    player.controls().UserTempo = 320;
    player.play(sheet, {});
    ASSERT_TRUE(Eventually([&] { return sink.contains(PackNoteOn(60, 60, 3)); }));
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
    EXPECT_FALSE(sink.contains(PackNoteOn(62, 60, 3)));
}

TEST(Player, SlidersAndInstrumentActDuringARunAndWhenIdle) {
    const auto sheet = Scale(60);
    LockedSink sink;
    Player player(&sink);
    player.startUp();
    player.setSoriBend(0); // idle: sent at once
    EXPECT_EQ(sink.messages().back(), 0x004000E4u);
    player.controls().UserTempo = 320;
    player.play(sheet, {});
    player.setKoronBend(-32);
    player.chooseInstrument(3); // the piano, between two events
    player.wait();
    EXPECT_TRUE(sink.contains(PackPitchBend(0, 32, 2)));
    EXPECT_TRUE(sink.contains(PackProgramChange(0, 3)));
}

TEST(Player, PauseHoldsTheRunUntilPlay) {
    const auto sheet = Scale(20);
    LockedSink sink;
    Player player(&sink);
    player.startUp();
    player.controls().UserTempo = 320;
    player.pause();
    player.play(sheet, {});
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(player.running()); // 20 32nds at 320 take under half a second
    const auto held = sink.messages().size();
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(sink.messages().size(), held);
    player.resume();
    player.wait();
    EXPECT_EQ(sink.messages().back(), PackNoteOff(127, 5));
}

TEST(Player, LoopPlaysThePassAgainUntilStop) {
    const auto sheet = Sheet("", 60, "4/4", {Note(1, 3, 8), Note(2, 3, 8)});
    LockedSink sink;
    Player player(&sink);
    player.startUp();
    player.controls().UserTempo = 320; // a pass of two quarters takes 0.375 s
    player.controls().Loop = true;
    player.play(sheet, {});
    const auto count = [&] {
        const auto m = sink.messages();
        return std::count(m.begin(), m.end(), PackNoteOn(60, 60, 3));
    };
    EXPECT_TRUE(Eventually([&] { return count() >= 3; }));
    player.stop();
    player.wait();
    EXPECT_EQ(sink.messages().back(), PackNoteOff(127, 5));
    // Each pass keeps time: the last note lasts its quarter (0.1875 s) and is stopped by
    // the first note of the next pass, which comes a whole pass after the one before.
    const auto doOn = sink.timesOf(PackNoteOn(60, 60, 3));
    const auto reOff = sink.timesOf(PackNoteOff(62, 3));
    ASSERT_GE(doOn.size(), 3u);
    ASSERT_GE(reOff.size(), 2u);
    for (std::size_t i = 1; i < doOn.size(); ++i)
        EXPECT_NEAR(doOn[i] - doOn[i - 1], 0.375, 1e-9) << "pass " << i;
    EXPECT_NEAR(reOff[0], doOn[1], 1e-9);
    EXPECT_NEAR(reOff[1], doOn[2], 1e-9);
}

TEST(Player, DraggingTheStartMeasureRestartsThePass) {
    core::ScoreSheet sheet = Sheet("", 60, "4/4", {});
    for (int m = 0; m < 6; ++m) { // one whole note a measure, Do to La
        sheet.setLine(4 + 2 * m, Note(1 + m, 3, 32));
        sheet.setLine(5 + 2 * m, testing::Bar());
    }
    sheet.LastLine = 15;
    LockedSink sink;
    Player player(&sink);
    player.startUp();
    player.controls().UserTempo = 320; // 0.75 s a measure
    player.play(sheet, {});
    ASSERT_TRUE(Eventually([&] { return sink.contains(PackNoteOn(60, 60, 3)); }));
    player.controls().StartMeasure = 5;
    player.wait();
    EXPECT_FALSE(sink.contains(PackNoteOn(64, 60, 3))); // measure 3 was passed over
    EXPECT_TRUE(sink.contains(PackNoteOn(67, 60, 3)));  // measure 5 sounded
}

TEST(Player, AuditionTimerEndsTheTypedNote) {
    LockedSink sink;
    Player player(&sink);
    player.startUp();
    const auto note = player.auditionNote(2, 3, 'S', 30);
    ASSERT_TRUE(note);
    EXPECT_EQ(sink.messages().back(), PackNoteOn(62, 127, 4));
    EXPECT_TRUE(Eventually([&] { return sink.messages().back() == PackNoteOff(62, 4); }));
}

TEST(Player, InstrumentButtonsReprogramTheVoices) {
    RecordingSink sink;
    Player player(&sink);
    player.chooseInstrument(9); // a wave voice button: no MIDI change
    EXPECT_TRUE(sink.entries().empty());
    EXPECT_FALSE(player.midi().MidiOutputOn);
    player.chooseInstrument(0);
    EXPECT_TRUE(player.midi().MidiOutputOn);
    EXPECT_EQ(sink.messages()[1], PackProgramChange(107, 1)); // Koto
    sink.clear();
    player.chooseListInstrument(3); // Viola
    EXPECT_EQ(sink.messages()[1], PackProgramChange(41, 1));
}

} // namespace
} // namespace tahrir::play
