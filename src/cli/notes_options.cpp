#include "cli/notes_options.h"

#include <cmath>
#include <string>

#include "core/dastgah_scale.h"

namespace tahrir::cli {
std::optional<transcribe::NotesOptions> ParseNotesOptions(Args& args) {
    transcribe::NotesOptions o;
    if (const auto g = args.value("--grid")) {
        const auto grid = transcribe::GridNamed(*g);
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
    o.mask = core::BuildScaleMask(args.value("--signature").value_or(""));
    return o;
}

} // namespace tahrir::cli
