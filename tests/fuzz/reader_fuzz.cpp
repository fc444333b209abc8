// libFuzzer entry: any bytes as a score file.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/score_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir::core;
    static Document doc;
    doc = Document{};
    try {
        ParseScore(std::string_view(reinterpret_cast<const char*>(data), size), false, doc);
    } catch (const SheetIndexError&) {
        // A file with too many lines is refused, not a fault.
    }
    return 0;
}
