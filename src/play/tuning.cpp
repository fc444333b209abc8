#include "play/tuning.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <optional>

#include "play/midi_out.h"
#include "play/pitch_table.h"

namespace tahrir::play {

namespace {

// One field: a quoted text runs to its closing quote; a plain one to a comma or line end.
std::optional<std::string> NextField(std::string_view bytes, std::size_t& pos) {
    while (pos < bytes.size() && (bytes[pos] == ' ' || bytes[pos] == '\r' || bytes[pos] == '\n'))
        ++pos;
    if (pos >= bytes.size()) return std::nullopt;
    std::string field;
    if (bytes[pos] == '"') {
        const std::size_t close = bytes.find('"', pos + 1);
        const std::size_t end = close == std::string_view::npos ? bytes.size() : close;
        field = std::string(bytes.substr(pos + 1, end - pos - 1));
        pos = close == std::string_view::npos ? bytes.size() : close + 1;
        while (pos < bytes.size() && bytes[pos] == ' ')
            ++pos;
    } else {
        const std::size_t end = bytes.find_first_of(",\r\n", pos);
        const std::size_t stop = end == std::string_view::npos ? bytes.size() : end;
        field = std::string(bytes.substr(pos, stop - pos));
        while (!field.empty() && field.back() == ' ')
            field.pop_back();
        pos = stop;
    }
    if (pos < bytes.size() && bytes[pos] == ',') ++pos;
    return field;
}

// The five dastgah rows in order: sharp, sori, natural, koron, flat.
constexpr char kRowLetters[5] = {'D', 'S', ' ', 'K', 'B'};

} // namespace

TuningFile ParseTuning(std::string_view bytes) {
    TuningFile result;
    std::size_t pos = 0;
    while (auto name = NextField(bytes, pos)) {
        auto line = NextField(bytes, pos);
        if (!line) {
            result.complete = false;
            break;
        }
        result.entries.push_back({std::move(*name), std::move(*line)});
    }
    return result;
}

TuningFile LoadTuning(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        TuningFile none;
        none.opened = false;
        return none;
    }
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return ParseTuning(bytes);
}

bool ApplyScale(core::ScoreSheet& sheet, const TuningFile& tuning, int chosen) {
    if (chosen < 0 || chosen >= static_cast<int>(tuning.entries.size())) return false;
    sheet.setLine(1, tuning.entries[static_cast<std::size_t>(chosen)].line + "  ");
    return true;
}

int DastgahRow(char letter) {
    for (int row = 0; row < 5; ++row)
        if (kRowLetters[row] == letter) return row;
    return letter == 'N' ? 2 : -1;
}

void SetStepLetters(core::ScoreSheet& sheet, const std::array<int, 7>& rows) {
    core::ScoreLine& head = sheet[1];
    for (int s = 0; s < 7; ++s) {
        const int row = rows[static_cast<std::size_t>(s)];
        if (row >= 0 && row < 5) head.setField(s + 1, std::string(1, kRowLetters[row]));
    }
}

void BaseFrequencyTuner::apply(MidiOut& midi, double hertz) {
    const double ratio = hertz / 440;
    // Bend arguments are whole numbers: the centre is rounded half to even.
    const auto whole = [](double v) { return static_cast<int>(std::nearbyint(v)); };
    if (ratio < 1.0595 && ratio > 0.923) {
        // Int rounds down, also below 440 Hz where the logarithm is negative.
        BendCentre = std::floor(std::log10(ratio) * 1000) / 0.75 + 64;
        midi.MidiPitchBend(0, whole(BendCentre + 16), KoronChannel);
        midi.MidiPitchBend(0, whole(BendCentre), NaturalChannel);
    }
    midi.MidiPitchBend(0, whole(BendCentre - 16), SoriChannel);
}

int StandardTuningTranspose() {
    return TransposeCentre;
}

} // namespace tahrir::play
