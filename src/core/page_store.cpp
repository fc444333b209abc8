#include "core/page_store.h"

#include <algorithm>
#include <cstring>
#include <fstream>

#include "core/recovery.h"
#include "core/text_input.h"

namespace tahrir::core {

std::filesystem::path PageStore::PathIn(const std::filesystem::path& appFolder) {
    return appFolder / "tmp.ctz";
}

std::uint64_t PageStore::RecordNumber(int page, int line) {
    return std::uint64_t(line) + std::uint64_t(page) * RecordsPerPage + 1;
}

bool PageStore::fail(const std::string& what) const {
    m_error = what + " " + m_file.string();
    return false;
}

std::string PageStore::pageImage(const ScoreSheet& sheet, const std::string& lineCount) const {
    std::string image(PageBytes, ' ');
    for (int i = 0; i < RecordsPerPage; ++i) {
        const std::string& text = i == 0 ? lineCount : sheet[i].text();
        const std::size_t n = std::min<std::size_t>(text.size(), RecordLength);
        std::memcpy(image.data() + std::size_t(i) * RecordLength, text.data(), n);
    }
    return image;
}

bool PageStore::writePage(int page, const ScoreSheet& sheet, const std::string& lineCount) {
    m_error.clear();
    if (page < 0 || page >= Pages) return fail("no page " + std::to_string(page) + " in");
    std::fstream out(m_file, std::ios::binary | std::ios::in | std::ios::out);
    if (!out) out.open(m_file, std::ios::binary | std::ios::out); // a store not yet made
    if (!out) return fail("cannot open");
    const std::string image = pageImage(sheet, lineCount);
    out.seekp(static_cast<std::streamoff>((RecordNumber(page, 0) - 1) * RecordLength));
    out.write(image.data(), static_cast<std::streamsize>(image.size()));
    if (!out.flush()) return fail("cannot write");
    return true;
}

bool PageStore::writePage(int page, const ScoreSheet& sheet) {
    return writePage(page, sheet, std::to_string(sheet.LastLine));
}

bool PageStore::readPage(int page, ScoreSheet& sheet) const {
    m_error.clear();
    // Undo may have written pages beyond the 101 of a load; a page's missing tail (the
    // end of the file after a short last page) reads as blanks.
    if (page < 0 || page > MaxUndoPage) return fail("no page " + std::to_string(page) + " in");
    std::ifstream in(m_file, std::ios::binary);
    if (!in) return fail("cannot open");
    std::string image(PageBytes, ' ');
    in.seekg(static_cast<std::streamoff>((RecordNumber(page, 0) - 1) * RecordLength));
    in.read(image.data(), static_cast<std::streamsize>(image.size()));
    if (in.gcount() < static_cast<std::streamsize>(RecordLength))
        return fail("page " + std::to_string(page) + " is missing from");
    std::replace(image.begin(), image.end(), '\0', ' ');
    // The count in record 1 is not trusted beyond the sheet's bounds.
    const double count = Val(std::string_view(image).substr(0, RecordLength));
    for (int i = 1; i < RecordsPerPage; ++i)
        sheet.setLine(i, image.substr(std::size_t(i) * RecordLength, RecordLength));
    sheet.setLine(0, image.substr(0, RecordLength));
    sheet.LastLine = count < 0 ? 0 : count > MaxLines ? MaxLines : static_cast<int>(count);
    return true;
}

bool PageStore::fillAll(const ScoreSheet& sheet, const std::string& lineCount) {
    m_error.clear();
    std::ofstream out(m_file, std::ios::binary | std::ios::trunc);
    if (!out) return fail("cannot create");
    ForgetSnapshots(m_file); // a new history begins
    const std::string image = pageImage(sheet, lineCount);
    for (int page = 0; page < Pages; ++page)
        out.write(image.data(), static_cast<std::streamsize>(image.size()));
    if (!out.flush()) return fail("cannot write");
    return true;
}

bool PageStore::clear() {
    m_error.clear();
    ForgetSnapshots(m_file);
    std::ofstream out(m_file, std::ios::binary | std::ios::trunc);
    if (!out) return fail("cannot empty");
    return true;
}

} // namespace tahrir::core
