// What a file is on this system beside its bytes, and who else may hold it.
#include "platform/system/FileReader.h"
#include "platform/system/files.h"
#include "platform/system/folders.h"
#include "platform/system/volumes.h"
#include "platform/text/paths.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>
#include <windows.h>

namespace blockhouse {
namespace {

std::wstring wide(const std::string& path) {
    return TempFolder::native(path).wstring();
}

// Another program that has the file open and shares it so.
class Held {
public:
    Held(const std::string& path, DWORD sharing)
        : handle_(::CreateFileW(wide(path).c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }

    ~Held() { ::CloseHandle(handle_); }

    [[nodiscard]] std::string content() const {
        std::string bytes(100, '\0');
        DWORD got = 0;
        EXPECT_TRUE(::ReadFile(handle_, bytes.data(), 100, &got, nullptr));
        bytes.resize(got);
        return bytes;
    }

    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    HANDLE handle_;
};

class ReplacedFile : public testing::Test {
protected:
    [[nodiscard]] std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.root()), {}));
    }

    [[nodiscard]] std::string content() const { return readWholeFile(path).value(); }

    TempFolder folder;
    std::string path = folder.file("units.ini", "old");
};

TEST_F(ReplacedFile, KeepsItsAttributes) {
    constexpr DWORD hidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    ASSERT_TRUE(::SetFileAttributesW(wide(path).c_str(), hidden));
    ASSERT_EQ(::GetFileAttributesW(wide(path).c_str()) & hidden, hidden);
    const FileStamp before = stampOf(path).value();
    EXPECT_TRUE(replaceWholeFile(path, "new").ok());
    EXPECT_NE(stampOf(path)->file, before.file) << "replaced, not written over";
    EXPECT_EQ(::GetFileAttributesW(wide(path).c_str()), hidden | FILE_ATTRIBUTE_ARCHIVE) << "to be backed up anew";
    EXPECT_EQ(content(), "new");
    EXPECT_EQ(entries(), 1U);
}

TEST_F(ReplacedFile, StaysReadOnly) {
    ASSERT_TRUE(::SetFileAttributesW(wide(path).c_str(), FILE_ATTRIBUTE_READONLY));
    const Result<Done> written = replaceWholeFile(path, "new");
    ASSERT_FALSE(written.ok());
    EXPECT_NE(written.error().cause, "");
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(entries(), 1U);
    ::SetFileAttributesW(wide(path).c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(ReplacedFile, IsReplacedWhileOthersReadItAndLetItBeReplaced) {
    {
        const Held reader(path, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
        EXPECT_TRUE(replaceWholeFile(path, "new").ok());
        EXPECT_EQ(content(), "new");
        EXPECT_EQ(reader.content(), "old");
    }
    EXPECT_EQ(entries(), 1U);
}

// As a scanner does that looks at every new file.
TEST_F(ReplacedFile, WaitsForWhoHoldsItForAMoment) {
    const FileStamp before = stampOf(path).value();
    std::optional<Held> scanner(std::in_place, path, 0U);
    std::thread scanning([&scanner] {
        ::Sleep(60);
        scanner.reset();
    });
    EXPECT_TRUE(replaceWholeFile(path, "new").ok());
    scanning.join();
    EXPECT_EQ(content(), "new");
    EXPECT_NE(stampOf(path)->file, before.file) << "replaced, not written over";
}

TEST_F(ReplacedFile, IsLeftWholeWhereItsEndIsMapped) {
    const std::string old(200'000, 'o');
    ASSERT_TRUE(replaceWholeFile(path, old).ok());
    const HANDLE file = ::CreateFileW(wide(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    const HANDLE mapping = ::CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
    const void* view = ::MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
    ASSERT_NE(view, nullptr);
    const Result<Done> written = replaceWholeFile(path, "new");
    ::UnmapViewOfFile(view);
    ::CloseHandle(mapping);
    ::CloseHandle(file);
    EXPECT_EQ(content(), written.ok() ? "new" : old) << "no mix";
}

TEST_F(ReplacedFile, IsWrittenInPlaceWhereItsNameIsHeld) {
    const FileStamp mine = stampOf(path).value();
    const Held holder(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
    for (const std::string bytes : {"longer than it was before", "short"}) {
        const Result<Done> written = replaceWholeFile(path, bytes);
        EXPECT_TRUE(written.ok()) << written.error().cause;
        EXPECT_EQ(content(), bytes);
    }
    EXPECT_EQ(stampOf(path)->file, mine.file);
    const Result<Replaced> replaced = replaceKnownFile(path, "mine", mine);
    EXPECT_EQ(readWholeFile(replaced.value().backup).value(), "short") << "others' text is copied";
    EXPECT_EQ(replaced.value().stamp, stampOf(path));
}

TEST_F(ReplacedFile, IsLeftAloneWhereOthersForbidWriting) {
    const Held holder(path, FILE_SHARE_READ);
    const Result<Done> written = replaceWholeFile(path, "new");
    ASSERT_FALSE(written.ok());
    EXPECT_NE(written.error().cause, "");
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(entries(), 1U);
}

TEST_F(ReplacedFile, LeavesNothingBehindThatAKilledSaveLeft) {
    const std::string old = folder.file(".blockhouse-4294967292-7.tmp", "x");
    const std::string young = folder.file(".blockhouse-4294967292-8.tmp", "x");
    const std::string mine = folder.file(".blockhouse-" + std::to_string(::GetCurrentProcessId()) + "-9999.tmp", "x");
    for (const std::string& name : {old, mine})
        std::filesystem::last_write_time(TempFolder::native(name),
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
    EXPECT_TRUE(replaceWholeFile(path, "new").ok());
    const auto isThere = [](const std::string& name) {
        return ::GetFileAttributesW(wide(name).c_str()) != INVALID_FILE_ATTRIBUTES;
    };
    EXPECT_FALSE(isThere(old));
    EXPECT_TRUE(isThere(young));
    EXPECT_TRUE(isThere(mine));
}

TEST_F(ReplacedFile, HiddenAndSystemFilesAreNotThere) {
    const std::string hidden = folder.file("hidden.ini");
    const std::string system = folder.file("system.ini");
    ::SetFileAttributesW(wide(hidden).c_str(), FILE_ATTRIBUTE_HIDDEN);
    ::SetFileAttributesW(wide(system).c_str(), FILE_ATTRIBUTE_SYSTEM);
    EXPECT_EQ(fileNamesIn(folder.path()).value(), std::vector<std::string>{"units.ini"});
    for (const auto& [name, attributes] :
         {std::pair("hidden", FILE_ATTRIBUTE_HIDDEN), std::pair("own look", FILE_ATTRIBUTE_SYSTEM),
          std::pair("system", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)}) {
        ASSERT_TRUE(::CreateDirectoryW(wide(folder.path(name)).c_str(), nullptr));
        ASSERT_TRUE(::SetFileAttributesW(wide(folder.path(name)).c_str(), static_cast<DWORD>(attributes)));
    }
    EXPECT_EQ(folderNamesIn(folder.path()).value(), (std::vector<std::string>{"hidden", "own look"}));
    EXPECT_FALSE(FileExists(hidden));
    EXPECT_FALSE(FileExists(system));
}

TEST_F(ReplacedFile, ItsPathMayBeLong) {
    std::string deep = folder.path();
    while (deep.size() < 600)
        deep += "\\a folder of thirty characters";
    makeFolder(deep);
    const std::string file = deep + "\\units.ini";
    EXPECT_TRUE(replaceWholeFile(file, "made").ok());
    EXPECT_TRUE(replaceWholeFile(file, "new").ok());
    EXPECT_EQ(readWholeFile(file).value(), "new");
    EXPECT_TRUE(FileExists(file));
    EXPECT_EQ(fileNamesIn(deep).value(), std::vector<std::string>{"units.ini"});
    // The library's own removal cannot.
    EXPECT_TRUE(::DeleteFileW(wide("\\\\?\\" + file).c_str()));
    for (; deep.size() > folder.path().size(); deep = folderAbove(deep))
        EXPECT_TRUE(::RemoveDirectoryW(wide("\\\\?\\" + deep).c_str()));
}

TEST_F(ReplacedFile, PipesAndDevicesAreRefusedWithoutAWait) {
    const HANDLE pipe =
        ::CreateNamedPipeW(L"\\\\.\\pipe\\blockhouse-test", PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, 0, 0, 0, nullptr);
    ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
    for (const std::string& name : {std::string("\\\\.\\pipe\\blockhouse-test"), std::string("NUL")}) {
        EXPECT_FALSE(FileExists(name)) << name;
        EXPECT_FALSE(readWholeFile(name).ok()) << name;
        EXPECT_FALSE(FileReader::open(name).ok()) << name;
        EXPECT_FALSE(replaceWholeFile(name, "x").ok()) << name;
    }
    ::CloseHandle(pipe);
}

// Run by the build where files may not grow beyond 100 KB, which stands in for a full disk.
TEST_F(ReplacedFile, DISABLED_StaysWholeOnAFullDisk) {
    const std::string large(200'000, 'x');
    EXPECT_FALSE(replaceWholeFile(path, large).ok());
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(entries(), 1U);
    std::filesystem::create_hard_link(TempFolder::native(path), TempFolder::native(folder.path("second.ini")));
    EXPECT_FALSE(replaceWholeFile(path, large).ok()) << "in place, what lies beyond the old end is written first";
    EXPECT_EQ(content(), "old");
    EXPECT_TRUE(replaceWholeFile(path, "new").ok());
}

TEST(Drives, AreLettersWithHomeFirst) {
    const std::vector<std::string> drives = drivesOf(mountedVolumes(), "C:\\users\\ann");
    ASSERT_GE(drives.size(), 2U);
    EXPECT_EQ(drives[0], "C:\\users\\ann");
    EXPECT_NE(std::find(drives.begin(), drives.end(), "C:\\"), drives.end());
}

} // namespace
} // namespace blockhouse
