// Start-up after a run that did not end normally: the undo store still holds its pages, and
// the user may take back the last of them as an unsaved score.

#include <QListWidget>

#include "core/recovery.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

bool MainWindow::offerRecovery() {
    const auto left = core::FindLeftSnapshot(*m_store);
    if (!left) return false;
    const std::string name = left->fileName.empty() ? "Untitled" : left->fileName;
    const std::string question =
        Tr("Recovery", "Tahrir did not end normally last time.\nRestore the last edit of %1 ?")
            .arg(QString::fromStdString(name))
            .toStdString();
    if (m_dialogs->question("Tahrir", question, false) != Answer::Yes) return false;
    const core::LoadResult restored = core::RestoreSnapshot(m_doc, m_session, *m_store, *left);
    if (!restored.loaded()) {
        m_dialogs->message("Tahrir", restored.message);
        return false;
    }
    m_recent->hide();
    m_rangeChosen = false;
    documentLoaded(); // the editor starts afresh, which marks the score clean
    m_doc.DirtyFlag = true;
    setWindowModified(true);
    return true;
}

} // namespace tahrir::ui
