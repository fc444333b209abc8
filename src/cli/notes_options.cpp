#include "cli/notes_options.h"

#include <cmath>
#include <string>

namespace tahrir::cli {
namespace {

// Natural positions of Do..Si on the 27-position grid.
constexpr int kNatural[7] = {1, 5, 9, 11, 15, 19, 23};

// The degrees of seven signature letters: each step's natural cleared and its letter's
// position set ("B" two below, "K" one below, "S" one above, "D" two above).
transcribe::DegreeMask MaskOfLetters(const std::string& letters) {
    transcribe::DegreeMask mask{};
    for (int n : kNatural) mask[static_cast<std::size_t>(n)] = -1;
    mask[25] = -1;
    for (std::size_t s = 0; s < 7 && s < letters.size(); ++s) {
        int shift = 0;
        switch (letters[s]) {
        case 'B': shift = -2; break;
        case 'K': shift = -1; break;
        case 'S': shift = 1; break;
        case 'D': shift = 2; break;
        default: continue;
        }
        const int n = kNatural[s];
        mask[static_cast<std::size_t>(n)] = 0;
        const int at = n + shift;
        mask[static_cast<std::size_t>((at + 24) % 24)] = -1;
        if (at < 1 || at + 24 <= 26) mask[static_cast<std::size_t>(at + 24)] = -1;
    }
    return mask;
}

} // namespace

std::optional<transcribe::NotesOptions> ParseNotesOptions(Args& args) {
    transcribe::NotesOptions o;
    if (const auto g = args.value("--grid")) {
        const auto grid = transcribe::NoteGridOf(*g);
        if (!grid) return std::nullopt;
        o.grid = *grid;
    }
    const auto base = args.number("--base");
    const auto koron = args.number("--koron");
    const auto sori = args.number("--sori");
    if (!args.ok()) return std::nullopt;
    if (base && !(*base >= 100 && *base <= 1000)) return std::nullopt;
    if (base) o.tuning.baseHz = *base;
    // Koron lies under its natural whatever the sign it is given with.
    if (koron) o.tuning.koronCents = std::abs(*koron);
    if (sori) o.tuning.soriCents = std::abs(*sori);
    if (o.tuning.koronCents > 100 || o.tuning.soriCents > 100) return std::nullopt;
    std::string letters = args.value("--signature").value_or("");
    o.mask = MaskOfLetters(letters);
    return o;
}

} // namespace tahrir::cli
