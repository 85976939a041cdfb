// A folder of its own for one test, removed with everything in it at the end.
#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace blockhouse {

class TempFolder {
public:
    TempFolder() {
        static std::atomic<int> made = 0;
        const std::string name = "blockhouse-" + std::to_string(std::random_device()()) + "-" + std::to_string(++made);
        root_ = std::filesystem::temp_directory_path() / name;
        std::filesystem::create_directory(root_);
    }

    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& root() const { return root_; }

    [[nodiscard]] std::string path() const { return bytesOf(root_); }

    [[nodiscard]] std::string path(std::string_view inside) const { return bytesOf(root_ / native(inside)); }

    // Between the program's paths, which are UTF-8 where the system's are wide, and the library's.
    [[nodiscard]] static std::filesystem::path native(std::string_view path) {
        return std::filesystem::path(std::u8string(path.begin(), path.end())).make_preferred();
    }

    [[nodiscard]] static std::string bytesOf(const std::filesystem::path& path) {
        const std::u8string bytes = path.u8string();
        return {bytes.begin(), bytes.end()};
    }

    // Makes the folders on the way; returns the path.
    std::string folder(std::string_view inside) const {
        std::filesystem::create_directories(root_ / native(inside));
        return path(inside);
    }

    std::string file(std::string_view inside, std::string_view bytes = {}) const {
        const std::filesystem::path file = root_ / native(inside);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return path(inside);
    }

private:
    std::filesystem::path root_;
};

} // namespace blockhouse
