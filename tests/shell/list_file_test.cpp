#include "shell/list_file.h"

#include <gtest/gtest.h>

#include <random>

namespace blockhouse {
namespace {

using Fields = std::vector<std::string>;

Fields read(std::string bytes) {
    ListFileReader reader(std::move(bytes));
    Fields fields;
    while (std::optional<std::string> field = reader.next())
        fields.push_back(*std::move(field));
    EXPECT_FALSE(reader.next()) << "the end stays the end";
    return fields;
}

EntryList listOf(const Fields& entries) {
    EntryList list;
    for (const std::string& entry : entries)
        list.add(entry);
    return list;
}

TEST(ListFile, SplitsLinesAndFields) {
    const struct {
        std::string bytes;
        Fields fields;
    } cases[] = {
        {"", {}},
        {"\r\n", {""}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\r\nb", {"a", "b"}},
        {"a\r\n\r\nb\r\n", {"a", "", "b"}},
        {"C:\\Games\\My Data, Old\\Ini\r\n", {"C:\\Games\\My Data", "Old\\Ini"}},
        {"a,,b,\r\nc", {"a", "", "b", "", "c"}},
        {",", {"", ""}},
        {"a,", {"a", ""}},
        {"   a b  ,  c\r\n   \r\n", {"a b  ", "c", ""}},
        {"\ta", {"\ta"}},
        {"\"a, b\",c", {"a, b", "c"}},
        {"  \" a\"  ,b", {" a", "b"}},
        {"\"\"", {""}},
        {"\"a\"b,c", {"a", "b", "c"}},
        {"\"a\"\"b\"", {"a", "b"}},
        {"a\"b\"", {"a\"b\""}},
        {"\"a,b\r\nc,d", {"a,b", "c", "d"}},
        {"\"", {""}},
        {"a\rb\nc\n\rd", {"a", "b", "c", "", "d"}},
        {std::string("a\0b,\0", 5), {std::string("a\0b", 3), std::string(1, '\0')}},
        {"\xC4\xFF\x1A", {"\xC4\xFF\x1A"}},
    };

    for (const auto& [bytes, fields] : cases)
        EXPECT_EQ(read(bytes), fields) << testing::PrintToString(bytes);
}

TEST(ListFile, WhatIsWrittenIsReadBackSaveForTheFormatsLimits) {
    const Fields plain{"/home/me/data", "C:\\Data\\Ini", "", "Side"};
    EXPECT_EQ(writtenList(listOf(plain)), "/home/me/data\r\nC:\\Data\\Ini\r\n\r\nSide\r\n");
    EXPECT_EQ(read(writtenList(listOf(plain))), plain);

    const std::string alone = "Armor\r\n";
    EXPECT_EQ(writtenList(listOf({alone})), "Armor\r\n\r\n");
    EXPECT_EQ(read(writtenList(listOf({alone}))), (Fields{"Armor", ""}));

    EXPECT_EQ(writtenList(EntryList()), "");
    const std::string enormous(3'000'000, 'x');
    EXPECT_EQ(read('"' + enormous + ",\",y"), (Fields{enormous + ",", "y"}));
}

// The same rules once more, the slow way: whole lines first, then fields cut off their front.
Fields readSlowly(std::string bytes) {
    Fields fields;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        std::string line = bytes.substr(0, end);
        bytes.erase(0, end);
        bytes.erase(0, bytes.starts_with("\r\n") ? 2 : 1);
        for (bool more = true; more;) {
            while (line.starts_with(' '))
                line.erase(0, 1);
            const bool isQuoted = line.starts_with('"');
            if (isQuoted)
                line.erase(0, 1);
            const std::size_t length = std::min(line.find(isQuoted ? '"' : ','), line.size());
            fields.push_back(line.substr(0, length));
            line.erase(0, length);
            if (isQuoted)
                line.erase(0, 1);
            while (line.starts_with(' '))
                line.erase(0, 1);
            more = !line.empty();
            if (line.starts_with(','))
                line.erase(0, 1);
        }
    }
    return fields;
}

TEST(ListFile, IsSavedWithoutTakingBackWhatOthersWrote) {
    const auto list = [](std::initializer_list<const char*> entries) {
        EntryList made;
        for (const char* entry : entries)
            made.add(entry);
        return made;
    };
    const EntryList one = list({"a", "b"});

    const struct {
        const char* what;
        EntryList entries;
        EntryList before;
        const char* file;
        ListSave expected;
    } cases[] = {
        {"as it was", one, one, "a\r\nb\r\n", ListSave::Nothing},
        {"as it was, in other words", one, one, "\"a\", b", ListSave::Nothing},
        {"edited", list({"a"}), one, "a\r\nb\r\n", ListSave::Write},
        {"others wrote, and it is unchanged", one, one, "a\r\nb\r\nc\r\n", ListSave::Nothing},
        {"others wrote", list({"a"}), one, "a\r\nb\r\nc\r\n", ListSave::KeepTheOther},
        {"others wrote the same", list({"a"}), one, "a\r\n", ListSave::Nothing},
        {"cut by its comma when it is read", list({"a,b", "c"}), list({"a,b"}), "a,b\r\n", ListSave::Write},
    };

    for (const auto& c : cases)
        EXPECT_EQ(listSave(c.entries, c.before, c.file), c.expected) << c.what;
}

TEST(ListFile, ReadsAnyBytesLikeTheSlowReader) {
    std::mt19937 random(20);
    const std::string alphabet("ab,,\"\"  \r\n\r\n\0", 13);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes(random() % 24, '\0');
        for (char& byte : bytes)
            byte = round % 8 == 0 ? static_cast<char>(random()) : alphabet[random() % alphabet.size()];
        ASSERT_EQ(read(bytes), readSlowly(bytes)) << testing::PrintToString(bytes);
    }
}

TEST(ListFile, OfDirectoriesMayBeginWithAByteOrderMark) {
    const std::string marked = "\xEF\xBB\xBF/a\r\n";
    EXPECT_EQ(listTextFrom(directoryListFile, marked), "/a\r\n");
    EXPECT_EQ(listTextFrom(jumpListFile, marked), marked) << "bytes of documents";
    EXPECT_EQ(listTextFrom(directoryListFile, listBytesOf(directoryListFile, "/a\r\n")), "/a\r\n");
}

} // namespace
} // namespace blockhouse
