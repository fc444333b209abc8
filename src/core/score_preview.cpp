#include "core/score_preview.h"

#include "core/farsi_text.h"
#include "core/score_reader.h"
#include "core/text_input.h"

namespace tahrir::core {

std::string ScorePreview(std::string_view bytes) {
    TextInput in(bytes);
    std::string last = in.readField();
    std::string description;
    if (last.rfind(CurrentMagic, 0) == 0) {
        last = in.readField();
        description = last;
    } else {
        description = FarsiToCp1256(last);
    }
    if (description == GenerationMarker) {
        last = in.readField();
        description = last;
    }
    const std::string tail = last.size() > 5 ? last.substr(5, 6) : std::string();
    return description + "\r\n { " + tail + " } ";
}

} // namespace tahrir::core
