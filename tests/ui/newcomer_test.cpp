// What a newcomer tripped over: the pen kept silently, the instrument buttons, the menu's
// text lines and keys, the small window, and the usage without a display.

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QMenu>
#include <QSettings>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>
#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>

#include "core/instrument_table.h"
#include "edit/editor.h"
#include "play/midi_message.h"
#include "ui/key_translate.h"
#include "ui/palette_panel.h"
#include "ui/playback.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

class Newcomer : public DemoWindow {
protected:
    const core::Document& doc() { return rig.doc(); }
    QString status() { return rig.window->statusBar()->currentMessage(); }
};

TEST_F(Newcomer, APenChangeIsAnnouncedAndOfferedBeforeSaving) {
    rig.enterEditor();
    rig.key(Qt::Key_Right, Qt::NoModifier, 4);
    ASSERT_EQ(doc().Sheet[8].text().substr(0, 2), "23");
    EXPECT_NE(status(), "Enter stores the note");
    rig.key(Qt::Key_Up);
    EXPECT_EQ(status(), "Enter stores the note");
    rig.dialogs.answers = {Answer::Cancel};
    EXPECT_FALSE(rig.window->SaveImage()); // Cancel keeps the pen and saves nothing
    EXPECT_EQ(doc().Sheet[8].text().substr(0, 2), "23");
    rig.dialogs.answers = {Answer::Yes};
    rig.dialogs.savePaths = {(rig.folder.path() / "stored.srv").string()};
    ASSERT_TRUE(rig.window->SaveImage());
    EXPECT_EQ(rig.dialogs.questionsAsked.size(), 2u);
    EXPECT_EQ(doc().Sheet[8].text().substr(0, 2), "33");
    EXPECT_NE(status(), "Enter stores the note");
}

// Each picture button and each list entry sends the program of the instrument it names.
// A button once played another instrument than its label (the one labelled piano, Koto).
TEST_F(Newcomer, EveryInstrumentButtonSoundsTheInstrumentItNames) {
    play::RecordingSink sink;
    rig.window->playback().player().midi().setSink(&sink);
    const auto programSent = [&sink] {
        int program = -1;
        for (const auto& e : sink.entries())
            if ((e.message & 0xF0) == 0xC0) program = static_cast<int>(e.message >> 8 & 0x7F);
        return program;
    };
    const auto programNamed = [](const QString& name) {
        for (const core::Instrument& i : core::InstrumentTable())
            if (name.toStdString() == i.name) return i.program - 1;
        return -2;
    };
    // The MIDI instruments' pictures; 8 to 10 are the wave voices and the accompaniment.
    auto buttons = rig.window->findChildren<QToolButton*>("InsImage");
    buttons.removeIf([](QToolButton* b) { return b->property("index").toInt() >= 8; });
    ASSERT_EQ(buttons.size(), 8);
    for (QToolButton* b : buttons) {
        sink.clear();
        QTest::mouseClick(b, Qt::LeftButton);
        const QString label = b->text().replace('\n', ' ');
        EXPECT_EQ(programSent(), programNamed(label)) << label.toStdString();
        EXPECT_EQ(label, b->toolTip()); // the whole name
    }
    auto* list = rig.child<QComboBox>("InsList");
    for (int row = 0; row < list->count(); ++row) {
        sink.clear();
        emit list->activated(row);
        EXPECT_EQ(programSent(), programNamed(list->itemText(row))) << row;
    }
    rig.window->playback().player().midi().setSink(nullptr);
}

// The menu adds a text line and a lyric from the viewer, and the Edit menu takes the
// lyric back and brings it again.
TEST_F(Newcomer, MenuAddsATextLineAndALyricThatEditUndoes) {
    const auto count = [this](const char* head) {
        int n = 0;
        for (int i = 4; i <= doc().Sheet.LastLine; ++i)
            n += doc().Sheet[i].text().rfind(head, 0) == 0;
        return n;
    };
    ASSERT_NE(rig.window->editor().state().EditMode, edit::Mode::Editor);
    const int texts = count("L>"), lyrics = count("Lv");
    for (const char* name : {"InsertTextLine", "InsertLyric"}) {
        rig.trigger(name);
        EXPECT_EQ(rig.window->editor().state().EditMode, edit::Mode::Editor);
    }
    EXPECT_EQ(count("L>"), texts + 1);
    EXPECT_EQ(count("Lv"), lyrics + 1);
    rig.trigger("EditUndo");
    EXPECT_EQ(count("Lv"), lyrics);
    rig.trigger("EditRedo");
    EXPECT_EQ(count("Lv"), lyrics + 1);
}

TEST_F(Newcomer, MenuKeysAreNoneOfTheEditorsKeys) {
    rig.enterEditor();
    rig.key(Qt::Key_Right, Qt::NoModifier, 4);
    edit::Editor& ed = rig.window->editor();
    int checked = 0;
    for (QAction* a : rig.window->findChildren<QAction*>()) {
        const QKeySequence keys = a->shortcut();
        if (keys.isEmpty()) continue;
        const auto key = TranslateKey(keys[0].key(), keys[0].keyboardModifiers());
        ASSERT_TRUE(key) << keys.toString().toStdString();
        const auto before = std::tuple(doc().Sheet[0].text(), doc().Sheet.CurrentLine,
                                       doc().Sheet.LastLine, ed.state().LineStateRuns);
        ed.keyPress(key->key, key->shift);
        EXPECT_EQ(ed.state().KeyOutcome, edit::Outcome::PenToRecord)
            << keys.toString().toStdString();
        // The pen, the cursor, the sheet's length and the lit palette are as they were.
        EXPECT_EQ(std::tuple(doc().Sheet[0].text(), doc().Sheet.CurrentLine, doc().Sheet.LastLine,
                             ed.state().LineStateRuns),
                  before)
            << keys.toString().toStdString();
        ++checked;
    }
    EXPECT_GE(checked, 5);
}

TEST_F(Newcomer, SaveAsNamesTheScoreAndLeadsTheRecentMenu) {
    const std::string copy = (rig.folder.path() / "copy.srv").string();
    rig.dialogs.savePaths = {copy};
    rig.trigger("SaveAs");
    EXPECT_EQ(doc().CurrentFileName, copy);
    EXPECT_TRUE(std::filesystem::exists(copy));
    rig.trigger("SaveAs"); // Cancel saves nothing
    auto* recent = rig.child<QMenu>("RecentMenu");
    emit recent->aboutToShow();
    ASSERT_FALSE(recent->actions().isEmpty());
    EXPECT_EQ(recent->actions().front()->text().toStdString(), copy);
}

// At 800 x 600 the docks are tabs of one narrow column, the description among them, and
// the score keeps most of the width; wide again, they go back to their places.
TEST_F(Newcomer, ASmallWindowLeavesTheScoreMostOfItsWidth) {
    MainWindow& w = *rig.window;
    auto* palette = rig.child<QDockWidget>("PaletteDock");
    auto* description = rig.child<QDockWidget>("DescriptionDock");
    w.resize(800, 600);
    rig.enterEditor();
    QApplication::processEvents();
    EXPECT_TRUE(description->isVisible());
    EXPECT_TRUE(w.tabifiedDockWidgets(palette).contains(description));
    EXPECT_GE(w.centralWidget()->width(), 800 * 6 / 10);
    EXPECT_EQ(w.palette()->columns(), 4);
    w.resize(1600, 1000);
    QApplication::processEvents();
    EXPECT_FALSE(w.tabifiedDockWidgets(palette).contains(description));
    EXPECT_EQ(w.palette()->columns(), 6);
}

TEST(DesktopProgram, GeometryAndDocksComeBackOnTheNextRun) {
    App();
    QStandardPaths::setTestModeEnabled(true);
    QSettings().clear();
    const TempFolder folder;
    ScriptedDialogs dialogs;
    WindowOptions options;
    options.appFolder = folder.path();
    options.output = "none";
    options.dialogs = &dialogs;
    {
        MainWindow first(options);
        first.show();
        first.resize(1000, 700);
        first.findChild<QDockWidget*>("PlaybackDock")->close();
        dialogs.answers = {Answer::Yes};
        ASSERT_TRUE(first.close());
    }
    MainWindow second(options);
    second.show();
    EXPECT_EQ(second.size(), QSize(1000, 700));
    EXPECT_FALSE(second.findChild<QDockWidget*>("PlaybackDock")->isVisible());
    EXPECT_TRUE(second.findChild<QDockWidget*>("PaletteDock")->isVisible());
    QSettings().clear();
}

TEST(DesktopProgram, HelpPrintsUsageWithoutADisplay) {
    FILE* out = popen(
        "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " TAHRIR_GUI " --help 2>&1", "r");
    ASSERT_NE(out, nullptr);
    std::string text;
    char buffer[256];
    while (std::fgets(buffer, sizeof buffer, out))
        text += buffer;
    EXPECT_EQ(pclose(out), 0) << text;
    EXPECT_EQ(text.rfind("usage: tahrir", 0), 0u) << text;
}

} // namespace
} // namespace tahrir::ui::test
