#include "edit/file_undo_pages.h"

#include "core/page_store.h"
#include "core/recovery.h"

namespace tahrir::edit {

namespace {
std::streamoff Offset(int page, int index) {
    return static_cast<std::streamoff>((core::PageStore::RecordNumber(page, index) - 1) *
                                       core::RecordLength);
}
} // namespace

FileUndoPages::FileUndoPages(std::filesystem::path file) : m_file(std::move(file)) {}

bool FileUndoPages::open() const {
    if (m_stream.is_open()) return true;
    m_stream.open(m_file, std::ios::binary | std::ios::in | std::ios::out);
    if (!m_stream.is_open())
        m_stream.open(m_file, std::ios::binary | std::ios::in | std::ios::out | std::ios::trunc);
    if (!m_stream.is_open()) m_error = "cannot open " + m_file.string();
    return m_stream.is_open();
}

void FileUndoPages::writePage(int page, const std::vector<std::string>& records) {
    m_error.clear();
    if (page < 0 || records.size() > static_cast<std::size_t>(core::SheetSize) || !open()) return;
    std::string image;
    image.reserve(records.size() * core::RecordLength);
    for (const std::string& record : records)
        image += core::Scratch(record);
    m_stream.clear();
    m_stream.seekp(Offset(page, 0));
    m_stream.write(image.data(), static_cast<std::streamsize>(image.size()));
    if (!m_stream.flush()) m_error = "cannot write " + m_file.string();
    else if (m_fileName) core::NoteSnapshot(m_file, page, m_fileName());
}

std::string FileUndoPages::readRecord(int page, int index) const {
    std::string record(core::RecordLength, ' ');
    if (page < 0 || index < 0 || index > core::MaxLines || !open()) return record;
    m_stream.clear();
    m_stream.seekg(Offset(page, index));
    m_stream.read(record.data(), core::RecordLength);
    // A hole or the end of the file reads as blanks.
    const auto got = m_stream.gcount();
    for (auto i = static_cast<std::size_t>(got < 0 ? 0 : got); i < record.size(); ++i)
        record[i] = ' ';
    for (char& c : record)
        if (c == '\0') c = ' ';
    return record;
}

} // namespace tahrir::edit
