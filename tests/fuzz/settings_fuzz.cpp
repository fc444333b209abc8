// libFuzzer entry: any bytes as "initialize.vel" and as "RecentList.TXT", read, and the
// recent list rewritten with a new path first.

#include <cstddef>
#include <cstdint>

#include "core/load_file.h"
#include "core/session.h"
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    (void)core::ReadCalibration(fuzz::WriteScratch("initialize.vel", bytes));
    fuzz::WriteScratch(core::RecentListName, bytes);
    if (core::ReadRecentList(fuzz::ScratchFolder()).size() > core::RecentListSize) __builtin_trap();
    core::UpdateRecentList(fuzz::ScratchFolder(), "/scores/new.srv");
    const auto after = core::ReadRecentList(fuzz::ScratchFolder());
    if (after.empty() || after.front() != "/scores/new.srv") __builtin_trap();
    return 0;
}
