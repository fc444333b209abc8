// Opening the window's frames, each made and shown with its pending events handled: the
// MIDI import's track frame on files of growing size, the scales frame on "Kookha.tun",
// the key map and the open dialog with its preview. Offscreen.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <memory>

#include "big_midi_file.h"
#include "midifile/midi_reader.h"
#include "offscreen_app.h"
#include "play/tuning.h"
#include "ui/help_window.h"
#include "ui/midi_import_frame.h"
#include "ui/open_preview.h"
#include "ui/scales_frame.h"

namespace {

using namespace tahrir;

// Makes the widget, shows it and lets it lay out and paint once.
template <class Make> void ShowOnce(benchmark::State& state, Make make) {
    bench::OffscreenApp();
    for (auto _ : state) {
        std::unique_ptr<QWidget> widget = make();
        widget->show();
        QApplication::processEvents();
        state.PauseTiming();
        widget.reset();
        state.ResumeTiming();
    }
}

// Eight tracks of `notes` notes each: its dump has about two lines a note.
void BM_OpenMidiImportFrame(benchmark::State& state) {
    const auto bytes = bench::BigMidiFile(8, static_cast<int>(state.range(0)));
    midifile::DumpList dump;
    const midifile::MidiFileInfo info = midifile::ReadMidiBytes(bytes, dump);
    ShowOnce(state, [&] { return std::make_unique<ui::MidiImportFrame>(info, dump.lines); });
    state.counters["dump_lines"] = static_cast<double>(dump.lines.size());
}
BENCHMARK(BM_OpenMidiImportFrame)->Arg(100)->Arg(2500)->Unit(benchmark::kMillisecond);

void BM_OpenScalesFrame(benchmark::State& state) {
    std::vector<std::string> names;
    for (const auto& entry : play::LoadTuning(TAHRIR_DATA_DIR "/Kookha.tun").entries)
        names.push_back(entry.name);
    ShowOnce(state, [&] { return std::make_unique<ui::ScalesFrame>(names, [] {}); });
    state.counters["scales"] = static_cast<double>(names.size());
}
BENCHMARK(BM_OpenScalesFrame)->Unit(benchmark::kMillisecond);

// The window makes the key map once while idle; this is that making and its first showing.
void BM_MakeAndOpenHelp(benchmark::State& state) {
    ShowOnce(state, [] { return std::make_unique<ui::HelpWindow>(); });
}
BENCHMARK(BM_MakeAndOpenHelp)->Unit(benchmark::kMillisecond);

void BM_OpenPreviewDialog(benchmark::State& state) {
    ShowOnce(state, [] {
        auto dialog = std::make_unique<ui::OpenPreviewDialog>(
            nullptr, "Open", TAHRIR_DATA_DIR "/demo", "srv Files (*.srv)");
        dialog->showPreview(TAHRIR_DATA_DIR "/demo/shur-daramad.srv");
        return dialog;
    });
}
BENCHMARK(BM_OpenPreviewDialog)->Unit(benchmark::kMillisecond);

} // namespace
