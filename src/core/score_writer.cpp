#include "core/score_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
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

// Writes `bytes` to a new file and has them on the disk before it returns, so that the
// rename that follows never puts an empty file in place of the old one. Returns why it
// failed, empty on success.
std::string WriteDurably(const std::filesystem::path& file, const std::string& bytes) {
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) return std::string("cannot create a file in its folder (") + std::strerror(errno) + ")";
    int error = 0;
    for (std::size_t done = 0; done < bytes.size() && error == 0;) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n > 0) done += static_cast<std::size_t>(n);
        else if (n == 0) error = ENOSPC;
        else if (errno != EINTR) error = errno;
    }
    if (error == 0 && ::fsync(fd) != 0) error = errno;
    if (::close(fd) != 0 && error == 0) error = errno;
    if (error != 0) return std::string("the write did not complete (") + std::strerror(error) + ")";
    return {};
}

SaveResult Failure(const std::filesystem::path& path, const std::string& why) {
    return SaveResult{false, "Can't write " + path.string() + ": " + why};
}

} // namespace

SaveResult SaveImage(Document& doc, const std::filesystem::path& path) {
    if (path.empty()) return Failure(path, "no file name");
    const std::filesystem::path temporary = TemporaryBeside(path);
    if (const std::string why = WriteDurably(temporary, ScoreFileImage(doc)); !why.empty()) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return Failure(path, why);
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
