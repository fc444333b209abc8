#include "fingering/sounding_notes.h"

#include <algorithm>

#include "core/line_kind.h"
#include "core/line_view.h"
#include "play/player.h"

namespace tahrir::fingering {

namespace {

constexpr int kMaxExtraWalks = 32;

// Keeps the first resolution of each line.
class NoteCatcher : public play::PlayObserver {
public:
    explicit NoteCatcher(std::vector<double>& notes) : m_notes(notes) {}
    void lineSounded(int) override {}
    void noteResolved(int line, int key, int channel) override {
        if (line > 0 && static_cast<std::size_t>(line) < m_notes.size() &&
            m_notes[static_cast<std::size_t>(line)] == 0 && key > 0)
            m_notes[static_cast<std::size_t>(line)] = SoundingPitch(key, channel);
    }

private:
    std::vector<double>& m_notes;
};

bool IsPitchedNote(const core::ScoreLine& line, int index) {
    if (core::ClassifyLine(line.text(), index) != core::LineKind::NoteLine) return false;
    const int step = core::ReadNote(line).step;
    return step >= 1 && step <= 7;
}

} // namespace

double SoundingPitch(int key, int channel) {
    if (channel == play::KoronChannel) return key - 0.5;
    if (channel == play::SoriChannel) return key + 0.5;
    return key;
}

void SoundingNotes::compute(const core::ScoreSheet& sheet, int transpose) {
    const int last = std::min(sheet.LastLine, core::MaxLines);
    m_notes.assign(static_cast<std::size_t>(std::max(last, 0)) + 1, 0);
    m_noteLines.clear();
    for (int i = 4; i <= last; ++i)
        if (IsPitchedNote(sheet[i], i)) m_noteLines.push_back(i);

    play::Player player(nullptr);
    player.startUp();
    NoteCatcher catcher(m_notes);
    player.notes().setObserver(&catcher);
    player.controls().Transpose = transpose;
    play::RunOptions options;
    options.EndAtFin = true;
    player.playVirtual(sheet, options);
    // Each further walk starts at the first line still unresolved; a line off the pitch
    // table stays unresolved, so the number of walks is bounded.
    int walks = 0;
    for (const int line : m_noteLines) {
        if (m_notes[static_cast<std::size_t>(line)] != 0 || ++walks > kMaxExtraWalks) continue;
        options.SelectionStartLine = line;
        options.SelectionEndLine = last + 1;
        player.playVirtual(sheet, options);
    }
    player.notes().setObserver(nullptr);
}

std::optional<double> SoundingNotes::at(int line) const {
    if (line < 0 || static_cast<std::size_t>(line) >= m_notes.size() ||
        m_notes[static_cast<std::size_t>(line)] == 0)
        return std::nullopt;
    return m_notes[static_cast<std::size_t>(line)];
}

} // namespace tahrir::fingering
