#include "platform/system/folders.h"
#include "platform/text/paths.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace blockhouse {
namespace {

TEST(Folders, AreAbsoluteWithoutASeparatorAtTheEnd) {
    const std::string here = std::filesystem::current_path().string();
#ifdef _WIN32
    const std::pair<std::string, std::string> cases[] = {
        {"C:\\a\\b\\\\", "C:\\a\\b"},
        {"C:/a/b/", "C:\\a\\b"},
        {"C:\\", "C:\\"},
        {"C:\\a b\\\xD0\x96", "C:\\a b\\\xD0\x96"},
        {"\\\\host\\share\\", "\\\\host\\share"},
#else
    const std::pair<std::string, std::string> cases[] = {
        {"/a/b", "/a/b"}, {"/a/b//", "/a/b"},
        {"/", "/"},       {"/a b/\xE9", "/a b/\xE9"},
#endif
        {"", ""},
        {"data/", joinPath(here, "data")},
    };
    for (const auto& [entry, path] : cases)
        EXPECT_EQ(absoluteFolder(entry), path) << entry;
}

TEST(Folders, AreMadeWithThoseAboveThem) {
    const TempFolder temp;
    const std::string inner = joinPath(joinPath(temp.path(), "D\xC3\xA4 \xD0\x96"), "inner");
    EXPECT_FALSE(takesNewFiles(inner));
    makeFolder(inner);
    makeFolder(inner);
    EXPECT_TRUE(takesNewFiles(inner));
    EXPECT_TRUE(std::filesystem::is_empty(temp.root() / u8"D\u00E4 \u0416" / "inner"));
}

} // namespace
} // namespace blockhouse
