#pragma once
// The open dialog of scores `OpenDFile`: a standard file dialog with the preview `FarTxt`
// beside it, which shows the title and description of the selected score before it is
// opened.

#include <QFileDialog>
#include <optional>

class QPlainTextEdit;

namespace tahrir::ui {

// The preview of the file at `path`: "Can't read File Name" for a name holding "?",
// nullopt for what is not a readable file (the preview then stays as it was).
std::optional<QString> PreviewFor(const QString& path);

class OpenPreviewDialog : public QFileDialog {
public:
    OpenPreviewDialog(QWidget* parent, const QString& title, const QString& folder, const QString& filter);
    QPlainTextEdit* preview() const { return m_preview; }
    // Shows the preview of `path` in `FarTxt`.
    void showPreview(const QString& path);

private:
    QPlainTextEdit* m_preview = nullptr;
};

} // namespace tahrir::ui
