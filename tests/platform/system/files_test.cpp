#include "platform/system/FileReader.h"
#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace blockhouse {
namespace {

namespace fs = std::filesystem;

class AnyFile : public testing::Test {
protected:
    // Everything in the folder: nothing temporary may stay behind.
    [[nodiscard]] std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.root()), {}));
    }

    TempFolder folder;
};

const std::string oddBytes = std::string("a\0b", 3) + "\r\n\n\r\xFF\x1A no final newline";

// "Dä Ж" and "Panzer ü Ж.ini".
const std::string oddFolder = "D\xC3\xA4 \xD0\x96";
const std::string oddFile = "Panzer \xC3\xBC \xD0\x96.ini";

TEST_F(AnyFile, IsReadToTheLastByte) {
    folder.file("odd.ini", oddBytes);
    folder.file("empty.ini", "");
    folder.file("big.ini", std::string(3'000'000, 'x'));
    EXPECT_EQ(readWholeFile(folder.path("odd.ini")).value(), oddBytes);
    EXPECT_EQ(readWholeFile(folder.path("empty.ini")).value(), "");
    EXPECT_EQ(readWholeFile(folder.path("big.ini")).value(), std::string(3'000'000, 'x'));
}

TEST_F(AnyFile, IsReplacedWholeUnderAnyName) {
    const std::string path = folder.file(oddFolder + "/" + oddFile, "old content, longer than the new one");
    for (const std::string& bytes : {oddBytes, std::string(), std::string(3'000'000, 'x')}) {
        const Result<Done> written = replaceWholeFile(path, bytes);
        ASSERT_TRUE(written.ok()) << written.error().cause;
        EXPECT_EQ(readWholeFile(path).value(), bytes);
    }
    const std::string made = folder.path(oddFolder + "/new " + oddFile);
    EXPECT_TRUE(replaceWholeFile(made, "new").ok());
    EXPECT_EQ(readWholeFile(made).value(), "new");
    EXPECT_EQ(fileNamesIn(folder.path(oddFolder)).value(), (std::vector<std::string>{"new " + oddFile, oddFile}));
    EXPECT_TRUE(FileExists(path));
    EXPECT_FALSE(FileExists(folder.path(oddFolder)));
    EXPECT_EQ(folderNamesIn(folder.path()).value(), std::vector<std::string>{oddFolder});
}

TEST_F(AnyFile, IsRefusedWithACauseWhereItIsNone) {
    folder.folder("folder");
    folder.file("file");
    for (const char* name : {"gone/units.ini", "file/units.ini", "folder"}) {
        const Result<Done> written = replaceWholeFile(folder.path(name), "new");
        ASSERT_FALSE(written.ok()) << name;
        EXPECT_EQ(written.error().path, folder.path(name));
        EXPECT_NE(written.error().cause, "");
        EXPECT_FALSE(readWholeFile(folder.path(name)).ok()) << name;
    }
    EXPECT_EQ(replaceWholeFile(folder.path("folder"), "new").error().cause, "Is a directory");
    EXPECT_EQ(readWholeFile(folder.path("folder")).error().cause, "Is a directory");
    EXPECT_FALSE(fileNamesIn(folder.path("gone")).ok());
    EXPECT_FALSE(folderNamesIn(folder.path("file")).ok());
    EXPECT_FALSE(readWholeFile(folder.path("file") + std::string("\0.ini", 5)).ok()) << "not cut at the NUL";
    EXPECT_FALSE(replaceWholeFile(folder.path("file") + std::string("\0.ini", 5), "x").ok());
    EXPECT_EQ(readWholeFile(folder.file("three", "old"), 2).error().cause, "File too large");
    EXPECT_EQ(entries(), 3U);
}

TEST_F(AnyFile, IsWrittenToTheWorkingDirectoryToo) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.root());
    const bool written = replaceWholeFile("bare.ini", "x").ok() && replaceWholeFile("bare.ini", "yy").ok();
    fs::current_path(before);
    EXPECT_TRUE(written);
    EXPECT_EQ(readWholeFile(folder.path("bare.ini")).value(), "yy");
}

TEST_F(AnyFile, IsReadInPieces) {
    folder.file("file.ini", "abcdefgh");
    Result<FileReader> reader = FileReader::open(folder.path("file.ini"));
    ASSERT_TRUE(reader.ok());
    FileReader file = std::move(reader).value();
    std::string read;
    std::array<char, 3> room{};
    for (const std::size_t expected : {3U, 3U, 2U, 0U}) {
        EXPECT_EQ(file.read(room).value(), expected);
        read.append(room.data(), expected);
    }
    EXPECT_EQ(read, "abcdefgh");
    EXPECT_EQ(FileReader::open(folder.path()).error().cause, "Is a directory");
    EXPECT_FALSE(FileReader::open(folder.path("gone")).ok());
}

// Others write in place, as most programs do.
void writeAsOthers(const std::string& path, std::string_view bytes) {
    std::ofstream(TempFolder::native(path), std::ios::binary) << bytes;
}

TEST_F(AnyFile, WhatOthersWroteIsKeptBeside) {
    const std::string path = folder.file("units.ini", "old");
    const FileStamp known = readStampedFile(path).value().stamp;
    const auto saved = [&](const char* bytes, const std::optional<FileStamp>& stamp) {
        const Result<Replaced> replaced = replaceKnownFile(path, bytes, stamp);
        EXPECT_TRUE(replaced.ok());
        EXPECT_EQ(readWholeFile(path).value(), bytes);
        EXPECT_EQ(replaced.value().stamp, stampOf(path)) << "what was written is known";
        return replaced.value();
    };
    const FileStamp mine = saved("mine", known).stamp;
    EXPECT_EQ(entries(), 1U) << "nobody else wrote";
    writeAsOthers(path, "theirs");
    const std::string kept = saved("mine again", mine).backup;
    EXPECT_EQ(readWholeFile(kept).value(), "theirs");
    const std::string name = LastPathPart(kept);
    ASSERT_EQ(name.size(), std::strlen("units 2026-11-23 18.38.05.bak"));
    EXPECT_EQ(name.substr(0, 8), "units 20");

    writeAsOthers(path, "theirs, too");
    const std::string second = saved("mine for ever", mine).backup;
    EXPECT_NE(second, kept) << "kept names are not taken again";
    EXPECT_EQ(readWholeFile(second).value(), "theirs, too");
    EXPECT_EQ(readWholeFile(kept).value(), "theirs");

    fs::remove(TempFolder::native(path));
    EXPECT_EQ(saved("back", mine).backup, "") << "gone, there is nothing to keep";
    writeAsOthers(path, "chosen to be written over");
    EXPECT_EQ(saved("over", std::nullopt).backup, "");
}

TEST_F(AnyFile, KeepsItsFurtherNames) {
    const std::string path = folder.file("units.ini", "old");
    const std::string second = folder.path("second.ini");
    fs::create_hard_link(TempFolder::native(path), TempFolder::native(second));
    EXPECT_TRUE(replaceWholeFile(path, "new").ok());
    EXPECT_EQ(readWholeFile(second).value(), "new");
    EXPECT_TRUE(replaceWholeFile(second, "newer").ok());
    EXPECT_EQ(readWholeFile(path).value(), "newer");
}

TEST_F(AnyFile, KeepsANameWithoutAnExtensionWhole) {
    for (const char* name : {".units", "units", ".units.d/units"}) {
        const std::string file = folder.file(name, "theirs");
        const Result<Replaced> replaced = replaceKnownFile(file, "mine", FileStamp{});
        EXPECT_EQ(replaced.value().backup.find(file + " 20"), 0U) << replaced.value().backup;
    }
}

TEST(Pattern, MatchesByWildcards) {
    struct Case {
        std::string_view pattern;
        std::vector<std::string_view> taken;
        std::vector<std::string_view> left;
    };

    const Case cases[] = {
        {"*ini.*",
         {"data.ini", "DATA.INI", "ini.bak", "ini", "xini.", "a.ini.b.ini"},
         {"foo.inix", "readme.txt", "in"}},
        {"", {"anything", ""}, {}},
        {"*.*", {"a.b", "no_dot"}, {}},
        {"a?c", {"abc", "A.C"}, {"ac", "abbc"}},
        {"a*b*c", {"abc", "axxbxbc"}, {"ab", "acb", "abcd"}},
        {"*aab", {"aaab", "aabaab"}, {"aaba"}},
        {"units.ini", {"Units.INI"}, {"units.in", "units.inix", "xunits.ini"}},
    };
    for (const Case& c : cases) {
        for (const std::string_view name : c.taken)
            EXPECT_TRUE(matchesPattern(name, c.pattern)) << name << " by " << c.pattern;
        for (const std::string_view name : c.left)
            EXPECT_FALSE(matchesPattern(name, c.pattern)) << name << " by " << c.pattern;
    }
}

} // namespace
} // namespace blockhouse
