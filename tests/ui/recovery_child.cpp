// The run that does not end normally: a window opens a score, edits it through the keys,
// says what line 8 now holds, and waits to be killed.
// Usage: recovery_child APP_FOLDER SCORE.srv

#include <QApplication>
#include <QTest>
#include <cstdio>
#include <unistd.h>

#include "edit/editor.h"
#include "ui/score_view.h"
#include "ui_test_support.h"

int main(int argc, char** argv) {
    if (argc != 3) return 1;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    tahrir::ui::test::ScriptedDialogs dialogs;
    tahrir::ui::WindowOptions options;
    options.appFolder = argv[1];
    options.output = "none";
    options.dialogs = &dialogs;
    tahrir::ui::MainWindow window(options);
    window.resize(1400, 900);
    window.show();
    if (!window.openPath(argv[2])) return 2;
    auto key = [&](Qt::Key k, Qt::KeyboardModifiers m = Qt::NoModifier) { QTest::keyClick(window.scoreView(), k, m); };
    key(Qt::Key_E, Qt::ControlModifier);
    // Line 8 raised twice, then the cursor moves on and line 10 is deleted.
    for (int i = 0; i < 4; ++i) key(Qt::Key_Right);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Return);
    const auto& sheet = window.document().Sheet;
    std::printf("%d|%s\n", sheet.LastLine, sheet[8].text().c_str());
    std::fflush(stdout);
    for (;;) ::pause();
}
