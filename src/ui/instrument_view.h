#pragma once
// One instrument drawn with the positions of the note under the cursor and of the note
// sounding now: the tar's neck, the ney's holes, the harmonica's holes, the hang's fields.

#include <QPixmap>
#include <QWidget>
#include <optional>

#include "fingering/fingering_table.h"

namespace tahrir::ui {

// What the view marks for one note: where it lies, or the nearest pitch the instrument
// can play when it cannot play the note itself.
struct MarkedNote {
    double note = 0;
    const fingering::Position* position = nullptr; // exact or nearest
    bool exact = false;
};

class InstrumentView : public QWidget {
public:
    InstrumentView(fingering::Instrument instrument, const fingering::FingeringTable& table,
                   QWidget* parent = nullptr);

    fingering::Instrument instrument() const { return m_instrument; }
    // The mark of a note on this instrument (position null when the table is empty).
    MarkedNote markOf(double note) const;
    // Sets the cursor's and the sounding note's marks; repaints only on a change.
    void setMarks(std::optional<MarkedNote> cursor, std::optional<MarkedNote> playing);
    const std::optional<MarkedNote>& cursorMark() const { return m_cursor; }
    QSize sizeHint() const override { return {420, 220}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Mark {
        const fingering::Position* position;
        QColor colour;
    };
    // Draws the instrument's still parts (`still`, once per size into m_still) or the marks.
    void draw(QPainter& p, const std::vector<Mark>& marks, bool still) const;
    void drawTar(QPainter& p, const std::vector<Mark>& marks, bool still) const;
    void drawNey(QPainter& p, const std::vector<Mark>& marks, bool still) const;
    void drawHarmonica(QPainter& p, const std::vector<Mark>& marks, bool still) const;
    void drawHang(QPainter& p, const std::vector<Mark>& marks, bool still) const;

    fingering::Instrument m_instrument;
    const fingering::FingeringTable& m_table;
    std::vector<double> m_fretSemitones; // the tar's frets above the open course, from the table
    std::vector<QString> m_courseNames;  // the tar's open courses by number: "C4"
    std::optional<MarkedNote> m_cursor, m_playing;
    QPixmap m_still; // the instrument without marks, at the widget's size
};

// The colours of the two marks.
QColor CursorColour();
QColor PlayingColour();

} // namespace tahrir::ui
