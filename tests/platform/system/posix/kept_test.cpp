// What a save keeps of a file beside its bytes, and of what others wrote into it.
#include "platform/system/files.h"
#include "platform/system/names_beside.h"
#include "tests/support/SystemFault.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace blockhouse {
namespace {

namespace fs = std::filesystem;

constexpr const char* accessList = "system.posix_acl_access";
constexpr const char* accessListOfNewFiles = "system.posix_acl_default";
constexpr const char* note = "user.note";

// owner rw, one more user rw, group nothing, mask rw, others nothing; as the kernel lays it out.
std::string oneMoreUser() {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t id;
    };

    constexpr std::uint32_t none = 0xFFFFFFFF;
    constexpr Entry entries[] = {{1, 6, none}, {2, 6, 4242}, {4, 0, none}, {16, 6, none}, {32, 0, none}};
    constexpr std::uint32_t version = 2;
    std::string list(sizeof version + sizeof entries, '\0');
    std::memcpy(list.data(), &version, sizeof version);
    std::memcpy(list.data() + sizeof version, entries, sizeof entries);
    return list;
}

bool set(const std::string& path, const char* name, const std::string& value) {
    return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

std::string valueOf(const std::string& path, const char* name) {
    std::array<char, 256> value{};
    const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
    return size < 0 ? std::string("none") : std::string(value.data(), static_cast<std::size_t>(size));
}

struct stat statusOf(const std::string& path) {
    struct stat status {};

    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status;
}

class Kept : public testing::Test {
protected:
    Kept() { ::chmod(path.c_str(), 0640); }

    void replace(const std::string& bytes) const {
        const Result<Done> written = replaceWholeFile(path, bytes);
        EXPECT_TRUE(written.ok()) << written.error().cause;
        EXPECT_EQ(readWholeFile(path).value(), bytes);
    }

    TempFolder folder;
    std::string path = folder.file("units.ini", "old");
};

TEST_F(Kept, AccessListAndAttributes) {
    if (!set(path, accessList, oneMoreUser()) || !set(path, note, "mine"))
        GTEST_SKIP() << "this file system has no access lists";
    const mode_t mode = statusOf(path).st_mode;
    replace("new");
    EXPECT_EQ(valueOf(path, accessList), oneMoreUser());
    EXPECT_EQ(valueOf(path, note), "mine");
    EXPECT_EQ(statusOf(path).st_mode, mode);
    {
        const SystemFault cannotBeKept("fsetxattr", ENOSPC);
        replace("written over");
        EXPECT_EQ(SystemFault::failures(), 1);
    }
    EXPECT_EQ(valueOf(path, accessList), oneMoreUser()) << "written in place";
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST_F(Kept, NobodyGetsTheFolderslListForNewFiles) {
    if (!set(folder.path(), accessListOfNewFiles, oneMoreUser()))
        GTEST_SKIP() << "this file system has no access lists";
    ASSERT_EQ(valueOf(path, accessList), "none");
    replace("new");
    EXPECT_EQ(valueOf(path, accessList), "none");
    EXPECT_EQ(statusOf(path).st_mode & 0777, 0640U);
}

TEST_F(Kept, AGroupThatCannotBeKeptPassesNoRightsToAnother) {
    ::chmod(path.c_str(), 02664);
    {
        const SystemFault foreignGroup("fchown", EPERM);
        replace("new");
    }
    EXPECT_EQ(statusOf(path).st_mode & 07777, 0644U);
    ::chmod(path.c_str(), 0660);
    {
        const SystemFault foreignGroup("fchown", EPERM);
        replace("newer");
    }
    EXPECT_EQ(statusOf(path).st_mode & 07777, 0600U);
    if (!set(path, accessList, oneMoreUser()))
        return;
    const SystemFault foreignGroup("fchown", EPERM);
    const auto before = statusOf(path);
    replace("newest");
    EXPECT_EQ(statusOf(path).st_ino, before.st_ino) << "an access list tells the group's rights: written in place";
    EXPECT_EQ(valueOf(path, accessList), oneMoreUser());
}

TEST_F(Kept, AnOwnerThatCannotBeGivenBack) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of somebody else's";
    ASSERT_EQ(::chown(path.c_str(), 12345, 0), 0);
    const auto before = statusOf(path);
    const SystemFault foreignOwner("fchown", EPERM);
    replace("new");
    EXPECT_EQ(statusOf(path).st_ino, before.st_ino) << "written in place";
    EXPECT_EQ(statusOf(path).st_uid, before.st_uid);
}

TEST_F(Kept, WrittenInPlaceWhereRoomCannotBeSetAside) {
    fs::create_hard_link(path, folder.path() + "/second.ini");
    const std::string longer(200'000, 'x');
    for (const int unsupported : {EBADF, EOPNOTSUPP, EINVAL}) {
        const SystemFault fault("posix_fallocate", unsupported);
        replace("short");
        replace(longer);
        EXPECT_GT(SystemFault::failures(), 0);
    }
    replace("short");
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{100'000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    {
        const SystemFault fault("posix_fallocate", EBADF);
        EXPECT_EQ(replaceWholeFile(path, longer).error().cause, "File too large");
    }
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(readWholeFile(path).value(), "short") << "a full disk is found before the old bytes are touched";
}

TEST_F(Kept, WhatOthersWroteIsKeptOnEveryKindOfFileSystem) {
    const struct {
        const char* what;
        const char* call;
        int error;
    } cases[] = {
        {"names cannot be exchanged", "rename", EINVAL},
        {"the name is held", "rename", EBUSY},
        {"no new file", "create", EACCES},
        {"no second names", "link", EPERM},
        {"no files without names", "linkat", ENOENT},
    };

    for (const auto& c : cases) {
        const TempFolder here;
        const std::string file = here.file("units.ini", "mine");
        const FileStamp mine = stampOf(file).value();
        std::ofstream(file) << "theirs";
        const bool isFirstOnly = std::string_view(c.call) != "link" && std::string_view(c.call) != "linkat";
        Result<Replaced> replaced = FileError{};
        {
            const SystemFault fault(c.call, c.error, 0, isFirstOnly ? (c.error == EACCES ? 2 : 1) : 100);
            replaced = replaceKnownFile(file, "mine again", mine);
            EXPECT_GT(SystemFault::failures(), 0) << c.what;
        }
        ASSERT_TRUE(replaced.ok()) << c.what << ": " << replaced.error().cause;
        EXPECT_EQ(readWholeFile(file).value(), "mine again") << c.what;
        EXPECT_EQ(readWholeFile(replaced.value().backup).value(), "theirs") << c.what;
    }
}

// Other systems do not tell.
TEST_F(Kept, WhatOthersWroteIsKeptAlsoWithTheOldTimeAndLength) {
    const FileStamp mine = stampOf(path).value();
    const auto time = fs::last_write_time(path);
    std::ofstream(path) << "new";
    fs::last_write_time(path, time);
    const Result<Replaced> replaced = replaceKnownFile(path, "mine again", mine);
    EXPECT_EQ(readWholeFile(replaced.value().backup).value(), "new");
}

TEST_F(Kept, ANameThatVanishesDuringTheSaveIsMadeAnew) {
    const FileStamp mine = stampOf(path).value();
    const SystemFault vanished("rename", ENOENT, 0, 1);
    EXPECT_TRUE(replaceKnownFile(path, "mine again", mine).ok());
    EXPECT_EQ(SystemFault::failures(), 1);
    EXPECT_EQ(readWholeFile(path).value(), "mine again");
}

TEST_F(Kept, WithoutRoomForWhatOthersWroteNothingIsWritten) {
    fs::create_hard_link(path, folder.path() + "/second.ini");
    const FileStamp mine = stampOf(path).value();
    std::ofstream(path) << "theirs";
    // The first new file is the replacement, which two names forbid to use; the next two would be the copy.
    const SystemFault noNewFile("create", ENOSPC, 1);
    const Result<Replaced> replaced = replaceKnownFile(path, "mine again", mine);
    EXPECT_EQ(replaced.error().cause, "No space left on device");
    EXPECT_EQ(readWholeFile(path).value(), "theirs");
}

TEST_F(Kept, WhatOthersWroteIsNeverGoneForWantOfAName) {
    const FileStamp mine = stampOf(path).value();
    std::ofstream(path) << "theirs";
    {
        const SystemFault noExchange("rename", EINVAL, 0, 1);
        const SystemFault noCopy("create", ENOSPC, 1);
        EXPECT_EQ(replaceKnownFile(path, "mine again", mine).error().cause, "No space left on device");
        EXPECT_GT(SystemFault::failures(), 0);
    }
    EXPECT_EQ(readWholeFile(path).value(), "theirs");
    const SystemFault noSecondName("link", EPERM);
    const SystemFault noOtherName("rename", EIO, 1);
    const Result<Replaced> replaced = replaceKnownFile(path, "mine again", mine);
    EXPECT_GT(SystemFault::failures(), 0);
    EXPECT_EQ(readWholeFile(path).value(), "mine again");
    EXPECT_EQ(readWholeFile(replaced.value().backup).value(), "theirs") << "under whatever name";
    EXPECT_FALSE(processOfTemporary(fs::path(replaced.value().backup).filename().string())) << "nobody removes it";
}

TEST_F(Kept, OnlyOwnStaleFilesOfADeadProcessAreRemoved) {
    const pid_t dead = fork();
    if (dead == 0)
        _exit(0);
    ASSERT_EQ(waitpid(dead, nullptr, 0), dead);
    const std::string gone = std::to_string(dead);
    const std::string alive = std::to_string(::getpid());
    const std::string old = ".blockhouse-" + gone + "-7.tmp";
    const std::string kept[] = {".blockhouse-" + gone + "-8.tmp", ".blockhouse-" + alive + "-7.tmp",
                                ".blockhouse-" + gone + ".tmp",   ".blockhouse-" + gone + "-7.tmp2",
                                ".blockhouse-" + gone + "-7.old", ".blockhouse-" + gone + "-x.tmp",
                                "blockhouse-" + gone + "-7.tmp"};
    const auto make = [&](const std::string& name, bool aged) {
        const std::string file = folder.file(name, "x");
        if (aged)
            fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(25));
    };
    make(old, true);
    for (const std::string& name : kept)
        make(name, name != kept[0]);
    replace("new");
    EXPECT_FALSE(fs::exists(folder.path() + "/" + old));
    for (const std::string& name : kept)
        EXPECT_TRUE(fs::exists(folder.path() + "/" + name)) << name;
}

TEST_F(Kept, ReadingHoldsItsLimitWhateverTheFileClaims) {
    EXPECT_EQ(readWholeFile(path, 3).value(), "old");
    EXPECT_EQ(readWholeFile(path, 2).error().cause, "File too large");
    ASSERT_EQ(fs::file_size("/proc/self/status"), 0U);
    EXPECT_EQ(readWholeFile("/proc/self/status", 10).error().cause, "File too large");
}

// As AProcessKilledAtAnyCallOfASave..., for a file that somebody else has changed.
TEST_F(Kept, AProcessKilledAtAnyCallLosesNeitherText) {
    replace("old"); // the first save into a folder looks through it
    const FileStamp never{1, 2, 3, 4, 5};
    bool killed = true;
    int calls = 0;
    for (; killed; ++calls) {
        const TempFolder here;
        const std::string file = here.file("units.ini", "theirs");
        const pid_t child = fork();
        if (child == 0) {
            dieAtCall(calls);
            const bool written = replaceKnownFile(file, "mine", never).ok();
            dieAtCall(-1);
            _exit(written ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        killed = WIFSIGNALED(status);
        ASSERT_TRUE(killed || WEXITSTATUS(status) == 0) << calls;
        bool theirsIsThere = false;
        for (const auto& entry : fs::directory_iterator(here.path()))
            theirsIsThere = theirsIsThere || (readWholeFile(entry.path().string()).value() == "theirs" &&
                                              !processOfTemporary(entry.path().filename().string()));
        EXPECT_TRUE(theirsIsThere) << "killed at call " << calls;
        const std::string left = readWholeFile(file).value();
        EXPECT_TRUE(left == "theirs" || left == "mine") << "killed at call " << calls;
        ASSERT_LT(calls, 200);
    }
    EXPECT_GT(calls, 8);
}

} // namespace
} // namespace blockhouse
