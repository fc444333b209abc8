// The DXF stream: picture-format numbers and the exact token layout of each entity.

#include <gtest/gtest.h>

#include "render/dxf_writer.h"

namespace tahrir::render {
namespace {

TEST(VbFormat, PictureFormatDropsLeadingAndTrailingZeros) {
    const struct {
        double value;
        int decimals;
        const char* text;
    } cases[] = {{3.456, 2, "3.46"}, {0.5, 2, ".5"},     {3, 2, "3."},         {0, 2, "."},
                 {-14, 2, "-14."},   {-0.25, 2, "-.25"}, {220, 2, "220."},     {355, 1, "355."},
                 {1234.5, 2, "1234.5"},
                 // Halves round away from zero; a value that rounds to zero loses its sign.
                 {0.125, 2, ".13"}, {-0.001, 2, "."}};
    for (const auto& c : cases) EXPECT_EQ(VbFormat(c.value, c.decimals), c.text) << c.value;
}

TEST(DxfWriter, DisabledWriterKeepsNothing) {
    DxfWriter dxf;
    dxf.begin(100, "a.srv");
    dxf.line("1", 0, 0, 1, 1);
    dxf.text("2", 1, 1, "2.0", "r");
    dxf.end();
    EXPECT_TRUE(dxf.contents().empty());
}

TEST(DxfWriter, EachEntityKeepsItsGroupCodes) {
    DxfWriter dxf;
    dxf.setEnabled(true);
    dxf.line("1", 3, -14, 75.5, -14);
    EXPECT_EQ(dxf.contents(), "LINE\r\n  8\r\n1\r\n 10\r\n3.\r\n 20\r\n-14.\r\n 30\r\n0.0\r\n"
                              " 11\r\n75.5\r\n 21\r\n-14.\r\n 31\r\n0.0\r\n  0\r\n");
    // A new pass starts the stream anew: the skeleton, the title, then the entities.
    dxf.begin(100, "song.srv");
    dxf.text("2", 4.25, 0.15, "2.0", "r", kClefExtra);
    dxf.polyline("3", 1, 2, 3, 4.5);
    dxf.end();
    EXPECT_EQ(dxf.contents(),
              " 0 \r\nSECTION\r\n 2 \r\nENTITIES\r\n 0 \r\n"
              "TEXT\r\n8\r\nfinger\r\n 10\r\n44.\r\n 20\r\n220.\r\n 30\r\n0.0\r\n 40\r\n2.0\r\n"
              "  1\r\nsong.srv\r\n  7\r\nITALICC\r\n  0\r\n"
              "TEXT\r\n8\r\n2\r\n 10\r\n4.25\r\n 20\r\n.15\r\n 30\r\n0.0\r\n 40\r\n2.0\r\n"
              "  1\r\nr\r\n 41\r\n1.2\r\n 51\r\n355.0\r\n  7\r\nMUM\r\n  0\r\n"
              "POLYLINE\r\n8\r\n3\r\n66\r\n1\r\n10\r\n0.0\r\n20\r\n0.0\r\n 30\r\n0.0\r\n"
              " 40\r\n0.25\r\n 41\r\n0.25\r\n  0\r\n"
              "VERTEX\r\n  8\r\n0\r\n 10\r\n1.\r\n 20\r\n2.\r\n 30\r\n0.0\r\n  0\r\n"
              "VERTEX\r\n  8\r\n0\r\n 10\r\n3.\r\n 20\r\n4.5\r\n 30\r\n0.0\r\n  0\r\n"
              "SEQEND\r\n  8\r\n0\r\n  0\r\n"
              "ENDSEC\r\n 0 \r\nEOF\r\n");
}

} // namespace
} // namespace tahrir::render
