#include "shell/application_folder.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(ApplicationFolder, AWritableProgramFolderHoldsTheLists) {
    const TempFolder temp;
    const ApplicationFolder files = applicationFolderOf(temp.folder("program"), true, temp.path("user"));
    temp.file("user/Dirs.lst");
    EXPECT_EQ(files.readPath("Dirs.lst"), temp.path("program/Dirs.lst")) << "even when another lies elsewhere";
    EXPECT_EQ(files.writePath("Dirs.lst"), temp.path("program/Dirs.lst"));
}

TEST(ApplicationFolder, AnInstalledProgramReadsItsOwnListsUntilTheUserHasOnes) {
    const TempFolder temp;
    const ApplicationFolder files = applicationFolderOf(temp.folder("program"), false, temp.path("user/data"));
    EXPECT_EQ(files.readPath("Dirs.lst"), temp.path("user/data/Dirs.lst"));
    temp.file("program/Dirs.lst");
    EXPECT_EQ(files.readPath("Dirs.lst"), temp.path("program/Dirs.lst"));
    EXPECT_EQ(files.readPath("jumps.lst"), temp.path("user/data/jumps.lst"));

    EXPECT_EQ(files.writePath("Dirs.lst"), temp.path("user/data/Dirs.lst"));
    EXPECT_TRUE(std::filesystem::is_directory(temp.path("user/data"))) << "made for the writer";
    temp.file("user/data/Dirs.lst");
    EXPECT_EQ(files.readPath("Dirs.lst"), temp.path("user/data/Dirs.lst"));
}

TEST(ApplicationFolder, AnInstalledProgramKeepsNoListsInAFolderOfPrograms) {
    const TempFolder temp;
#ifdef _WIN32
    temp.file("prefix/bin/uninstall.exe");
#else
    temp.file("prefix/share/applications/blockhouse.desktop");
#endif
    const ApplicationFolder files = applicationFolderOf(temp.folder("prefix/bin"), true, temp.path("user"));
    EXPECT_EQ(files.writePath("Dirs.lst"), temp.path("user/Dirs.lst")) << "though its user could write there";
}

} // namespace
} // namespace blockhouse
