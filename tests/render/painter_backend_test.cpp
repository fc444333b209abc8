// The painter back end: heads land on their staff lines, and each file type is written.

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <filesystem>

#include "render/painter_backend.h"
#include "sheet_builder.h"
#include "temp_folder.h"

namespace tahrir::render {
namespace {

namespace fs = std::filesystem;

const fs::path kMusicFont = fs::path(TAHRIR_DATA_DIR) / "fonts" / "bravura.otf";

class PainterTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { EnsureGuiApplication(); }

    static LayoutResult Quarter() {
        return test::Lay(test::Body({"73  8", "14  8", "L_text"}), 40);
    }
    ::tahrir::test::TempFolder m_dir;
};

bool Dark(const QImage& image, double x, double y) {
    return qGray(image.pixel(static_cast<int>(x), static_cast<int>(y))) < 100;
}

TEST_F(PainterTest, HeadsSitOnTheirLineAndSpace) {
    const LayoutResult r = Quarter();
    ImageOptions options;
    options.widthPixels = 880; // 20 pixels a staff unit
    options.musicFontFile = kMusicFont;
    const fs::path png = m_dir / "q.png";
    ASSERT_EQ(WritePage(r, png, options), "");
    QImage image(QString::fromStdString(png.string()));
    ASSERT_FALSE(image.isNull());
    const double ppu = 880 / r.list.widthUnits;
    // Si on the middle line (2 units up), Do in the third space (2.5 units up): the head's
    // centre is dark, and the space one unit above and below the centre's left half is not.
    for (int line : {4, 5}) {
        const double h = line == 4 ? 2 : 2.5;
        const double cx = (r.positions.LinePosX[line] + 0.1 + 0.4) * ppu;
        const double cy = (r.positions.LinePosY[line] - h) * ppu;
        EXPECT_TRUE(Dark(image, cx, cy)) << "line " << line;
        EXPECT_FALSE(Dark(image, cx - 0.15 * ppu, cy - 0.75 * ppu)) << "line " << line;
        EXPECT_FALSE(Dark(image, cx - 0.15 * ppu, cy + 0.75 * ppu)) << "line " << line;
    }
    // The glyphs come from the file the caller names: with an unreadable one the heads are
    // left out and the page is still written.
    options.musicFontFile = m_dir / "none.otf";
    ASSERT_EQ(WritePage(r, png, options), "");
    image.load(QString::fromStdString(png.string()));
    // Do's head stands in a space, clear of the staff lines.
    const double cx = (r.positions.LinePosX[5] + 0.5) * ppu;
    EXPECT_FALSE(Dark(image, cx, (r.positions.LinePosY[5] - 2.5) * ppu));
}

TEST_F(PainterTest, SvgDrawsTheMusicAsOutlinesAndOtherTypesAreRefused) {
    const LayoutResult r = Quarter();
    ImageOptions options;
    options.musicFontFile = kMusicFont;
    ASSERT_EQ(WritePage(r, m_dir / "q.svg", options), "");
    const std::string svg = ::tahrir::test::ReadBytes(m_dir / "q.svg");
    // The music font is drawn as outlines, so no text element can lose it.
    EXPECT_NE(svg.find("<path"), std::string::npos);
    EXPECT_EQ(svg.find("<text"), std::string::npos);
    EXPECT_NE(WritePage(r, m_dir / "q.bmp", options), "");
}

TEST_F(PainterTest, PrintPreviewIsAThirdWide) {
    LayoutOptions o;
    o.ChPrint = true;
    o.Description = "Title\nSecond line";
    const LayoutResult r = RefreshView(test::Body({"73 32"}), o);
    EXPECT_TRUE(r.printed);
    ImageOptions options;
    options.print = true;
    options.widthPixels = 1500;
    ASSERT_EQ(WritePage(r, m_dir / "p.png", options), "");
    QImage image(QString::fromStdString((m_dir / "p.png").string()));
    EXPECT_EQ(image.width(), 500);
    EXPECT_NEAR(image.height(), 500 * A4HeightTwips / A4WidthTwips, 2);
}

// Dark pixels down one column of an image.
int DarkRun(const QImage& image, int x) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        n += qGray(image.pixel(x, y)) < 128;
    return n;
}

TEST_F(PainterTest, PreviewLinesStayOnePixelWide) {
    DisplayList list;
    DisplayItem beam;
    beam.kind = ItemKind::Stroke;
    beam.width = WidthClass::Beam;
    beam.x = 1, beam.y = 2, beam.x2 = 9, beam.y2 = 2;
    list.items = {beam};
    for (bool preview : {false, true}) {
        QImage image(400, 160, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        PaintOptions o;
        o.pixelsPerUnit = 40;
        o.preview = preview;
        PaintDisplayList(painter, list, o);
        painter.end();
        if (preview) {
            EXPECT_LE(DarkRun(image, 200), 2);
        } else {
            EXPECT_GE(DarkRun(image, 200), 12); // a beam is about 0.4 units thick
        }
    }
}

} // namespace
} // namespace tahrir::render
