#include "files/MountedVolume.hpp"

#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora::test {

namespace {
const FileMount root { "/", false, false };
const FileMount stick { "/media/reader/STICK", false, true };
const FileMount server { "/mnt/server", true, false };
const FileMount networkHome { "/home", true, false };
}

TEST(MountedVolume, IsAStickOrAServer)
{
    EXPECT_TRUE(isMountedVolume(stick, root));
    EXPECT_TRUE(isMountedVolume(server, root));
    EXPECT_TRUE(isMountedVolume(stick, networkHome));
}

TEST(MountedVolume, IsNotTheComputersOwnDisk)
{
    EXPECT_FALSE(isMountedVolume(root, root));
    EXPECT_FALSE(isMountedVolume({ "/srv", false, false }, root));
}

TEST(MountedVolume, IsNotTheOneOfTheHomeFolder)
{
    EXPECT_FALSE(isMountedVolume(networkHome, networkHome));
    EXPECT_FALSE(isMountedVolume({ "/media/reader/HOME", false, true }, { "/media/reader/HOME", false, true }));
}

TEST(MountedVolume, IsToldByTheSystem)
{
    const TemporaryFolder folder;
    const auto mount = mountOf(folder.path());
    EXPECT_TRUE(mount.folder.starts_with("/"));
    EXPECT_FALSE(mount.isVolume);
    EXPECT_EQ(mountOf("/proc/version").folder, "/proc");
    EXPECT_FALSE(isMountedVolume(mountOf("/proc/version"), mount));
}

}
