#include "platform/system/files.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace blockhouse {
namespace {

namespace fs = std::filesystem;

// What only this system has: permissions, pipes among the files, links, names that are no text.
class Files : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "blockhouse-files-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
    }

    void TearDown() override { fs::remove_all(folder_); }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }

    void make(const std::string& name, std::string_view bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
    }

    [[nodiscard]] std::string content(const std::string& name) const {
        std::ostringstream bytes;
        bytes << std::ifstream(folder_ / name, std::ios::binary).rdbuf();
        return bytes.str();
    }

    // Everything in the folder, hidden files included: nothing temporary may stay behind.
    [[nodiscard]] std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    fs::path folder_;
};

const std::string oddBytes = std::string("a\0b", 3) + "\r\n\n\r\xFF\x1A no final newline";

TEST_F(Files, ReadsFilesThatDoNotKnowTheirSize) {
    ASSERT_EQ(fs::file_size("/proc/self/status"), 0U);
    EXPECT_NE(readWholeFile("/proc/self/status").value().find("Pid:"), std::string::npos);
}

TEST_F(Files, RefusesToReadWhatIsNoNormalFile) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);

    struct Case {
        std::string path;
        std::string cause;
    };

    const Case cases[] = {
        {path("missing.ini"), "No such file or directory"},
        {folder_.string(), "Is a directory"},
        {path("pipe"), "Not a normal file"},
        {"/dev/zero", "Not a normal file"},
        {path("missing.ini") + std::string("\0.ini", 5), "No such file or directory"},
    };
    for (const Case& c : cases) {
        const Result<std::string> read = readWholeFile(c.path);
        ASSERT_FALSE(read.ok()) << c.path;
        EXPECT_EQ(read.error().path, c.path);
        EXPECT_EQ(read.error().cause, c.cause);
    }
}

TEST_F(Files, WritesNewFilesAsTheMaskAllows) {
    const mode_t before = ::umask(027);
    EXPECT_TRUE(replaceWholeFile(path("new.ini"), oddBytes).ok());
    ::umask(before);
    EXPECT_EQ(content("new.ini"), oddBytes);
    EXPECT_EQ(fs::status(path("new.ini")).permissions(), fs::perms(0640));
    EXPECT_EQ(entries(), 1U);
}

TEST_F(Files, ReplacesTheWholeFileAtOnce) {
    make("units.ini", "old content, longer than the new one");
    fs::permissions(path("units.ini"), fs::perms(0751));
    std::ifstream openedBefore(path("units.ini"));

    EXPECT_TRUE(replaceWholeFile(path("units.ini"), "new").ok());

    EXPECT_EQ(content("units.ini"), "new");
    EXPECT_EQ(fs::status(path("units.ini")).permissions(), fs::perms(0751));
    EXPECT_EQ(entries(), 1U);
    std::string old;
    std::getline(openedBefore, old);
    EXPECT_EQ(old, "old content, longer than the new one");
}

TEST_F(Files, ReplacesWhatALinkPointsTo) {
    fs::create_directory(folder_ / "sub");
    make("sub/real.ini", "old");
    fs::create_symlink("sub/real.ini", folder_ / "inner.ini");
    fs::create_symlink(folder_ / "inner.ini", folder_ / "outer.ini");
    fs::create_symlink("sub/later.ini", folder_ / "dangling.ini");

    EXPECT_TRUE(replaceWholeFile(path("outer.ini"), "new").ok());
    EXPECT_TRUE(replaceWholeFile(path("dangling.ini"), "made").ok());

    EXPECT_EQ(content("sub/real.ini"), "new");
    EXPECT_EQ(content("sub/later.ini"), "made");
    for (const char* link : {"inner.ini", "outer.ini", "dangling.ini"})
        EXPECT_TRUE(fs::is_symlink(folder_ / link)) << link;
    EXPECT_EQ(entries(), 4U);
}

TEST_F(Files, TellsWhyItCannotWrite) {
    fs::create_directory(folder_ / "folder");
    fs::create_symlink("loop", folder_ / "loop");
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    make("file", "x");

    struct Case {
        std::string name;
        std::string cause;
    };

    const Case cases[] = {
        {"gone/units.ini", "No such file or directory"},
        {"file/units.ini", "Not a directory"},
        {"folder", "Is a directory"},
        {"pipe", "Not a normal file"},
        {"loop", "Too many levels of symbolic links"},
    };
    for (const Case& c : cases) {
        const Result<Done> written = replaceWholeFile(path(c.name), "new");
        ASSERT_FALSE(written.ok()) << c.name;
        EXPECT_EQ(written.error().path, path(c.name));
        EXPECT_EQ(written.error().cause, c.cause);
    }
    EXPECT_EQ(entries(), 4U);
}

// Stands in for a full disk, which would need a file system of its own: no file may grow beyond 64 KB.
class SmallFilesOnly {
public:
    SmallFilesOnly() : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before_), 0);
        const rlimit small{65536, before_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    }

    ~SmallFilesOnly() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

// A folder that takes no new files. Root may write anywhere, so it acts as somebody else meanwhile.
class ClosedFolder {
public:
    explicit ClosedFolder(fs::path folder) : folder_(std::move(folder)) {
        fs::permissions(folder_, fs::perms(0555));
        EXPECT_TRUE(user_ != 0 || ::seteuid(65534) == 0);
    }

    ~ClosedFolder() {
        EXPECT_EQ(::seteuid(user_), 0);
        fs::permissions(folder_, fs::perms(0755));
    }

private:
    fs::path folder_;
    uid_t user_ = ::geteuid();
};

TEST_F(Files, KeepTheOldContentWhenWritingFailsHalfWay) {
    make("units.ini", "old");
    const Result<Done> written = [&] {
        const SmallFilesOnly limit;
        return replaceWholeFile(path("units.ini"), std::string(200'000, 'x'));
    }();
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().cause, "File too large");
    EXPECT_EQ(content("units.ini"), "old");
    EXPECT_EQ(entries(), 1U);
}

TEST_F(Files, AreWrittenInPlaceWhereTheFolderTakesNoNewOnes) {
    make("units.ini", "old content");
    make("protected.ini", "old");
    fs::permissions(path("units.ini"), fs::perms(0666));
    fs::permissions(path("protected.ini"), fs::perms(0444));
    {
        const ClosedFolder closed(folder_);
        for (const std::string bytes : {"new", "new and longer than before"}) {
            EXPECT_TRUE(replaceWholeFile(path("units.ini"), bytes).ok());
            EXPECT_EQ(content("units.ini"), bytes);
        }
        EXPECT_EQ(replaceWholeFile(path("new.ini"), "x").error().cause, "Permission denied");
        EXPECT_EQ(replaceWholeFile(path("protected.ini"), "x").error().cause, "Permission denied");
        const SmallFilesOnly limit;
        EXPECT_EQ(replaceWholeFile(path("units.ini"), std::string(200'000, 'x')).error().cause, "File too large");
    }
    EXPECT_EQ(content("units.ini"), "new and longer than before");
    EXPECT_EQ(content("protected.ini"), "old");
    EXPECT_EQ(entries(), 2U);
}

TEST_F(Files, StayWriteProtectedInAFolderThatTakesNewOnes) {
    make("protected.ini", "old");
    fs::permissions(path("protected.ini"), fs::perms(0444));
    fs::permissions(folder_, fs::perms(0777));
    const uid_t user = ::geteuid();
    ASSERT_TRUE(user != 0 || ::seteuid(65534) == 0);
    const Result<Done> written = replaceWholeFile(path("protected.ini"), "x");
    ASSERT_EQ(::seteuid(user), 0);
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().cause, "Permission denied");
    EXPECT_EQ(content("protected.ini"), "old");
}

TEST_F(Files, ExistOnlyWhenNormalAndVisible) {
    make("there.ini", "");
    make(".hidden.ini", "");
    fs::create_directory(folder_ / "folder");
    fs::create_symlink("there.ini", folder_ / "link.ini");
    fs::create_symlink("gone.ini", folder_ / "dangling.ini");
    EXPECT_TRUE(FileExists(path("there.ini")));
    EXPECT_TRUE(FileExists(path("link.ini")));
    for (const char* name : {"gone.ini", ".hidden.ini", "folder", "dangling.ini", "there.ini/x"})
        EXPECT_FALSE(FileExists(path(name))) << name;
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(path("there.ini") + '\0'));
}

TEST_F(Files, ListsNormalFilesInOrder) {
    for (const char* name : {"b.ini", "A.ini", "a.INI", "_.ini", "C.txt", ".hidden.ini", "\xC9.ini", "\xE8.ini"})
        make(name, "");
    fs::create_directory(folder_ / "folder.ini");
    fs::create_symlink("b.ini", folder_ / "link.ini");
    fs::create_symlink("folder.ini", folder_ / "linked_folder.ini");
    fs::create_symlink("gone", folder_ / "dangling.ini");

    using Names = std::vector<std::string>;
    EXPECT_EQ(fileNamesIn(folder_.string()).value(),
              (Names{"_.ini", "A.ini", "a.INI", "b.ini", "C.txt", "link.ini", "\xE8.ini", "\xC9.ini"}));
    EXPECT_EQ(fileNamesIn(folder_.string(), "?.txt").value(), Names{"C.txt"});
    EXPECT_EQ(fileNamesIn(path("gone")).error().cause, "No such file or directory");
    EXPECT_EQ(fileNamesIn(path("b.ini")).error().cause, "Not a directory");
}

TEST_F(Files, ListsFoldersInOrder) {
    for (const char* name : {"b", "A", ".hidden", "\xFF"})
        fs::create_directory(folder_ / name);
    make("file.ini", "");
    fs::create_directory_symlink("b", folder_ / "linked");
    fs::create_symlink("file.ini", folder_ / "linked_file");
    EXPECT_EQ(folderNamesIn(folder_.string()).value(),
              (std::vector<std::string>{"A", "b", "linked", "\xFF", ".hidden"}));
    EXPECT_EQ(folderNamesIn(path("gone")).error().path, path("gone"));
    EXPECT_EQ(folderNamesIn(path("file.ini")).error().cause, "Not a directory");
}

} // namespace
} // namespace blockhouse
