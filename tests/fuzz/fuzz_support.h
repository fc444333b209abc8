#pragma once
// Shared by the libFuzzer targets: a scratch folder for the readers that take files, and an
// editor on a sheet made from fuzz bytes.

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "core/score_reader.h"
#include "edit/basic_layout.h"
#include "edit/editor.h"

namespace tahrir::fuzz {

// One folder for the whole fuzzing process, named after it and removed when it ends.
inline const std::filesystem::path& ScratchFolder() {
    struct Folder {
        std::filesystem::path path;
        ~Folder() {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
    };
    static const Folder folder{[] {
        auto path = std::filesystem::temp_directory_path() / ("tahrir-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
        return path;
    }()};
    return folder.path;
}

inline std::filesystem::path WriteScratch(const std::string& name, std::string_view bytes) {
    const auto path = ScratchFolder() / name;
    std::ofstream(path, std::ios::binary | std::ios::trunc).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

// Takes bytes from the front of the input; zeros once it has run out.
class ByteReader {
public:
    ByteReader(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    std::uint8_t byte() { return m_pos < m_size ? m_data[m_pos++] : 0; }
    int number(int below) { return below <= 0 ? 0 : (byte() << 8 | byte()) % below; }
    std::string_view rest() { return {reinterpret_cast<const char*>(m_data + m_pos), m_size - m_pos}; }
    std::string_view take(std::size_t n) {
        const std::size_t k = std::min(n, m_size - m_pos);
        const std::string_view out(reinterpret_cast<const char*>(m_data + m_pos), k);
        m_pos += k;
        return out;
    }
    bool done() const { return m_pos >= m_size; }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_pos = 0;
};

class SilentAuditioner : public edit::Auditioner {
public:
    void soundNote(const edit::NoteSound&) override {}
};

// Input boxes answered from the fuzz bytes.
class FuzzHost : public edit::EditorHost {
public:
    explicit FuzzHost(ByteReader& in) : m_in(in) {}
    std::optional<std::string> inputBox(const std::string&, const std::string&) override {
        const int n = m_in.byte() % 12;
        if (n == 0) return std::nullopt;
        return std::string(m_in.take(static_cast<std::size_t>(n - 1)));
    }
    void messageBox(const std::string&) override {}

private:
    ByteReader& m_in;
};

// An editor in edit mode on a score read from `score` (lines cut to 32 characters, as a
// snapshot stores them), with its history in memory.
struct EditorRig {
    core::Document doc;
    edit::BasicLayout layout;
    SilentAuditioner audio;
    edit::MemoryClipboard clipboard;
    FuzzHost host;
    edit::MemoryUndoPages pages;
    std::optional<edit::Editor> editor;

    EditorRig(std::string_view score, ByteReader& in) : host(in) {
        try {
            core::ParseScore(score, false, doc);
        } catch (const core::SheetIndexError&) {
            doc = core::Document{};
        }
        for (int i = 0; i <= doc.Sheet.LastLine; ++i)
            if (doc.Sheet[i].text().size() > core::RecordLength)
                doc.Sheet.setLine(i, doc.Sheet[i].text().substr(0, core::RecordLength));
        editor.emplace(doc, edit::EditorServices{&layout, &audio, &clipboard, &host, &pages}, ScratchFolder());
        editor->documentReplaced();
        editor->editorClick();
    }
};

} // namespace tahrir::fuzz
