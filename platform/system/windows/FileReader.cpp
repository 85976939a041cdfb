#include "platform/system/FileReader.h"

#include "platform/system/windows/windows_file.h"

namespace blockhouse {

struct FileReader::File {
    std::string path;
    Handle handle;
};

FileReader::FileReader(std::unique_ptr<File> file) : file_(std::move(file)) {}

FileReader::~FileReader() = default;
FileReader::FileReader(FileReader&&) noexcept = default;
FileReader& FileReader::operator=(FileReader&&) noexcept = default;

Result<FileReader> FileReader::open(const std::string& path) {
    Result<NormalFile> file = openNormalFile(path);
    if (!file)
        return file.error();
    return FileReader(std::make_unique<File>(File{path, std::move(file).value().handle}));
}

Result<std::size_t> FileReader::read(std::span<char> room) {
    std::size_t filled = 0;
    if (const DWORD error = readAll(file_->handle.get(), room.data(), room.size(), filled); error != 0)
        return errorOf(file_->path, error);
    return filled;
}

} // namespace blockhouse
