#pragma once
// "tmp.ctz": the undo history as whole-sheet snapshots in a file of 32-byte records.

#include <cstdint>
#include <filesystem>
#include <string>

#include "core/score_sheet.h"

namespace tahrir::core {

class PageStore {
public:
    static constexpr int Pages = 101;              // pages 0..100
    static constexpr int RecordsPerPage = SheetSize; // one record per sheet index 0..2048
    static constexpr std::uint64_t PageBytes = std::uint64_t(RecordsPerPage) * RecordLength;
    static constexpr std::uint64_t FileBytes = PageBytes * Pages; // 6,622,368
    static constexpr int MaxUndoPage = 1000000; // undo goes beyond page 100, up to here

    // The store "tmp.ctz" in the data folder.
    static std::filesystem::path PathIn(const std::filesystem::path& appFolder);
    // 1-based record number of sheet index `line` on page `page`.
    static std::uint64_t RecordNumber(int page, int line);

    explicit PageStore(std::filesystem::path file) : m_file(std::move(file)) {}

    const std::filesystem::path& file() const { return m_file; }

    // Writes the sheet as page `page`: every index 0..2048 through Scratch, index 0
    // holding `lineCount` as left-aligned text.
    bool writePage(int page, const ScoreSheet& sheet, const std::string& lineCount);
    bool writePage(int page, const ScoreSheet& sheet);
    // Reads page `page` into the sheet; LastLine comes from the page's record 1.
    bool readPage(int page, ScoreSheet& sheet) const;
    // Truncates the store and writes every page from the sheet, as after a load.
    bool fillAll(const ScoreSheet& sheet, const std::string& lineCount);
    // Empties the store, as the exit path does.
    bool clear();

    // Why the last operation failed; empty after a success.
    const std::string& error() const { return m_error; }

private:
    std::string pageImage(const ScoreSheet& sheet, const std::string& lineCount) const;
    bool fail(const std::string& what) const;

    std::filesystem::path m_file;
    mutable std::string m_error;
};

} // namespace tahrir::core
