#include "ui/palette_panel.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/key_translate.h"
#include "ui/palette_table.h"

namespace tahrir::ui {

// One entry: the idle picture and the lit one are the same button, told apart by its
// checked state.
class PaletteButton : public QToolButton {
public:
    PaletteButton(int index, PalettePanel* panel) : QToolButton(panel), m_index(index), m_panel(panel) {
        setObjectName("MIR");
        setProperty("index", index);
        setCheckable(true);
        setFocusPolicy(Qt::NoFocus);
        setMouseTracking(true);
        setFixedSize(44, 44);
    }

protected:
    void mousePressEvent(QMouseEvent* e) override {
        if (m_panel->pressed) m_panel->pressed(m_index, ShiftState(e->modifiers()));
        e->accept(); // the lit state comes from the editor, not from the click
    }
    void mouseReleaseEvent(QMouseEvent* e) override { e->accept(); }
    void enterEvent(QEnterEvent* e) override {
        if (m_panel->hovered) m_panel->hovered(m_index);
        QToolButton::enterEvent(e);
    }

private:
    int m_index;
    PalettePanel* m_panel;
};

PalettePanel::PalettePanel(const QString& musicFamily, QWidget* parent) : QWidget(parent) {
    setObjectName("MarkImage");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    std::array<QGridLayout*, PaletteGroups.size()> grids{};
    std::array<int, PaletteGroups.size()> counts{};
    for (std::size_t g = 0; g < PaletteGroups.size(); ++g) {
        auto* box = new QGroupBox(QString::fromUtf8(PaletteGroups[g].data(), static_cast<int>(PaletteGroups[g].size())), this);
        grids[g] = new QGridLayout(box);
        grids[g]->setSpacing(2);
        grids[g]->setContentsMargins(4, 4, 4, 4);
        column->addWidget(box);
    }
    column->addStretch(1);
    QFont music(musicFamily);
    music.setPixelSize(26);
    QFont text = font();
    text.setPixelSize(15);
    for (int i = 0; i < edit::PaletteEntries; ++i) {
        const edit::PaletteEntry& look = edit::PaletteEntryAt(i);
        auto* b = new PaletteButton(i, this);
        if (!look.glyph.empty()) {
            b->setFont(music);
            b->setText(QString::fromUcs4(look.glyph.data(), static_cast<qsizetype>(look.glyph.size())));
        } else {
            b->setFont(text);
            b->setText(QString::fromUtf8(look.caption.data(), static_cast<int>(look.caption.size())));
        }
        b->setStyleSheet("QToolButton { background: #fbfbf6; border: 1px solid #b8b8a8; }"
                         "QToolButton:checked { background: #ffd95a; border: 2px solid #c08000; }");
        const auto g = static_cast<std::size_t>(look.group);
        grids[g]->addWidget(b, counts[g] / 6, counts[g] % 6);
        ++counts[g];
        m_buttons[static_cast<std::size_t>(i)] = b;
    }
}

void PalettePanel::setEntryLit(int index, bool lit) {
    if (index < 0 || index >= edit::PaletteEntries) return;
    m_buttons[static_cast<std::size_t>(index)]->setChecked(lit);
}

bool PalettePanel::entryLit(int index) const {
    return index >= 0 && index < edit::PaletteEntries &&
           m_buttons[static_cast<std::size_t>(index)]->isChecked();
}

QToolButton* PalettePanel::entry(int index) const {
    if (index < 0 || index >= edit::PaletteEntries) return nullptr;
    return m_buttons[static_cast<std::size_t>(index)];
}

void PalettePanel::setHelpPointer(bool on) {
    for (PaletteButton* b : m_buttons) b->setCursor(on ? Qt::WhatsThisCursor : Qt::ArrowCursor);
}

} // namespace tahrir::ui
