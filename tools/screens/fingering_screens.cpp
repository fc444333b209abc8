// Pictures of the Fingering dock for the documentation: fingering_screens OUTDIR writes
// each instrument's tab with the cursor on a koron note of a Chahargah piece.

#include <QTabWidget>
#include <cstdio>

#include "ui/fingering_dock.h"
#include "ui_test_support.h"

using namespace tahrir::ui;
using namespace tahrir::ui::test;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: fingering_screens OUTDIR\n");
        return 1;
    }
    App();
    WindowRig rig;
    rig.window->resize(1600, 1000);
    rig.window->openPath(rig.demoCopy("chahargah-chaharmezrab.srv"));
    rig.enterEditor();
    // Line 17 is the D koron of the opening figure.
    while (rig.window->document().Sheet.CurrentLine < 17) rig.key(Qt::Key_Right);
    auto* dock = rig.window->findChild<FingeringDock*>("FingeringDock");
    if (!dock) return 1;
    dock->setFloating(true);
    dock->resize(520, 330);
    const char* names[] = {"tar", "ney", "harmonica", "hang"};
    bool ok = true;
    for (int i = 0; i < 4; ++i) {
        dock->tabs()->setCurrentIndex(i);
        QApplication::processEvents();
        const std::string path = std::string(argv[1]) + "/fingering-" + names[i] + ".png";
        const bool saved = dock->grab().save(QString::fromStdString(path));
        std::printf("%s %s\n", saved ? "wrote" : "could not write", path.c_str());
        ok &= saved;
    }
    return ok ? 0 : 1;
}
