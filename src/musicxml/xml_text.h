#pragma once
// Small helpers for writing XML text: escaping, numbers and the direction of a text.

#include <string>
#include <string_view>

namespace tahrir::musicxml {

// UTF-8 text as XML character data: markup characters escaped, control characters
// that XML 1.0 forbids dropped.
std::string Escape(std::string_view utf8);

// A number without trailing zeros: "1", "-0.5", "0.3125".
std::string Decimal(double value);

// True when the text holds a right-to-left letter (Arabic script or Hebrew).
bool IsRightToLeft(std::string_view utf8);

// ` dir="rtl"` for right-to-left text, otherwise empty.
std::string DirAttribute(std::string_view utf8);

// <name>escaped text</name>.
std::string Element(std::string_view name, std::string_view utf8);

} // namespace tahrir::musicxml
