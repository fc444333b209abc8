// libFuzzer entry: any bytes as "Kookha.tun", each scale applied to a small score.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "play/tuning.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir;
    const play::TuningFile tuning = play::ParseTuning(std::string_view(reinterpret_cast<const char*>(data), size));
    for (int chosen = 0; chosen < 4; ++chosen) {
        core::ScoreSheet sheet;
        sheet.LastLine = 4;
        sheet.setLine(1, "       G  ");
        sheet.setLine(2, "TEMPO 60");
        sheet.setLine(3, "RHYTM4/4");
        sheet.setLine(4, "13  8    ");
        // The entry's text and two blanks become line 1 whole; a save cuts it to 32.
        if (play::ApplyScale(sheet, tuning, chosen) &&
            sheet[1].text() != tuning.entries[static_cast<std::size_t>(chosen)].line + "  ")
            __builtin_trap();
    }
    return 0;
}
