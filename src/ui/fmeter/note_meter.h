#pragma once
// The note at the position: the keyboard `Klav`, one octave of the 27-position
// quarter-tone grid with the dastgah's degrees marked and the heard note lit, and the
// error meter, how far the heard pitch lies from the note it was placed on.

#include <QGroupBox>
#include <QWidget>
#include <functional>
#include <optional>

#include "core/dastgah_scale.h"
#include "transcribe/note_finder.h"

class QLabel;

namespace tahrir::ui {

// The grid position (0..26) of a note the finder placed: Do of its octave is 1.
int KeyOfFound(const transcribe::FoundNote& found);
// The position (1..24) of a MIDI number, .5 for a quarter tone, folded into one octave.
int KeyOfNote(double note);
// A grid position's name for the eye: "E koron", "F sori", "C#".
QString ReadableName(std::string_view name);

class KeyboardView : public QWidget {
public:
    explicit KeyboardView(QWidget* parent = nullptr);
    // The degrees to mark: positions where the mask holds -1.
    void setScale(const core::ScaleMask& mask);
    // The heard note's key and the found note's key, -1 for none.
    void setKeys(int heard, int found);
    int heardKey() const { return m_heard; }
    int foundKey() const { return m_found; }
    bool scaleKey(int position) const { return m_mask[static_cast<std::size_t>(position)] != 0; }
    // A click on a key, with its position.
    std::function<void(int)> pressed;
    QSize sizeHint() const override { return {380, 90}; }

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;

private:
    QRectF keyRect(int position) const;
    int keyAt(QPointF at) const;

    core::ScaleMask m_mask{};
    int m_heard = -1, m_found = -1;
};

// `ErrorNote` drawn as a needle: 1000 in the middle, a quarter tone to either side.
class ErrorMeter : public QWidget {
public:
    explicit ErrorMeter(QWidget* parent = nullptr);
    // The finder's ErrorNote, or nullopt when no note is heard.
    void setError(std::optional<int> errorNote);
    std::optional<int> error() const { return m_error; }
    // Cents off the note: 1200 log2(ErrorNote / 1000).
    static double CentsOf(int errorNote);
    QSize sizeHint() const override { return {380, 34}; }

protected:
    void paintEvent(QPaintEvent*) override;

private:
    std::optional<int> m_error;
};

// The keyboard, the meter and the note's name under them.
class NoteMeter : public QGroupBox {
public:
    explicit NoteMeter(QWidget* parent = nullptr);
    void setScale(const core::ScaleMask& mask) { m_keys->setScale(mask); }
    // The note heard at the position (nullopt: nothing heard) and the MIDI number of the
    // found note there (0: none).
    void showNote(const std::optional<transcribe::FoundNote>& heard, double found);
    const KeyboardView& keyboard() const { return *m_keys; }
    const ErrorMeter& meter() const { return *m_meter; }
    QString text() const;
    std::function<void(int)>& keyPressed() { return m_keys->pressed; }

private:
    KeyboardView* m_keys;
    ErrorMeter* m_meter;
    QLabel* m_name;
};

} // namespace tahrir::ui
