#include "findref/ReferenceSearch.h"
#include "tests/findref/slow_search.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <random>

namespace blockhouse {
namespace {

std::string listed(const HitList& hits) {
    std::string lines;
    for (int i = 0; i < hits.count(); ++i)
        lines += hits.displayLine(i) + "\n";
    return lines;
}

using Step = ReferenceSearch::Step;

bool isEnd(const Step& step) {
    return std::holds_alternative<ReferenceSearch::Ended>(step);
}

void runToTheEnd(ReferenceSearch& search, std::string_view what) {
    while (!isEnd(search.next(what)))
        continue;
}

class ReferenceSearchTest : public testing::Test {
protected:
    std::string found(std::string_view what) {
        ReferenceSearch search(Dirs_, hits_);
        runToTheEnd(search, what);
        return listed(hits_);
    }

    TempFolder temp_;
    EntryList Dirs_;
    HitList hits_;
};

TEST_F(ReferenceSearchTest, SaysWhetherTheListWasTooShort) {
    for (const int hits : {HitList::mostHits, HitList::mostHits + 1}) {
        temp_.file("many.ini", std::string(static_cast<std::size_t>(hits), 'x'));
        Dirs_.clear();
        Dirs_.add(temp_.path());
        ReferenceSearch search(Dirs_, hits_);
        Step step = search.next("x");
        while (!isEnd(step))
            step = search.next("x");
        EXPECT_EQ(std::get<ReferenceSearch::Ended>(step).tooManyHits, hits > HitList::mostHits);
        EXPECT_EQ(hits_.count(), HitList::mostHits);
    }
}

TEST_F(ReferenceSearchTest, FindsWhatASearchOfEachBlockAloneFinds) {
    std::mt19937 random(20261123);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    const std::string letters = "aAbB\0\r\n\xC9\xE9"
                                "x";
    Dirs_.add(temp_.path());
    std::size_t hits = 0;
    for (int round = 0; round < 150; ++round) {
        const std::size_t kinds = 1 + below(letters.size());
        const std::size_t around = below(3) == 0 ? ReferenceSearch::pieceSize : 1024 * below(5);
        std::string bytes(around + below(2100) - std::min<std::size_t>(around, 1050), ' ');
        for (char& byte : bytes)
            byte = letters[below(kinds)];
        const std::size_t length = below(10) == 0 ? 1 + below(1100) : 1 + below(4);
        std::string what(length, letters[below(kinds)]);
        what.back() = letters[below(kinds)];
        // Right before, on and behind a boundary.
        for (std::size_t block = 0; block < bytes.size(); block += 1024 * (1 + below(3))) {
            const std::size_t at = block + below(2 * length + 2);
            if (at >= length && at < bytes.size())
                bytes.replace(at - length, length, what);
        }
        temp_.file("random.ini", bytes);
        const std::string expected = hitsBlockByBlock("random.ini", bytes, what);
        const auto expectedCount = std::count(expected.begin(), expected.end(), '\n');
        if (expectedCount <= HitList::mostHits) {
            ASSERT_EQ(found(what), expected) << "round " << round << ", " << bytes.size() << " bytes, '" << what << "'";
            hits += static_cast<std::size_t>(expectedCount);
        }
    }
    EXPECT_GT(hits, 10'000U);
}

TEST_F(ReferenceSearchTest, FindsAtTheEdgesOfBlocks) {
    struct Case {
        const char* name;
        std::string bytes;
        const char* what;
        const char* hits;
    };

    const std::string block(1024, '.');
    const Case cases[] = {
        {"the first byte", "Weapon", "weapon", "a.ini :1\n"},
        {"the second block's first byte", block + "weaponSet", "WEAPON", "a.ini :1025\n"},
        {"across the boundary", std::string(1021, '.') + "weapon", "weapon", ""},
        {"up to the boundary", std::string(1018, '.') + "weapon", "weapon", "a.ini :1019\n"},
        {"overlapping", "baaa", "aa", "a.ini :2\na.ini :3\n"},
        {"whole blocks and no more", block + block, "...........", "*2028"},
        {"a block as text", block + block, block.c_str(), "a.ini :1\na.ini :1025\n"},
        {"an empty text", "weapon", "", ""},
    };
    Dirs_.add(temp_.path());
    for (const Case& each : cases) {
        temp_.file("a.ini", each.bytes);
        const std::string hits = found(each.what);
        if (each.hits[0] == '*')
            EXPECT_EQ("*" + std::to_string(hits_.count()), each.hits) << each.name;
        else
            EXPECT_EQ(hits, each.hits) << each.name;
    }
}

TEST_F(ReferenceSearchTest, GoesThroughDirectoriesFilesAndPositionsInOrder) {
    // Without regard to case the names stand in alphabetical order.
    for (const char* name :
         {"second/b c.INI", "second/A.ini", "second/ini", "second/ini.bak", "second/x.ini.old", "second/\xC3\xBF.ini",
          "second/foo.inix", "second/readme.txt", "second/sub.ini/inner.ini", "first/only.Ini"})
        temp_.file(name, "x.x");
    for (const char* name : {"second/hitless.ini", "second/hitless2.ini", "first/none.ini"})
        temp_.file(name, ".");
    for (const char* directory : {"second", "first", "second"})
        Dirs_.add(temp_.path(directory));
    const std::string ofSecond = "A.ini :1\nA.ini :3\nb c.INI :1\nb c.INI :3\nini :1\nini :3\nini.bak :1\nini.bak :3\n"
                                 "x.ini.old :1\nx.ini.old :3\n\xC3\xBF.ini :1\n\xC3\xBF.ini :3\n";
    EXPECT_EQ(found("X"), ofSecond + "only.Ini :1\nonly.Ini :3\n" + ofSecond);
    EXPECT_EQ(hits_.path(2), temp_.path("second/b c.INI"));
    EXPECT_EQ(hits_.position(3).value, 3);
    EXPECT_EQ(hits_.text(3), "X");
    EXPECT_EQ(hits_.path(12), temp_.path("first/only.Ini"));
}

TEST_F(ReferenceSearchTest, TellsWhereItIs) {
    temp_.file("full/a.ini", std::string(ReferenceSearch::pieceSize + 1, '.'));
    temp_.file("full/b.ini");
    Dirs_.add(temp_.folder("empty"));
    Dirs_.add(temp_.path("full"));
    ReferenceSearch search(Dirs_, hits_);
    std::string steps;
    for (Step step = search.next("x"); !isEnd(step); step = search.next("x")) {
        if (const auto* directory = std::get_if<ReferenceSearch::DirectoryReached>(&step))
            steps += "d" + std::to_string(directory->number) + " ";
        else if (const auto* file = std::get_if<ReferenceSearch::FileReached>(&step))
            steps += "f" + std::to_string(file->index) + "/" + std::to_string(file->last) + " ";
        else
            steps += "s ";
    }
    EXPECT_EQ(steps, "d1 d2 f0/1 s s f1/1 s ");
}

TEST_F(ReferenceSearchTest, AChangedTextCountsFromTheNextPieceOn) {
    std::string bytes(2 * ReferenceSearch::pieceSize, 'a');
    bytes[5] = bytes[ReferenceSearch::pieceSize + 5] = 'b';
    temp_.file("a.ini", bytes);
    Dirs_.add(temp_.path());
    ReferenceSearch search(Dirs_, hits_);
    for (int step = 0; step < 3; ++step)
        ASSERT_FALSE(isEnd(search.next("B")));
    runToTheEnd(search, "aBa");
    EXPECT_EQ(listed(hits_), "a.ini :6\na.ini :65541\n");
    EXPECT_EQ(hits_.text(0), "B");
    EXPECT_EQ(hits_.text(1), "aBa");
}

TEST_F(ReferenceSearchTest, KeepsNoMoreHitsThanTheListsCount) {
    temp_.file("a.ini", std::string(32766, 'x'));
    temp_.file("b.ini", "xxx");
    temp_.file("c.ini", "x");
    Dirs_.add(temp_.path());
    const std::string hits = found("x");
    EXPECT_EQ(hits_.count(), 32767);
    EXPECT_TRUE(hits.ends_with("a.ini :32766\nb.ini :1\n"));
}

TEST_F(ReferenceSearchTest, EndsQuietlyAtAFailure) {
    for (const char* name : {"one/a.ini", "one/b.ini", "two/a.ini"})
        temp_.file(name, "x");
    const std::string one = temp_.path("one");
    const std::string two = temp_.path("two");

    struct Case {
        const char* name;
        std::vector<std::string> directories;
        std::function<void()> whenFilesAreListed;
        const char* hits;
    };

    const Case cases[] = {
        {"a directory that is not there", {one, temp_.path("none"), two}, [] {}, "a.ini :1\nb.ini :1\n"},
        {"a file instead of a directory", {one + "/a.ini", two}, [] {}, ""},
        {"an empty entry", {two, "", one}, [] {}, "a.ini :1\n"},
        {"fewer entries than at the start", {two, one}, [this] { Dirs_.clear(); }, "a.ini :1\n"},
        {"more entries than at the start", {two}, [&] { Dirs_.add(one); }, "a.ini :1\n"},
        {"a file that vanished", {one, two}, [this] { std::filesystem::remove(temp_.path("one/a.ini")); }, ""},
    };
    for (const Case& each : cases) {
        Dirs_.clear();
        for (const std::string& directory : each.directories)
            Dirs_.add(directory);
        ReferenceSearch search(Dirs_, hits_);
        Step step;
        do {
            step = search.next("x");
        } while (std::holds_alternative<ReferenceSearch::DirectoryReached>(step));
        each.whenFilesAreListed();
        while (!isEnd(step))
            step = search.next("x");
        EXPECT_EQ(listed(hits_), each.hits) << each.name;
    }
}

} // namespace
} // namespace blockhouse
