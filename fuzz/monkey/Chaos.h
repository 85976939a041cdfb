// A workspace whose files change, vanish and come back while the program works on them.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace blockhouse {

class Chaos {
public:
    // Makes the workspace in `root`, an empty folder, from the sample workspace and some odd files. `random` must
    // outlive this.
    Chaos(std::string root, const std::string& samples, std::mt19937& random);

    // Does something to some file, and says what.
    std::string strike();

    // A path in the workspace: mostly of a file that is there or was, sometimes of none.
    std::string someFile();

    std::string someFolder() { return folders_[below(folders_.size())]; }

    [[nodiscard]] const std::string& root() const { return root_; }

    // The folder for the program's list files.
    [[nodiscard]] std::string applicationFolder() const { return root_ + "/program"; }

private:
    [[nodiscard]] std::size_t below(std::size_t limit) { return random_() % limit; }

    std::string someText();
    void writeLists();

    std::string root_;
    std::mt19937& random_;
    std::vector<std::string> files_;
    std::vector<std::string> folders_;
    std::string text_; // of the samples, to cut pieces from
};

} // namespace blockhouse
