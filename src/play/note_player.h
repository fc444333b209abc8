#pragma once
// Sounding one note line: pitch and voice resolution (PlayNoteLine) and the timed event
// with its note on, note off and event-log records (PlayEvent).

#include <optional>
#include <string_view>

#include "core/notation_tables.h"
#include "core/score_sheet.h"
#include "play/event_log.h"
#include "play/midi_out.h"
#include "play/pitch_table.h"
#include "play/play_clock.h"
#include "play/play_state.h"

namespace tahrir::play {

enum class EventMode { Plain, Dual, Stop, Cut };

// Told of each line whose note starts sounding (the marker that runs along the page).
class PlayObserver {
public:
    virtual ~PlayObserver() = default;
    virtual void lineSounded(int line) = 0;
    // Told of each note line as it is resolved, before it sounds: its key and voice
    // channel (koron and sori voices bend the key a quarter tone).
    virtual void noteResolved(int /*line*/, int /*key*/, int /*channel*/) {}
};

// A typed note sounded for audition: its key and channel.
struct AuditionedNote {
    int note;
    int channel;
};

class NotePlayer {
public:
    NotePlayer(MidiOut& midi, RunState& state, PlayControls& controls);

    void setSheet(const core::ScoreSheet* sheet) { m_sheet = sheet; }
    void setClock(PlayClock* clock) { m_clock = clock ? clock : &m_virtualClock; }
    void setObserver(PlayObserver* observer) { m_observer = observer; }
    StepPitchTable& pitchTable() { return m_pitch; }
    EventLog& eventLog() { return m_log; }

    // Clears the sounding note and the event log for a new run or pass; run time goes
    // on (setNow(0) starts it again).
    void beginRun();
    // A new pass of the same run: the event log starts again and nothing waits, but the
    // note still sounding is kept, so that the first note of the pass stops it.
    void beginPass();
    bool EventLogOn = false;

    void PlayNoteLine(int step, int octave, int duration, char accidental,
                      const core::MarkWord& mark, int line);
    void PlayEvent(int note, double seconds, EventMode mode, int channel);
    // Waits until the sounding event has run out (end of the count-in, pause).
    void waitSounding();
    // Stops the sounding note at once (pause).
    void cutSounding();
    // Run time of the next event.
    double now() const { return m_time; }
    void setNow(double seconds) { m_time = seconds; }

    // Sounds a typed note at velocity 127 on its voice (2 koron, 4 sori, 3 otherwise,
    // sharps and flats a semitone from the table); nullopt off the table.
    std::optional<AuditionedNote> auditionNote(int step, int octave, char accidental);
    // Stops the note last auditioned (the audition timer's work).
    void endAudition();

    int VoiceChannel = NaturalChannel;
    int CompanionChannel = NaturalChannel;
    int NoteVelocity = 60;
    int SoundingNote = 0;
    int SoundingChannel = NaturalChannel;
    double SoundingStart = 0;
    double SoundingDuration = 0;
    bool TieHold = false;

private:
    struct Resolved;
    std::optional<Resolved> resolve(int step, int octave, char accidental,
                                    const core::MarkWord& mark) const;
    void expand(const Resolved& r, int duration, const core::MarkWord& mark);
    void playRounds(const Resolved& r, int duration, bool trill);
    bool tiedToNext(int step, int octave, int line) const;
    void cueAccompaniment();

    MidiOut& m_midi;
    RunState& m_state;
    PlayControls& m_controls;
    const core::ScoreSheet* m_sheet = nullptr;
    PlayClock m_virtualClock;
    PlayClock* m_clock = &m_virtualClock;
    PlayObserver* m_observer = nullptr;
    StepPitchTable m_pitch;
    EventLog m_log;
    double m_time = 0;
    int m_line = 0;
    std::optional<AuditionedNote> m_audition;
};

} // namespace tahrir::play
