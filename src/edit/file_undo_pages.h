#pragma once
// The undo pages in the store file "tmp.ctz": page p, record i lies at record number
// 2049 p + i + 1 of 32 bytes. Pages beyond those a load fills simply extend the file, so
// the depth of undo ends only with the disk.

#include <filesystem>
#include <fstream>
#include <string>

#include "edit/services.h"

namespace tahrir::edit {

class FileUndoPages : public UndoPages {
public:
    explicit FileUndoPages(std::filesystem::path file);

    void writePage(int page, const std::vector<std::string>& records) override;
    std::string readRecord(int page, int index) const override;

    // Why the last operation failed; empty after a success.
    const std::string& error() const { return m_error; }

private:
    bool open() const;

    std::filesystem::path m_file;
    mutable std::fstream m_stream;
    mutable std::string m_error;
};

} // namespace tahrir::edit
