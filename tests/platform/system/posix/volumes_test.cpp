#include "platform/system/volumes.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(Drives, AreTheVolumesThatHoldData) {
    const std::vector<Volume> volumes{
        {"/boot", "ext4"}, {"/proc", "proc"},     {"/", "btrfs"},          {"/run/user/1000", "tmpfs"},
        {"/data", "xfs"},  {"/dev/shm", "tmpfs"}, {"/snap/x", "squashfs"}, {"/run/media/ann/STICK", "vfat"},
        {"/data", "xfs"},  {"/running", "ext4"},
    };
    EXPECT_EQ(drivesOf(volumes, "/home/ann"),
              (std::vector<std::string>{"/", "/home/ann", "/boot", "/data", "/run/media/ann/STICK", "/running"}));
    EXPECT_EQ(drivesOf({{"C:/", "NTFS"}, {"D:/", "FAT"}}, "C:/"), (std::vector<std::string>{"C:/", "D:/"}));
    EXPECT_EQ(drivesOf({}, ""), std::vector<std::string>());
}

} // namespace
} // namespace blockhouse
