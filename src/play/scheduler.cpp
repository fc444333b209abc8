#include "play/scheduler.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/text_input.h"

namespace tahrir::play {

using namespace std::chrono_literals;

namespace {

struct Click {
    int step;
    int octave;
    int duration;
};
struct CountInRow {
    int numerator; // 0 matches any other measure
    int denominator;
    Click clicks[6];
    int count;
};

// The count-in clicks by measure; the 2/2 row closes with a click of no written time.
constexpr CountInRow kCountIn[] = {
    {6, 8, {{6, 3, 4}, {1, 4, 4}, {1, 4, 4}, {7, 3, 4}, {1, 4, 4}, {1, 4, 4}}, 6},
    {6, 4, {{6, 3, 8}, {1, 4, 8}, {1, 4, 8}, {6, 3, 8}, {1, 4, 8}, {1, 4, 8}}, 6},
    {6, 16, {{6, 3, 2}, {1, 4, 2}, {1, 4, 2}, {6, 3, 2}, {1, 4, 2}, {1, 4, 2}}, 6},
    {3, 8, {{6, 3, 4}, {1, 4, 4}, {1, 4, 4}}, 3},
    {3, 4, {{6, 3, 8}, {1, 4, 8}, {1, 4, 8}}, 3},
    {4, 4, {{6, 3, 8}, {6, 3, 8}, {6, 3, 8}, {6, 3, 8}}, 4},
    {2, 4, {{6, 3, 8}, {6, 3, 8}}, 2},
    {2, 2, {{6, 3, 8}, {1, 4, 8}, {1, 4, 0}}, 3},
    {0, 0, {{6, 3, 8}, {1, 5, 8}, {6, 3, 8}, {1, 5, 8}}, 4},
};

// The tuplet marks with their counters and tempo factors, in the order they are tested.
struct Tuplet {
    int count;
    double factor;
};
constexpr Tuplet kTuplets[4] = {{3, 1.5}, {5, 1.25}, {7, 7.0 / 6}, {9, 9.0 / 8}};

constexpr long long kVirtualLineBudget = 64LL * core::SheetSize;

int TupletIndex(const core::MarkWord& mark) {
    if (mark.mark != core::Mark::Tuplet) return -1;
    for (int i = 0; i < 4; ++i)
        if (mark.number == kTuplets[i].count) return i;
    return -1;
}

} // namespace

Scheduler::Walked Scheduler::walkedOf(int index) const {
    const core::ScoreLine& line = (*m_sheet)[index];
    Walked w{core::ReadNote(line), 0};
    if (w.note.pitched) {
        // A word of no time keeps its own number: " -1" for a grace note or a barline.
        w.duration = w.note.ticks
                         ? *w.note.ticks
                         : static_cast<int>(core::Val(line.get(core::NoteField::DurationField)));
    }
    return w;
}

Scheduler::Context Scheduler::save() const {
    return {m_line,
            m_state.MeasureNumber,
            m_state.MeasurePosition,
            m_state.ActiveTempo,
            m_state.MeasureTicks,
            m_state.OctaveState,
            false};
}

void Scheduler::restore(const Context& c) {
    m_line = c.line;
    m_state.MeasureNumber = c.measure;
    m_state.ActiveTempo = c.tempo;
    m_state.MeasureTicks = c.ticks;
    m_state.OctaveState = c.octave;
}

void Scheduler::readHead() {
    const core::ScoreSheet& sheet = *m_sheet;
    readSignature();
    // The tempo bar never leaves 20..320, so no run divides by a tempo of 0.
    m_state.UserTempo = std::clamp(m_controls.UserTempo.load(), 20, 320);
    m_state.ActiveTempo = m_state.UserTempo;
    if (const auto tempo = core::TempoOf(sheet[2])) m_state.ScoreTempo = *tempo;
    if (m_state.ScoreTempo == 0) m_state.ScoreTempo = 60;
    m_headTicks = core::MeasureTicksOfLine(sheet[3]);
    m_headMeasure = core::MeasureFractionOfLine(sheet[3]);
    m_state.MeasureTicks = m_headTicks;
}

double Scheduler::PlayRun(const core::ScoreSheet& sheet, const RunOptions& options,
                          PlayClock& clock) {
    if (m_controls.StopRequest.load()) return 0;
    m_sheet = &sheet;
    m_clock = &clock;
    m_endAtFin = options.EndAtFin || !clock.realTime();
    m_notes.setSheet(&sheet);
    m_notes.setClock(&clock);
    m_state.ScoreTempo = 60;
    readHead();
    m_lastTranspose = m_controls.Transpose.load();
    m_notes.pitchTable().rebuild(m_lastTranspose);
    m_lastKoron = m_midi.koronBend();
    m_lastSori = m_midi.soriBend();
    m_lastPedal = m_controls.Pedal.load();
    m_notes.setNow(0);
    m_midi.setTime(0);
    m_midi.PrepareChannels();
    m_state.OctaveState = OctaveStateBase;
    m_state.MeasurePosition = 0;
    syncWaveVoices();
    // The accompaniment stands at its start and waits for the first sounding event.
    m_state.WaveClock = 0;
    m_state.WavePending = m_controls.Accompaniment.load();
    m_state.WaveCued = false;
    m_state.WavePosition = 0;
    if (m_state.WavePending) m_midi.wave({WaveBank::Accompaniment, WaveAction::Seek, 0});
    clock.start();
    m_notes.beginRun();
    Pass pass = Pass::Restart;
    while (pass == Pass::Restart) {
        pass = walkPass(options);
        if (pass == Pass::End && m_controls.Loop.load() && clock.realTime() &&
            !m_controls.StopRequest.load()) {
            m_notes.waitSounding(); // the last note of a looped pass keeps its time
            pass = Pass::Restart;
        }
    }
    // A last rest of one 32nd gives the last note its note off.
    m_notes.PlayNoteLine(0, 3, 1, ' ', {}, 0);
    m_notes.EventLogOn = false;
    if (!options.EventLogFile.empty()) m_notes.eventLog().write(options.EventLogFile);
    m_state.OctaveState = OctaveStateBase;
    m_midi.setTime(m_notes.now());
    m_midi.AllNotesOff();
    m_midi.wave({WaveBank::Accompaniment, WaveAction::Stop, 0});
    m_controls.StopRequest = false;
    m_controls.Paused = false;
    return m_notes.now();
}

Scheduler::Pass Scheduler::walkPass(const RunOptions& options) {
    m_startMeasure = m_controls.StartMeasure.load();
    m_endMeasure = m_controls.EndMeasure.load();
    m_endLine = m_sheet->LastLine;
    m_firstLine = 4;
    if (options.SelectionStartLine > 0 && options.SelectionEndLine > 0 &&
        options.SelectionStartLine < options.SelectionEndLine) {
        m_endLine = std::min(options.SelectionEndLine, core::MaxLines);
        m_firstLine = options.SelectionStartLine;
    }
    m_state.MeasureNumber = 1;
    m_state.ActiveTempo = m_state.UserTempo;
    m_state.MeasureTicks = m_headTicks;
    m_state.OctaveState = OctaveStateBase;
    m_state.MeasurePosition = 0;
    m_line = 3;
    m_repeat = m_large = save(); // a "REP}" without "REP{" goes back to the head
    m_repeatEndLine = m_repeatEndMeasure = 0;
    m_tuplets = {};
    m_signCount = 0;
    m_notes.beginPass();
    m_notes.EventLogOn = true;
    countIn();

    // Repeat signs and repeats can send the walk round for ever; without a listener to
    // press Stop, a run in virtual time ends after a bounded number of lines.
    long long budget = m_clock->realTime() ? -1 : kVirtualLineBudget;
    for (m_line = 4; m_line <= m_endLine && m_line <= m_sheet->LastLine;) {
        if (budget >= 0 && budget-- == 0) break;
        // A real-time walk round a stretch that never sounds still leaves the processor.
        if (budget < 0 && (++m_walked & 0xFFF) == 0) std::this_thread::sleep_for(1ms);
        if (m_controls.StartMeasure.load(std::memory_order_relaxed) != m_startMeasure)
            return Pass::Restart;
        const int end = m_endMeasure;
        if (end > 0 && m_state.MeasureTicks > 0 && m_state.MeasureNumber > end) break;
        const Walked w = walkedOf(m_line);
        const bool inRange =
            m_state.MeasureTicks == 0 || end == 0 ||
            (m_startMeasure <= m_state.MeasureNumber && m_state.MeasureNumber <= end);
        const bool beforeStart = m_startMeasure > 0 && m_state.MeasureTicks > 0 &&
                                 m_state.MeasureNumber < m_startMeasure;
        const Pass p = walkLine(w, inRange && !beforeStart);
        if (p != Pass::Go) return p;
        applyLiveControls();
        if (!pauseAndStop()) return Pass::End;
    }
    return Pass::End;
}

void Scheduler::countIn() {
    m_midi.PrepareCountIn();
    m_notes.NoteVelocity = 90 - m_controls.VolScr.load();
    m_midi.CountInActive = true;
    m_notes.VoiceChannel = CountInChannel;
    if (m_controls.CountIn.load()) {
        const CountInRow* row = &kCountIn[std::size(kCountIn) - 1];
        for (const CountInRow& r : kCountIn)
            if (r.numerator == m_headMeasure.numerator &&
                r.denominator == m_headMeasure.denominator)
                row = &r;
        for (int i = 0; i < row->count; ++i)
            m_notes.PlayNoteLine(row->clicks[i].step, row->clicks[i].octave,
                                 row->clicks[i].duration, ' ', {}, 0);
    }
    m_midi.CountInActive = false;
    m_notes.waitSounding();
}

Scheduler::Pass Scheduler::walkLine(const Walked& w, bool inRange) {
    const core::ScoreLine& line = (*m_sheet)[m_line];
    // A running tuplet counter restores the tempo at the note after its group.
    for (std::size_t i = 0; i < 4; ++i) {
        if (m_tuplets[i] == 0) continue;
        if (--m_tuplets[i] == 0) m_state.ActiveTempo /= kTuplets[i].factor;
        break;
    }
    const core::NoteView& f = w.note;
    if (const int t = TupletIndex(f.mark); t >= 0) {
        m_state.ActiveTempo *= kTuplets[t].factor;
        m_tuplets[static_cast<std::size_t>(t)] = kTuplets[t].count;
    }
    directives(line);
    if (m_state.MeasurePosition == 0) m_state.MeasureAccidentals.fill(' ');
    if (f.accidentalLetter != ' ' && f.step > 0 && f.step <= 7)
        m_state.MeasureAccidentals[static_cast<std::size_t>(f.step)] = f.accidentalLetter;

    if (m_line < m_firstLine) { // walked for its measure count only
        countDuration(w);
        ++m_line;
        return Pass::Go;
    }
    if (core::IsEndMark(line) && !m_large.done) {
        // Music after the end mark is never reached: the walk rests here until Stop.
        if (m_line >= m_sheet->LastLine || m_endAtFin) return Pass::End;
        while (!m_controls.StopRequest.load())
            std::this_thread::sleep_for(10ms);
        return Pass::End;
    }
    if (w.duration == 0) {
        if (!controlLine(line)) return Pass::Go; // the line to walk next is already set
    } else {
        if (inRange) {
            m_notes.PlayNoteLine(f.step, f.octave, w.duration, f.accidentalLetter, f.mark, m_line);
            m_midi.CountInActive = false;
        }
        countDuration(w);
    }
    ++m_line;
    return Pass::Go;
}

// The first note of a tuplet takes no measure time, so a group fits the measure.
void Scheduler::countDuration(const Walked& w) {
    if (w.duration > 0 && TupletIndex(w.note.mark) < 0) m_state.MeasurePosition += w.duration;
    endMeasureIfFull();
}

void Scheduler::endMeasureIfFull() {
    if (m_state.MeasureTicks > 0 && m_state.MeasurePosition >= m_state.MeasureTicks) {
        m_state.WaveClock += m_state.MeasurePosition / 8.0 * 60 / m_state.UserTempo;
        m_state.MeasurePosition = 0;
        ++m_state.MeasureNumber;
    }
}

void Scheduler::directives(const core::ScoreLine& line) {
    if (const auto cue = core::SpeedMarkOf(line)) {
        // A cue of the accompaniment: its position, in the unit the recording is played in.
        m_state.WavePosition =
            static_cast<int>(std::lround(*cue / 8 * 60 / m_state.UserTempo * 100));
        m_state.WaveCued = true;
        m_state.WavePending = true;
    } else if (const auto tempo = core::TempoOf(line)) {
        double v = *tempo;
        if (v > -320 && v < -19) v = -v;
        if (v > 19 && v < 320 && m_state.ScoreTempo > 0)
            m_state.ActiveTempo = v * m_state.UserTempo / m_state.ScoreTempo;
    } else if (const auto change = core::AllChangeOf(line)) {
        if (change->digit >= 1 && change->digit <= 7) {
            m_state.KeySignature[static_cast<std::size_t>(change->digit)] = change->letter;
        } else if (change->digit == 8) {
            if (change->letter == 'U')
                m_state.OctaveState *= 2;
            else if (change->letter == 'D')
                m_state.OctaveState /= 2;
            else if (change->letter == 'N')
                m_state.OctaveState = OctaveStateBase;
        }
    } else if (core::IsRhythmLine(line.text())) {
        m_state.MeasureTicks = core::MeasureTicksOfLine(line);
    }
}

// The signature of line 1, for the run and as the original one.
void Scheduler::readSignature() {
    const std::array<char, 8> letters = core::HeaderKeyLetters((*m_sheet)[1]);
    for (std::size_t s = 1; s <= 7; ++s)
        m_state.KeySignature[s] = m_state.OriginalSignature[s] = letters[s];
}

// Control lines of no duration. Returns false when the walk jumped and must not advance.
bool Scheduler::controlLine(const core::ScoreLine& line) {
    const std::string_view token = core::DirectiveTokenOf(line.text());
    if (token == "REP{") {
        m_repeat = save();
    } else if (token == "REPS{") {
        m_large = save();
    } else if (token == "REP}" || token == "REPS}") {
        Context& c = token == "REP}" ? m_repeat : m_large;
        if (token == "REP}") {
            m_repeatEndLine = m_line;
            m_repeatEndMeasure = m_state.MeasureNumber;
        }
        if (!c.done && m_startMeasure <= c.measure) {
            restore(c);
            c.done = true;
            // Back at the head of the music (the opening on line 4, or none at all): the
            // signature of line 1 holds again.
            if (token == "REPS}" && (m_line == 3 || m_line == 4)) readSignature();
        }
    } else if (token == "VOL{1") {
        if (m_repeatEndLine > m_line) {
            m_line = m_repeatEndLine;
            m_state.MeasureNumber = m_repeatEndMeasure;
        }
    } else if (token == "REPB1" || token == "REPB2") {
        repeatSign(token == "REPB2");
    } else if (token == "GSIGN" || token == "FSIGN") {
        m_state.Clef = token[0];
    } else if (const auto control = core::ControlOf(line); control && control->assigns) {
        if (control->keyword == "INS") {
            const int v = static_cast<int>(control->number(2));
            if (v > 0 && v < 9) {
                m_midi.setProgramIndex(*ProgramIndexOfButton(v - 1));
                m_midi.MidiOutputOn = true;
                m_midi.PrepareChannels();
            }
        } else if (control->keyword == "TRP") {
            const int v = static_cast<int>(control->number(3));
            if (v >= -12 && v <= 12) m_controls.Transpose = TransposeCentre + v;
        }
    }
    return true;
}

// Sum of 32nds walking back from the line before `m_line`; the barline line where a
// stretch of `limit` 32nds begins, or 3 when the first line is reached first.
int Scheduler::scanBack(int limit) const {
    int sum = 0;
    for (int i = m_line - 1; i >= m_firstLine; --i) {
        const Walked w = walkedOf(i);
        if (w.duration > 0 && TupletIndex(w.note.mark) < 0) sum += w.duration;
        if (sum >= limit && i - 1 >= m_firstLine && walkedOf(i - 1).duration == -1) return i - 1;
    }
    return 3;
}

// A repeat sign plays the last measure (or two) again, once for each sign in a row.
void Scheduler::repeatSign(bool two) {
    const std::string_view sign = core::DirectiveTokenOf((*m_sheet)[m_line].text());
    if (m_signCount > 0) {
        const int next = m_line + m_signCount;
        if (next <= m_sheet->LastLine && core::DirectiveTokenOf((*m_sheet)[next].text()) == sign) {
            ++m_signCount;
        } else {
            m_line = m_line + m_signCount - 1;
            m_signCount = 0;
            return;
        }
    } else {
        m_signCount = 1;
    }
    const int limit = (two ? 2 : 1) * m_state.MeasureTicks;
    int target = scanBack(limit);
    if (target == 3) m_state.MeasurePosition = 0;
    if (target > 3 && TupletIndex(walkedOf(target).note.mark) >= 0) --target;
    if (two) --m_state.MeasureNumber;
    if (m_state.MeasureNumber <= 0) m_state.MeasureNumber = 1;
    m_line = target;
}

void Scheduler::applyLiveControls() {
    const int tempo = std::clamp(m_controls.UserTempo.load(std::memory_order_relaxed), 20, 320);
    if (tempo != m_state.UserTempo) {
        m_state.ActiveTempo = m_state.ActiveTempo * tempo / m_state.UserTempo;
        m_state.UserTempo = tempo;
    }
    const int koron = m_controls.KoronBend.load(std::memory_order_relaxed);
    if (koron != m_lastKoron) m_midi.setKoronBend(m_lastKoron = koron);
    const int sori = m_controls.SoriBend.load(std::memory_order_relaxed);
    if (sori != m_lastSori) m_midi.setSoriBend(m_lastSori = sori);
    const int transpose = m_controls.Transpose.load(std::memory_order_relaxed);
    if (transpose != m_lastTranspose) m_notes.pitchTable().rebuild(m_lastTranspose = transpose);
    if (const int program = m_controls.PendingProgramIndex.exchange(0); program > 0) {
        m_midi.setProgramIndex(program);
        m_midi.MidiOutputOn = true;
        m_midi.PrepareChannels();
    }
    syncWaveVoices();
    // Releasing the pedal ends the notes it held.
    const bool pedal = m_controls.Pedal.load(std::memory_order_relaxed);
    if (m_lastPedal && !pedal) m_midi.AllNotesOff();
    m_lastPedal = pedal;
}

// Pictures 8 and 9 as the window set them; a change of the tar stops all its voices.
void Scheduler::syncWaveVoices() {
    if (m_controls.TarOn.load(std::memory_order_relaxed) != m_midi.TarOn) m_midi.toggleTar();
    m_midi.DafOn = m_controls.DafOn.load(std::memory_order_relaxed);
}

// Pause: the sounding note rings half its time more and stops; the walk waits for Play
// or Stop, and the accompaniment with it. Returns false on Stop.
bool Scheduler::pauseAndStop() {
    if (m_clock->realTime() && m_controls.Paused.load()) {
        m_clock->pauseFor(m_notes.SoundingDuration / 2);
        m_notes.cutSounding();
        m_midi.wave({WaveBank::Accompaniment, WaveAction::Pause, 0});
        while (m_controls.Paused.load() && !m_controls.StopRequest.load())
            m_clock->pauseFor(0.01);
        if (!m_state.WavePending && m_controls.Accompaniment.load())
            m_midi.wave({WaveBank::Accompaniment, WaveAction::Resume, 0});
    }
    return !m_controls.StopRequest.load();
}

} // namespace tahrir::play
