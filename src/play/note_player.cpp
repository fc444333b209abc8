#include "play/note_player.h"

#include <algorithm>
#include <cmath>

#include "core/line_view.h"
#include "core/text_input.h"

namespace tahrir::play {

namespace {

using core::Mark;

// The accidental a letter sounds, nullptr for the plain voice: blank, "N" and any letter
// outside the table. Its pitch-bend step is the voice channel, its semitones move the key.
const core::AccidentalRow* Sounding(char letter) {
    const core::AccidentalRow* row = core::AccidentalRowOf(letter);
    return row && row->quarterTones != 0 ? row : nullptr;
}

int ChannelOf(const core::AccidentalRow* row) {
    return row ? row->bendStep : NaturalChannel;
}

char UpperLetter(char c) {
    return core::UpperAscii(std::string_view(&c, 1))[0];
}

// How far below the note an interval mordent's companion lies: the number the mark word
// begins with, so only "1".."9" count and from "A" on the companion is the note itself.
int MordentSteps(const core::MarkWord& m) {
    return static_cast<int>(core::Val(std::string_view(&m.first, 1)));
}

// The player reads the interval forms by their characters, wider than the grammar: ":"
// counts 10 like "A", and letters past "K" go on counting by their code.
int IntervalCount(char c) {
    if (c == ':') return 10;
    if (c > 'K') return c - 55;
    return core::IntervalSteps(c);
}

// An interval mordent's first character runs from "1" to "K" as characters, the signs
// between "9" and "A" included.
bool IsIntervalMordent(const core::MarkWord& m) {
    return m.second == 'M' && m.first >= '1' && m.first <= 'K';
}

// Two notes together: any character above the blank before "T".
bool IsTogether(const core::MarkWord& m) {
    return m.second == 'T' && m.first > ' ';
}

// One event of a fixed expansion: which note, its share of the note's seconds, and
// whether it sounds on the companion channel.
enum class Who { Main, Companion, Silence };
struct Share {
    Who who;
    double fraction;
    bool onCompanionChannel;
};
struct Expansion {
    Mark mark; // IntervalMordent stands for every interval mordent
    Share events[3];
    int count;
};

// The fractions do not always sum to one: dorrab and mordent run 6% long on purpose.
constexpr Expansion kExpansions[] = {
    {Mark::Dorrab,
     {{Who::Main, 0.14, false}, {Who::Main, 0.14, false}, {Who::Main, 0.78, false}},
     3},
    {Mark::Mordent,
     {{Who::Main, 0.14, false}, {Who::Companion, 0.14, true}, {Who::Main, 0.78, false}},
     3},
    {Mark::IntervalMordent,
     {{Who::Companion, 0.1, true}, {Who::Main, 0.1, false}, {Who::Companion, 0.78, true}},
     3},
    {Mark::Tekyeh, {{Who::Main, 0.5, false}, {Who::Companion, 0.5, false}, {}}, 2},
    {Mark::Staccato, {{Who::Main, 0.5, false}, {Who::Silence, 0.5, false}, {}}, 2},
};
// "DA", a word only the player knows: the note cut short by a tenth.
constexpr Expansion kDetached = {
    Mark::Other, {{Who::Main, 0.9, false}, {Who::Silence, 0.1, false}, {}}, 2};

const Expansion* FindExpansion(const core::MarkWord& m) {
    if (m.first == 'D' && m.second == 'A') return &kDetached;
    const Mark mark = IsIntervalMordent(m) ? Mark::IntervalMordent : m.mark;
    for (const Expansion& e : kExpansions)
        if (e.mark == mark) return &e;
    return nullptr;
}

} // namespace

// The note line resolved to keys and voices.
struct NotePlayer::Resolved {
    int main = 0;
    int companion = 0;
    int mainChannel = NaturalChannel;
    int companionChannel = NaturalChannel;
    double seconds = 0;
};

NotePlayer::NotePlayer(MidiOut& midi, RunState& state, PlayControls& controls)
    : m_midi(midi), m_state(state), m_controls(controls) {}

void NotePlayer::beginRun() {
    SoundingNote = 0;
    beginPass();
}

void NotePlayer::beginPass() {
    m_log.reset();
    SoundingStart = m_time;
    SoundingDuration = 0;
    TieHold = false;
}

std::optional<NotePlayer::Resolved> NotePlayer::resolve(int step, int octave, char accidental,
                                                        const core::MarkWord& mark) const {
    const RunState& s = m_state;
    const bool hasStep = step >= 1 && step <= 7;
    // An accidental met earlier in the measure holds for the rest of it.
    if (accidental == ' ' && hasStep && s.MeasureTicks != 1000000 &&
        s.MeasureAccidentals[static_cast<std::size_t>(step)] != ' ')
        accidental = s.MeasureAccidentals[static_cast<std::size_t>(step)];
    if (mark.mark == Mark::OctaveDown || s.OctaveState * 2 == OctaveStateBase) --octave;
    if (mark.mark == Mark::OctaveUp || s.OctaveState == OctaveStateBase * 2) ++octave;

    int cStep = step + 1;
    int cOctave = octave;
    if (cStep == 8) {
        cStep = 1;
        ++cOctave;
    }
    if (mark.second == 'M') { // the interval mordent's companion lies below the note
        cStep = step - MordentSteps(mark);
        cOctave = octave;
        if (cStep < 1) {
            cStep += 7;
            --cOctave;
        }
    }
    // A blank takes the signature's letter of the step; "N" stays and means natural.
    const char letter = UpperLetter(accidental);
    const core::AccidentalRow* main = Sounding(letter);
    if (letter == ' ' && hasStep) main = Sounding(s.KeySignature[static_cast<std::size_t>(step)]);

    const core::AccidentalRow* companion = nullptr;
    if (mark.second == 'T' && step > 0) {
        for (int n = IntervalCount(mark.first); n > 0; --n) {
            if (--cStep < 1) {
                cStep = 7;
                --cOctave;
            }
        }
        if (cStep == step) companion = main;
        if (!companion && cStep >= 1 && cStep <= 7)
            companion = Sounding(s.KeySignature[static_cast<std::size_t>(cStep)]);
    }
    if (mark.mark == Mark::TrillFlat) companion = core::AccidentalRowOf(core::Accidental::Flat);

    // Sharps and flats are whole semitones on the natural voice.
    const auto keyOf = [this](int st, int oct,
                              const core::AccidentalRow* row) -> std::optional<int> {
        const auto key = m_pitch.at(oct * 7 + st);
        if (!key) return std::nullopt;
        return *key + (row ? row->semitones : 0);
    };
    Resolved r;
    if (step > 0) {
        const auto key = keyOf(step, octave, main);
        if (!key) return std::nullopt; // off the table: the line is passed over
        r.main = *key;
    } else {
        main = nullptr;
    }
    if (cStep >= 1) r.companion = keyOf(cStep, cOctave, companion).value_or(0);
    r.mainChannel = ChannelOf(main);
    r.companionChannel = ChannelOf(companion);
    return r;
}

void NotePlayer::PlayNoteLine(int step, int octave, int duration, char accidental,
                              const core::MarkWord& mark, int line) {
    auto resolved = resolve(step, octave, accidental, mark);
    if (!resolved) return;
    Resolved& r = *resolved;
    if (m_observer && line > 3 && step > 0) m_observer->noteResolved(line, r.main, r.mainChannel);
    const int base = 90 - m_controls.VolScr.load(std::memory_order_relaxed);
    // The accent rounds half to even; above 127 it would spill into the next byte, so it
    // is held at 127.
    NoteVelocity = mark.mark == Mark::Accent
                       ? std::min(127, static_cast<int>(std::nearbyint(base * 1.5)))
                       : base;
    VoiceChannel = m_midi.CountInActive ? CountInChannel : r.mainChannel;
    if (m_midi.CountInActive) r.mainChannel = CountInChannel;
    CompanionChannel = r.companionChannel;
    r.seconds = std::max(0.0, duration * 60.0 / (m_state.ActiveTempo * 8));
    m_line = line;
    expand(r, duration, mark);
    if (mark.mark == Mark::Tie && tiedToNext(step, octave, line)) TieHold = true;
}

bool NotePlayer::tiedToNext(int step, int octave, int line) const {
    if (!m_sheet || line < 1 || line >= core::MaxLines) return false;
    const core::NoteView next = core::ReadNote((*m_sheet)[line + 1]);
    return next.step == step && next.octave == octave;
}

void NotePlayer::expand(const Resolved& r, int duration, const core::MarkWord& mark) {
    const double tick = 24 / (8 * m_state.ActiveTempo);
    const int main = r.main;
    if (duration == 0 && m_midi.CountInActive)
        return PlayEvent(main, tick, EventMode::Plain, r.mainChannel);
    if (duration == -1 && main == 0)
        return PlayEvent(0, 0.0000001, EventMode::Plain, r.mainChannel);
    if (duration == -1) return PlayEvent(main, tick, EventMode::Plain, r.mainChannel);
    if (mark.mark == Mark::Riz) return playRounds(r, duration, false);
    if (mark.mark == Mark::Trill || mark.mark == Mark::TrillFlat)
        return playRounds(r, duration, true);
    if (const Expansion* e = FindExpansion(mark)) {
        for (int i = 0; i < e->count; ++i) {
            const Share& s = e->events[i];
            const int note = s.who == Who::Main ? main : s.who == Who::Companion ? r.companion : -1;
            const int channel = s.onCompanionChannel ? r.companionChannel : r.mainChannel;
            PlayEvent(note, s.fraction * r.seconds, EventMode::Plain, channel);
        }
        return;
    }
    if (IsTogether(mark)) {
        PlayEvent(r.companion, r.seconds, EventMode::Plain, r.mainChannel);
        PlayEvent(main, r.seconds, EventMode::Dual, r.mainChannel);
        PlayEvent(r.companion, r.seconds, EventMode::Stop, r.mainChannel);
        return;
    }
    if (main == 0) NoteVelocity = 1;
    PlayEvent(main, r.seconds, EventMode::Plain, r.mainChannel);
}

// Riz repeats the note, a trill alternates it with its companion; either fills 0.8 of
// the written time, and the next event follows at once.
void NotePlayer::playRounds(const Resolved& r, int duration, bool trill) {
    const double d = duration;
    double rounds = d / 2;
    if (0.9 * r.seconds / (2 * rounds) < 0.05) rounds = d / 4;
    if (rounds < 1) rounds = 1;
    const double unit = 0.8 * r.seconds / (2 * rounds);
    for (int i = 1; i <= rounds; ++i) {
        PlayEvent(r.main, unit, EventMode::Plain, r.mainChannel);
        if (trill)
            PlayEvent(r.companion, unit, EventMode::Plain, r.companionChannel);
        else
            PlayEvent(r.main, unit, EventMode::Plain, r.mainChannel);
    }
    PlayEvent(r.main, unit, EventMode::Stop, r.mainChannel);
    PlayEvent(r.companion, unit, EventMode::Stop, r.companionChannel);
}

void NotePlayer::PlayEvent(int note, double seconds, EventMode mode, int channel) {
    const bool pedal = m_controls.Pedal.load(std::memory_order_relaxed);
    if (EventLogOn && mode != EventMode::Stop) {
        if (mode == EventMode::Dual) {
            if (note > 0) m_log.addConcurrent(note, CompanionChannel, NoteVelocity);
        } else if (note <= 0) {
            m_log.addRest(seconds);
        } else if (TieHold) {
            m_log.extendLast(seconds);
        } else if (seconds > 0) {
            m_log.addNote(seconds, note, channel, NoteVelocity);
        }
    }
    if (mode == EventMode::Dual) {
        m_midi.setTime(m_time);
        m_midi.MidiNoteOn(note, NoteVelocity, CompanionChannel);
        waitSounding();
        return;
    }
    if (seconds == 0) return;
    waitSounding();
    if (m_clock->interrupted()) return; // stopped while waiting: nothing more sounds
    if (m_state.WavePending && channel != CountInChannel && (note > 0 || seconds > 0.01))
        cueAccompaniment();
    if (m_observer && m_line > 3) m_observer->lineSounded(m_line);
    if (!TieHold) {
        if (note > 0 && mode == EventMode::Stop) {
            if (!pedal) {
                m_midi.MidiNoteOff(note, CompanionChannel);
                m_midi.MidiNoteOff(note, channel);
            }
            SoundingDuration = 0;
            return;
        }
        if (note > 0) m_midi.MidiNoteOn(note, NoteVelocity, channel);
        // The new note starts before the old one stops; the same key on the same channel
        // is not stopped, the second note on is the new attack.
        const bool other = SoundingNote > 0 && (SoundingNote != note || SoundingChannel != channel);
        if ((mode == EventMode::Cut && SoundingNote > 0) || other) {
            if (!pedal) m_midi.MidiNoteOff(SoundingNote, SoundingChannel);
        }
    }
    // A tied note goes on sounding as the key and voice it started on.
    if (!TieHold) {
        SoundingNote = note;
        SoundingChannel = channel;
    }
    TieHold = false;
    SoundingDuration = seconds;
    SoundingStart = m_time;
}

// The first sounding event starts the accompaniment where the walk stands, unless an
// "LvT=" line set its position.
void NotePlayer::cueAccompaniment() {
    if (!m_state.WaveCued) m_state.WavePosition = static_cast<int>(std::lround(m_state.WaveClock * 1000));
    if (m_controls.Accompaniment.load()) {
        m_midi.wave({WaveBank::Accompaniment, WaveAction::Seek, m_state.WavePosition});
        m_midi.wave({WaveBank::Accompaniment, WaveAction::Resume, 0});
    } else {
        m_midi.wave({WaveBank::Accompaniment, WaveAction::Stop, 0});
    }
    m_state.WavePending = false;
}

void NotePlayer::waitSounding() {
    m_time = std::max(m_time, SoundingStart + SoundingDuration);
    m_clock->waitUntil(m_time);
    m_midi.setTime(m_time);
}

void NotePlayer::cutSounding() {
    m_midi.setTime(m_time);
    if (SoundingNote > 0) m_midi.MidiNoteOff(SoundingNote, SoundingChannel);
    SoundingDuration = 0;
}

std::optional<AuditionedNote> NotePlayer::auditionNote(int step, int octave, char accidental) {
    const auto key = m_pitch.at(octave * 7 + step);
    if (step < 1 || step > 7 || !key) return std::nullopt;
    const core::AccidentalRow* row = core::AccidentalRowOf(UpperLetter(accidental));
    const int note = *key + (row ? row->semitones : 0);
    endAudition();
    m_midi.MidiNoteOn(note, 127, ChannelOf(row));
    m_audition = AuditionedNote{note, ChannelOf(row)};
    return m_audition;
}

void NotePlayer::endAudition() {
    if (!m_audition) return;
    m_midi.MidiNoteOff(m_audition->note, m_audition->channel);
    m_audition.reset();
}

} // namespace tahrir::play
