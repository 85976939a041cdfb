// What is on the disk, and what is told, when the system fails a call or the process is killed at one.
#include "platform/system/FileReader.h"
#include "platform/system/files.h"
#include "tests/support/SystemFault.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace blockhouse {
namespace {

const std::string oldBytes(30'000, 'a');
const std::string newBytes(70'000, 'b');

std::size_t entriesOf(const TempFolder& folder) {
    const std::filesystem::directory_iterator entries(folder.path());
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

TEST(Faults, AWriteThatFailsAtAnyCallLeavesOneContentWholeAndTellsTheTruth) {
    const TempFolder folder;
    int failed = 0;
    for (const char* call : {"open", "create", "write", "fsync", "close", "rename", "fstat", "stat", "fchmod"})
        for (const int error : {ENOSPC, EIO, EACCES, EINTR})
            for (int spared = 0; spared < 3; ++spared) {
                const std::string path = folder.file("save.ini", oldBytes);
                const SystemFault fault(call, error, spared, 1);
                const Result<Done> written = replaceWholeFile(path, newBytes);
                if (SystemFault::failures() == 0)
                    continue;
                const std::string what =
                    std::string(call) + " " + std::to_string(error) + " after " + std::to_string(spared);
                const std::string left = readWholeFile(path).value();
                ASSERT_TRUE(left == newBytes || (!written && left == oldBytes)) << what << ": " << left.size();
                ASSERT_EQ(entriesOf(folder), 1U) << what;
                failed += written ? 0 : 1;
                // Once in its place, only a sync of the folder can still fail.
                EXPECT_TRUE(written.ok() || left == oldBytes || std::string_view(call) == "fsync") << what;
                const bool isMadeAgain = std::string_view(call) != "stat" && std::string_view(call) != "rename";
                EXPECT_TRUE(written.ok() || error != EINTR || !isMadeAgain) << what;
            }
    EXPECT_GT(failed, 20);
}

TEST(Faults, AFileIsWrittenInPlaceWhereNothingMayTakeItsPlace) {
    const TempFolder folder;
    const std::string path = folder.file("save.ini", oldBytes);
    {
        const SystemFault noNewFile("create", EACCES);
        EXPECT_TRUE(replaceWholeFile(path, newBytes).ok());
        EXPECT_EQ(readWholeFile(path).value(), newBytes);
    }
    {
        const SystemFault cannotTakePlace("rename", EBUSY);
        EXPECT_TRUE(replaceWholeFile(path, oldBytes).ok()) << "the name is held by something";
        EXPECT_EQ(readWholeFile(path).value(), oldBytes);
    }
    EXPECT_EQ(entriesOf(folder), 1U);
}

TEST(Faults, AReadGivesAllOrTellsWhy) {
    struct Case {
        const char* call;
        int error;
        int spared;
        const char* cause; // none: the call is made again
    };

    const Case cases[] = {
        {"open", EACCES, 0, "Permission denied"},   {"open", ENOENT, 0, "No such file or directory"},
        {"open", EMFILE, 0, "Too many open files"}, {"open", EINTR, 0, nullptr},
        {"fstat", EIO, 0, "Input/output error"},    {"read", EIO, 0, "Input/output error"},
        {"read", EIO, 1, "Input/output error"},     {"read", EINTR, 0, nullptr},
    };
    const TempFolder folder;
    const std::string path = folder.file("read.ini", oldBytes);
    for (const Case& c : cases) {
        const SystemFault fault(c.call, c.error, c.spared, 1);
        const Result<std::string> read = readWholeFile(path);
        ASSERT_EQ(SystemFault::failures(), 1) << c.call << c.spared;
        ASSERT_EQ(read.ok(), c.cause == nullptr) << c.call;
        if (read.ok()) {
            EXPECT_EQ(read.value(), oldBytes) << c.call;
        } else {
            EXPECT_EQ(read.error().cause, c.cause);
            EXPECT_EQ(read.error().path, path);
        }
    }
    FileReader reader = FileReader::open(path).value();
    std::array<char, 100> room{};
    const SystemFault fault("read", EIO);
    EXPECT_EQ(reader.read(room).error().cause, "Input/output error");
}

TEST(Faults, AListingGivesAllOrTellsWhy) {
    const TempFolder folder;
    for (const char* name : {"a.ini", "b.ini", "c.ini"})
        folder.file(name);
    for (const char* call : {"opendir", "readdir"})
        for (const int spared : {0, 2}) {
            const SystemFault fault(call, EIO, spared, 1);
            const auto listed = fileNamesIn(folder.path());
            if (SystemFault::failures() == 1) {
                EXPECT_EQ(listed.error().cause, "Input/output error") << call << spared;
                EXPECT_EQ(listed.error().path, folder.path());
            } else {
                EXPECT_EQ(listed.value().size(), 3U);
            }
        }
}

// A process that is killed at the first call of a save, at the second, and so on until the save gets through.
TEST(Faults, AProcessKilledAtAnyCallOfASaveLeavesOneContentWhole) {
    const TempFolder folder;
    // The first save into a folder looks through it, which would take more calls with every file left behind.
    ASSERT_TRUE(replaceWholeFile(folder.file("save.ini", ""), oldBytes).ok());
    int each[2] = {0, 0};
    bool killed = true;
    for (int call = 0; killed; ++call) {
        const std::string path = folder.file("save.ini", oldBytes);
        const pid_t child = fork();
        if (child == 0) {
            dieAtCall(call);
            const bool written = replaceWholeFile(path, newBytes).ok();
            dieAtCall(-1);
            _exit(written ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        ASSERT_TRUE(killed || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << call;
        const std::string left = readWholeFile(path).value();
        ASSERT_TRUE(left == newBytes || left == oldBytes) << "call " << call << ": " << left.size() << " bytes";
        ++each[left == newBytes];
    }
    EXPECT_GT(each[0], 10);
    EXPECT_GT(each[1], 1);
}

} // namespace
} // namespace blockhouse
