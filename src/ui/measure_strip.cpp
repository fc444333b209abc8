#include "ui/measure_strip.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>

#include "edit/editor.h"
#include "ui/key_translate.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

// A measure's label that reports presses and double clicks.
class MeasureLabel : public QLabel {
public:
    MeasureLabel(int measure, MeasureStrip* strip, QWidget* parent)
        : QLabel(QString::number(measure), parent), m_measure(measure), m_strip(strip) {
        setObjectName("MeasLabel");
        setProperty("index", measure);
        setAlignment(Qt::AlignCenter);
        setMinimumWidth(28);
        setFrameShape(QFrame::Box);
    }

protected:
    void mousePressEvent(QMouseEvent* e) override {
        const int button = e->button() == Qt::LeftButton ? 1 : 2;
        if (m_strip->pressed) m_strip->pressed(m_measure, button, ShiftState(e->modifiers()));
    }
    void mouseDoubleClickEvent(QMouseEvent*) override {
        if (m_strip->doubleClicked) m_strip->doubleClicked(m_measure);
    }

private:
    int m_measure;
    MeasureStrip* m_strip;
};

QString Style(int colour) {
    return colour == edit::ColourBlue ? "background:#3050e0; color:white;"
                                      : "background:#ffff60; color:black;";
}

} // namespace

MeasureStrip::MeasureStrip(QWidget* parent) : QWidget(parent) {
    setObjectName("MeasureStrip");
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(2, 2, 2, 2);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFixedHeight(40);
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_row = new QWidget(scroll);
    m_rowLayout = new QHBoxLayout(m_row);
    m_rowLayout->setContentsMargins(0, 0, 0, 0);
    m_rowLayout->setSpacing(1);
    m_rowLayout->addStretch(1);
    scroll->setWidget(m_row);
    m_start = new QScrollBar(Qt::Horizontal, this);
    m_start->setObjectName("VScrollStartMess");
    m_end = new QScrollBar(Qt::Horizontal, this);
    m_end->setObjectName("VScrollEndMess");
    m_startLabel = new QLabel("1", this);
    m_startLabel->setObjectName("LabelStartMess");
    m_endLabel = new QLabel("1", this);
    m_endLabel->setObjectName("LabelEndmess");
    for (QScrollBar* bar : {m_start, m_end}) {
        bar->setRange(1, 1);
        const bool isStart = bar == m_start;
        QObject::connect(bar, &QScrollBar::valueChanged, this, [this, isStart] { barMoved(isStart); });
    }
    grid->addWidget(scroll, 0, 0, 1, 4);
    grid->addWidget(new QLabel(Tr("Window", "From"), this), 1, 0);
    grid->addWidget(m_start, 1, 1);
    grid->addWidget(m_startLabel, 1, 2);
    grid->addWidget(new QLabel(Tr("Window", "To"), this), 2, 0);
    grid->addWidget(m_end, 2, 1);
    grid->addWidget(m_endLabel, 2, 2);
    grid->setColumnStretch(1, 1);
}

QLabel* MeasureStrip::makeLabel(int measure) {
    auto* label = new MeasureLabel(measure, this, m_row);
    m_rowLayout->insertWidget(m_rowLayout->count() - 1, label);
    return label;
}

void MeasureStrip::show(const edit::MeasureRange& range) {
    m_showing = true;
    // One label for each measure: a shorter score drops the labels of the longer one.
    const int count = std::max(1, range.Maximum);
    while (static_cast<int>(m_labels.size()) > count) {
        // Later, since the strip may be redrawn from a label's own click.
        m_labels.back()->hide();
        m_labels.back()->deleteLater();
        m_labels.pop_back();
    }
    while (static_cast<int>(m_labels.size()) < count)
        m_labels.push_back(makeLabel(static_cast<int>(m_labels.size()) + 1));
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        const auto m = i + 1;
        const int colour = m < range.LabelColour.size() ? range.LabelColour[m] : edit::ColourYellow;
        // Style sheets are dear: a label is restyled only when its colour changes.
        if (m_labels[i]->property("colour").toInt() != colour || !m_labels[i]->property("colour").isValid()) {
            m_labels[i]->setStyleSheet(Style(colour));
            m_labels[i]->setProperty("colour", colour);
        }
    }
    m_start->setRange(1, count);
    m_end->setRange(1, count);
    m_start->setValue(range.StartMess);
    m_end->setValue(range.EndMess);
    m_startLabel->setText(QString::number(range.StartMess));
    m_endLabel->setText(QString::number(range.EndMess));
    m_showing = false;
}

QLabel* MeasureStrip::label(int measure) const {
    if (measure < 1 || measure > static_cast<int>(m_labels.size())) return nullptr;
    return m_labels[static_cast<std::size_t>(measure - 1)];
}

// Each bar keeps the other on its own side while it is dragged.
void MeasureStrip::barMoved(bool startBar) {
    if (m_showing) return;
    int start = m_start->value(), end = m_end->value();
    if (startBar && end < start) end = start;
    if (!startBar && start > end) start = end;
    if (rangeMoved) rangeMoved(start, end);
}

} // namespace tahrir::ui
