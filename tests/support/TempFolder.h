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

    [[nodiscard]] std::string path() const { return root_.string(); }

    [[nodiscard]] std::string path(std::string_view inside) const { return (root_ / inside).string(); }

    // Makes the folders on the way; returns the path.
    std::string folder(std::string_view inside) const {
        std::filesystem::create_directories(root_ / inside);
        return path(inside);
    }

    std::string file(std::string_view inside, std::string_view bytes = {}) const {
        std::filesystem::create_directories((root_ / inside).parent_path());
        std::ofstream(root_ / inside, std::ios::binary) << bytes;
        return path(inside);
    }

private:
    std::filesystem::path root_;
};

} // namespace blockhouse
