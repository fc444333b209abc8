#pragma once
// The scales frame: the named key signatures of "Kookha.tun" in `ListKookha`, OK and
// Cancel, and the standard-tuning button `DiapazonImg`.

#include <QDialog>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QListWidget;

namespace tahrir::ui {

class ScalesFrame : public QDialog {
public:
    // `names` in the file's code page; `standardTuning` runs on a click of `DiapazonImg`.
    ScalesFrame(const std::vector<std::string>& names, std::function<void()> standardTuning,
                QWidget* parent = nullptr);

    // The selected entry (0-based) after OK; nullopt for Cancel or no selection.
    std::optional<int> chosen() const;
    QListWidget* list() const { return m_list; }

private:
    QListWidget* m_list = nullptr;
};

} // namespace tahrir::ui
