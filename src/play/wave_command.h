#pragma once
// Commands to the wave voices: the tar and daf samples, the sung syllables and the
// recorded accompaniment. They travel beside the MIDI messages, stamped with run time.

#include <cstdint>
#include <optional>

namespace tahrir::play {

enum class WaveBank : std::uint8_t { Tar, Daf, Syllable, Accompaniment };
// Play rewinds and starts (Resume goes on from where the voice stands); Stop fades out;
// StopAll fades every voice of the bank; Seek sets the start position in milliseconds.
enum class WaveAction : std::uint8_t { Play, Stop, StopAll, Pause, Resume, Seek };

struct WaveCommand {
    WaveBank bank;
    WaveAction action;
    int value = 0; // the voice (1..72, a step 1..7) or, for Seek, milliseconds
    bool operator==(const WaveCommand&) const = default;
};

inline constexpr int WaveSlots = 72;

// The quarter-tone grid: two indices to a semitone, note 48 on the natural voice is 5,
// koron one below and sori one above.
constexpr int WaveIndex(int note, int channel) {
    return (note - 48) * 2 + 5 + (channel - 3);
}

// Only indices 1..72 sound.
constexpr bool WaveIndexSounds(int index) {
    return index > 0 && index < 73;
}

// The tar's sample of a sounding index: its files start 28 indices up (middle C), so a
// note below that has no sample and is passed over.
constexpr std::optional<int> TarSlot(int index) {
    const int slot = index - 28;
    if (!WaveIndexSounds(index) || slot < 1) return std::nullopt;
    return slot;
}

// MIDI pitch (fractional for quarter tones) of each bank's sample n.
constexpr double TarSamplePitch(int n) {
    return 59.5 + n / 2.0;
}
constexpr double DafSamplePitch(int n) {
    return 45.5 + n / 2.0;
}

} // namespace tahrir::play
