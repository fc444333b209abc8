#include "ui/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "ui/midi_import_frame.h"
#include "ui/scales_frame.h"

namespace tahrir::ui {

namespace {
QString Q(const std::string& s) { return QString::fromStdString(s); }
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

std::string QtDialogs::openFile(const std::string& title, const std::string& filter) {
    return QFileDialog::getOpenFileName(m_parent, Q(title), {}, Q(filter)).toStdString();
}

std::string QtDialogs::saveFile(const std::string& title, const std::string& filter,
                                const std::string& preset) {
    return QFileDialog::getSaveFileName(m_parent, Q(title), Q(preset), Q(filter)).toStdString();
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
