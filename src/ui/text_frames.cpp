#include "ui/text_frames.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "edit/editor.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {
// The option buttons by the head they write.
constexpr std::array<const char*, 6> kOptionHeads = {"L-", "L^", "L_", "Lv", "L<", "L>"};
} // namespace

TextFrames::TextFrames(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);

    auto* textBox = new QGroupBox("    Text  Tool    ", this);
    textBox->setObjectName("FrameTextF6");
    m_textFrame = textBox;
    auto* tl = new QVBoxLayout(textBox);
    m_text = new QLineEdit(textBox);
    m_text->setObjectName("TextF6");
    m_text->setLayoutDirection(Qt::RightToLeft);
    tl->addWidget(m_text);
    auto* options = new QHBoxLayout;
    auto* group = new QButtonGroup(textBox);
    for (std::size_t i = 0; i < m_options.size(); ++i) {
        m_options[i] = new QRadioButton(kOptionHeads[i], textBox);
        m_options[i]->setObjectName("OptF6");
        m_options[i]->setProperty("index", static_cast<int>(i));
        group->addButton(m_options[i], static_cast<int>(i));
        options->addWidget(m_options[i]);
        QObject::connect(m_options[i], &QRadioButton::clicked, this, [this] { m_text->setFocus(); });
    }
    tl->addLayout(options);
    auto* buttons = new QHBoxLayout;
    auto* font = new QPushButton(Tr("TextTools", "Font..."), textBox);
    font->setObjectName("CmDFont");
    auto* apply = new QPushButton(Tr("TextTools", "Apply"), textBox);
    apply->setObjectName("CmdTextF6");
    buttons->addWidget(font);
    buttons->addWidget(apply);
    tl->addLayout(buttons);
    const auto applyText = [this] {
        if (textApplied) textApplied(m_text->text().toStdString(), option());
    };
    QObject::connect(apply, &QPushButton::clicked, this, applyText);
    QObject::connect(m_text, &QLineEdit::returnPressed, this, applyText);
    QObject::connect(font, &QPushButton::clicked, this, [this] {
        if (fontClicked) fontClicked();
    });

    auto* commandBox = new QGroupBox("   Command Tool    ", this);
    commandBox->setObjectName("FrameTextCom");
    m_commandFrame = commandBox;
    auto* cl = new QVBoxLayout(commandBox);
    m_command = new QLineEdit(commandBox);
    m_command->setObjectName("TxtCom");
    m_list = new QListWidget(commandBox);
    m_list->setObjectName("ListLC");
    m_list->setMaximumHeight(90);
    for (const char* word : edit::kCommandList) m_list->addItem(word);
    auto* ok = new QPushButton(Tr("TextTools", "OK"), commandBox);
    ok->setObjectName("CmdOkCom");
    cl->addWidget(m_command);
    cl->addWidget(m_list);
    cl->addWidget(ok);
    QObject::connect(ok, &QPushButton::clicked, this, [this] {
        if (commandApplied) commandApplied(m_command->text().toStdString());
    });
    QObject::connect(m_command, &QLineEdit::returnPressed, this, [this] {
        if (commandEnter) commandEnter();
    });
    QObject::connect(m_list, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        if (listClicked) listClicked(m_list->row(item));
    });
    row->addWidget(textBox);
    row->addWidget(commandBox);
    textBox->hide();
    commandBox->hide();
}

int TextFrames::option() const {
    for (std::size_t i = 0; i < m_options.size(); ++i)
        if (m_options[i]->isChecked()) return static_cast<int>(i);
    return -1;
}

void TextFrames::show(const edit::TextFrame& text, const std::string& textUtf8,
                      const edit::CommandFrame& command, const std::string& commandUtf8) {
    m_textFrame->setVisible(text.visible);
    if (text.visible) {
        if (m_text->text().toStdString() != textUtf8) m_text->setText(QString::fromStdString(textUtf8));
        if (text.option >= 0 && text.option < 6) m_options[static_cast<std::size_t>(text.option)]->setChecked(true);
    }
    m_commandFrame->setVisible(command.visible);
    if (command.visible) {
        if (m_command->text().toStdString() != commandUtf8)
            m_command->setText(QString::fromStdString(commandUtf8));
        m_list->setCurrentRow(command.listIndex);
    }
    setVisible(text.visible || command.visible);
}

void TextFrames::focusText() { m_text->setFocus(); }
void TextFrames::focusCommand() { m_command->setFocus(); }

} // namespace tahrir::ui
