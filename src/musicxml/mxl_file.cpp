// Writing a MusicXML document: as plain text, or as the compressed ".mxl" container.

#include <zip.h>

#include <algorithm>
#include <fstream>
#include <memory>

#include "musicxml/score_export.h"

namespace tahrir::musicxml {
namespace {

constexpr const char* kScoreEntry = "score.musicxml";
constexpr const char* kContainer = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<container>\n  <rootfiles>\n"
                                   "    <rootfile full-path=\"score.musicxml\" "
                                   "media-type=\"application/vnd.recordare.musicxml+xml\"/>\n"
                                   "  </rootfiles>\n</container>\n";
constexpr const char* kMimeType = "application/vnd.recordare.musicxml";

bool IsMxl(const std::filesystem::path& path) {
    std::string ext = path.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    return ext == ".mxl";
}

// Adds one entry from memory that the archive copies when it is closed.
bool AddEntry(zip_t* zip, const char* name, const std::string& data, bool stored) {
    zip_source_t* source = zip_source_buffer(zip, data.data(), data.size(), 0);
    if (source == nullptr) return false;
    const zip_int64_t index = zip_file_add(zip, name, source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    return zip_set_file_compression(zip, static_cast<zip_uint64_t>(index),
                                    stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0) == 0;
}

// The "mimetype" entry comes first and is stored, so that a reader can tell the kind
// of file from its first bytes.
std::string WriteMxl(const std::filesystem::path& path, const std::string& xml) {
    int error = 0;
    zip_t* zip = zip_open(path.string().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (zip == nullptr) return "Can't write " + path.string();
    const std::string mime = kMimeType, container = kContainer;
    const bool added = AddEntry(zip, "mimetype", mime, true) &&
                       AddEntry(zip, "META-INF/container.xml", container, false) &&
                       AddEntry(zip, kScoreEntry, xml, false);
    if (!added) {
        const std::string why = zip_strerror(zip);
        zip_discard(zip);
        return "Can't write " + path.string() + ": " + why;
    }
    if (zip_close(zip) != 0) {
        const std::string why = zip_strerror(zip);
        zip_discard(zip);
        return "Can't write " + path.string() + ": " + why;
    }
    return {};
}

} // namespace

std::string WriteMusicXmlFile(const std::filesystem::path& path, const std::string& xml) {
    if (IsMxl(path)) return WriteMxl(path, xml);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return "Can't write " + path.string();
    out << xml;
    out.close();
    return out ? std::string() : "Can't write " + path.string();
}

} // namespace tahrir::musicxml
