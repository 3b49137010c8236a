#include "base/UserFolders.hpp"

#include <gtest/gtest.h>

using namespace pagora;

TEST(UserFolders, AreAbsoluteAndApart)
{
    for (const auto& folder : { homeFolder(), documentsFolder(), cachesFolder(), defaultsFolder() })
        EXPECT_EQ(folder.find('/'), 0u) << folder;
    EXPECT_NE(documentsFolder(), homeFolder());
}

TEST(UserFolders, TheStoredValuesLieInAFolderOfTheirOwn)
{
    EXPECT_TRUE(defaultsFolder().ends_with("/org.pagora.Pagora"));
}
