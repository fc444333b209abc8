#include "ui/fmeter/note_meter.h"
#include "ui/ui_text.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

namespace tahrir::ui {

namespace {

// Where the keys of one octave sit, in white-key widths: each natural at the middle of its
// key (semitone, centre), the positions between them spread evenly.
constexpr std::array<std::array<double, 2>, 10> kNaturalCentres{{
    {-1, -0.5}, {0, 0.5}, {2, 1.5}, {4, 2.5}, {5, 3.5}, {7, 4.5}, {9, 5.5}, {11, 6.5}, {12, 7.5}, {14, 8.5},
}};
constexpr double kMargin = 0.25;          // room for the Do koron key at the left
constexpr double kUnits = 8 + 2 * kMargin; // white keys Do to Do, and the margins
constexpr double kQuarterStrip = 0.3;     // the top part of the height, for the quarter keys
constexpr double kCentsShown = 50;        // the error meter reaches a quarter tone each way

enum class KeyKind { White, Black, Quarter };

KeyKind KindOf(int position) {
    if (position % 2 == 0) return KeyKind::Quarter;
    const int semitone = (position - 1) / 2 % 12;
    static constexpr std::array<bool, 12> kBlack{false, true, false, true, false, false,
                                                 true, false, true, false, true, false};
    return kBlack[static_cast<std::size_t>(semitone)] ? KeyKind::Black : KeyKind::White;
}

double CentreOf(int position) {
    const double s = (position - 1) / 2.0;
    for (std::size_t i = 1; i < kNaturalCentres.size(); ++i) {
        const auto [s1, x1] = kNaturalCentres[i];
        if (s > s1) continue;
        const auto [s0, x0] = kNaturalCentres[i - 1];
        return x0 + (s - s0) / (s1 - s0) * (x1 - x0);
    }
    return kNaturalCentres.back()[1];
}

} // namespace

int KeyOfFound(const transcribe::FoundNote& found) {
    if (found.note <= 0) return -1;
    const double index = found.note - 23 - 12.0 * found.octave;
    return std::clamp(static_cast<int>(std::lround(2 * index - 1)), 0, core::GridSize - 1);
}

int KeyOfNote(double note) {
    const double inOctave = std::fmod(std::fmod(note - 24, 12) + 12, 12);
    return 1 + static_cast<int>(std::lround(2 * inOctave)) % 24;
}

QString ReadableName(std::string_view name) {
    const QString out{QChar(name[0])};
    switch (name[1]) {
    case 'k': return out + " koron";
    case 's': return out + " sori";
    case 'd': return out + "#";
    default: return out;
    }
}

KeyboardView::KeyboardView(QWidget* parent) : QWidget(parent) {
    setObjectName("Klav");
    setMinimumSize(200, 64);
    setToolTip(Tr("Transcription", "Orange: the note heard at the position; blue frame: the note found there;\n"
                  "green dots: the degrees of the dastgah. Click a key to hear it."));
    m_mask.fill(0);
}

void KeyboardView::setScale(const core::ScaleMask& mask) {
    m_mask = mask;
    update();
}

void KeyboardView::setKeys(int heard, int found) {
    if (heard == m_heard && found == m_found) return;
    m_heard = heard;
    m_found = found;
    update();
}

QRectF KeyboardView::keyRect(int position) const {
    const double unit = width() / kUnits;
    const double x = (CentreOf(position) + kMargin) * unit;
    const double strip = height() * kQuarterStrip;
    switch (KindOf(position)) {
    case KeyKind::White: return {x - unit / 2, strip, unit, height() - strip - 1};
    case KeyKind::Black: return {x - unit * 0.3, strip, unit * 0.6, (height() - strip) * 0.6};
    default: return {x - unit * 0.21, 1, unit * 0.42, strip - 3};
    }
}

int KeyboardView::keyAt(QPointF at) const {
    for (KeyKind kind : {KeyKind::Quarter, KeyKind::Black, KeyKind::White})
        for (int p = 0; p < core::GridSize; ++p)
            if (KindOf(p) == kind && keyRect(p).contains(at)) return p;
    return -1;
}

void KeyboardView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), palette().window());
    const QColor heard(255, 150, 40), found(40, 90, 220), degree(30, 150, 70);
    for (KeyKind kind : {KeyKind::White, KeyKind::Black, KeyKind::Quarter})
        for (int k = 0; k < core::GridSize; ++k) {
            if (KindOf(k) != kind) continue;
            const QRectF r = keyRect(k);
            QColor fill = kind == KeyKind::White ? Qt::white : kind == KeyKind::Black ? QColor(40, 40, 40)
                                                                                      : QColor(150, 150, 160);
            if (k == m_heard) fill = heard;
            p.setPen(QPen(QColor(60, 60, 60), 1));
            p.setBrush(fill);
            p.drawRoundedRect(r, 2, 2);
            if (k == m_found) {
                p.setPen(QPen(found, 3));
                p.setBrush(Qt::NoBrush);
                p.drawRoundedRect(r.adjusted(2, 2, -2, -2), 2, 2);
            }
            if (kind == KeyKind::White) {
                p.setPen(QColor(90, 90, 90));
                const QRectF label(r.left(), r.top() + r.height() * 0.6, r.width(), r.height() * 0.2);
                p.drawText(label, Qt::AlignCenter, QString(QChar(core::QuarterToneNames()[static_cast<std::size_t>(k)][0])));
            }
            if (scaleKey(k)) {
                // The dastgah's degrees carry a dot at the foot of the key.
                const double d = std::min(r.width() * 0.5, 9.0);
                p.setPen(Qt::NoPen);
                p.setBrush(degree);
                p.drawEllipse(QPointF(r.center().x(), r.bottom() - d * 0.9), d / 2, d / 2);
            }
        }
}

void KeyboardView::mousePressEvent(QMouseEvent* e) {
    const int k = keyAt(e->position());
    if (k >= 0 && pressed) pressed(k);
}

ErrorMeter::ErrorMeter(QWidget* parent) : QWidget(parent) {
    setObjectName("ErrorNote");
    setMinimumSize(160, 28);
}

double ErrorMeter::CentsOf(int errorNote) { return 1200 * std::log2(errorNote / 1000.0); }

void ErrorMeter::setError(std::optional<int> errorNote) {
    if (errorNote == m_error) return;
    m_error = errorNote;
    setToolTip(errorNote ? Tr("Transcription", "ErrorNote %1: 1000 is exactly on the note").arg(*errorNote) : QString());
    update();
}

void ErrorMeter::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), palette().base());
    const double mid = width() / 2.0, half = width() / 2.0 - 6;
    const auto xOf = [&](double cents) { return mid + std::clamp(cents, -kCentsShown, kCentsShown) / kCentsShown * half; };
    // Ticks every ten cents, the middle and the ends longer.
    p.setPen(QColor(110, 110, 110));
    for (int c = -50; c <= 50; c += 10) {
        const double len = (c % 50 == 0) ? height() * 0.5 : height() * 0.25;
        p.drawLine(QPointF(xOf(c), height() - 1), QPointF(xOf(c), height() - 1 - len));
    }
    QFont small = font();
    small.setPointSizeF(std::max(6.0, small.pointSizeF() - 2));
    p.setFont(small);
    p.drawText(QRectF(2, 0, 60, height() / 2.0), Qt::AlignLeft | Qt::AlignTop, "-50");
    p.drawText(QRectF(width() - 62, 0, 60, height() / 2.0), Qt::AlignRight | Qt::AlignTop, "+50");
    if (!m_error) return;
    const double cents = CentsOf(*m_error);
    const bool close = std::abs(cents) <= 10;
    p.setPen(QPen(close ? QColor(30, 150, 70) : QColor(200, 40, 30), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(xOf(cents), 3), QPointF(xOf(cents), height() - 2));
}

NoteMeter::NoteMeter(QWidget* parent) : QGroupBox(Tr("Transcription", "Note at the position"), parent) {
    setObjectName("NoteMeter");
    setMaximumWidth(460);
    auto* l = new QVBoxLayout(this);
    m_keys = new KeyboardView(this);
    m_meter = new ErrorMeter(this);
    m_name = new QLabel(this);
    m_name->setObjectName("HeardNote");
    m_name->setAlignment(Qt::AlignCenter);
    l->addWidget(m_keys, 1);
    l->addWidget(m_meter);
    l->addWidget(m_name);
    showNote(std::nullopt, 0);
}

void NoteMeter::showNote(const std::optional<transcribe::FoundNote>& heard, double found) {
    const bool placed = heard && heard->note > 0;
    const int key = placed ? KeyOfFound(*heard) : -1;
    m_keys->setKeys(key, found > 0 ? KeyOfNote(found) : -1);
    m_meter->setError(placed ? std::optional<int>(heard->errorNote) : std::nullopt);
    if (!placed) {
        m_name->setText("-");
        return;
    }
    // The finder counts octaves from the Do of MIDI 24; the names from that of MIDI 12.
    const int octave = heard->octave + 1 + (key >= 25 ? 1 : 0);
    const double cents = ErrorMeter::CentsOf(heard->errorNote);
    m_name->setText(QString("%1%2  %3%4 cents")
                        .arg(ReadableName(core::QuarterToneNames()[static_cast<std::size_t>(key)]))
                        .arg(octave)
                        .arg(cents >= 0 ? "+" : "")
                        .arg(cents, 0, 'f', 0));
}

QString NoteMeter::text() const { return m_name->text(); }

} // namespace tahrir::ui
