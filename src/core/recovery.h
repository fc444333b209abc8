#pragma once
// Recovery from the undo store: a run that ends normally empties "tmp.ctz", so a store that
// still holds pages at start was left by a run that did not. A small note beside the store
// tells which page was written last and which file the score came from.

#include <filesystem>
#include <optional>
#include <string>

#include "core/document.h"
#include "core/page_store.h"
#include "core/score_reader.h"
#include "core/session.h"

namespace tahrir::core {

// The note beside the store: the last page written, then the score's file name.
std::filesystem::path SnapshotNotePath(const std::filesystem::path& storeFile);

// Records that `page` was just written for the score of `fileName`.
void NoteSnapshot(const std::filesystem::path& storeFile, int page, const std::string& fileName);
// A new history (a load, a new score) or a normal end: the note goes.
void ForgetSnapshots(const std::filesystem::path& storeFile);

struct LeftSnapshot {
    int page = 0;
    std::string fileName; // the file the score came from; may be empty or gone
};

// The last snapshot of a run that did not end normally: the store is not empty and the
// note names a page the store holds. nullopt otherwise.
std::optional<LeftSnapshot> FindLeftSnapshot(const PageStore& store);

// Loads the snapshot as an unsaved score named after its file, through the same steps as a
// load (the store then starts a new history). The description comes from the file when it
// can still be read.
LoadResult RestoreSnapshot(Document& doc, const Session& session, PageStore& store,
                           const LeftSnapshot& snapshot);

} // namespace tahrir::core
