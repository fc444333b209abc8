#pragma once
// The track frame of the MIDI import: the reader's dump of the file, one line each, and
// the tracks with their names and note counts; OK takes the selected track.

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "midifile/midi_reader.h"

class QListWidget;
class QPushButton;

namespace tahrir::ui {

class MidiImportFrame : public QDialog {
public:
    MidiImportFrame(const midifile::MidiFileInfo& info, const std::vector<std::string>& dump,
                    QWidget* parent = nullptr);

    // The chosen track, numbered from 1 as the dump prints it; nullopt before OK.
    std::optional<int> chosenTrack() const;
    QListWidget* trackList() const { return m_tracks; }
    QListWidget* dumpList() const { return m_dump; }

private:
    QListWidget* m_dump = nullptr;
    QListWidget* m_tracks = nullptr;
    QPushButton* m_ok = nullptr;
};

// The text of a track's entry: its number, name and note count.
QString TrackEntryText(int track, const std::string& name, std::size_t notes);

} // namespace tahrir::ui
