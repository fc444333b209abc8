#include "core/rhythm_pass.h"

namespace tahrir::core {

void RhythmPass(ScoreSheet&) {}

} // namespace tahrir::core
