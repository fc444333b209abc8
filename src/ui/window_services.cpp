#include "ui/window_services.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>

#include "core/cp1256.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/playback.h"

namespace tahrir::ui {

void SystemClipboard::clear() { QGuiApplication::clipboard()->clear(); }

void SystemClipboard::setText(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(core::Cp1256ToUtf8(text)));
}

std::string SystemClipboard::text() const {
    return core::Utf8ToCp1256(QGuiApplication::clipboard()->text().toStdString());
}

std::optional<std::string> WindowHost::inputBox(const std::string& title, const std::string& defaultText) {
    const std::string t = core::Cp1256ToUtf8(title);
    const auto answer = m_window.m_dialogs->input(t, t, core::Cp1256ToUtf8(defaultText));
    if (!answer) return std::nullopt;
    return core::Utf8ToCp1256(*answer);
}

void WindowHost::messageBox(const std::string& text) {
    m_window.m_dialogs->message("Tahrir", core::Cp1256ToUtf8(text));
}

std::optional<std::string> WindowHost::fontDialog() {
    const auto font = m_window.m_dialogs->font();
    if (!font) return std::nullopt;
    return core::Utf8ToCp1256(*font);
}

// Both wait for the key press to end, so that the editor is not replaced under it.
void WindowHost::exitRequested() {
    QTimer::singleShot(0, &m_window, [w = &m_window] { w->close(); });
}

void WindowHost::loadFileRequested() {
    QTimer::singleShot(0, &m_window, [w = &m_window] { w->LoadFile(0); });
}

void WindowHost::instrumentClick(int index) {
    if (index >= 8) return m_window.playback().waveClick(index);
    m_window.playback().player().chooseInstrument(index);
}

} // namespace tahrir::ui
