#pragma once
// The palette `MarkImage`/`MIR`: 73 entries in groups, lit by the line under the cursor;
// a press passes the entry and the press's shift state to the editor.

#include <QWidget>
#include <array>
#include <functional>
#include <vector>

#include "edit/palette.h"

class QGridLayout;
class QToolButton;

namespace tahrir::ui {

class PaletteButton;

class PalettePanel : public QWidget {
public:
    PalettePanel(const QString& musicFamily, QWidget* parent = nullptr);

    // A press on entry `index` with a shift state, and the pointer over an entry.
    std::function<void(int index, int shift)> pressed;
    std::function<void(int index)> hovered;

    // Lights the entries of the set.
    template <typename Bits>
    void setLit(const Bits& lit) {
        for (int i = 0; i < edit::PaletteEntries; ++i) setEntryLit(i, lit.test(static_cast<std::size_t>(i)));
    }
    void setEntryLit(int index, bool lit);
    bool entryLit(int index) const;
    QToolButton* entry(int index) const;
    // The question-arrow pointer on every entry while help is on.
    void setHelpPointer(bool on);
    // Entries a row in every group: fewer make the palette narrower on a small window.
    void setColumns(int columns);
    int columns() const { return m_columns; }

private:
    std::array<PaletteButton*, edit::PaletteEntries> m_buttons{};
    std::vector<QGridLayout*> m_grids;
    int m_columns = 0;
};

} // namespace tahrir::ui
