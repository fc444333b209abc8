#pragma once
// The text tool `FrameTextF6` and the command tool `FrameTextCom`, shown while the
// cursor stands on a text or command line.

#include <QWidget>
#include <array>
#include <functional>
#include <string>

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace tahrir::edit {
struct TextFrame;
struct CommandFrame;
} // namespace tahrir::edit

namespace tahrir::ui {

class TextFrames : public QWidget {
public:
    explicit TextFrames(QWidget* parent = nullptr);

    // Apply (CmdTextF6, Enter in TextF6): UTF-8 text and the chosen option, -1 for none.
    std::function<void(const std::string& text, int option)> textApplied;
    std::function<void()> fontClicked;                         // CmDFont
    std::function<void(const std::string& text)> commandApplied; // CmdOkCom
    std::function<void()> commandEnter;                        // Enter in TxtCom
    std::function<void(int index)> listClicked;                // ListLC

    // Shows the frames as the editor left them (texts in UTF-8 by the caller).
    void show(const edit::TextFrame& text, const std::string& textUtf8,
              const edit::CommandFrame& command, const std::string& commandUtf8);
    void focusText();
    void focusCommand();
    QWidget* textFrame() const { return m_textFrame; }
    QWidget* commandFrame() const { return m_commandFrame; }

private:
    int option() const;

    QWidget* m_textFrame = nullptr;
    QLineEdit* m_text = nullptr;
    std::array<QRadioButton*, 6> m_options{};
    QWidget* m_commandFrame = nullptr;
    QLineEdit* m_command = nullptr;
    QListWidget* m_list = nullptr;
};

} // namespace tahrir::ui
