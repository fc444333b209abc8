#pragma once
// The open dialog's preview of a score file, read from its head alone.

#include <string>
#include <string_view>

namespace tahrir::core {

// The description of a file of any generation (the oldest converted from the old code
// page), CR LF, then " { ", six characters of the last field read from its sixth, " } ".
std::string ScorePreview(std::string_view bytes);

} // namespace tahrir::core
