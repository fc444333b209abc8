#pragma once
// The sung note names: spoken by the speech synthesiser on one pitch, then brought to the
// exact pitch of their step.

#include <string>
#include <vector>

namespace tahrir::wavegen {

inline constexpr int kSyllableRate = 22050;

// "Do" .. "Si" at `midiPitch`; empty with `error` set when the synthesiser fails.
std::vector<float> SungSyllable(const std::string& name, double midiPitch, std::string& error);

} // namespace tahrir::wavegen
