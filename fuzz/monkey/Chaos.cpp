#include "fuzz/monkey/Chaos.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace blockhouse {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

void write(const std::string& path, const std::string& bytes, std::ios::openmode mode = std::ios::trunc) {
    std::ofstream(path, std::ios::binary | mode) << bytes;
}

} // namespace

Chaos::Chaos(std::string root, const std::string& samples, std::mt19937& random)
    : root_(std::move(root)), random_(random) {
    fs::create_directories(applicationFolder());
    fs::copy(samples, root_, fs::copy_options::recursive);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root_ + "/Data"))
        (entry.is_directory() ? folders_ : files_).push_back(entry.path().string());
    for (const std::string& file : files_)
        text_ += contentOf(file);

    const std::string odd = root_ + "/Data/odd \xE9 folder";
    fs::create_directories(odd);
    folders_.push_back(odd);
    std::string large;
    while (large.size() < 300'000)
        large += text_;
    for (const auto& [name, bytes] : {std::pair<const char*, std::string>{"large.ini", large},
                                      {"larger.ini", large + large + large},
                                      {"empty.ini", ""},
                                      {"ini", "Object Alphaone\nEnd"},
                                      {"bytes.ini", std::string("\0\r\n\n\r\xFF;\x80 End", 12)},
                                      {"aidata.ini", "SkirmishBuildList Abc\r\n"},
                                      {"one line.ini", std::string(20'000, ';')},
                                      {"notes.txt", "no data"}}) {
        files_.push_back(odd + "/" + name);
        write(files_.back(), bytes);
    }
    writeLists();
}

void Chaos::writeLists() {
    std::string dirs;
    for (const std::string& folder : folders_)
        if (below(4) != 0)
            dirs += folder + "\r\n";
    write(applicationFolder() + "/Dirs.lst", dirs);
    write(applicationFolder() + "/jumps.lst", "Armor\r\nSpeed\r\nLocation\r\nLocomotor\r\n\r\n");
}

std::string Chaos::someText() {
    const std::size_t start = below(text_.size());
    return text_.substr(start, below(3000));
}

std::string Chaos::someFile() {
    return below(8) == 0 ? root_ + "/Data/new " + std::to_string(below(5)) + ".ini" : files_[below(files_.size())];
}

std::string Chaos::strike() {
    const std::string file = files_[below(files_.size())];
    const std::string folder = folders_[below(folders_.size())];
    std::error_code ignored;
    switch (below(9)) {
    case 0:
        fs::remove(file, ignored);
        return "removed " + file;
    case 1:
        fs::resize_file(file, below(5000), ignored);
        return "cut " + file;
    case 2:
        write(file, someText(), std::ios::app);
        return "appended to " + file;
    case 3:
        write(file + ".new", someText());
        fs::rename(file + ".new", file, ignored);
        return "replaced " + file;
    case 4:
        fs::permissions(file, fs::perms(below(2) == 0 ? 0 : 0644), ignored);
        return "permissions of " + file;
    case 5:
        fs::rename(folder, folder + ".away", ignored);
        fs::rename(folder + ".away", below(4) == 0 ? folder + ".away" : folder, ignored);
        return "moved " + folder;
    case 6:
        fs::create_directories(fs::path(file).parent_path(), ignored);
        write(file, someText());
        return "wrote " + file;
    case 7:
        writeLists();
        return "wrote the lists";
    default:
        fs::remove(file, ignored);
        fs::create_directory(file, ignored);
        fs::remove(file, ignored);
        fs::create_symlink(files_[below(files_.size())], file, ignored);
        return "linked " + file;
    }
}

} // namespace blockhouse
