#include "core/load_file.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <system_error>

#include "core/text_input.h"

namespace tahrir::core {

std::optional<std::string> CheckFileName(const std::string& path) {
    if (path.find('?') != std::string::npos) return std::string("Can't read File Name");
    return std::nullopt;
}

std::vector<std::string> ReadRecentList(const std::filesystem::path& appFolder) {
    std::vector<std::string> entries;
    std::ifstream in(appFolder / RecentListName, std::ios::binary);
    std::string line;
    while (static_cast<int>(entries.size()) < RecentListSize && std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        entries.push_back(line);
    }
    return entries;
}

bool UpdateRecentList(const std::filesystem::path& appFolder, const std::string& path) {
    const std::filesystem::path file = appFolder / RecentListName;
    std::error_code ec;
    const bool exists = std::filesystem::exists(file, ec);
    const std::vector<std::string> old = exists ? ReadRecentList(appFolder) : std::vector<std::string>{};
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << path << "\r\n";
    if (exists) {
        for (const std::string& entry : old) {
            if (entry == path || entry == RecentListEnd) continue;
            if (entry.find_first_not_of(' ') == std::string::npos) continue;
            out << entry << "\r\n";
        }
        out << RecentListEnd << "\r\n";
    }
    return static_cast<bool>(out.flush());
}

std::string NumberText(double value) {
    if (!std::isfinite(value)) return "0";
    if (value == std::floor(value) && std::fabs(value) < 1e15)
        return std::to_string(static_cast<long long>(value));
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.7g", value);
    return buffer;
}

std::string CompanionRecording(const std::string& fileName, double tempo) {
    std::string base = fileName;
    if (base.size() >= 4) {
        const std::string ext = UpperAscii(std::string_view(base).substr(base.size() - 4));
        if (ext == ".SRV") base.resize(base.size() - 4);
    }
    return base + "-T" + NumberText(tempo) + ".Wav";
}

OpenResult OpenScoreFile(Document& doc, const Session& session, PageStore* store,
                         const std::string& path) {
    OpenResult result;
    if (auto message = CheckFileName(path)) {
        result.message = message;
        result.load.status = LoadStatus::Failed;
        return result;
    }
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        result.load.status = LoadStatus::Failed;
        result.load.message = "Can't read " + path;
        return result;
    }
    result.recentListWritten = UpdateRecentList(session.AppFolder, path);
    const std::string previousName = doc.CurrentFileName;
    doc.CurrentFileName = path;
    result.load = Openp(doc, session, store);
    if (!result.load.loaded()) {
        doc.CurrentFileName = previousName;
        result.message = result.load.message;
        return result;
    }
    const std::string recording = CompanionRecording(path, doc.PlayTempo);
    if (std::filesystem::is_regular_file(recording, ec)) result.recording = recording;
    return result;
}

} // namespace tahrir::core
