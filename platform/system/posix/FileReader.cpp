#include "platform/system/FileReader.h"

#include "platform/system/posix/posix_file.h"

namespace blockhouse {

struct FileReader::File {
    std::string path;
    Descriptor descriptor;
};

FileReader::FileReader(std::unique_ptr<File> file) : file_(std::move(file)) {}

FileReader::~FileReader() = default;
FileReader::FileReader(FileReader&&) noexcept = default;
FileReader& FileReader::operator=(FileReader&&) noexcept = default;

Result<FileReader> FileReader::open(const std::string& path) {
    Result<NormalFile> file = openNormalFile(path);
    if (!file)
        return file.error();
    return FileReader(std::make_unique<File>(File{path, std::move(file).value().descriptor}));
}

Result<std::size_t> FileReader::read(std::span<char> room) {
    std::size_t filled = 0;
    while (filled < room.size()) {
        const std::span<char> rest = room.subspan(filled);
        const ssize_t got = retried([&] { return ::read(file_->descriptor.number(), rest.data(), rest.size()); });
        if (got < 0)
            return errorOf(file_->path, errno);
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

} // namespace blockhouse
