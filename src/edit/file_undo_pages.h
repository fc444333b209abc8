#pragma once
// The undo pages in the store file "tmp.ctz": page p, record i lies at record number
// 2049 p + i + 1 of 32 bytes. Pages beyond those a load fills simply extend the file, so
// the depth of undo ends only with the disk.

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "edit/services.h"

namespace tahrir::edit {

class FileUndoPages : public UndoPages {
public:
    explicit FileUndoPages(std::filesystem::path file);

    void writePage(int page, const std::vector<std::string>& records) override;
    std::string readRecord(int page, int index) const override;

    // After each page written, notes the page beside the store with the score's file name
    // (core/recovery.h), so that the work of a run that does not end normally is not lost.
    void noteSnapshotsFor(std::function<std::string()> fileName) { m_fileName = std::move(fileName); }

    // Why the last operation failed; empty after a success.
    const std::string& error() const { return m_error; }

private:
    bool open() const;

    std::filesystem::path m_file;
    mutable std::fstream m_stream;
    mutable std::string m_error;
    std::function<std::string()> m_fileName;
};

} // namespace tahrir::edit
