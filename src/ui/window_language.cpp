// The window's language: chosen by the system's locale or by View > Language, remembered
// in the settings, and switched in place. The score, its measures and the reference
// picture keep their left-to-right drawing in a right-to-left window.

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QScrollArea>
#include <QSettings>
#include <QStatusBar>

#include "ui/help_window.h"
#include "ui/language.h"
#include "ui/main_window.h"
#include "ui/measure_strip.h"
#include "ui/reference_strip.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

const char* const kLanguageKey = "window/language";

} // namespace

QString ViewSizeText(int size) { return Tr("Menu", "Size %1").arg(size); }

// Before any text is made: the saved choice, else the system's language.
void MainWindow::startLanguage(const WindowOptions& options) {
    m_language = std::make_unique<Language>();
    QString code = QString::fromStdString(options.language);
    if (code.isEmpty() && options.rememberLayout) code = QSettings().value(kLanguageKey).toString();
    if (code.isEmpty()) code = SystemLanguage();
    m_language->set(code);
}

// View > Language, each language named in its own; and the music kept left to right.
void MainWindow::buildLanguageMenu(QMenu* view) {
    m_picScroll->setLayoutDirection(Qt::LeftToRight);
    m_measures->setLayoutDirection(Qt::LeftToRight);
    m_strip->setLayoutDirection(Qt::LeftToRight);
    QMenu* menu = view->addMenu(Tr("Menu", "&Language"));
    menu->setObjectName("LanguageMenu");
    auto* group = new QActionGroup(menu);
    const std::pair<const char*, QString> entries[] = {{"LanguageEnglish", QStringLiteral("English")},
                                                      {"LanguagePersian", QStringLiteral("فارسی")}};
    for (const auto& [name, text] : entries) {
        QAction* a = menu->addAction(text);
        a->setObjectName(name);
        a->setCheckable(true);
        a->setActionGroup(group);
        const QString code = a->objectName() == "LanguagePersian" ? LanguagePersian : LanguageEnglish;
        a->setChecked(code == m_language->code());
        connect(a, &QAction::triggered, this, [this, code] { setLanguage(code); });
    }
}

QString MainWindow::language() const { return m_language->code(); }

// Every open window takes the texts of `code` at once; the choice is kept for next time.
void MainWindow::setLanguage(const QString& code) {
    if (!m_language->set(code)) statusBar()->showMessage("The Persian texts are missing from this build.", 8000);
    delete m_help; // its tables are made again in the new language on next use
    m_help = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) m_language->retranslate(w);
    int size = 1;
    for (QAction* a : findChildren<QAction*>("ViewFont")) a->setText(ViewSizeText(size++));
    const QString chosen = m_language->code() == LanguagePersian ? "LanguagePersian" : "LanguageEnglish";
    if (auto* a = findChild<QAction*>(chosen)) a->setChecked(true);
    if (m_rememberLayout) QSettings().setValue(kLanguageKey, m_language->code());
    statusBar()->clearMessage();
    afterEdit(m_doc.Sheet.CurrentLine, -1);
}

} // namespace tahrir::ui
