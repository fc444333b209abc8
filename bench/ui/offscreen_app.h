#pragma once
// The one QApplication of a window benchmark, on the offscreen platform.

#include <QApplication>

namespace tahrir::bench {

inline QApplication& OffscreenApp() {
    static QApplication* app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "tahrir_bench";
        static char* argv[] = {name, nullptr};
        return new QApplication(argc, argv);
    }();
    return *app;
}

} // namespace tahrir::bench
