// A process killed in the middle of a save leaves the old content or the new one, whole.
#include "platform/files.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace blockhouse {
namespace {

[[noreturn]] void saveInTurnForEver(const std::string& path, const std::string& first, const std::string& second,
                                    int started) {
    for (;;) {
        for (const std::string* content : {&first, &second})
            if (!replaceWholeFile(path, *content))
                _exit(1);
        // From now on the file has one content or the other.
        if (write(started, "x", 1) != 1)
            _exit(1);
    }
}

TEST(KilledSave, LeavesOneContentWhole) {
    std::mt19937 random(9);
    const TempFolder folder;
    const std::string first(3'000'000, 'a');
    const std::string second(1'000'000, 'b');
    int each[2] = {0, 0};
    for (int round = 0; round < 25; ++round) {
        const std::string path = folder.file("save.ini", first);
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0)
            saveInTurnForEver(path, first, second, ends[1]);
        char started = 0;
        ASSERT_EQ(read(ends[0], &started, 1), 1);
        usleep(static_cast<useconds_t>(random() % 20'000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        close(ends[0]);
        close(ends[1]);
        ASSERT_TRUE(WIFSIGNALED(status));
        const std::string left = readWholeFile(path).value();
        ASSERT_TRUE(left == first || left == second) << "round " << round << ": " << left.size() << " bytes";
        ++each[left == second];
    }
    EXPECT_GT(each[0], 0);
    EXPECT_GT(each[1], 0) << "the moments were not spread over the saves";
}

} // namespace
} // namespace blockhouse
