#pragma once
// The player: MIDI output, channel plan, note player and walk, with a dispatcher thread
// for real-time runs. The window's thread talks to a run only through the atomics of
// `PlayControls`; the run thread owns the sink while it plays.

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "core/score_sheet.h"
#include "play/midi_out.h"
#include "play/note_player.h"
#include "play/play_clock.h"
#include "play/play_state.h"
#include "play/scheduler.h"

namespace tahrir::play {

class Player {
public:
    // `sink` may be null (no output opened); it must outlive the player.
    explicit Player(MidiSink* sink);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    PlayControls& controls() { return m_controls; }
    MidiOut& midi() { return m_midi; }
    NotePlayer& notes() { return m_notes; }
    RunState& state() { return m_state; }

    // Start-up: the odd reset calls, the pitch table, channels 2 to 5, and the
    // instrument of `button` chosen as by a click so that Play sounds at once.
    void startUp(int button = StartInstrumentButton);
    // A click on instrument button 0..7; other buttons are ignored.
    void chooseInstrument(int button);
    // A choice in the instrument list (0-based row).
    void chooseListInstrument(int row);
    // The wave voice alone (a double click on its button): MIDI notes stop going out.
    void chooseWaveVoiceOnly() { m_midi.MidiOutputOn = false; }
    // Clicks on pictures 8 (tar: toggles, and all its voices stop) and 9 (daf: toggles).
    void clickTar();
    void clickDaf();
    bool tarOn() const { return m_controls.TarOn.load(); }
    bool dafOn() const { return m_controls.DafOn.load(); }

    // A whole run on the calling thread in virtual time; returns the run's seconds.
    double playVirtual(const core::ScoreSheet& sheet, const RunOptions& options);
    // Starts a real-time run on the dispatcher thread; false when one is running. The
    // sheet must stay unchanged until the run ends.
    bool play(const core::ScoreSheet& sheet, const RunOptions& options);
    void pause() { m_controls.Paused = true; }
    void resume() { m_controls.Paused = false; }
    void stop() { m_controls.StopRequest = true; }
    bool running() const { return m_running.load(); }
    // Waits for the real-time run to end.
    void wait();

    // Slider moves: retune at once when idle, through the run when playing.
    void setKoronBend(int value);
    void setSoriBend(int value);
    // Runs `use` on the MIDI output while no run plays (another window's keys and
    // bends); false when a run plays and `use` was not run.
    bool withIdleMidi(const std::function<void(MidiOut&)>& use);
    // Releasing the pedal stops every note.
    void setPedal(bool on);
    void setTempo(int value) { m_controls.UserTempo = value; }

    // Sounds a typed note; the audition timer stops it after `milliseconds`.
    std::optional<AuditionedNote> auditionNote(int step, int octave, char accidental,
                                               int milliseconds = 400);

    // Why the output failed during a run (the run then ended); empty while it works.
    std::string deviceFailure() const;
    // Another output once the run has ended, such as the built-in synthesiser after a
    // port vanished; false while a run plays. `sink` must outlive the player.
    bool replaceSink(MidiSink* sink);

    // Real-time runs measure their timing against this clock.
    const RealtimeClock& realtimeClock() const { return m_clock; }

private:
    void timerLoop();
    void watch(MidiSink* sink);

    PlayControls m_controls;
    RunState m_state;
    MidiOut m_midi;
    NotePlayer m_notes;
    Scheduler m_scheduler;
    RealtimeClock m_clock;
    std::atomic<bool> m_running{false};
    std::mutex m_idle; // held only at the edges of a run and by idle sends
    std::thread m_thread;
    mutable std::mutex m_failureMutex;
    std::string m_failure;

    std::mutex m_timerMutex;
    std::condition_variable m_timerWake;
    std::chrono::steady_clock::time_point m_auditionEnd{};
    bool m_auditionPending = false;
    bool m_quit = false;
    std::thread m_timer;
};

} // namespace tahrir::play
