// The window's language: View > Language switches every menu, dock and panel text between
// English and Persian at once and back, and lays the window out right to left in Persian
// while the score keeps its left-to-right drawing.

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <gtest/gtest.h>

#include "ui/measure_strip.h"
#include "ui/score_view.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

bool Persian(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x0600 && c.unicode() <= 0x06FF; });
}

// Every text of the menus (titles and entries, submenus too), the docks' titles and the
// labels and buttons of the main window, by where it stands.
std::vector<std::string> WindowTexts(MainWindow& w) {
    QStringList texts;
    for (QAction* a : w.menuBar()->findChildren<QAction*>())
        if (!a->text().isEmpty()) texts << a->objectName() + "=" + a->text();
    for (QDockWidget* d : w.findChildren<QDockWidget*>()) texts << d->objectName() + "=" + d->windowTitle();
    for (QLabel* l : w.findChildren<QLabel*>())
        if (l->window() == &w) texts << "label=" + l->text();
    for (QAbstractButton* b : w.findChildren<QAbstractButton*>())
        if (b->window() == &w) texts << b->objectName() + "=" + b->text();
    std::vector<std::string> out;
    for (const QString& t : texts) out.push_back(t.toStdString());
    return out;
}

// The entries that keep their text in every language: the languages' own names, and
// names that are the same in Persian.
bool SameInEveryLanguage(const QAction* a) {
    return a->objectName().startsWith("Language") || a->objectName() == "ExportMusicXml" ||
           a->text().startsWith("PDF") || a->text().startsWith("PNG") || a->text().startsWith("SVG") ||
           a->text().startsWith("DXF");
}

TEST(WindowLanguage, SwitchesEveryMenuAndDockToPersianRightToLeftAndBack) {
    for (const char* start : {"en", "fa"}) {
        SCOPED_TRACE(start);
        // A fresh English window, its controls brought up to date as a switch does.
        std::vector<std::string> english;
        {
            WindowRig fresh("en");
            fresh.window->setLanguage("en");
            english = WindowTexts(*fresh.window);
        }
        WindowRig rig(start);
        MainWindow& w = *rig.window;
        if (std::string(start) == "en") w.findChild<QAction*>("LanguagePersian")->trigger();
        EXPECT_EQ(w.language(), "fa");
        EXPECT_TRUE(w.findChild<QAction*>("LanguagePersian")->isChecked());
        EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft);
        EXPECT_EQ(w.layoutDirection(), Qt::RightToLeft);
        for (QWidget* music : {static_cast<QWidget*>(w.scoreView()), static_cast<QWidget*>(w.measureStrip())})
            EXPECT_EQ(music->layoutDirection(), Qt::LeftToRight) << music->objectName().toStdString();
        for (QAction* a : w.menuBar()->findChildren<QAction*>()) {
            if (a->text().isEmpty() || a->isSeparator() || SameInEveryLanguage(a)) continue;
            EXPECT_TRUE(Persian(a->text())) << a->objectName().toStdString() << " " << a->text().toStdString();
        }
        for (QDockWidget* d : w.findChildren<QDockWidget*>())
            EXPECT_TRUE(Persian(d->windowTitle())) << d->objectName().toStdString();

        w.findChild<QAction*>("LanguageEnglish")->trigger();
        EXPECT_EQ(w.language(), "en");
        EXPECT_EQ(QApplication::layoutDirection(), Qt::LeftToRight);
        EXPECT_EQ(WindowTexts(w), english);
    }
}

} // namespace
} // namespace tahrir::ui::test

