#pragma once
// A fresh temporary folder per test, removed afterwards, and small file helpers.

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tahrir::test {

class TempFolder {
public:
    TempFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "tahrir-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot make a temporary folder from " + pattern);
        m_path = pattern;
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const {
        return m_path / name;
    }

private:
    std::filesystem::path m_path;
};

inline void WriteBytes(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline void WriteBytes(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
    WriteBytes(file, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

// The whole file as text; empty when it cannot be read.
inline std::string ReadBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline std::vector<std::uint8_t> ReadByteVector(const std::filesystem::path& file) {
    const std::string bytes = ReadBytes(file);
    return {bytes.begin(), bytes.end()};
}

} // namespace tahrir::test
