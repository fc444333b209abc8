// The DXF back end's picture-format numbers; the token layout of each entity is pinned by
// the DXF golden files.

#include <gtest/gtest.h>

#include "render/dxf_writer.h"

namespace tahrir::render {
namespace {

TEST(VbFormat, PictureFormatDropsLeadingAndTrailingZeros) {
    const struct {
        double value;
        int decimals;
        const char* text;
    } cases[] = {{3.456, 2, "3.46"},
                 {0.5, 2, ".5"},
                 {3, 2, "3."},
                 {0, 2, "."},
                 {-14, 2, "-14."},
                 {-0.25, 2, "-.25"},
                 {220, 2, "220."},
                 {355, 1, "355."},
                 {1234.5, 2, "1234.5"},
                 // Halves round away from zero; a value that rounds to zero loses its sign.
                 {0.125, 2, ".13"},
                 {-0.001, 2, "."}};
    for (const auto& c : cases)
        EXPECT_EQ(VbFormat(c.value, c.decimals), c.text) << c.value;
}

} // namespace
} // namespace tahrir::render
