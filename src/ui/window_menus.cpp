// The menus beyond File's own entries: Save As, the recent files, the Edit menu with the
// editor's keys shown, and the keys of the menus themselves.
//
// Menu shortcuts never take a key of the editor's key map: the Edit entries only show the
// editor's keys (the editor acts on them), and the menus' own keys are Ctrl letters that
// the key map leaves free. Ctrl+O and Ctrl+Q are the viewer's keys for the same commands.

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QTimer>
#include <filesystem>

#include "core/load_file.h"
#include "core/score_writer.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "ui/dialogs.h"
#include "ui/help_window.h"
#include "ui/main_window.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

QAction* Entry(QMenu* menu, const char* name, const QString& text, const QString& keys = {}) {
    QAction* a = menu->addAction(text);
    a->setObjectName(name);
    if (!keys.isEmpty()) a->setShortcut(QKeySequence(keys));
    return a;
}

} // namespace

// The menus' own keys, by entry name.
void MainWindow::assignMenuKeys() {
    const std::pair<const char*, const char*> keys[] = {
        {"NewImage", "Ctrl+J"}, {"LoadFile", "Ctrl+O"},  {"SaveImage", "Ctrl+L"},
        {"ImportMidi", "Ctrl+I"}, {"InsertScale", "Ctrl+G"}, {"ExitImage", "Ctrl+Q"},
        {"PrintImage", "Ctrl+P"},
    };
    for (const auto& [name, key] : keys)
        if (auto* a = findChild<QAction*>(name)) a->setShortcut(QKeySequence(key));
}

// The recent files before `save`, Save As after it.
void MainWindow::buildFileExtras(QMenu* file, QAction* save) {
    m_recentMenu = new QMenu(Tr("Menu", "&Recent files"), file);
    m_recentMenu->setObjectName("RecentMenu");
    file->insertMenu(save, m_recentMenu);
    connect(Entry(file, "SaveAs", Tr("Menu", "Save &As...")), &QAction::triggered, this, [this] { saveAs(); });
    connect(m_recentMenu, &QMenu::aboutToShow, this, [this] { fillRecentMenu(); });
}

void MainWindow::fillRecentMenu() {
    m_recentMenu->clear();
    for (const std::string& path : core::ReadRecentList(m_session.AppFolder)) {
        if (path.empty() || path == core::RecentListEnd) continue;
        QAction* a = m_recentMenu->addAction(QString::fromStdString(path));
        connect(a, &QAction::triggered, this, [this, path] {
            if (storePenFirst() && settleUnsaved("File has been changed !")) openPath(path);
        });
    }
    if (m_recentMenu->isEmpty()) m_recentMenu->addAction(Tr("Menu", "(none)"))->setEnabled(false);
}

// Save As: a new name; Cancel saves nothing.
bool MainWindow::saveAs() {
    if (!storePenFirst()) return false;
    const std::string path = m_dialogs->saveFile(TrStd("Menu", "Save As"), "srv Files (*.srv)", m_doc.CurrentFileName);
    if (path.empty()) return false;
    const core::SaveResult saved = core::SaveImage(m_doc, path);
    if (!saved.ok) {
        m_dialogs->message("Tahrir", saved.message);
        return false;
    }
    core::UpdateRecentList(m_session.AppFolder, path);
    afterEdit(m_doc.Sheet.CurrentLine, -1);
    return true;
}

// Edit: the editor's own keys, shown beside the entries and sent to it as keys.
void MainWindow::buildEditMenu() {
    QMenu* menu = menuBar()->addMenu(Tr("Menu", "&Edit"));
    menu->setObjectName("EditMenu");
    namespace K = edit::Key;
    const int ctrl = edit::Shift::Ctrl;
    struct Item { const char* name; const char* text; int key; int shift; };
    const Item items[] = {
        {"EditUndo", QT_TRANSLATE_NOOP("Menu", "&Undo\tCtrl+Z"), K::Letter('Z'), ctrl},
        {"EditRedo", QT_TRANSLATE_NOOP("Menu", "&Redo\tCtrl+Y"), K::Letter('Y'), ctrl},
        {nullptr, nullptr, 0, 0},
        {"EditCut", QT_TRANSLATE_NOOP("Menu", "Cu&t\tCtrl+X"), K::Letter('X'), ctrl},
        {"EditCopy", QT_TRANSLATE_NOOP("Menu", "&Copy\tCtrl+C"), K::Letter('C'), ctrl},
        {"EditPaste", QT_TRANSLATE_NOOP("Menu", "&Paste\tCtrl+V"), K::Letter('V'), ctrl},
        {nullptr, nullptr, 0, 0},
        {"EditSelectAll", QT_TRANSLATE_NOOP("Menu", "Select &all\tCtrl+A"), K::Letter('A'), ctrl},
        {"EditSelectNone", QT_TRANSLATE_NOOP("Menu", "Clear the selection\tEsc"), K::Esc, edit::Shift::None},
        {nullptr, nullptr, 0, 0},
        {"EditStore", QT_TRANSLATE_NOOP("Menu", "&Store the note\tEnter"), K::Enter, edit::Shift::None},
        {"EditorMode", QT_TRANSLATE_NOOP("Menu", "&Editor on or off\tCtrl+E"), K::Letter('E'), ctrl},
    };
    for (const Item& item : items) {
        if (!item.name) {
            menu->addSeparator();
            continue;
        }
        QAction* a = Entry(menu, item.name, Tr("Menu", item.text));
        const EditorKey key{item.key, item.shift};
        const bool toggle = item.key == K::Letter('E');
        connect(a, &QAction::triggered, this, [this, key, toggle] {
            if (!toggle && !m_editor->state().editing()) editorKey({K::Letter('E'), edit::Shift::Ctrl});
            editorKey(key);
        });
    }
}

// Help: the key map and About, in one window on two tabs.
void MainWindow::buildHelpMenu() {
    QMenu* menu = menuBar()->addMenu(Tr("Menu", "&Help"));
    menu->setObjectName("HelpMenu");
    const auto open = [this](int tab) {
        HelpWindow& help = helpWindow();
        if (auto* tabs = help.findChild<QTabWidget*>()) tabs->setCurrentIndex(tab);
        help.exec();
    };
    // Made and drawn once off screen soon after the window is up, so that opening Help
    // costs only its painting with the glyphs and the tables' text already laid out.
    QTimer::singleShot(300, this, [this] { (void)helpWindow().grab(); });
    QAction* keys = Entry(menu, "HelpKeys", Tr("Menu", "&Keys and palette..."), "Alt+F1");
    connect(keys, &QAction::triggered, this, [open] { open(0); });
    connect(Entry(menu, "HelpAbout", Tr("Menu", "&About Tahrir...")), &QAction::triggered, this, [open] { open(2); });
}

HelpWindow& MainWindow::helpWindow() {
    if (!m_help) m_help = new HelpWindow(this);
    return *m_help;
}

} // namespace tahrir::ui
