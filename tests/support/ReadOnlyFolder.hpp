#pragma once

#include "files/Files.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

namespace pagora::test {

// Undoes `makeReadOnly`.
inline void makeWritable(const std::string& folder)
{
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    for (const auto& item : std::filesystem::directory_iterator(folder)) {
        if (item.is_directory())
            makeWritable(item.path());
    }
}

// Makes the folder read-only for this process, also if root runs the test.
inline void makeReadOnly(const std::string& folder)
{
    namespace fs = std::filesystem;
    const auto readable = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    const auto searchable = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    fs::permissions(folder, readable | searchable);
    for (const auto& item : fs::recursive_directory_iterator(folder))
        fs::permissions(item.path(), item.is_directory() ? readable | searchable : readable);
    // Root can write everywhere unless it drops its capabilities.
    __user_cap_header_struct header { _LINUX_CAPABILITY_VERSION_3, 0 };
    __user_cap_data_struct none[2] {};
    EXPECT_EQ(syscall(SYS_capset, &header, none), 0);
    EXPECT_FALSE(writeFile(folder + "/new", "x"));
}

}
