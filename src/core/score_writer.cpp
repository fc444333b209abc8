#include "core/score_writer.h"

#include <fstream>
#include <random>
#include <system_error>

namespace tahrir::core {

std::string ScoreFileImage(const Document& doc) {
    const ScoreSheet& sheet = doc.Sheet;
    std::string image;
    image.reserve(64 + doc.Description.size() + std::size_t(sheet.LastLine) * (RecordLength + 2));
    image += '"';
    image += SavedMagicField;
    image += "\"\r\n\"";
    image += doc.Description;
    image += "\"\r\n";
    for (int i = 1; i <= sheet.LastLine && i <= MaxLines; ++i) {
        image += Scratch(sheet[i].text());
        image += "\r\n";
    }
    return image;
}

namespace {

std::filesystem::path TemporaryBeside(const std::filesystem::path& target) {
    std::random_device device;
    const auto tag = std::to_string(device() % 1000000);
    return target.parent_path() / (target.filename().string() + ".tmp-" + tag);
}

SaveResult Failure(const std::filesystem::path& path, const std::string& why) {
    return SaveResult{false, "Can't write " + path.string() + ": " + why};
}

} // namespace

SaveResult SaveImage(Document& doc, const std::filesystem::path& path) {
    if (path.empty()) return Failure(path, "no file name");
    const std::string image = ScoreFileImage(doc);
    const std::filesystem::path temporary = TemporaryBeside(path);
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out) return Failure(path, "cannot create a file in its folder");
        out.write(image.data(), static_cast<std::streamsize>(image.size()));
        out.flush();
        if (!out) {
            out.close();
            std::error_code ignored;
            std::filesystem::remove(temporary, ignored);
            return Failure(path, "the write did not complete");
        }
    }
    std::error_code ec;
    std::filesystem::rename(temporary, path, ec);
    if (ec) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return Failure(path, ec.message());
    }
    doc.DirtyFlag = false;
    doc.CurrentFileName = path.string();
    return SaveResult{true, {}};
}

} // namespace tahrir::core
