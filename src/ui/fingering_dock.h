#pragma once
// The Fingering dock: one tab per instrument, marking where the note under the editor's
// cursor lies and, during playback, the note sounding now. The notes are the sounding
// ones (key signature, accidentals and transposition applied), computed once per change
// of the score so that a cursor move is a look-up.

#include <QDockWidget>
#include <array>
#include <optional>

#include "core/score_sheet.h"
#include "fingering/fingering_table.h"
#include "fingering/sounding_notes.h"

class QLabel;
class QTabWidget;

namespace tahrir::ui {

class InstrumentView;

class FingeringDock : public QDockWidget {
public:
    FingeringDock(const core::ScoreSheet& sheet, const std::filesystem::path& appFolder,
                  QWidget* parent = nullptr);

    // The cursor is on `line`. `scoreVersion` changes whenever the score may have changed
    // (the layout's generation) and `transpose` is the slider's value: either change
    // computes the sounding notes again.
    void follow(int line, int scoreVersion, int transpose);
    // The line sounding now during playback, 0 when none, and the slider's transposition
    // (the window's timer calls this, so a moved slider shows without a cursor move).
    void setPlaying(int line, int transpose);

    QTabWidget* tabs() const { return m_tabs; }
    InstrumentView* view(fingering::Instrument i) const {
        return m_views[static_cast<std::size_t>(i)];
    }
    // The text under the current tab's drawing.
    QString caption() const;

private:
    void refresh();
    QString describe(const InstrumentView& view, const std::optional<double>& note,
                     const char* what) const;

    const core::ScoreSheet& m_sheet;
    fingering::InstrumentTables m_tables;
    fingering::SoundingNotes m_notes;
    std::optional<int> m_version;
    int m_transpose = play::TransposeCentre;
    int m_cursorLine = 0, m_playLine = 0;
    QTabWidget* m_tabs = nullptr;
    std::array<InstrumentView*, 4> m_views{};
    QLabel* m_caption = nullptr;
};

} // namespace tahrir::ui
