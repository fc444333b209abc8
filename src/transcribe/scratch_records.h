#pragma once
// The scratch files' text: one record a line, each number a quoted field.

#include <filesystem>
#include <initializer_list>
#include <string>

namespace tahrir::transcribe {

// Appends "n1","n2",... and a line end; whole numbers without a decimal point.
void AppendRecord(std::string& out, std::initializer_list<double> numbers);

// Writes the text as the whole file; false when it cannot be written.
bool WriteScratch(const std::filesystem::path& file, const std::string& text);

} // namespace tahrir::transcribe
