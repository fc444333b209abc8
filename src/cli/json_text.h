#pragma once
// JSON string literals for the commands that print JSON.

#include <string>
#include <string_view>

namespace tahrir::cli {

// A JSON string literal of UTF-8 text: quotes, backslashes and control characters escaped.
std::string JsonString(std::string_view utf8);

} // namespace tahrir::cli
