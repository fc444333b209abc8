#pragma once
// The walk of the sheet (PlayRun): repeats, voltas, repeat signs, tuplets, tempo marks,
// measure range and count-in, handing each note line to the note player. Time is the
// note player's run time; with a real-time clock the walk waits for each event.

#include <array>
#include <filesystem>
#include <string>

#include "core/line_view.h"
#include "core/score_sheet.h"
#include "play/midi_out.h"
#include "play/note_player.h"
#include "play/play_state.h"

namespace tahrir::play {

struct RunOptions {
    int SelectionStartLine = 0; // both 0 when nothing is marked
    int SelectionEndLine = 0;
    std::filesystem::path EventLogFile; // "tmpmid.txt"; empty writes no file
    // Nobody can press Stop (the command line): an end mark ends a real-time run as it
    // ends a virtual one, instead of holding the walk there.
    bool EndAtFin = false;
};

class Scheduler {
public:
    Scheduler(MidiOut& midi, NotePlayer& notes, RunState& state, PlayControls& controls)
        : m_midi(midi), m_notes(notes), m_state(state), m_controls(controls) {}

    // Walks `sheet` to its end (or to Stop) and returns the run time in seconds.
    double PlayRun(const core::ScoreSheet& sheet, const RunOptions& options, PlayClock& clock);

private:
    // A saved place of the walk: repeat start, large repeat start.
    struct Context {
        int line = 3;
        int measure = 1;
        int position = 0;
        double tempo = 60;
        int ticks = 0;
        int octave = OctaveStateBase;
        bool done = false;
    };
    // A line as the walk reads it: its note fields and its 32nds (-1 for no time, 0 for
    // a line without a pitch digit).
    struct Walked {
        core::NoteView note;
        int duration = 0;
    };
    enum class Pass { Go, Restart, End };

    void readHead();
    Pass walkPass(const RunOptions& options);
    void countIn();
    Pass walkLine(const Walked& w, bool inRange);
    void directives(const core::ScoreLine& line);
    bool controlLine(const core::ScoreLine& line);
    void countDuration(const Walked& w);
    void endMeasureIfFull();
    void repeatSign(bool two);
    int scanBack(int limit) const;
    void readSignature();
    void applyLiveControls();
    void syncWaveVoices();
    bool pauseAndStop();
    Walked walkedOf(int index) const;
    Context save() const;
    void restore(const Context& c);

    MidiOut& m_midi;
    NotePlayer& m_notes;
    RunState& m_state;
    PlayControls& m_controls;
    const core::ScoreSheet* m_sheet = nullptr;
    PlayClock* m_clock = nullptr;
    bool m_endAtFin = false;

    int m_line = 4;
    int m_firstLine = 4;
    int m_endLine = 0;
    int m_startMeasure = 0;
    int m_endMeasure = 0;
    int m_headTicks = 0;                 // the measure of line 3
    core::MeasureFraction m_headMeasure; // its two numbers, for the count-in
    Context m_repeat;
    Context m_large;
    int m_repeatEndLine = 0;
    int m_repeatEndMeasure = 0;
    std::array<int, 4> m_tuplets{}; // counters of the 3, 5, 7 and 9 groups
    int m_signCount = 0;
    int m_lastKoron = DefaultKoronBend;
    int m_lastSori = DefaultSoriBend;
    int m_lastTranspose = TransposeCentre;
    bool m_lastPedal = false;
    unsigned m_walked = 0;
};

} // namespace tahrir::play
