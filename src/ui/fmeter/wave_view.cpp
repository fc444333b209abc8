#include "ui/fmeter/wave_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace tahrir::ui {

namespace {

const QColor kBackground(250, 250, 245);
const QColor kWave(150, 170, 200);
const QColor kMark(255, 230, 150, 120);
const QColor kPlay(200, 30, 30);

// Paints the min/max column of every pixel of `width` from sample `first` on.
void PaintColumns(QPainter& p, const app::WaveAnalysis& a, double first, double perPixel,
                  int width, int top, int height) {
    const std::size_t n = a.recording.samples.size();
    const double mid = top + height / 2.0, half = height / 2.0 - 1;
    for (int x = 0; x < width; ++x) {
        const double from = first + x * perPixel;
        if (from >= static_cast<double>(n)) break;
        const auto f = static_cast<std::size_t>(std::max(0.0, from));
        const auto t = std::min(n, std::max(f + 1, static_cast<std::size_t>(from + perPixel)));
        const auto [lo, hi] = PeakOf(a, f, t);
        p.drawLine(QPointF(x, mid - hi * half), QPointF(x, mid - lo * half));
    }
}

} // namespace

std::pair<float, float> PeakOf(const app::WaveAnalysis& a, std::size_t from, std::size_t to) {
    const std::vector<float>& s = a.recording.samples;
    to = std::min(to, s.size());
    if (from >= to) return {0.f, 0.f};
    float lo = 1, hi = -1;
    std::size_t i = from;
    for (; i < to && i % app::PeakBlock != 0; ++i) lo = std::min(lo, s[i]), hi = std::max(hi, s[i]);
    for (; i + app::PeakBlock <= to; i += app::PeakBlock) {
        const std::size_t b = i / app::PeakBlock;
        lo = std::min(lo, a.blockMin[b]);
        hi = std::max(hi, a.blockMax[b]);
    }
    for (; i < to; ++i) lo = std::min(lo, s[i]), hi = std::max(hi, s[i]);
    return {lo, hi};
}

WaveOverview::WaveOverview(const WaveWindow& window, QWidget* parent)
    : QWidget(parent), m_window(window) {
    setObjectName("P");
    setMinimumHeight(50);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void WaveOverview::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), kBackground);
    const auto* a = m_window.analysis;
    if (!a || m_window.length() == 0) return;
    const double per = static_cast<double>(m_window.length()) / std::max(1, width());
    if (m_window.marked())
        p.fillRect(QRectF(m_window.markFrom / per, 0, (m_window.markTo - m_window.markFrom) / per,
                          height()), kMark);
    p.setPen(kWave);
    PaintColumns(p, *a, 0, per, width(), 0, height());
    p.setPen(QPen(QColor(40, 80, 160), 1));
    p.drawRect(QRectF(m_window.first / per, 0.5, m_window.perPixel * m_window.viewWidth / per,
                      height() - 1));
    if (m_window.playAt >= 0) {
        p.setPen(kPlay);
        p.drawLine(QPointF(m_window.playAt / per, 0), QPointF(m_window.playAt / per, height()));
    }
}

void WaveOverview::mousePressEvent(QMouseEvent* e) {
    if (centreOn && width() > 0)
        centreOn(e->position().x() * static_cast<double>(m_window.length()) / width());
}

void WaveOverview::mouseMoveEvent(QMouseEvent* e) { mousePressEvent(e); }

WaveDetail::WaveDetail(const WaveWindow& window, QWidget* parent)
    : QWidget(parent), m_window(window) {
    setObjectName("P2");
    setMinimumHeight(200);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void WaveDetail::setGrid(std::vector<GridLine> lines) {
    m_grid = std::move(lines);
    update();
}

void WaveDetail::setNotes(std::vector<NoteBar> notes) {
    m_notes = std::move(notes);
    update();
}

void WaveDetail::fitPitchRange() {
    std::vector<double> notes;
    if (m_window.analysis)
        for (const auto& f : m_window.analysis->frames)
            if (f.hz > 0) notes.push_back(69 + 12 * std::log2(f.hz / 440));
    if (notes.size() < 3) {
        m_low = 48, m_high = 84;
        return;
    }
    // The range of the middle of the voiced frames, so that a stray octave jump does not
    // squeeze the melody.
    std::sort(notes.begin(), notes.end());
    const double lo = notes[notes.size() / 50], hi = notes[notes.size() - 1 - notes.size() / 50];
    m_low = std::floor(lo) - 2;
    m_high = std::max(std::ceil(hi) + 2, m_low + 12);
    update();
}

double WaveDetail::sampleAt(double x) const { return m_window.first + x * m_window.perPixel; }

double WaveDetail::xOfSeconds(double s) const {
    return (s * m_window.rate() - m_window.first) / m_window.perPixel;
}

double WaveDetail::yOfNote(double note) const {
    return height() - (note - m_low) / (m_high - m_low) * height();
}

void WaveDetail::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), kBackground);
    if (!m_window.analysis) return;
    if (m_window.marked()) {
        const double a = (m_window.markFrom - m_window.first) / m_window.perPixel;
        const double b = (m_window.markTo - m_window.first) / m_window.perPixel;
        p.fillRect(QRectF(a, 0, b - a, height()), kMark);
    }
    paintWave(p);
    paintGrid(p);
    paintNotes(p);
    paintPitch(p);
    if (m_window.playAt >= 0) {
        const double x = (m_window.playAt - m_window.first) / m_window.perPixel;
        p.setPen(QPen(kPlay, 2));
        p.drawLine(QPointF(x, 0), QPointF(x, height()));
    } else if (m_window.markFrom >= 0 && !m_window.marked()) {
        // A click without a drag: the position the keyboard shows.
        const double x = (m_window.markFrom - m_window.first) / m_window.perPixel;
        p.setPen(QPen(kPlay, 1, Qt::DashLine));
        p.drawLine(QPointF(x, 0), QPointF(x, height()));
    }
}

void WaveDetail::paintWave(QPainter& p) {
    p.setPen(kWave);
    PaintColumns(p, *m_window.analysis, m_window.first, m_window.perPixel, width(), 0, height());
}

void WaveDetail::paintGrid(QPainter& p) {
    QFont small = font();
    small.setPointSizeF(std::max(6.0, small.pointSizeF() - 1));
    p.setFont(small);
    const double rowHeight = height() / (m_high - m_low);
    for (const GridLine& g : m_grid) {
        if (g.note < m_low || g.note > m_high) continue;
        const double y = yOfNote(g.note);
        p.setPen(QPen(g.natural ? QColor(120, 120, 120) : QColor(200, 200, 200), 1,
                      g.natural ? Qt::SolidLine : Qt::DashLine));
        p.drawLine(QPointF(0, y), QPointF(width(), y));
        // Labels only where there is room for them.
        if (g.natural || rowHeight > 18) {
            p.setPen(QColor(60, 60, 60));
            p.drawText(QPointF(3, y - 2), g.label);
        }
    }
}

void WaveDetail::paintPitch(QPainter& p) {
    const auto& frames = m_window.analysis->frames;
    const double from = m_window.first / m_window.rate();
    const double to = sampleAt(width()) / m_window.rate();
    auto it = std::lower_bound(frames.begin(), frames.end(), from,
                               [](const auto& f, double s) { return f.seconds < s; });
    if (it != frames.begin()) --it;
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(20, 60, 200), 2));
    QPainterPath path;
    bool open = false;
    double lastX = 0;
    for (; it != frames.end() && it->seconds <= to + 0.05; ++it) {
        if (it->hz <= 0) {
            open = false;
            continue;
        }
        // Zoomed out, many frames share a pixel: one point a pixel keeps the path short.
        const double x = xOfSeconds(it->seconds);
        if (open && x - lastX < 1) continue;
        const QPointF pt(x, yOfNote(69 + 12 * std::log2(it->hz / 440)));
        if (open) path.lineTo(pt);
        else path.moveTo(pt);
        open = true;
        lastX = x;
    }
    p.drawPath(path);
    p.setRenderHint(QPainter::Antialiasing, false);
}

void WaveDetail::paintNotes(QPainter& p) {
    const double h = std::max(4.0, 0.5 * height() / (m_high - m_low));
    for (const NoteBar& n : m_notes) {
        const double a = xOfSeconds(n.from), b = xOfSeconds(n.to);
        if (b < 0 || a > width()) continue;
        const QRectF r(a, yOfNote(n.note) - h / 2, std::max(2.0, b - a), h);
        p.fillRect(r, QColor(230, 120, 30, 170));
        p.setPen(QColor(150, 60, 0));
        p.drawRect(r);
    }
}

void WaveDetail::mousePressEvent(QMouseEvent* e) {
    m_pressSample = sampleAt(e->position().x());
    if (marked) marked(m_pressSample, m_pressSample);
}

void WaveDetail::mouseMoveEvent(QMouseEvent* e) {
    const double at = sampleAt(e->position().x());
    if (marked) marked(std::min(at, m_pressSample), std::max(at, m_pressSample));
}

} // namespace tahrir::ui
