#pragma once
// Help: the key map (every key of the editor and every palette entry with its hint, in
// English and Persian) and About with the licences of the fonts and sound fonts.

#include <QDialog>
#include <array>
#include <string_view>
#include <vector>

class QTableWidget;

namespace tahrir::ui {

struct KeyHelp {
    const char* keys;
    const char* english;
    const char* persian;
};
const std::vector<KeyHelp>& EditorKeyHelp();

class HelpWindow : public QDialog {
public:
    explicit HelpWindow(QWidget* parent = nullptr);
    QTableWidget* keyTable() const { return m_keys; }
    QTableWidget* paletteTable() const { return m_palette; }

private:
    QTableWidget* m_keys = nullptr;
    QTableWidget* m_palette = nullptr;
};

// The About text: the program, and the licences of what it ships.
QString AboutText();

} // namespace tahrir::ui
