#include "findref/DefinitionSearch.h"
#include "findref/name_at_caret.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace blockhouse {
namespace {

std::string searched(DefinitionSearch& search, const TempFolder& folder) {
    while (search.next())
        continue;
    std::string found;
    for (const Definition& each : search.found())
        found += each.path.substr(folder.path().size() + 1) + ":" + std::to_string(each.line) + " " + each.keyword +
                 "@" + std::to_string(each.name.value) + " ";
    return found;
}

TEST(DefinitionSearch, GoesThroughEveryFileOnce) {
    const TempFolder folder;
    folder.file("a.ini", std::string(DefinitionSearch::pieceSize - 4, '\n') + "Weapon Bow\n");
    folder.file("a.txt", "Weapon Bow\n");
    folder.file("b.ini", "End\nSound bow\nWeapon Bow\n");
    folder.file("sub.ini/inner.ini", "Weapon Bow\n");
    EntryList Dirs;
    for (const char* listed : {"gone", "", "sub.ini", "gone, too"})
        Dirs.add(*listed == '\0' ? folder.path() : folder.path(listed));
    Dirs.add(folder.path());
    DefinitionSearch search(Dirs, "Bow");
    const std::string slash(1, static_cast<char>(std::filesystem::path::preferred_separator));
    EXPECT_EQ(searched(search, folder),
              "a.ini:65533 Weapon@65540 b.ini:2 Sound@11 b.ini:3 Weapon@22 sub.ini" + slash + "inner.ini:1 Weapon@8 ");
    ASSERT_TRUE(search.failure());
    EXPECT_EQ(search.failure()->path, folder.path("gone"));
    EXPECT_FALSE(search.next());
}

TEST(DefinitionSearch, EndsWithMoreThanAnybodyLooksThrough) {
    const TempFolder folder;
    std::string text;
    for (std::size_t line = 0; line < 2 * DefinitionSearch::mostFound; ++line)
        text += "Weapon Bow\n";
    folder.file("a.ini", text);
    folder.file("b.ini", text);
    EntryList Dirs;
    Dirs.add(folder.path());
    DefinitionSearch search(Dirs, "bow");
    while (search.next())
        continue;
    EXPECT_GE(search.found().size(), DefinitionSearch::mostFound);
    EXPECT_EQ(search.found().back().path, folder.path("a.ini"));
}

TEST(NameAtCaret, IsWhatStandsAroundIt) {
    const std::string text = "\tWeapon = PRIMARY LongBow;x\r\nEnd";
    std::string names;
    for (std::size_t caret = 0; caret <= text.size(); ++caret) {
        const std::optional<TextRange> name = nameAtCaret(text, caret);
        const std::string shown =
            name ? text.substr(static_cast<std::size_t>(name->start), static_cast<std::size_t>(name->length)) : "-";
        names += names.ends_with(shown + " ") ? "" : shown + " ";
    }
    EXPECT_EQ(names, "- Weapon - PRIMARY LongBow x - End ");
    EXPECT_FALSE(nameAtCaret("", 0));
    EXPECT_EQ(nameAtCaret("a", 99), (TextRange{0, 1}));
}

} // namespace
} // namespace blockhouse
