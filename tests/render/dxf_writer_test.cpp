// The DXF back end: picture-format numbers and the exact token layout of each entity.

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

TEST(WriteDxf, DisabledDrawingWritesNothing) {
    DisplayList list;
    list.dxf.entities.push_back({DxfKind::Line, "1", 0, 0, 1, 1, 0, {}, 0, {}, {}});
    EXPECT_TRUE(WriteDxf(list).empty());
}

TEST(WriteDxf, EachEntityKeepsItsGroupCodes) {
    DisplayList list;
    list.dxf.enabled = true;
    list.dxf.titleX = 44;
    list.dxf.title = "song.srv";
    list.dxf.entities.push_back({DxfKind::Line, "1", 3, -14, 75.5, -14, 0, {}, 0, {}, {}});
    list.dxf.entities.push_back({DxfKind::Text, "2", 4.25, 0.15, 0, 0, 2, "r", 1.2, 355.0, {}});
    list.dxf.entities.push_back({DxfKind::Text, "3", 1, 1, 0, 0, 3, "b", 0.65, {}, 0.0});
    list.dxf.entities.push_back({DxfKind::Polyline, "3", 1, 2, 3, 4.5, 0, {}, 0, {}, {}});
    EXPECT_EQ(WriteDxf(list),
              " 0 \r\nSECTION\r\n 2 \r\nENTITIES\r\n 0 \r\n"
              "TEXT\r\n8\r\nfinger\r\n 10\r\n44.\r\n 20\r\n220.\r\n 30\r\n0.0\r\n 40\r\n2.0\r\n"
              "  1\r\nsong.srv\r\n  7\r\nITALICC\r\n  0\r\n"
              "LINE\r\n  8\r\n1\r\n 10\r\n3.\r\n 20\r\n-14.\r\n 30\r\n0.0\r\n"
              " 11\r\n75.5\r\n 21\r\n-14.\r\n 31\r\n0.0\r\n  0\r\n"
              "TEXT\r\n8\r\n2\r\n 10\r\n4.25\r\n 20\r\n.15\r\n 30\r\n0.0\r\n 40\r\n2.0\r\n"
              "  1\r\nr\r\n 41\r\n1.2\r\n 51\r\n355.0\r\n  7\r\nMUM\r\n  0\r\n"
              "TEXT\r\n8\r\n3\r\n 10\r\n1.\r\n 20\r\n1.\r\n 30\r\n0.0\r\n 40\r\n3.0\r\n"
              "  1\r\nb\r\n 41\r\n0.65\r\n 50\r\n.\r\n  7\r\nMUM\r\n  0\r\n"
              "POLYLINE\r\n8\r\n3\r\n66\r\n1\r\n10\r\n0.0\r\n20\r\n0.0\r\n 30\r\n0.0\r\n"
              " 40\r\n0.25\r\n 41\r\n0.25\r\n  0\r\n"
              "VERTEX\r\n  8\r\n0\r\n 10\r\n1.\r\n 20\r\n2.\r\n 30\r\n0.0\r\n  0\r\n"
              "VERTEX\r\n  8\r\n0\r\n 10\r\n3.\r\n 20\r\n4.5\r\n 30\r\n0.0\r\n  0\r\n"
              "SEQEND\r\n  8\r\n0\r\n  0\r\n"
              "ENDSEC\r\n 0 \r\nEOF\r\n");
}

} // namespace
} // namespace tahrir::render
