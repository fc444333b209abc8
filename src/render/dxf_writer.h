#pragma once
// The DXF back end of the display list: the CAD drawing the walk recorded, one token per
// line, group codes with their blanks, numbers in the picture-string formats of the
// original drawing.

#include <string>

#include "render/display_list.h"

namespace tahrir::render {

// A number in a "####.##" style format: no leading zero, the point always written,
// trailing zeros of the fraction dropped ("3.", ".5", "-1.25").
std::string VbFormat(double value, int decimals);

// The whole DXF stream of a list: the skeleton, the title, each entity in the order the
// walk recorded it, and the end of the file. Empty when the drawing is not enabled.
std::string WriteDxf(const DisplayList& list);

} // namespace tahrir::render
