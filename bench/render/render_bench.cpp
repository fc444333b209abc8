// The layout walk of a full 2048-line score, painting it, and writing it as a PDF.

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "core/rhythm_pass.h"
#include "core/score_writer.h"
#include "melody_builder.h"
#include "render/paged_layout.h"
#include "render/painter_backend.h"

namespace {

using namespace tahrir;

// A full sheet: 4/4 measures of beamed eighths, sixteenths, quarters and dotted notes,
// with accidentals, marks and a text line now and then.
core::ScoreSheet FullSheet() {
    core::ScoreSheet sheet;
    const char* header[] = {"   S  KG", "TEMPO72", "RHYTM4/4"};
    for (int i = 0; i < 3; ++i) sheet.setLine(i + 1, header[i]);
    const char* measure[] = {"13  4", "23  4S", "33  4", "43  4", "53  8  TR", "63  2",
                             "73  2", "14  4K", "53 12", "L_word", "63  4  TI"};
    int line = 3;
    for (int k = 0; line < core::MaxLines; ++k) {
        std::string text = measure[k % std::size(measure)];
        text.resize(22, ' ');
        sheet.setLine(++line, text);
    }
    sheet.LastLine = line;
    core::RhythmPass(sheet);
    return sheet;
}

std::filesystem::path MusicFont() {
    return std::filesystem::path(TAHRIR_DATA_DIR) / "fonts" / "bravura.otf";
}

render::LayoutOptions Options() {
    render::LayoutOptions o;
    o.TextFontName = "Nazli";
    return o;
}

void BM_LayoutWalk(benchmark::State& state) {
    const core::ScoreSheet sheet = FullSheet();
    const render::LayoutOptions options = Options();
    for (auto _ : state) {
        auto result = render::RefreshView(sheet, options);
        benchmark::DoNotOptimize(result.list.items.data());
    }
}
BENCHMARK(BM_LayoutWalk)->Unit(benchmark::kMillisecond);

void BM_PaintImage(benchmark::State& state) {
    render::EnsureGuiApplication();
    const auto layout = render::RefreshView(FullSheet(), Options());
    render::PaintOptions po;
    po.pixelsPerUnit = 1600 / layout.list.widthUnits;
    po.textFontName = layout.TextFontName;
    po.glyphSprites = true;
    po.musicFontFile = MusicFont();
    QImage image(1600, static_cast<int>(layout.list.heightUnits * po.pixelsPerUnit) + 1,
                 QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        render::PaintDisplayList(painter, layout.list, po);
    }
    state.counters["height_px"] = image.height();
}
BENCHMARK(BM_PaintImage)->Unit(benchmark::kMillisecond);

void BM_WritePdf(benchmark::State& state) {
    render::EnsureGuiApplication();
    const auto layout = render::RefreshView(FullSheet(), Options());
    const auto path = std::filesystem::temp_directory_path() / "tahrir_bench_render.pdf";
    for (auto _ : state) {
        render::ImageOptions image;
        image.musicFontFile = MusicFont();
        const std::string error = render::WritePage(layout, path, image);
        if (!error.empty()) state.SkipWithError(error.c_str());
    }
    std::filesystem::remove(path);
}
BENCHMARK(BM_WritePdf)->Unit(benchmark::kMillisecond);

} // namespace

namespace {

// A 200-measure melody (about 1,700 notes) written as a score file for the paged runs.
std::filesystem::path MelodyFile() {
    core::Document doc;
    doc.Sheet = test::MakeMelody(200, 11);
    doc.Description = "Generated melody\r\n200 measures";
    const auto path = std::filesystem::temp_directory_path() / "tahrir_melody_200.srv";
    std::ofstream(path, std::ios::binary) << core::ScoreFileImage(doc);
    return path;
}

void BM_PagedLayoutOfMelody(benchmark::State& state) {
    const core::ScoreSheet sheet = test::MakeMelody(200, 11);
    const render::LayoutOptions options =
        render::PaperLayoutOptions(Options(), render::kA4);
    int notes = 0;
    for (int i = 4; i <= sheet.LastLine; ++i) notes += sheet[i].text()[0] != '0';
    for (auto _ : state) {
        auto result = render::RefreshView(sheet, options);
        benchmark::DoNotOptimize(result.list.items.data());
    }
    state.counters["notes"] = notes;
}
BENCHMARK(BM_PagedLayoutOfMelody)->Unit(benchmark::kMillisecond);

// The whole command as a user runs it: start, read, lay out, cut into pages, write a PDF.
void BM_PagedPdfProcess(benchmark::State& state) {
    const auto score = MelodyFile();
    const auto pdf = std::filesystem::temp_directory_path() / "tahrir_melody_200.pdf";
    const std::string command = std::string("\"") + TAHRIR_CLI + "\" render \"" +
                                score.string() + "\" --paged -o \"" + pdf.string() + "\"";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0) state.SkipWithError("tahrir-cli failed");
    std::filesystem::remove(pdf);
}
BENCHMARK(BM_PagedPdfProcess)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
