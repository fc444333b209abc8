#include "play/pitch_table.h"

namespace tahrir::play {

void StepPitchTable::rebuild(int base) {
    static constexpr int kSteps[7] = {2, 4, 5, 7, 9, 11, 12};
    m_base = base;
    m_keys[1] = base;
    for (int octave = 0; octave <= 6; ++octave) {
        const int first = m_keys[static_cast<std::size_t>(octave * 7 + 1)];
        for (int i = 0; i < 7; ++i) {
            const auto index = static_cast<std::size_t>(octave * 7 + 2 + i);
            if (index <= StepPitchCount) m_keys[index] = first + kSteps[i];
        }
    }
}

std::optional<int> StepPitchTable::at(int index) const {
    if (index < 1 || index > StepPitchCount) return std::nullopt;
    return m_keys[static_cast<std::size_t>(index)];
}

} // namespace tahrir::play
