#include "ui/palette_panel.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/key_translate.h"
#include "ui/palette_table.h"
#include "ui/ui_text.h"

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
    for (std::size_t g = 0; g < PaletteGroups.size(); ++g) {
        auto* box = new QGroupBox(Tr("Palette", PaletteGroups[g].data()), this);
        m_grids.push_back(new QGridLayout(box));
        m_grids.back()->setSpacing(2);
        m_grids.back()->setContentsMargins(4, 4, 4, 4);
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
            b->setText(Tr("Palette", std::string(look.caption).c_str())); // symbols stay as they are
        }
        b->setStyleSheet("QToolButton { background: #fbfbf6; border: 1px solid #b8b8a8; }"
                         "QToolButton:checked { background: #ffd95a; border: 2px solid #c08000; }");
        m_buttons[static_cast<std::size_t>(i)] = b;
    }
    setColumns(6);
}

void PalettePanel::setColumns(int columns) {
    if (columns < 1 || columns == m_columns) return;
    m_columns = columns;
    std::vector<int> counts(m_grids.size(), 0);
    for (int i = 0; i < edit::PaletteEntries; ++i) {
        const auto g = static_cast<std::size_t>(edit::PaletteEntryAt(i).group);
        PaletteButton* b = m_buttons[static_cast<std::size_t>(i)];
        m_grids[g]->removeWidget(b);
        m_grids[g]->addWidget(b, counts[g] / columns, counts[g] % columns);
        ++counts[g];
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
