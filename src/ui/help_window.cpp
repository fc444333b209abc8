#include "ui/help_window.h"

#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "edit/key_codes.h"
#include "edit/palette.h"
#include "ui/palette_table.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

QTableWidget* Table(const QStringList& headers, QWidget* parent) {
    auto* table = new QTableWidget(0, static_cast<int>(headers.size()), parent);
    table->setHorizontalHeaderLabels(headers);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->setWordWrap(false);
    return table;
}

void AddRow(QTableWidget* table, const QStringList& cells) {
    const int row = table->rowCount();
    table->insertRow(row);
    for (int c = 0; c < cells.size(); ++c) {
        auto* item = new QTableWidgetItem(cells[c]);
        if (c == cells.size() - 1) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table->setItem(row, c, item);
    }
}

// The name of the key a palette entry sends, as the key map numbers it.
QString KeyName(int key, int shift) {
    namespace K = edit::Key;
    QString name;
    if (key >= K::F1 && key <= K::F12) name = QString("F%1").arg(key - K::F1 + 1);
    else if ((key >= K::A && key <= K::Z) || (key >= K::D0 && key <= K::D9)) name = QChar(key);
    else if (key == K::Grave) name = "`";
    else if (key == K::Equals) name = "=";
    else if (key == K::Enter) name = "Enter";
    else if (key == K::Del) name = "Del";
    else if (key == K::Ins) name = "Ins";
    else if (key == 0) return Tr("Help", "(its own action)");
    else name = QString("#%1").arg(key);
    const char* prefix = shift == edit::Shift::Shift ? "Shift+" : shift == edit::Shift::Ctrl ? "Ctrl+"
                         : shift == edit::Shift::Alt ? "Alt+" : "";
    return prefix + name;
}

} // namespace

QString AboutText() {
    return Tr("Help",
        "<h3>Tahrir</h3><p>A score editor and player for Persian art music.</p>"
        "<p><b>Music font:</b> Bravura, by Steinberg Media Technologies, under the SIL Open Font "
        "License 1.1 (data/fonts/Bravura-OFL.txt).</p>"
        "<p><b>Sound fonts</b> (used when installed): FluidR3_GM by Frank Wen, under the MIT licence "
        "(Debian package fluid-soundfont-gm); TimGM6mb by Tim Brechbill, under the GNU GPL version 2 "
        "or later (Debian package timgm6mb-soundfont).</p>"
        "<p><b>Text fonts</b> are the system's own, each under its own licence.</p>");
}

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
    setObjectName("HelpWindow");
    setWindowTitle(Tr("Help", "Keys and palette"));
    auto* column = new QVBoxLayout(this);
    auto* tabs = new QTabWidget(this);
    column->addWidget(tabs);

    m_keys = Table({Tr("Help", "Key"), Tr("Help", "What it does"), QString::fromUtf8("کار آن")}, tabs);
    m_keys->setObjectName("KeyTable");
    for (const KeyHelp& k : EditorKeyHelp())
        AddRow(m_keys, {k.keys, k.english, QString::fromUtf8(k.persian)});
    m_keys->setColumnWidth(0, 220);
    m_keys->setColumnWidth(1, 300);
    tabs->addTab(m_keys, Tr("Help", "Keyboard"));

    m_palette = Table({Tr("Help", "Entry"), Tr("Help", "Group"), Tr("Help", "Key"), QString::fromUtf8("راهنما")}, tabs);
    m_palette->setObjectName("PaletteHelpTable");
    for (int i = 0; i < edit::PaletteEntries; ++i) {
        const edit::PaletteEntry& e = edit::PaletteEntryAt(i);
        const std::string_view text = edit::PaletteHint(i, true);
        AddRow(m_palette, {QString::number(i + 1), Tr("Palette", PaletteGroupName(e.group).data()),
                           KeyName(e.key, e.shift),
                           QString::fromUtf8(text.data(), static_cast<int>(text.size())).replace('\n', ' ')});
    }
    for (const auto& [column, width] : {std::pair{0, 50}, {1, 170}, {2, 90}}) m_palette->setColumnWidth(column, width);
    tabs->addTab(m_palette, Tr("Help", "Palette"));

    auto* about = new QLabel(AboutText(), tabs);
    about->setObjectName("AboutText");
    about->setWordWrap(true);
    about->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    about->setMargin(12);
    tabs->addTab(about, Tr("Help", "About"));
    resize(860, 620);
}

} // namespace tahrir::ui
