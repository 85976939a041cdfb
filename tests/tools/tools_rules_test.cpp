#include "platform/text/paths.h"
#include "tools/folder_rows.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

std::string shown(const std::vector<FolderRow>& rows) {
    std::string text;
    for (const FolderRow& row : rows)
        text += std::string(static_cast<std::size_t>(row.depth), '>') + (row.isOpen ? "+" : "-") + row.name + "=" +
                row.path + " ";
    return text;
}

TEST(FolderRows, LeadFromTheDriveToTheCurrentFolderAndItsFolders) {
    EXPECT_EQ(shown(folderRows("/", {"home", "usr"})), "+/=/ >-home=/home >-usr=/usr ");
    EXPECT_EQ(shown(folderRows("/home//ann/", {"b c"})),
              "+/=/ >+home=/home >>+ann=/home//ann >>>-b c=" + joinPath("/home//ann", "b c") + " ");
    EXPECT_EQ(shown(folderRows("C:\\Games\\Data", {})), "+C:\\=C:\\ >+Games=C:\\Games >>+Data=C:\\Games\\Data ");
    EXPECT_EQ(shown(folderRows("\\\\nas\\mods\\Data", {})), "+\\\\nas\\mods=\\\\nas\\mods >+Data=\\\\nas\\mods\\Data ");
    EXPECT_EQ(shown(folderRows("", {})), "");
}

TEST(FolderRows, TheFolderAboveEndsAtTheDrive) {
    const std::pair<const char*, const char*> cases[] = {
        {"/home/ann", "/home"},
        {"/home/ann//", "/home"},
        {"/home", "/"},
        {"/", "/"},
        {"//", "/"},
        {"C:\\Games", "C:\\"},
        {"C:\\", "C:\\"},
        {"name", "name"},
        {"\\\\nas\\mods\\x", "\\\\nas\\mods"},
        {"\\\\nas\\mods\\", "\\\\nas\\mods"},
        {"\\\\nas", "\\\\nas"},
    };
    for (const auto& [path, above] : cases)
        EXPECT_EQ(folderAbove(path), above) << path;
}

TEST(FolderRows, AFolderHoldsItselfAndWhatIsBelow) {
    for (const auto& [path, folder] : {std::pair{"/home/ann", "/home"},
                                       {"/home/", "/home"},
                                       {"/", "/"},
                                       {"/x", "/"},
                                       {"C:\\Games", "C:\\"},
                                       {"C:/Games", "C:/"}})
        EXPECT_TRUE(isInside(path, folder)) << path << " in " << folder;
    for (const auto& [path, folder] :
         {std::pair{"/homes", "/home"}, {"/home", "/home/ann"}, {"D:\\x", "C:\\"}, {"/x", ""}})
        EXPECT_FALSE(isInside(path, folder)) << path << " in " << folder;
}

} // namespace
} // namespace blockhouse
