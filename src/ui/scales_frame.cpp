#include "ui/scales_frame.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/cp1256.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

ScalesFrame::ScalesFrame(const std::vector<std::string>& names, std::function<void()> standardTuning,
                         QWidget* parent)
    : QDialog(parent) {
    setObjectName("FrameScales");
    setWindowTitle(Tr("Scales", "Key signature"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(Tr("Scales", "Dastgah and its key signature:"), this));
    m_list = new QListWidget(this);
    m_list->setObjectName("ListKookha");
    QStringList shown;
    for (const std::string& name : names) shown << QString::fromStdString(core::Cp1256ToUtf8(name));
    m_list->addItems(shown);
    column->addWidget(m_list, 1);

    auto* row = new QHBoxLayout;
    auto* diapazon = new QToolButton(this);
    diapazon->setObjectName("DiapazonImg");
    diapazon->setText(Tr("Scales", "Standard tuning"));
    diapazon->setToolTip("Standard Tunning");
    connect(diapazon, &QToolButton::clicked, this, [standardTuning] {
        if (standardTuning) standardTuning();
    });
    auto* ok = new QPushButton(Tr("Scales", "OK"), this);
    ok->setObjectName("CmdOkScales");
    ok->setDefault(true);
    auto* cancel = new QPushButton(Tr("Scales", "Cancel"), this);
    cancel->setObjectName("CmdCancelScales");
    row->addWidget(diapazon);
    row->addStretch(1);
    row->addWidget(ok);
    row->addWidget(cancel);
    column->addLayout(row);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    resize(420, 520);
}

std::optional<int> ScalesFrame::chosen() const {
    if (result() != QDialog::Accepted) return std::nullopt;
    const auto selected = m_list->selectedItems();
    if (selected.isEmpty()) return std::nullopt;
    return m_list->row(selected.first());
}

} // namespace tahrir::ui
