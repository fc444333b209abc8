#pragma once
// The legacy text conversion of old score descriptions: the old Persian DOS code page
// (Iran System) into code page 1256.

#include <array>
#include <string>
#include <string_view>

namespace tahrir::core {

// Code page 1256 bytes for every old byte; a letter's contextual forms fold to the one
// letter, "lam-alef" becomes two letters, bytes 128-137 the digits "0"-"9".
const std::array<std::string_view, 256>& FarsiTextTable();

// Translates an old description byte by byte. "<" ends a line and becomes CR LF; in a
// line that holds Persian text the parentheses are swapped, since the old text stored
// them mirrored for right-to-left display.
std::string FarsiToCp1256(std::string_view legacy);

} // namespace tahrir::core
