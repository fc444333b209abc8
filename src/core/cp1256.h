#pragma once
// Code page 1256 <-> UTF-8. Score text stays in code page 1256; conversion is for display
// and for text typed by the user.

#include <string>
#include <string_view>

namespace tahrir::core {

std::string Cp1256ToUtf8(std::string_view cp1256);
// Appends the UTF-8 form of `cp1256` to `out`; plain ASCII is copied as it stands.
void AppendCp1256AsUtf8(std::string& out, std::string_view cp1256);
// The Persian yeh and the Persian digits take their code page 1256 forms; other
// characters with no code page 1256 form become '?'.
std::string Utf8ToCp1256(std::string_view utf8);

} // namespace tahrir::core
