#pragma once
// The wave pictures of the transcription window: the overview of the whole recording
// with the visible window marked, and the detail with the pitch track drawn over it
// against a note grid, the found notes as bars, the marked stretch and the play line.

#include <QWidget>
#include <functional>
#include <vector>

#include "app/recording_work.h"

namespace tahrir::ui {

// What both pictures show, in samples of the analysed recording.
struct WaveWindow {
    const app::WaveAnalysis* analysis = nullptr;
    double first = 0;         // first sample of the detail view
    double perPixel = 64;     // samples a pixel of the detail view
    double markFrom = -1, markTo = -1; // the marked stretch, -1 when none
    double playAt = -1;       // the play position, -1 when not playing
    int viewWidth = 800;      // pixels of the detail view
    std::size_t length() const { return analysis ? analysis->recording.samples.size() : 0; }
    int rate() const { return analysis ? analysis->recording.rate : 11025; }
    bool marked() const { return markTo > markFrom && markFrom >= 0; }
};

// One labelled line of the note grid, in MIDI numbers.
struct GridLine {
    double note = 0;
    QString label;
    bool natural = false;
};

// Found notes as bars: start and end in seconds, MIDI number.
struct NoteBar {
    double from = 0, to = 0, note = 0;
};

// The minimum and maximum of samples [from, to) from the blocks where they are coarse
// enough, else from the samples themselves.
std::pair<float, float> PeakOf(const app::WaveAnalysis& a, std::size_t from, std::size_t to);

class WaveOverview : public QWidget {
public:
    explicit WaveOverview(const WaveWindow& window, QWidget* parent = nullptr);
    // A click or drag: the detail view is to centre on this sample.
    std::function<void(double)> centreOn;
    QSize sizeHint() const override { return {800, 60}; }

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;

private:
    const WaveWindow& m_window;
};

class WaveDetail : public QWidget {
public:
    explicit WaveDetail(const WaveWindow& window, QWidget* parent = nullptr);
    void setGrid(std::vector<GridLine> lines);
    void setNotes(std::vector<NoteBar> notes);
    // The pitch range shown, MIDI numbers.
    double lowNote() const { return m_low; }
    double highNote() const { return m_high; }
    void fitPitchRange();
    // A drag marks a stretch: from and to in samples.
    std::function<void(double, double)> marked;
    QSize sizeHint() const override { return {800, 360}; }

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;

private:
    double sampleAt(double x) const;
    double xOfSeconds(double s) const;
    double yOfNote(double note) const;
    void paintWave(QPainter& p);
    void paintGrid(QPainter& p);
    void paintPitch(QPainter& p);
    void paintNotes(QPainter& p);

    const WaveWindow& m_window;
    std::vector<GridLine> m_grid;
    std::vector<NoteBar> m_notes;
    double m_low = 48, m_high = 84;
    double m_pressSample = 0;
};

} // namespace tahrir::ui
