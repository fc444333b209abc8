// The Fingering dock on a full score of 2048 lines: a cursor move (a look-up and the
// visible instrument painted again) and a change of the score (its notes walked again).
// Runs on the offscreen platform.

#include <benchmark/benchmark.h>

#include <QApplication>

#include "core/app_folder.h"
#include "ui/fingering_dock.h"
#include "offscreen_app.h"

namespace {

using namespace tahrir;

QApplication& App() { return bench::OffscreenApp(); }

// Line 1 the key signature (koron D and A), then 4/4 measures of notes with koron and sori.
core::ScoreSheet FullSheet() {
    core::ScoreSheet sheet;
    sheet.setLine(1, " K   K G");
    sheet.setLine(2, "TEMPO60");
    sheet.setLine(3, "RHYTM4/4");
    const char* measure[] = {"03 -1", "13  8", "23  8", "33  4K", "43  4", "53  8S", "63  8"};
    for (int i = 4; i <= core::MaxLines; ++i) sheet.setLine(i, measure[(i - 4) % 7]);
    sheet.LastLine = core::MaxLines;
    return sheet;
}

struct Rig {
    QApplication& app = App();
    core::ScoreSheet sheet = FullSheet();
    ui::FingeringDock dock{sheet, {}};
    Rig() {
        dock.resize(440, 320);
        dock.show();
        dock.follow(1000, 1, 24);
        QApplication::processEvents();
    }
};

void BM_FingeringCursorMove(benchmark::State& state) {
    Rig rig;
    int line = 1000;
    for (auto _ : state) {
        line = line == 1000 ? 1001 : 1000;
        rig.dock.follow(line, 1, 24);
        QApplication::processEvents(); // the marked view and the caption paint again
    }
}
BENCHMARK(BM_FingeringCursorMove)->Unit(benchmark::kMicrosecond);

// The same with the whole dock painted again, tabs and all.
void BM_FingeringCursorMoveWholeDock(benchmark::State& state) {
    Rig rig;
    int line = 1000;
    for (auto _ : state) {
        line = line == 1000 ? 1001 : 1000;
        rig.dock.follow(line, 1, 24);
        rig.dock.repaint();
    }
}
BENCHMARK(BM_FingeringCursorMoveWholeDock)->Unit(benchmark::kMicrosecond);

void BM_FingeringScoreChanged(benchmark::State& state) {
    Rig rig;
    int version = 1;
    for (auto _ : state) rig.dock.follow(1000, ++version, 24);
}
BENCHMARK(BM_FingeringScoreChanged)->Unit(benchmark::kMillisecond);

} // namespace
