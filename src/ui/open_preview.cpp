#include "ui/open_preview.h"

#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QPlainTextEdit>

#include "core/cp1256.h"
#include "core/score_preview.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {
// The head of a score is all the preview reads; descriptions are far shorter.
constexpr qint64 kHeadBytes = 64 * 1024;
} // namespace

std::optional<QString> PreviewFor(const QString& path) {
    if (path.contains('?')) return QString("Can't read File Name");
    const QFileInfo info(path);
    if (!info.isFile()) return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return QString("Can't read File Name");
    const QByteArray head = file.read(kHeadBytes);
    const std::string text = core::ScorePreview(std::string_view(head.constData(), static_cast<std::size_t>(head.size())));
    std::string shown;
    for (const char c : text)
        if (c != '\r') shown += c;
    return QString::fromStdString(core::Cp1256ToUtf8(shown));
}

OpenPreviewDialog::OpenPreviewDialog(QWidget* parent, const QString& title, const QString& folder,
                                     const QString& filter)
    : QFileDialog(parent, title, folder, filter) {
    setObjectName("OpenDFile");
    setOption(QFileDialog::DontUseNativeDialog, true); // the preview needs Qt's own dialog
    setFileMode(QFileDialog::ExistingFile);
    setAcceptMode(QFileDialog::AcceptOpen);
    m_preview = new QPlainTextEdit(this);
    m_preview->setObjectName("FarTxt");
    m_preview->setReadOnly(true);
    m_preview->setLayoutDirection(Qt::RightToLeft);
    m_preview->setMinimumWidth(240);
    m_preview->setPlaceholderText(Tr("OpenPreview", "The description of the selected score shows here."));
    if (auto* grid = qobject_cast<QGridLayout*>(layout())) grid->addWidget(m_preview, 0, grid->columnCount(), grid->rowCount(), 1);
    connect(this, &QFileDialog::currentChanged, this, [this](const QString& path) { showPreview(path); });
    resize(980, 520);
}

void OpenPreviewDialog::showPreview(const QString& path) {
    if (const auto text = PreviewFor(path)) m_preview->setPlainText(*text);
}

} // namespace tahrir::ui
