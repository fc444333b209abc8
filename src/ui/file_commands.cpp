// The commands of files and leaving: new, open, the recent list, reload, save, exit.

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <algorithm>
#include <filesystem>

#include "app/open_score.h"
#include "core/load_file.h"
#include "core/new_score.h"
#include "core/score_reader.h"
#include "core/score_writer.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/playback.h"
#include "ui/playback_panel.h"
#include "ui/score_view.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

constexpr const char* kFilter = "srv Files (*.srv)";
constexpr const char* kSaveQuestion = "Do you want to save ?";

// The three questions of a new score, asked through the window's input boxes.
class NewScoreBoxes : public core::NewScorePrompts {
public:
    explicit NewScoreBoxes(Dialogs& dialogs) : m_dialogs(dialogs) {}
    std::string ask(const std::string& prompt, const std::string& defaultAnswer) override {
        return m_dialogs.input(TrStd("Files", "New score"), prompt, defaultAnswer).value_or("");
    }

private:
    Dialogs& m_dialogs;
};

} // namespace

QString MainWindow::scoreTitle() const {
    const std::string& name = m_doc.CurrentFileName;
    const QString title = name.empty() ? QString() : QString::fromStdString(std::filesystem::path(name).filename().string());
    return title.isEmpty() ? QString("Tahrir[*]") : title + "[*] - Tahrir";
}

// Asks "Do you want to save ?" while the score has changes. False when the user cancels.
bool MainWindow::settleUnsaved(const std::string& title) {
    while (m_doc.DirtyFlag) {
        switch (m_dialogs->question(title, kSaveQuestion, true)) {
        case Answer::Cancel: return false;
        case Answer::Yes: SaveImage(); break;
        case Answer::No: m_doc.DirtyFlag = false; break;
        }
    }
    return true;
}

void MainWindow::NewImage() {
    if (!settleUnsaved("File has been changed !")) return;
    m_playback->stopClick();
    NewScoreBoxes prompts(*m_dialogs);
    const core::NewScoreResult made = core::NewImage(m_doc, prompts, m_store.get());
    if (made.message) m_dialogs->message("Tahrir", *made.message);
    m_rangeChosen = false;
    documentLoaded();
    if (made.status == core::NewScoreStatus::Made) {
        insertScale(); // a new score may start in a dastgah
        if (!m_editor->state().editing()) m_editor->editorClick();
        editorKey({edit::Key::Home, 0});
    }
}

void MainWindow::LoadFile(int index) {
    if (index == 1) {
        showRecentList();
        return;
    }
    const std::string title = "{" + scoreTitle().toStdString() + "}   has been changed !";
    if (!settleUnsaved(title)) return;
    QLabel* label = m_playPanel->pauseLabel();
    label->setText("Opening");
    label->show();
    const std::string path =
        m_dialogs->openFile("           >>      YOU ARE OPENING A FILE     <<", kFilter);
    label->setText("Pause");
    m_playPanel->statusChanged();
    if (!path.empty()) openPath(path);
}

// Opens a chosen path; a file that cannot be read leaves the open score as it was.
bool MainWindow::openPath(const std::string& path) {
    if (const auto bad = core::CheckFileName(path)) {
        m_dialogs->message("Tahrir", *bad);
        return false;
    }
    if (!std::filesystem::exists(path)) {
        m_dialogs->message("Tahrir", TrStd("Files", "Can't find the file ") + path);
        return false;
    }
    m_playback->stopClick();
    const app::OpenedScore opened = app::OpenScore(m_doc, m_session, m_store.get(), path);
    if (!opened.ok()) {
        m_dialogs->message("Tahrir", opened.failure);
        return false;
    }
    if (opened.result.message) m_dialogs->message("Tahrir", *opened.result.message);
    m_recent->hide();
    m_rangeChosen = false;
    documentLoaded();
    if (!opened.result.recording.empty())
        statusBar()->showMessage(Tr("Files", "Recording: ") + QString::fromStdString(opened.result.recording));
    return true;
}

// Key O: the current file again, as it stands on disk.
void MainWindow::reload() {
    if (m_doc.CurrentFileName.empty() || !std::filesystem::exists(m_doc.CurrentFileName)) return;
    if (!settleUnsaved("File has been changed !")) return;
    m_playback->stopClick();
    core::Document before = m_doc;
    core::LoadResult r;
    try {
        r = core::Openp(m_doc, m_session, m_store.get());
    } catch (const std::exception& e) {
        r.status = core::LoadStatus::Failed;
        r.message = e.what();
    }
    if (!r.loaded()) {
        m_doc = before;
        m_dialogs->message("Tahrir", r.message.empty() ? TrStd("Files", "Can't read ") + before.CurrentFileName : r.message);
        return;
    }
    documentLoaded();
}

// The score was replaced: the editor starts afresh and every control follows.
void MainWindow::documentLoaded() {
    const bool editing = m_editor->state().editing();
    // The score's own tempo, also for a new score, goes to the tempo bar.
    const double tempo = m_doc.CurrentTempo > 0 ? m_doc.CurrentTempo : m_doc.TempoSlider;
    m_editor->setLiveTempo(std::clamp(static_cast<int>(tempo), 20, 320));
    m_editor->documentReplaced();
    if (editing && m_doc.Sheet.CurrentLine < 4 && m_doc.Sheet.LastLine >= 4) m_doc.Sheet.CurrentLine = 4;
    descriptionToPanel();
    m_picScroll->verticalScrollBar()->setValue(0);
    afterEdit(m_doc.Sheet.CurrentLine, -1);
}

void MainWindow::showRecentList() {
    const auto entries = core::ReadRecentList(m_session.AppFolder);
    m_recent->clear();
    for (const std::string& e : entries)
        if (!e.empty()) m_recent->addItem(QString::fromStdString(e));
    m_recent->setVisible(m_recent->count() > 0);
}

bool MainWindow::SaveImage() {
    if (!storePenFirst()) return false;
    if (m_editor->state().textFrame.visible || m_editor->state().commandFrame.visible) m_pic->setFocus();
    QApplication::beep();
    QLabel* label = m_playPanel->pauseLabel();
    label->setText("SAVE ! !");
    label->setStyleSheet("background:#ffff60; color:red; font-weight:bold; padding:2px 8px;");
    label->show();
    const std::string preset = m_doc.CurrentFileName;
    std::string path = m_dialogs->saveFile("            !!!!  YOU ARE SAVING A FILE   !!!!", kFilter, preset);
    label->setText("Pause");
    label->setStyleSheet("background:#ffff60; color:black; font-weight:bold; padding:2px 8px;");
    m_playPanel->statusChanged();
    // Cancel keeps the preset name, and the save goes on to it.
    if (path.empty()) path = preset;
    if (path.empty()) return false;
    const core::SaveResult saved = core::SaveImage(m_doc, path);
    if (!saved.ok) {
        m_dialogs->message("Tahrir", saved.message);
        return false;
    }
    setWindowTitle(scoreTitle());
    setWindowModified(false);
    return true;
}

bool MainWindow::ExitImage() {
    if (!storePenFirst()) return false;
    if (!settleUnsaved("File has been changed !")) return false;
    if (m_dialogs->question("Tahrir", "Do you want to Exit ?", false) != Answer::Yes) return false;
    m_playback->stopClick();
    m_playback->stopAllNotes();
    m_store->clear();
    return true;
}

} // namespace tahrir::ui
