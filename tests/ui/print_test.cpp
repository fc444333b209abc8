// The print frame and its preview paging through real pages, printing, and the exports.

#include <gtest/gtest.h>

#include <QImage>
#include <QPrinter>
#include <QPushButton>
#include <QSlider>
#include <fstream>
#include <regex>

#include "core/score_writer.h"
#include "melody_builder.h"
#include "ui/print_frame.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {

namespace {

// A window holding a generated melody long enough for several printed pages.
struct PrintRig : WindowRig {
    PrintRig() {
        core::Document doc;
        doc.Sheet = tahrir::test::MakeMelody(60, 3);
        doc.Description = "Melody";
        const auto path = folder.path() / "melody.srv";
        std::ofstream(path, std::ios::binary) << core::ScoreFileImage(doc);
        window->openPath(path.string());
    }
    void click(const char* name) {
        window->printCommands().frame().findChild<QPushButton*>(name)->click();
    }
    PrintFrame& frame() { return window->printCommands().frame(); }
};

using ::tahrir::test::ReadBytes;

int PdfPages(const std::filesystem::path& path) {
    const std::string pdf = ReadBytes(path);
    const std::regex page("/Type\\s*/Page[^s]");
    return static_cast<int>(
        std::distance(std::sregex_iterator(pdf.begin(), pdf.end(), page), std::sregex_iterator()));
}

} // namespace

TEST(PrintFrame, PreviewPagesThroughTheRealPagesThatArePrinted) {
    PrintRig rig;
    rig.trigger("FrPrint");
    PrintFrame& frame = rig.frame();
    ASSERT_TRUE(frame.isVisible());
    const int pages = frame.pageCount();
    ASSERT_GE(pages, 3);
    EXPECT_EQ(frame.WantedPage(), 1);
    const QImage first = frame.previewImage();
    // A third of an A4 page at 15 twips a pixel.
    EXPECT_EQ(first.width(), 264);
    rig.click("CmdPrePage");
    EXPECT_EQ(frame.WantedPage(), 1);
    rig.click("CmdNexPage");
    EXPECT_EQ(frame.WantedPage(), 2);
    EXPECT_NE(frame.previewImage(), first);
    for (int k = 0; k < pages + 2; ++k)
        rig.click("CmdNexPage");
    EXPECT_EQ(frame.WantedPage(), pages);
    rig.click("CmdPrePage");
    EXPECT_EQ(frame.WantedPage(), pages - 1);

    // A smaller size and a narrower staff gap fit the music on fewer pages.
    frame.findChild<QSlider*>("HSFSize")->setValue(6);
    frame.findChild<QSlider*>("VSBet")->setValue(10);
    rig.click("CmdPrintApply");
    EXPECT_LT(frame.pageCount(), pages);
    EXPECT_LE(frame.WantedPage(), frame.pageCount());

    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    const auto pdf = rig.folder.path() / "printed.pdf";
    printer.setOutputFileName(QString::fromStdString(pdf.string()));
    ASSERT_TRUE(frame.printTo(printer));
    EXPECT_EQ(PdfPages(pdf), frame.pageCount());
}

TEST(Export, EachFormatIsWrittenAndReadsBack) {
    PrintRig rig;
    const auto out = rig.folder.path();
    for (const char* name : {"score.pdf", "score.png", "score.svg", "score.dxf"})
        rig.dialogs.savePaths.push_back((out / name).string());
    for (const char* action : {"Exportpdf", "Exportpng", "Exportsvg", "Exportdxf"})
        rig.trigger(action);
    EXPECT_TRUE(rig.dialogs.messages.empty());
    const int pages = PdfPages(out / "score.pdf");
    EXPECT_GE(pages, 3);
    for (int n = 1; n <= pages; ++n) {
        const std::string stem = "score-" + std::to_string(n);
        const QImage png(QString::fromStdString((out / (stem + ".png")).string()));
        ASSERT_FALSE(png.isNull()) << stem;
        EXPECT_NEAR(static_cast<double>(png.height()) / png.width(), 297.0 / 210, 0.01);
        EXPECT_NE(ReadBytes(out / (stem + ".svg")).find("<svg"), std::string::npos) << stem;
    }
    EXPECT_FALSE(std::filesystem::exists(out / ("score-" + std::to_string(pages + 1) + ".png")));
    const std::string dxf = ReadBytes(out / "score.dxf");
    EXPECT_NE(dxf.find("ENTITIES"), std::string::npos);
    EXPECT_NE(dxf.find("EOF"), std::string::npos);
}

} // namespace tahrir::ui::test
