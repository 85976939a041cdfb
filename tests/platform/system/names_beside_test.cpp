#include "platform/system/names_beside.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(NamesBeside, ATemporaryNameTellsWhoseItIs) {
    EXPECT_EQ(processOfTemporary(temporaryName(4'294'967'295, 12)), 4'294'967'295U);
    for (const char* name : {".blockhouse-7.tmp", ".blockhouse-7-7.tmp2", ".blockhouse-7-x.tmp", "blockhouse-7-7.tmp",
                             ".blockhouse-0-7.tmp", ".blockhouse--7.tmp", ".blockhouse-7-7-7.tmp", ".blockhouse-.tmp"})
        EXPECT_FALSE(processOfTemporary(name)) << name;
}

TEST(NamesBeside, ABackupKeepsTheStem) {
    const std::pair<const char*, const char*> cases[] = {
        {"units.ini", "units"}, {"units.mod.ini", "units.mod"}, {".units", ".units"}, {"units", "units"}};
    for (const auto& [name, stem] : cases)
        for (const auto& [number, end] : {std::pair(1, ".bak"), std::pair(3, " (3).bak")}) {
            const std::string backup = backupName(name, number);
            EXPECT_TRUE(backup.starts_with(std::string(stem) + " 20") && backup.ends_with(end)) << backup;
            EXPECT_EQ(backup.size(),
                      std::string(stem).size() + std::string(" 2026-11-23 18.38.05").size() + std::string(end).size());
        }
}

} // namespace
} // namespace blockhouse
