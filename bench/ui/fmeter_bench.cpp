// The transcription window on a 3-minute and a 10-minute 44.1 kHz recording: from opening
// the file to its drawn view, and one repaint of the detail view while scrolling. Offscreen.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <filesystem>
#include <map>

#include "offscreen_app.h"
#include "ui/fmeter/fmeter.h"
#include "wave_writer.h"

namespace {

using namespace tahrir;

QApplication& App() {
    return bench::OffscreenApp();
}

// A melody of half-second notes at 44.1 kHz lasting the given minutes, written once.
std::filesystem::path Recording(int minutes) {
    static std::map<int, std::filesystem::path> files;
    auto& path = files[minutes];
    if (path.empty()) {
        path = std::filesystem::temp_directory_path() /
               ("fmeter_bench_" + std::to_string(minutes) + "min.wav");
        std::vector<test::ToneSpan> spans;
        for (int i = 0; i < minutes * 120; ++i)
            spans.push_back({220.0 * (1 + (i % 7) / 7.0), 0.5, 3});
        test::WriteWaveFile(path, test::WaveFileBytes(test::Melody(spans, 44100), 44100));
    }
    return path;
}

ui::FMeterHost Host() {
    ui::FMeterHost host;
    host.appFolder = std::filesystem::temp_directory_path();
    return host;
}

void BM_OpenToDrawnView(benchmark::State& state) {
    App();
    const auto file = Recording(static_cast<int>(state.range(0)));
    ui::FMeter meter(Host());
    meter.show();
    QWidget* detail = meter.findChild<QWidget*>("P2");
    for (auto _ : state) {
        meter.openRecording(file);
        if (!meter.waitForView()) state.SkipWithError("not loaded");
        detail->repaint();
    }
}
BENCHMARK(BM_OpenToDrawnView)->Arg(3)->Arg(10)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_ScrollRedraw(benchmark::State& state) {
    App();
    ui::FMeter meter(Host());
    meter.show();
    meter.openRecording(Recording(static_cast<int>(state.range(0))));
    meter.waitForAnalysis();
    meter.zoom(1.0 / 16);
    QWidget* detail = meter.findChild<QWidget*>("P2");
    double at = 0;
    for (auto _ : state) {
        at += meter.view().perPixel * 40;
        if (at > meter.view().length() * 0.9) at = 0;
        meter.goTo(at);
        detail->repaint();
    }
}
BENCHMARK(BM_ScrollRedraw)->Arg(3)->Arg(10)->Unit(benchmark::kMillisecond);

} // namespace
