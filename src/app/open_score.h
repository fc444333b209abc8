#pragma once
// The start that every command and the window share: the data folder prepared, the
// session started, and a score opened with the one text the user is shown on failure.

#include <optional>
#include <string>

#include "core/document.h"
#include "core/load_file.h"
#include "core/page_store.h"

namespace tahrir::app {

// The session of one run in its data folder; `error` tells why the folder is unusable.
struct Workspace {
    core::Session session;
    std::string error;
    bool ok() const { return error.empty(); }
};

// Prepares the data folder (the one given, else the default) and starts the session there.
Workspace StartWorkspace(const std::optional<std::string>& appFolder);

// The open command on a chosen path. On failure the document is left as it was and
// `failure` tells why, naming the path.
struct OpenedScore {
    core::OpenResult result;
    std::string failure;
    bool ok() const { return failure.empty(); }
};
OpenedScore OpenScore(core::Document& doc, const core::Session& session, core::PageStore* store,
                      const std::string& path);

} // namespace tahrir::app
