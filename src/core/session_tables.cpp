#include "core/session_tables.h"

namespace tahrir::core {

const std::array<std::string_view, 12>& SharpChordNames() {
    static constexpr std::array<std::string_view, 12> names = {
        "C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
    return names;
}

const std::array<std::string_view, 12>& FlatChordNames() {
    static constexpr std::array<std::string_view, 12> names = {
        "C", "Db", "D", "Eb", "E", "F", "Gb", "G", "Ab", "A", "Bb", "B"};
    return names;
}

const std::array<std::string_view, 13>& ChordKindNames() {
    static constexpr std::array<std::string_view, 13> names = {
        "M", "m", "aug", "dim", "sus2", "sus4", "6", "m6", "7", "m7", "maj7", "m(maj7)", "dim7"};
    return names;
}

} // namespace tahrir::core
