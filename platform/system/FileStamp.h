#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace blockhouse {
struct FileStamp {
    std::uint64_t device = 0, file = 0, size = 0, seconds = 0, nanoseconds = 0;
    bool operator==(const FileStamp&) const = default;
};

std::optional<FileStamp> stampOf(const std::string& path);
} // namespace blockhouse
