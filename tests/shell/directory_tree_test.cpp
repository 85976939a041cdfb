#include "platform/text/paths.h"
#include "shell/directory_tree.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

// Returns how many nodes came in.
std::size_t add(DirectoryTree& tree, const std::string& path, const std::vector<std::string>& names) {
    DirectoryTree::Addition addition = tree.add(path, names);
    tree.showDirectory(addition);
    tree.showFiles(addition);
    return addition.files.size() + (addition.directoryIsNew ? 1 : 0);
}

std::string shown(const DirectoryTree& tree) {
    std::string text;
    for (const auto& directory : tree.directories()) {
        text += directory.key + ":";
        for (const auto& file : directory.files)
            text += " " + std::string(file.text()) + "=" + file.key();
        text += "\n";
    }
    return text;
}

TEST(DirectoryTree, SharesNodesAndRefusesWhatIsThere) {
    DirectoryTree tree;
    EXPECT_EQ(add(tree, "/game/ini", {"a.ini", "b.ini"}), 3U);
    EXPECT_EQ(add(tree, "/mod/ini", {"a.ini"}), 1U) << "shares the node of the same folder name";
    EXPECT_EQ(add(tree, "/game/maps", {}), 1U) << "a directory without files has a node";
    EXPECT_EQ(add(tree, "/game/ini", {"a.ini", "b.ini"}), 0U);
    EXPECT_EQ(add(tree, "/game/ini", {"a.ini", "c.ini"}), 1U) << "only what is new";
    EXPECT_EQ(add(tree, "/", {"x\\y"}), 2U);

    const auto key = [](const char* directory, const char* name) { return joinPath(directory, name); };
    EXPECT_EQ(shown(tree), "ini: a.ini=" + key("/game/ini", "a.ini") + " b.ini=" + key("/game/ini", "b.ini") +
                               " a.ini=" + key("/mod/ini", "a.ini") + " c.ini=" + key("/game/ini", "c.ini") +
                               "\nmaps:\n/: x\\y=" + key("/", "x\\y") + "\n");
}

} // namespace
} // namespace blockhouse
