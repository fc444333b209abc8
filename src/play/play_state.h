#pragma once
// The live controls of the player and the state a run shares between the walk and the
// routine that sounds a note.

#include <array>
#include <atomic>

namespace tahrir::play {

// What the window's controls set. Written by the window's thread at any time, read by
// the run between events: plain atomics, no locks.
struct PlayControls {
    std::atomic<int> UserTempo{60};   // tempo bar, 20..320
    std::atomic<int> VolScr{30};      // velocity is 90 - VolScr
    std::atomic<int> KoronBend{-16};  // 0..-32
    std::atomic<int> SoriBend{16};    // 0..32
    std::atomic<int> Transpose{24};   // transposition slider 12..36, 24 is none
    std::atomic<int> StartMeasure{0}; // 0 is from the top
    std::atomic<int> EndMeasure{0};   // 0 is to the end
    std::atomic<bool> Loop{false};
    std::atomic<bool> Pedal{false};
    std::atomic<bool> CountIn{false};
    std::atomic<bool> Paused{false};
    std::atomic<bool> StopRequest{false};
    // An instrument list index (1..8) chosen while a run plays, 0 when none is waiting.
    std::atomic<int> PendingProgramIndex{0};
    // The wave voices of pictures 8 and 9, and the accompaniment of picture 10.
    std::atomic<bool> TarOn{false};
    std::atomic<bool> DafOn{false};
    std::atomic<bool> Accompaniment{false};
};

inline constexpr int OctaveStateBase = 32;

// Per-step letters are indexed 1..7 (Do..Si); index 0 is unused.
using StepLetters = std::array<char, 8>;

struct RunState {
    double ActiveTempo = 60;
    double ScoreTempo = 60;
    int UserTempo = 60;
    int MeasureTicks = 0; // 0 is free rhythm
    int MeasurePosition = 0;
    int MeasureNumber = 1;
    int OctaveState = OctaveStateBase;
    StepLetters KeySignature{' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
    StepLetters OriginalSignature{' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
    StepLetters MeasureAccidentals{' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
    char Clef = 'G';
    // Seconds of score time at the user's tempo up to the last measure start; the
    // accompaniment starts there unless an "LvT=" line set its position.
    double WaveClock = 0;
    bool WavePending = false; // the accompaniment waits for the first sounding event
    bool WaveCued = false;    // an "LvT=" line set the position
    int WavePosition = 0;     // milliseconds
};

} // namespace tahrir::play
