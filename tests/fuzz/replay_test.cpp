// Every input the fuzzers once crashed on, kept under regressions/TARGET/, replayed through
// the target's own entry (built here with the project's compiler, without the fuzzer).

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

#include "fuzz_support.h"

using Entry = int (*)(const std::uint8_t*, std::size_t);
#define TAHRIR_FUZZ_TARGET(name) extern "C" int name##_entry(const std::uint8_t*, std::size_t);
#include "replay_targets.h"
#undef TAHRIR_FUZZ_TARGET

namespace {

struct Target {
    const char* name;
    Entry entry;
};

const Target kTargets[] = {
#define TAHRIR_FUZZ_TARGET(name) {#name, &name##_entry},
#include "replay_targets.h"
#undef TAHRIR_FUZZ_TARGET
};

void PrintTo(const Target& target, std::ostream* out) { *out << target.name; }

class FuzzReplay : public testing::TestWithParam<Target> {};

TEST_P(FuzzReplay, EveryKeptInputPasses) {
    const auto folder = std::filesystem::path(TAHRIR_FUZZ_REGRESSIONS) / GetParam().name;
    std::error_code ec;
    for (const auto& file : std::filesystem::directory_iterator(folder, ec)) {
        SCOPED_TRACE(file.path().string());
        std::ifstream in(file.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        EXPECT_EQ(GetParam().entry(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplay, testing::ValuesIn(kTargets),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
