// A normal file read piece by piece, so that it need not be held whole.
#pragma once

#include "platform/text/Result.h"

#include <memory>
#include <span>
#include <string>

namespace blockhouse {

class FileReader {
public:
    // A directory, a pipe and a device are errors, never a wait.
    static Result<FileReader> open(const std::string& path);
    ~FileReader();
    FileReader(FileReader&& other) noexcept;
    FileReader& operator=(FileReader&& other) noexcept;

    // The next bytes, as many as there is room for; fewer only where the file ends. How many there were.
    Result<std::size_t> read(std::span<char> room);

private:
    struct File;

    explicit FileReader(std::unique_ptr<File> file);

    std::unique_ptr<File> file_;
};

} // namespace blockhouse
