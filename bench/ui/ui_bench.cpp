// The window on a full score of 2048 lines: from a key press to the repainted view, and
// from opening the file to its first painted page. Runs on the offscreen platform.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <filesystem>
#include <fstream>
#include <random>

#include "edit/editor.h"
#include "edit/key_codes.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/print_frame.h"
#include "ui/score_view.h"
#include "offscreen_app.h"

namespace {

using namespace tahrir;

QApplication& App() { return bench::OffscreenApp(); }

// Dialogs that answer nothing: the benchmarks never ask.
class SilentDialogs : public ui::Dialogs {
public:
    std::optional<std::string> input(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    void message(const std::string&, const std::string&) override {}
    ui::Answer question(const std::string&, const std::string&, bool) override { return ui::Answer::No; }
    std::string openFile(const std::string&, const std::string&) override { return {}; }
    std::string saveFile(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::optional<std::string> font() override { return std::nullopt; }
};

// A window on a fresh folder with a score of 2048 lines of 4/4 measures.
struct Rig {
    std::filesystem::path folder;
    std::string score;
    SilentDialogs dialogs;
    std::unique_ptr<ui::MainWindow> window;

    Rig() {
        App();
        folder = std::filesystem::temp_directory_path() / ("tahrir-ui-bench-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(folder / "app");
        score = (folder / "full.srv").string();
        std::ofstream out(score, std::ios::binary);
        out << "\"Sv5 bench\"\r\n\"Full score\"\r\n       G  \r\nTEMPO60\r\nRHYTM4/4\r\n";
        const char* measure[] = {"03 -1", "13  8", "23  8", "33  4K", "43  4", "53  8S", "63  8"};
        for (int i = 4; i <= 2048; ++i) out << measure[(i - 4) % 7] << "\r\n";
        out.close();
        ui::WindowOptions options;
        options.appFolder = folder / "app";
        options.output = "none";
        options.dialogs = &dialogs;
        window = std::make_unique<ui::MainWindow>(options);
        window->resize(1400, 900);
        window->show();
        QApplication::processEvents();
    }
    ~Rig() {
        window.reset();
        std::error_code ec;
        std::filesystem::remove_all(folder, ec);
    }
    // Opens the score and switches the editor on, its cursor a thousand notes in.
    void editInTheMiddle() {
        window->openPath(score);
        key('E', edit::Shift::Ctrl);
        for (int i = 0; i < 1000; ++i) key(edit::Key::Right);
    }
    // A key as the score view hands it on, then the paint it asked for.
    void key(int code, int shift = 0) {
        window->editorKey({code, shift});
        QApplication::processEvents();
    }
};

void BM_OpenToFirstPaintedPage(benchmark::State& state) {
    Rig rig;
    for (auto _ : state) {
        rig.window->openPath(rig.score);
        rig.window->scoreView()->repaint();
    }
    if (rig.window->document().Sheet.LastLine != 2048) state.SkipWithError("the score did not open whole");
}
BENCHMARK(BM_OpenToFirstPaintedPage)->Unit(benchmark::kMillisecond);

// Pitch keys change the pen: its row is laid out with the pen and painted again.
void BM_PenKeyToRepaint(benchmark::State& state) {
    Rig rig;
    rig.editInTheMiddle();
    bool up = true;
    for (auto _ : state) {
        rig.key(up ? edit::Key::Up : edit::Key::Down);
        up = !up;
    }
}
BENCHMARK(BM_PenKeyToRepaint)->Unit(benchmark::kMillisecond);

// Cursor keys move the red note: the two rows are painted again.
void BM_CursorKeyToRepaint(benchmark::State& state) {
    Rig rig;
    rig.editInTheMiddle();
    bool right = true;
    for (auto _ : state) {
        rig.key(right ? edit::Key::Right : edit::Key::Left);
        right = !right;
    }
}
BENCHMARK(BM_CursorKeyToRepaint)->Unit(benchmark::kMillisecond);

// Enter stores the pen: undo page, the whole page laid out and painted again.
void BM_EnterToRepaint(benchmark::State& state) {
    Rig rig;
    rig.editInTheMiddle();
    bool up = true;
    for (auto _ : state) {
        state.PauseTiming();
        rig.key(up ? edit::Key::Up : edit::Key::Down);
        up = !up;
        state.ResumeTiming();
        rig.key(edit::Key::Enter);
        state.PauseTiming();
        rig.key(edit::Key::Left);
        state.ResumeTiming();
    }
}
BENCHMARK(BM_EnterToRepaint)->Unit(benchmark::kMillisecond);

} // namespace

namespace {

// The print frame on the full score: laid out into pages and its first page previewed.
void BM_OpenPrintFrame(benchmark::State& state) {
    Rig rig;
    rig.window->openPath(rig.score);
    auto& frame = rig.window->printCommands().frame();
    for (auto _ : state) {
        frame.apply();
        frame.show();
        QApplication::processEvents();
    }
    state.counters["pages"] = frame.pageCount();
}
BENCHMARK(BM_OpenPrintFrame)->Unit(benchmark::kMillisecond);

} // namespace
