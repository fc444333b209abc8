#pragma once
// A fresh temporary folder per test, removed afterwards, and small file helpers.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tahrir::test {

class TempFolder {
public:
    TempFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "tahrir-test-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

inline void WriteBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace tahrir::test
