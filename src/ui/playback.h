#pragma once
// The play commands of the window: a real-time run of a copy of the sheet on the
// player's dispatcher thread, so the window never waits for the music. The three-state
// Space key, the audition of typed notes and the marker of the sounding line live here.

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include "core/document.h"
#include "edit/services.h"
#include "play/note_player.h"
#include "play/player.h"
#include "play/wave_voices.h"

namespace tahrir::ui {

enum class PlayStatus { Idle, Playing, Paused };

class Playback : public edit::Auditioner, public play::PlayObserver {
public:
    // `output` is "auto", "midi", "synth" or "none" (the player's output choice).
    Playback(core::Document& doc, const std::string& output, std::filesystem::path eventLog);
    ~Playback() override;

    // The selection the next run plays, both 0 for none.
    std::function<std::pair<int, int>()> selection;
    // Told when the status changes (buttons, pause label).
    std::function<void()> statusChanged;
    // Told once when the output failed during a run, with what happened and what plays on.
    std::function<void(const std::string&)> deviceLost;

    // PlayCmd, PauseCmd and StopCmd.
    void playClick(int fromLine = 0);
    void pauseClick();
    void stopClick();
    PlayStatus status() const { return m_status; }
    // Called by the window's timer: notices the end of a run. Returns the line sounding
    // now, 0 when none.
    int poll();

    // The sliders and check boxes of the panel.
    play::Player& player() { return *m_player; }
    const std::string& outputDescription() const { return m_outputDescription; }
    bool hasOutput() const { return m_sink != nullptr; }

    // Auditioner.
    void soundNote(const edit::NoteSound& note) override;
    bool busy() const override { return m_status != PlayStatus::Idle; }
    void playPause() override;
    void playFrom(int line) override { playClick(line); }
    void playFromStart() override { playClick(0); }
    void stopAllNotes() override;
    void speakStep(int step) override;

    // The wave voices: a click on picture 8 (tar), 9 (daf) or 10 (accompaniment, only
    // when the score has one for the tempo set), and the double click on 8.
    void waveClick(int index);
    void tarDoubleClick();
    bool waveChosen(int index) const;
    // The score's recording for the tempo set; empty when there is none.
    std::filesystem::path accompanimentFile() const;
    // Told when a wave choice changes (the pictures), and when the sung-syllable option
    // is set from the window.
    std::function<void()> wavesChanged;
    std::function<void(bool)> syllableVoiceChanged;

    // PlayObserver, on the dispatcher thread.
    void lineSounded(int line) override { m_playLine.store(line); }

private:
    void setStatus(PlayStatus status);
    bool loadAccompaniment();
    void afterDeviceFailure();

    core::Document& m_doc;
    std::unique_ptr<play::WaveVoices> m_voices; // outlives the stream that mixes it
    bool m_accompaniment = false;
    std::unique_ptr<play::MidiSink> m_sink;
    std::string m_outputDescription;
    std::unique_ptr<play::Player> m_player;
    std::filesystem::path m_eventLog;
    core::ScoreSheet m_playSheet; // the sheet as it stood at Play: edits during a run wait
    PlayStatus m_status = PlayStatus::Idle;
    std::atomic<int> m_playLine{0};
};

} // namespace tahrir::ui
