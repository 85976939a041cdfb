// Kills a process in the middle of its saves, again and again, and looks at what is on the disk then.
//
//   kill_saves [kills]    1000 unless told otherwise; ends non-zero when a file was neither old nor new
//
// The saves are of 2 to 20 MB over an existing file; the moments are spread evenly over a save's time.
#include "platform/system/files.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

constexpr std::size_t megabyte = 1'000'000;

struct Tally {
    int old = 0;
    int replaced = 0;
    int damaged = 0;
    int finished = 0; // before they could be killed
    std::size_t leftBehind = 0;
};

std::string contentOf(char letter, std::size_t megabytes) {
    return std::string(megabytes * megabyte, letter);
}

std::size_t filesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

Clock::duration timeOfASave(const std::string& path, const std::string& bytes) {
    const auto began = Clock::now();
    static_cast<void>(blockhouse::replaceWholeFile(path, bytes).ok());
    return Clock::now() - began;
}

void killOne(const fs::path& folder, std::mt19937& random, Tally& tally) {
    const std::string path = (folder / "save.ini").string();
    const std::size_t megabytes = std::uniform_int_distribution<std::size_t>(2, 20)(random);
    const std::string oldBytes = contentOf('a', megabytes);
    const std::string newBytes = contentOf('b', megabytes);
    const auto whole = timeOfASave(path, oldBytes);
    const auto known = blockhouse::stampOf(path);
    const pid_t child = fork();
    if (child == 0) {
        static_cast<void>(blockhouse::replaceKnownFile(path, newBytes, known).ok());
        _exit(0);
    }
    std::this_thread::sleep_for(whole * std::uniform_real_distribution<double>(0, 1.2)(random));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    tally.finished += WIFEXITED(status) ? 1 : 0;
    const std::string left = blockhouse::readWholeFile(path).value();
    (left == oldBytes ? tally.old : left == newBytes ? tally.replaced : tally.damaged)++;
    tally.leftBehind += filesIn(folder) - 1;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename() != "save.ini")
            fs::remove(entry.path());
}

} // namespace

int main(int count, char** arguments) {
    const int kills = count > 1 ? std::atoi(arguments[1]) : 1000;
    const fs::path folder = fs::temp_directory_path() / ("kill-saves-" + std::to_string(getpid()));
    fs::create_directory(folder);
    std::mt19937 random(std::random_device{}());
    Tally tally;
    for (int i = 0; i < kills; ++i)
        killOne(folder, random, tally);
    fs::remove_all(folder);
    std::cout << kills << " saves: " << tally.finished << " had ended before they could be killed. The old file "
              << tally.old << " times, the new one " << tally.replaced << " times, neither " << tally.damaged
              << " times. Left behind: " << tally.leftBehind << " files.\n";
    return tally.damaged == 0 ? 0 : 1;
}
