// The transcription window on a 3-minute 44.1 kHz recording: from opening the file to
// its drawn view, and one repaint of the detail view while scrolling. Offscreen.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <filesystem>

#include "ui/fmeter/fmeter.h"
#include "wave_writer.h"
#include "offscreen_app.h"

namespace {

using namespace tahrir;

QApplication& App() { return bench::OffscreenApp(); }

// A melody of three minutes at 44.1 kHz, written once.
std::filesystem::path Recording() {
    static const std::filesystem::path file = [] {
        const auto path = std::filesystem::temp_directory_path() / "fmeter_bench_3min.wav";
        std::vector<test::ToneSpan> spans;
        for (int i = 0; i < 360; ++i) spans.push_back({220.0 * (1 + (i % 7) / 7.0), 0.5, 3});
        test::WriteWaveFile(path, test::WaveFileBytes(test::Melody(spans, 44100), 44100));
        return path;
    }();
    return file;
}

ui::FMeterHost Host() {
    ui::FMeterHost host;
    host.appFolder = std::filesystem::temp_directory_path();
    return host;
}

void BM_OpenToDrawnView(benchmark::State& state) {
    App();
    const auto file = Recording();
    ui::FMeter meter(Host());
    meter.show();
    QWidget* detail = meter.findChild<QWidget*>("P2");
    for (auto _ : state) {
        meter.openRecording(file);
        if (!meter.waitForView()) state.SkipWithError("not loaded");
        detail->repaint();
    }
}
BENCHMARK(BM_OpenToDrawnView)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_ScrollRedraw(benchmark::State& state) {
    App();
    ui::FMeter meter(Host());
    meter.show();
    meter.openRecording(Recording());
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
BENCHMARK(BM_ScrollRedraw)->Unit(benchmark::kMillisecond);

} // namespace
