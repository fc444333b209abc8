#include "app/open_score.h"

#include <exception>

#include "core/app_folder.h"
#include "core/session.h"

namespace tahrir::app {

Workspace StartWorkspace(const std::optional<std::string>& appFolder) {
    Workspace w;
    const core::AppFolderResult folder = core::PrepareAppFolder(appFolder);
    w.error = folder.error;
    if (w.ok()) core::StartSession(w.session, folder.folder);
    return w;
}

namespace {

// The reader's own message when it gave one, else a plain one; the path is always named.
std::string FailureText(const core::OpenResult& opened, const std::string& path) {
    std::string why = opened.message && !opened.message->empty() ? *opened.message
                      : !opened.load.message.empty()             ? opened.load.message
                                                                 : "Can't read " + path;
    if (why.find(path) == std::string::npos) why += " (" + path + ")";
    return why;
}

} // namespace

OpenedScore OpenScore(core::Document& doc, const core::Session& session, core::PageStore* store,
                      const std::string& path) {
    OpenedScore opened;
    core::Document before = doc;
    try {
        opened.result = core::OpenScoreFile(doc, session, store, path);
        if (!opened.result.load.loaded()) opened.failure = FailureText(opened.result, path);
    } catch (const std::exception& e) {
        opened.failure = "Can't read " + path + ": " + e.what();
    }
    if (!opened.ok()) doc = std::move(before);
    return opened;
}

} // namespace tahrir::app
