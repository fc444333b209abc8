#pragma once
// A note typed in the editor, sounded on a player: the window's and the command line's
// auditioner share this reading of the editor's note.

#include "edit/services.h"

namespace tahrir::app {

// The accidental the player takes is the last of the note's accidental text (column 6 of
// the pen); a blank when there is none.
inline char AuditionAccidental(const edit::NoteSound& note) {
    return note.accidental.size() >= 3 ? note.accidental[2] : ' ';
}

// Sounds `note` on a play::Player or play::NotePlayer; returns what the player answers.
template <class Player> auto AuditionNote(Player& player, const edit::NoteSound& note) {
    return player.auditionNote(note.step, note.octave, AuditionAccidental(note));
}

} // namespace tahrir::app
