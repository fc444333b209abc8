#include "ui/tempo_knob.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "edit/editor.h"

namespace tahrir::ui {

namespace {
constexpr double kTrackRight = 1831; // twips
constexpr double kTrackBottom = 1500;
} // namespace

TempoKnob::TempoKnob(QWidget* parent) : QWidget(parent) {
    setObjectName("Image1");
    setFixedSize(static_cast<int>(std::ceil((kTrackRight + 60) / TwipsPerPixel)), 22);
    m_knob = new QLabel("\u25BC", this);
    m_knob->setObjectName("Image2");
    m_knob->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_knob->setStyleSheet("color:#a05010;");
    m_knob->adjustSize();
    setTempo(60);
}

std::optional<int> TempoKnob::TempoAt(double xTwips, double yTwips) {
    if (xTwips < 0 || xTwips > kTrackRight || yTwips < 0 || yTwips > kTrackBottom) return std::nullopt;
    const double v = (xTwips - 500) / 1331 * 300 + 20;
    return std::clamp(static_cast<int>(std::lround(v)), 20, 320);
}

void TempoKnob::setTempo(int tempo) {
    const double x = edit::KnobPosition(tempo) / TwipsPerPixel;
    m_knob->move(static_cast<int>(std::lround(x - m_knob->width() / 2.0)), 0);
}

void TempoKnob::drag(QMouseEvent* e) {
    if (!(e->buttons() & Qt::LeftButton)) return;
    const auto tempo = TempoAt(e->position().x() * TwipsPerPixel, e->position().y() * TwipsPerPixel);
    if (tempo && dragged) dragged(*tempo);
}

void TempoKnob::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setPen(QPen(QColor(120, 90, 40), 2));
    const int y = height() - 5;
    p.drawLine(QPointF(500 / TwipsPerPixel, y), QPointF(kTrackRight / TwipsPerPixel, y));
    for (int v = 20; v <= 320; v += 50) {
        const double x = edit::KnobPosition(v) / TwipsPerPixel;
        p.drawLine(QPointF(x, y - 3), QPointF(x, y + 3));
    }
}

} // namespace tahrir::ui
