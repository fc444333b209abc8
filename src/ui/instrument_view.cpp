#include "ui/instrument_view.h"

#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <cmath>

namespace tahrir::ui {

namespace {

using fingering::Instrument;
using fingering::Position;

constexpr int kCourses = 3;
constexpr int kHarmonicaHoles = 10;
constexpr int kHangFields = 8;
const char* const kNeyRegisters[] = {"bam", "zir", "pas-zir"};
const char* const kNeyHoles[] = {"thumb", "1", "2", "3", "4", "5"};

QStringList Words(const Position* p) {
    return p ? QString::fromStdString(p->place).split(' ', Qt::SkipEmptyParts) : QStringList{};
}

// The note a position gives, written in brackets at the end of its text: "C4".
QString NoteNameOf(const Position& p) {
    const QString text = QString::fromStdString(p.text);
    return text.contains('(') ? text.section('(', -1).chopped(1) : QString();
}

int WordInt(const QStringList& words, int i) {
    return i < words.size() ? words[i].toInt() : -1;
}

// How much of a ney hole the finger covers: x closed, o open, q/h/t a quarter, half or
// three quarters open.
double Covered(QChar c) {
    switch (c.toLatin1()) {
    case 'x': return 1;
    case 'q': return 0.75;
    case 'h': return 0.5;
    case 't': return 0.25;
    default: return 0;
    }
}

void DrawDot(QPainter& p, QPointF centre, double radius, const QColor& colour) {
    p.setPen(QPen(colour.darker(150), 1.5));
    p.setBrush(colour);
    p.drawEllipse(centre, radius, radius);
}

} // namespace

QColor CursorColour() { return QColor(210, 30, 30); }
QColor PlayingColour() { return QColor(30, 110, 220); }

InstrumentView::InstrumentView(Instrument instrument, const fingering::FingeringTable& table,
                               QWidget* parent)
    : QWidget(parent), m_instrument(instrument), m_table(table) {
    setMinimumSize(320, 160);
    if (instrument != Instrument::Tar) return;
    // Each fret's distance above its course's open note, as the table places the notes.
    double open[kCourses + 1] = {};
    for (const Position& p : table.rows())
        if (const QStringList w = Words(&p); w.size() == 2 && w[1] == "0") {
            const int course = std::clamp(WordInt(w, 0), 0, kCourses);
            open[course] = p.note;
            m_courseNames.resize(kCourses + 1);
            m_courseNames[static_cast<std::size_t>(course)] = NoteNameOf(p);
        }
    for (const Position& p : table.rows()) {
        const QStringList w = Words(&p);
        const int course = WordInt(w, 0), fret = WordInt(w, 1);
        if (course < 1 || course > kCourses || fret < 0 || fret > 40) continue;
        if (m_fretSemitones.size() <= static_cast<std::size_t>(fret))
            m_fretSemitones.resize(static_cast<std::size_t>(fret) + 1, -1);
        m_fretSemitones[static_cast<std::size_t>(fret)] = p.note - open[course];
    }
}

MarkedNote InstrumentView::markOf(double note) const {
    if (const Position* p = m_table.find(note)) return {note, p, true};
    return {note, m_table.nearest(note), false};
}

void InstrumentView::setMarks(std::optional<MarkedNote> cursor,
                              std::optional<MarkedNote> playing) {
    const auto same = [](const std::optional<MarkedNote>& a, const std::optional<MarkedNote>& b) {
        return a.has_value() == b.has_value() &&
               (!a || (a->note == b->note && a->position == b->position));
    };
    if (same(cursor, m_cursor) && same(playing, m_playing)) return;
    m_cursor = cursor;
    m_playing = playing;
    update();
}

void InstrumentView::paintEvent(QPaintEvent*) {
    const qreal ratio = devicePixelRatioF();
    if (m_still.size() != size() * ratio) {
        m_still = QPixmap(size() * ratio);
        m_still.setDevicePixelRatio(ratio);
        m_still.fill(palette().window().color());
        QPainter still(&m_still);
        still.setRenderHint(QPainter::Antialiasing);
        draw(still, {}, true);
    }
    QPainter p(this);
    p.drawPixmap(0, 0, m_still);
    p.setRenderHint(QPainter::Antialiasing);
    std::vector<Mark> marks;
    if (m_playing && m_playing->position) marks.push_back({m_playing->position, PlayingColour()});
    if (m_cursor && m_cursor->position) {
        QColor c = CursorColour();
        if (!m_cursor->exact) c.setAlpha(120); // only the nearest the instrument can play
        marks.push_back({m_cursor->position, c});
    }
    draw(p, marks, false);
}

void InstrumentView::draw(QPainter& p, const std::vector<Mark>& marks, bool still) const {
    switch (m_instrument) {
    case Instrument::Tar: drawTar(p, marks, still); break;
    case Instrument::Ney: drawNey(p, marks, still); break;
    case Instrument::Harmonica: drawHarmonica(p, marks, still); break;
    case Instrument::Hang: drawHang(p, marks, still); break;
    }
}

// The neck from the nut (left) towards the body, frets spaced as on a real string:
// a fret s semitones up lies at 1 - 2^(-s/12) of the string. Koron and sori frets, a
// quarter tone off the semitone grid, are drawn in brown.
void InstrumentView::drawTar(QPainter& p, const std::vector<Mark>& marks, bool still) const {
    const double left = 40, right = width() - 20.0, top = 30, bottom = height() - 40.0;
    const double top12 = m_fretSemitones.empty() ? 19 : m_fretSemitones.back() + 0.5;
    const double reach = 1 - std::pow(2.0, -top12 / 12);
    const auto xOf = [&](double semis) {
        return left + (right - left) * (1 - std::pow(2.0, -semis / 12)) / reach;
    };
    const auto yOf = [&](int course) { return top + (bottom - top) * (course - 0.5) / kCourses; };
    if (still) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(120, 80, 45));
        p.drawRect(QRectF(left, top, right - left, bottom - top));
        p.setBrush(QColor(235, 225, 200));
        p.drawRect(QRectF(left - 6, top, 6, bottom - top)); // the nut
        QFont small = font();
        small.setPointSizeF(7);
        p.setFont(small);
        for (std::size_t f = 1; f < m_fretSemitones.size(); ++f) {
            const double s = m_fretSemitones[f];
            if (s < 0) continue;
            const bool quarter = s != std::floor(s);
            p.setPen(QPen(quarter ? QColor(200, 150, 90) : QColor(230, 230, 230), quarter ? 1.5 : 2));
            p.drawLine(QPointF(xOf(s), top), QPointF(xOf(s), bottom));
            p.setPen(palette().windowText().color());
            if (f % 2 == 1 || quarter)
                p.drawText(QPointF(xOf(s) - 4, bottom + (quarter ? 26 : 14)), QString::number(f));
        }
        for (int c = 1; c <= kCourses; ++c) {
            p.setPen(QPen(c == kCourses ? QColor(210, 170, 60) : QColor(240, 240, 240), 1));
            p.drawLine(QPointF(left - 6, yOf(c) - 2), QPointF(right, yOf(c) - 2));
            p.drawLine(QPointF(left - 6, yOf(c) + 2), QPointF(right, yOf(c) + 2));
            p.setPen(palette().windowText().color());
            const auto k = static_cast<std::size_t>(c);
            p.drawText(QPointF(4, yOf(c) + 4),
                       k < m_courseNames.size() ? m_courseNames[k] : QString("c%1").arg(c));
        }
    }
    for (const Mark& m : marks) {
        const QStringList w = Words(m.position);
        const int course = WordInt(w, 0), fret = WordInt(w, 1);
        if (course < 1 || course > kCourses || fret < 0 ||
            static_cast<std::size_t>(fret) >= m_fretSemitones.size())
            continue;
        double x = left - 14; // open course: beside the nut
        if (fret > 0) {
            const double s = m_fretSemitones[static_cast<std::size_t>(fret)];
            const double prev = fret > 1 ? m_fretSemitones[static_cast<std::size_t>(fret) - 1] : 0;
            x = (xOf(s) + xOf(prev)) / 2 + (xOf(s) - xOf(prev)) * 0.25;
        }
        DrawDot(p, QPointF(x, yOf(course)), 7, m.colour);
    }
}

// The ney upright seen from the front: the thumb hole (on the back) drawn dashed at the
// top, front holes 1 to 5 below; a hole is filled as far as the finger covers it. The
// registers are listed beside it with the marked one lit.
void InstrumentView::drawNey(QPainter& p, const std::vector<Mark>& marks, bool still) const {
    const double cx = width() * 0.35, top = 12, bottom = height() - 12.0;
    if (still) {
        p.setPen(QPen(QColor(120, 90, 40), 1.5));
        p.setBrush(QColor(225, 195, 130));
        p.drawRoundedRect(QRectF(cx - 16, top, 32, bottom - top), 10, 10);
    }
    const double step = (bottom - top - 40) / 6;
    const Mark* shown = marks.empty() ? nullptr : &marks.back();
    const QStringList w = shown ? Words(shown->position) : QStringList{};
    const QString pattern = w.size() == 2 ? w[1] : QString();
    for (int h = 0; h < 6; ++h) {
        const QPointF c(cx, top + 30 + step * h + (h > 0 ? step * 0.3 : 0));
        const double r = 9;
        if (still) {
            p.setPen(QPen(Qt::black, 1.5, h == 0 ? Qt::DashLine : Qt::SolidLine));
            p.setBrush(Qt::white);
            p.drawEllipse(c, r, r);
            p.setPen(palette().windowText().color());
            p.drawText(QPointF(cx + 22, c.y() + 4), kNeyHoles[h]);
        }
        const double covered = h < pattern.size() ? Covered(pattern[h]) : 0;
        if (covered > 0) {
            p.setPen(Qt::NoPen);
            p.setBrush(shown->colour);
            // A partly covered hole is shaded from its lower edge, as the finger slides.
            p.drawPie(QRectF(c.x() - r, c.y() - r, 2 * r, 2 * r), 270 * 16 - int(180 * 16 * covered),
                      int(360 * 16 * covered));
        }
    }
    QFont bold = font();
    for (int i = 0; i < 3 && !still; ++i) {
        const bool lit = !w.isEmpty() && w[0] == kNeyRegisters[i];
        bold.setBold(lit);
        p.setFont(bold);
        p.setPen(lit ? shown->colour : palette().windowText().color());
        p.drawText(QPointF(width() * 0.65, 40 + 24.0 * i), kNeyRegisters[i]);
    }
}

// The comb face-on: holes 1 to 10 with the blow notes above and the draw notes below;
// the marked hole is filled and its action written under it.
void InstrumentView::drawHarmonica(QPainter& p, const std::vector<Mark>& marks, bool still) const {
    const double left = 20, right = width() - 20.0, cy = height() / 2.0;
    const double cell = (right - left) / kHarmonicaHoles;
    p.setPen(QPen(QColor(90, 90, 100), 2));
    p.setBrush(QColor(200, 200, 210));
    if (still) p.drawRoundedRect(QRectF(left - 8, cy - 32, right - left + 16, 64), 8, 8);
    p.setBrush(QColor(60, 40, 30));
    for (int h = 1; h <= kHarmonicaHoles && still; ++h) {
        const double x = left + cell * (h - 0.5);
        p.setPen(Qt::NoPen);
        p.drawRect(QRectF(x - cell * 0.3, cy - 10, cell * 0.6, 20));
        p.setPen(palette().windowText().color());
        p.drawText(QPointF(x - 5, cy - 40), QString::number(h));
        p.setBrush(QColor(60, 40, 30));
    }
    for (const Mark& m : marks) {
        const QStringList w = Words(m.position);
        const int hole = WordInt(w, 0);
        if (hole < 1 || hole > kHarmonicaHoles || w.size() < 3) continue;
        const double x = left + cell * (hole - 0.5);
        p.setPen(Qt::NoPen);
        p.setBrush(m.colour);
        p.drawRect(QRectF(x - cell * 0.3, cy - 10, cell * 0.6, 20));
        const bool blow = w[1] == "blow" || w[1] == "overdraw";
        // Blow: the arrow points into the hole from above; draw: out of it, downwards.
        p.setPen(QPen(m.colour, 3));
        const double y0 = blow ? cy - 28 : cy + 14, y1 = blow ? cy - 14 : cy + 28;
        p.drawLine(QPointF(x, y0), QPointF(x, y1));
        p.drawLine(QPointF(x - 5, y1 - 6), QPointF(x, y1));
        p.drawLine(QPointF(x + 5, y1 - 6), QPointF(x, y1));
        const double bend = std::abs(w[2].toDouble());
        QString what = w[1];
        if (bend > 0) what += QString(" bend %1").arg(bend);
        p.drawText(QRectF(std::max(0.0, x - 60), cy + 34, 120, 20), Qt::AlignCenter, what);
    }
}

// The top shell: the ding in the centre and the eight fields round it, zig-zagging up
// from the lowest at the bottom.
void InstrumentView::drawHang(QPainter& p, const std::vector<Mark>& marks, bool still) const {
    const QPointF c(width() / 2.0, height() / 2.0);
    const double r = std::min(width(), height()) / 2.0 - 8;
    p.setPen(QPen(QColor(70, 70, 60), 2));
    p.setBrush(QColor(150, 140, 110));
    if (still) p.drawEllipse(c, r, r);
    const auto centreOf = [&](int field) {
        if (field == 0) return c;
        // Fields alternate left and right of the bottom as they rise, 45 degrees apart.
        const int k = (field + 1) / 2;
        const double side = field % 2 == 1 ? 1 : -1;
        const double angle = M_PI / 2 + side * (M_PI / 8 + M_PI / 4 * (k - 1));
        return QPointF(c.x() + std::cos(angle) * r * 0.68, c.y() + std::sin(angle) * r * 0.68);
    };
    std::vector<const Position*> byField(kHangFields + 1, nullptr);
    for (const Position& pos : m_table.rows()) {
        const int f = WordInt(Words(&pos), 0);
        if (pos.playable() && f >= 0 && f <= kHangFields) byField[static_cast<std::size_t>(f)] = &pos;
    }
    for (int f = 0; f <= kHangFields; ++f) {
        const QPointF at = centreOf(f);
        const double fr = f == 0 ? r * 0.22 : r * 0.15;
        std::optional<QColor> fill;
        if (still) fill = QColor(175, 165, 135);
        for (const Mark& m : marks)
            if (WordInt(Words(m.position), 0) == f) fill = m.colour;
        if (!fill) continue;
        p.setPen(QPen(QColor(70, 70, 60), 1.5));
        p.setBrush(*fill);
        p.drawEllipse(at, fr * 1.1, fr);
        const Position* pos = byField[static_cast<std::size_t>(f)];
        const QString text = pos ? NoteNameOf(*pos) : QString();
        p.setPen(Qt::black);
        p.drawText(QRectF(at.x() - 30, at.y() - 8, 60, 16), Qt::AlignCenter, text);
    }
}

} // namespace tahrir::ui
