#include "ui/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

#include "ui/midi_import_frame.h"
#include "ui/open_preview.h"
#include "ui/scales_frame.h"

namespace tahrir::ui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

constexpr const char* kLastFolderKey = "dialogs/lastFolder";

// The folder a file dialog starts in: the one last used, else the user's documents.
QString StartFolder() {
    const QString last = QSettings().value(kLastFolderKey).toString();
    if (!last.isEmpty() && QFileInfo(last).isDir()) return last;
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

void RememberFolder(const QString& path) {
    if (!path.isEmpty()) QSettings().setValue(kLastFolderKey, QFileInfo(path).absolutePath());
}

} // namespace

std::optional<std::string> QtDialogs::input(const std::string& title, const std::string& prompt,
                                            const std::string& defaultText) {
    bool ok = false;
    const QString text =
        QInputDialog::getText(m_parent, Q(title), Q(prompt), QLineEdit::Normal, Q(defaultText), &ok);
    if (!ok) return std::nullopt;
    return text.toStdString();
}

void QtDialogs::message(const std::string& title, const std::string& text) {
    QMessageBox::information(m_parent, Q(title), Q(text));
}

Answer QtDialogs::question(const std::string& title, const std::string& text, bool cancel) {
    auto buttons = QMessageBox::Yes | QMessageBox::No;
    if (cancel) buttons |= QMessageBox::Cancel;
    const auto r = QMessageBox::question(m_parent, Q(title), Q(text), buttons);
    return r == QMessageBox::Yes ? Answer::Yes : r == QMessageBox::No ? Answer::No : Answer::Cancel;
}

QtDialogs::QtDialogs(QWidget* parent) : m_parent(parent) {
    // Qt's own file dialog takes a while to build: it is made once the window is idle, so
    // that opening it later is quick.
    if (m_parent) QTimer::singleShot(500, m_parent, [this] { scoreDialog(); });
}

QtDialogs::~QtDialogs() = default;

OpenPreviewDialog& QtDialogs::scoreDialog() {
    if (!m_scoreDialog) m_scoreDialog = std::make_unique<OpenPreviewDialog>(m_parent, QString(), StartFolder(), QString());
    return *m_scoreDialog;
}

std::string QtDialogs::openFile(const std::string& title, const std::string& filter) {
    QString path;
    if (Q(filter).contains("*.srv")) { // scores get the dialog with the preview
        OpenPreviewDialog& dialog = scoreDialog();
        dialog.setWindowTitle(Q(title));
        dialog.setDirectory(StartFolder());
        dialog.setNameFilter(Q(filter));
        if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) path = dialog.selectedFiles().front();
    } else {
        path = QFileDialog::getOpenFileName(m_parent, Q(title), StartFolder(), Q(filter));
    }
    RememberFolder(path);
    return path.toStdString();
}

// A score that has a folder of its own is saved there by default; a new one in the folder
// last used.
std::string QtDialogs::saveFile(const std::string& title, const std::string& filter,
                                const std::string& preset) {
    const QFileInfo info(Q(preset));
    const bool placed = !preset.empty() && info.isAbsolute() && info.absoluteDir().exists();
    const QString start = placed ? info.absoluteFilePath() : StartFolder() + "/" + info.fileName();
    const QString path = QFileDialog::getSaveFileName(m_parent, Q(title), start, Q(filter));
    RememberFolder(path);
    return path.toStdString();
}

std::optional<std::string> QtDialogs::font() {
    bool ok = false;
    const QFont f = QFontDialog::getFont(&ok, QApplication::font(), m_parent);
    if (!ok) return std::nullopt;
    return f.family().toStdString();
}

std::optional<int> QtDialogs::midiTrack(const midifile::MidiFileInfo& info, const std::vector<std::string>& dump) {
    MidiImportFrame frame(info, dump, m_parent);
    frame.exec();
    return frame.chosenTrack();
}

std::optional<int> QtDialogs::scale(const std::vector<std::string>& names, const std::function<void()>& standardTuning) {
    ScalesFrame frame(names, standardTuning, m_parent);
    frame.exec();
    return frame.chosen();
}

} // namespace tahrir::ui
