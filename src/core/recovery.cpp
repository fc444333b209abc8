#include "core/recovery.h"

#include <fstream>
#include <iterator>

#include "core/score_writer.h"

namespace tahrir::core {

namespace fs = std::filesystem;

fs::path SnapshotNotePath(const fs::path& storeFile) {
    fs::path note = storeFile;
    note += ".note";
    return note;
}

void NoteSnapshot(const fs::path& storeFile, int page, const std::string& fileName) {
    std::ofstream out(SnapshotNotePath(storeFile), std::ios::binary | std::ios::trunc);
    out << page << '\n' << fileName << '\n';
}

void ForgetSnapshots(const fs::path& storeFile) {
    std::error_code ignored;
    fs::remove(SnapshotNotePath(storeFile), ignored);
}

std::optional<LeftSnapshot> FindLeftSnapshot(const PageStore& store) {
    std::error_code ec;
    const std::uintmax_t size = fs::file_size(store.file(), ec);
    if (ec || size == 0) return std::nullopt;
    std::ifstream in(SnapshotNotePath(store.file()), std::ios::binary);
    LeftSnapshot left;
    if (!(in >> left.page) || left.page < 0 || left.page > PageStore::MaxUndoPage) return std::nullopt;
    in.ignore(1);
    std::getline(in, left.fileName);
    // The page's first record (its line count) must lie inside the store.
    if (PageStore::RecordNumber(left.page, 0) * RecordLength > size) return std::nullopt;
    return left;
}

LoadResult RestoreSnapshot(Document& doc, const Session& session, PageStore& store,
                           const LeftSnapshot& snapshot) {
    Document recovered;
    if (!store.readPage(snapshot.page, recovered.Sheet)) {
        LoadResult failed;
        failed.status = LoadStatus::Failed;
        failed.message = "Can't read the undo store: " + store.error();
        return failed;
    }
    Document original;
    std::ifstream file(snapshot.fileName, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file && ParseScore(bytes, false, original).loaded()) recovered.Description = original.Description;
    // The snapshot goes through a score file of its own, so that it is read exactly as a
    // load reads a file.
    const fs::path copy = SnapshotNotePath(store.file()).replace_extension(".srv");
    const SaveResult written = SaveImage(recovered, copy);
    if (!written.ok) {
        LoadResult failed;
        failed.status = LoadStatus::Failed;
        failed.message = written.message;
        return failed;
    }
    Document loaded;
    loaded.CurrentFileName = copy.string();
    LoadResult result = Openp(loaded, session, &store);
    std::error_code ignored;
    fs::remove(copy, ignored);
    if (!result.loaded()) return result;
    loaded.CurrentFileName = snapshot.fileName.empty() ? "Untitled" : snapshot.fileName;
    loaded.DirtyFlag = true;
    doc = std::move(loaded);
    return result;
}

} // namespace tahrir::core
