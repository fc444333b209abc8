#include "ui/score_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "edit/editor.h"
#include "render/painter_backend.h"
#include "ui/view_layout.h"

namespace tahrir::ui {

namespace {

constexpr double kMargin = 1;    // staff units of white around the page
constexpr double kRowAbove = 12; // a row reaches this far above its bottom staff line
constexpr double kRowBelow = 6;

// Mouse buttons in the editor's numbering: 1 left, 2 right, 4 middle.
int ButtonNumber(Qt::MouseButton b) {
    return b == Qt::RightButton ? 2 : b == Qt::MiddleButton ? 4 : 1;
}

// The items of `list` that may show inside the rows from y0 to y1 (staff units).
render::DisplayList Visible(const render::DisplayList& list, double y0, double y1) {
    render::DisplayList out;
    out.widthUnits = list.widthUnits;
    out.heightUnits = list.heightUnits;
    for (const render::DisplayItem& it : list.items) {
        const double top = it.kind == render::ItemKind::Stroke ? std::min(it.y, it.y2) : it.y - 8;
        const double bottom = it.kind == render::ItemKind::Stroke ? std::max(it.y, it.y2) : it.y + 8;
        if (bottom >= y0 && top <= y1) out.items.push_back(it);
    }
    return out;
}

} // namespace

ScoreView::ScoreView(edit::Editor& editor, ViewLayout& layout, std::filesystem::path musicFontFile,
                     QWidget* parent)
    : QWidget(parent), m_editor(editor), m_layout(layout), m_musicFontFile(std::move(musicFontFile)) {
    setObjectName("Pic");
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setAutoFillBackground(false);
}

QSize ScoreView::sizeHint() const {
    const render::DisplayList& list = m_layout.result().list;
    const double ppu = m_layout.pixelsPerUnit();
    return {static_cast<int>((list.widthUnits + 2 * kMargin) * ppu),
            static_cast<int>((list.heightUnits + 2 * kMargin) * ppu)};
}

void ScoreView::pageChanged() {
    resize(sizeHint());
    update();
}

QPointF ScoreView::toUnits(QPointF pixels) const {
    const double ppu = m_layout.pixelsPerUnit();
    return {pixels.x() / ppu - kMargin, pixels.y() / ppu - kMargin};
}

QPointF ScoreView::toPixels(double x, double y) const {
    const double ppu = m_layout.pixelsPerUnit();
    return {(x + kMargin) * ppu, (y + kMargin) * ppu};
}

int ScoreView::lineAt(QPointF units) const {
    const auto& pos = m_layout.result().positions;
    int best = 0;
    double bestDistance = 2.0; // staff units across a symbol's hit box
    for (int i = 1; i <= m_editor.document().Sheet.LastLine; ++i) {
        const double x = pos.LinePosX[static_cast<std::size_t>(i)];
        const double y = pos.LinePosY[static_cast<std::size_t>(i)];
        if (x < 0 || units.y() < y - kRowAbove + 2 || units.y() > y + 3) continue;
        const double d = std::abs(units.x() - (x + 1));
        if (d < bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    return best;
}

QRect ScoreView::rowRect(int line) const {
    const auto& pos = m_layout.result().positions;
    if (line < 1 || line > core::MaxLines || pos.LinePosX[static_cast<std::size_t>(line)] < 0)
        return {};
    const double y = pos.LinePosY[static_cast<std::size_t>(line)];
    const QPointF a = toPixels(0, y - kRowAbove), b = toPixels(0, y + kRowBelow);
    return QRect(0, static_cast<int>(a.y()), width(), static_cast<int>(b.y() - a.y()) + 1);
}

void ScoreView::updateLines(int a, int b) {
    const QRect r = rowRect(a).united(rowRect(b));
    if (r.isEmpty())
        update();
    else
        update(r);
}

void ScoreView::setPlayLine(int line) {
    if (line == m_playLine) return;
    const int old = m_playLine;
    m_playLine = line;
    updateLines(old, line);
}

void ScoreView::paintEvent(QPaintEvent* event) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(event->rect(), Qt::white);
    const int cursor = m_editor.state().editing() ? m_editor.document().Sheet.CurrentLine : 0;
    const render::LayoutResult& layout = m_layout.current();
    const double y0 = toUnits(event->rect().topLeft()).y();
    const double y1 = toUnits(event->rect().bottomRight()).y();
    render::PaintOptions o;
    o.pixelsPerUnit = m_layout.pixelsPerUnit();
    o.originX = o.originY = kMargin * o.pixelsPerUnit;
    o.currentLine = cursor;
    o.musicFontFile = m_musicFontFile;
    o.selStart = m_editor.state().SelStart;
    o.selEnd = m_editor.state().SelEnd;
    if (m_fontAsked != m_editor.state().TextFontName) {
        m_fontAsked = m_editor.state().TextFontName;
        m_fontUsed = render::ResolveTextFont(m_fontAsked);
    }
    o.textFontName = m_fontUsed;
    render::DisplayList visible = Visible(layout.list, y0, y1);
    if (!m_editor.state().editing() && m_editor.state().SelEnd > 0) {
        // The viewer marks a selection in yellow rather than blue.
        for (render::DisplayItem& it : visible.items)
            if (it.line >= m_editor.state().SelStart && it.line <= m_editor.state().SelEnd && it.line > 0) it.colour = 0xFFD000;
        o.selStart = o.selEnd = 0;
    }
    render::PaintDisplayList(p, visible, o);
    paintOverlay(p);
}

// The band and the marker of the sounding note, drawn over the page.
void ScoreView::paintOverlay(QPainter& p) {
    const edit::Band& band = m_editor.state().band;
    if (band.visible) {
        p.setPen(QPen(Qt::darkBlue, 1, Qt::DashLine));
        p.setBrush(QColor(0, 0, 255, 30));
        p.drawRect(QRectF(toPixels(band.left, band.top),
                          toPixels(band.left + band.width, band.top + band.height)));
    }
    const auto& pos = m_layout.result().positions;
    paintCursorMark(p);
    if (m_playLine > 0 && m_playLine <= core::MaxLines &&
        pos.LinePosX[static_cast<std::size_t>(m_playLine)] >= 0) {
        const double x = pos.LinePosX[static_cast<std::size_t>(m_playLine)];
        const double y = pos.LinePosY[static_cast<std::size_t>(m_playLine)];
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0, 160, 0, 70));
        p.drawRect(QRectF(toPixels(x - 0.5, y - 10), toPixels(x + 2.5, y + 2)));
    }
}

// A red frame under the cursor on every kind of line, also on lines drawn as text or
// as nothing (then at the nearest line before it that has a place).
void ScoreView::paintCursorMark(QPainter& p) {
    if (!m_editor.state().editing()) return;
    const auto& pos = m_layout.result().positions;
    int line = std::min(m_editor.document().Sheet.CurrentLine, core::MaxLines);
    while (line > 0 && pos.LinePosX[static_cast<std::size_t>(line)] < 0) --line;
    if (line <= 0) return;
    const double x = pos.LinePosX[static_cast<std::size_t>(line)];
    const double y = pos.LinePosY[static_cast<std::size_t>(line)];
    const bool exact = line == m_editor.document().Sheet.CurrentLine;
    p.setPen(QPen(QColor(220, 0, 0), 2, exact ? Qt::SolidLine : Qt::DashLine));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(toPixels(x - 1, y - 11), toPixels(x + 3.5, y + 3)));
}

void ScoreView::keyPressEvent(QKeyEvent* event) {
    const auto key = TranslateKey(event->key(), event->modifiers(), event->nativeScanCode());
    if (key && keyPressed) keyPressed(*key);
    event->accept();
}

void ScoreView::keyReleaseEvent(QKeyEvent* event) {
    const auto key = TranslateKey(event->key(), event->modifiers(), event->nativeScanCode());
    if (key && keyReleased && !event->isAutoRepeat()) keyReleased(*key);
    event->accept();
}

void ScoreView::mousePressEvent(QMouseEvent* event) {
    setFocus();
    const QPointF u = toUnits(event->position());
    const int line = lineAt(u);
    const int shift = ShiftState(event->modifiers());
    if (line > 0) {
        // A press on a symbol is a press on its label, never the start of a band.
        m_editor.labelMouseDown(line, ButtonNumber(event->button()), shift);
        if (m_editor.state().editing() && shift == 0) m_editor.labelClick(line);
    } else {
        m_editor.picMouseDown(u.x(), u.y());
        m_banding = true;
    }
    if (mouseEdited) mouseEdited();
}

void ScoreView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_banding) return;
    const QPointF u = toUnits(event->position());
    m_editor.picMouseMove(u.x(), u.y(), event->buttons() & Qt::LeftButton);
    update();
}

void ScoreView::mouseReleaseEvent(QMouseEvent*) {
    if (!m_banding) return;
    m_banding = false;
    m_editor.picMouseUp();
    if (mouseEdited) mouseEdited();
}

void ScoreView::mouseDoubleClickEvent(QMouseEvent* event) {
    const int line = lineAt(toUnits(event->position()));
    if (line > 0) {
        m_editor.labelDoubleClick(line);
        if (mouseEdited) mouseEdited();
    }
}

} // namespace tahrir::ui
