#include "epub/CoverPicture.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace pagora {

TEST(CoverPicture, ThatWasMadeAheadIsUsedForTheSameFileOnly)
{
    const test::TemporaryFolder folder;
    const auto picture = test::picture(60, 80, "png");
    const auto archive = test::EpubBuilder().member("OEBPS/images/cover.jpg", picture).write(folder.path("Book.epub"));
    const auto file = folder.path("cover.jpg");
    test::makeFile(file, picture);
    auto ahead = prefetchCover(FileDescriptor(open(archive.c_str(), O_RDONLY | O_CLOEXEC)));
    ASSERT_TRUE(ahead);
    const Data other("other");
    ahead->picture = other;
    EXPECT_EQ(coverPicture(file, &*ahead), other);

    auto ofAnotherSize = *ahead;
    ++ofAnotherSize.size;
    EXPECT_NE(coverPicture(file, &ofAnotherSize), other);
    auto ofOtherBytes = *ahead;
    ++ofOtherBytes.sum;
    EXPECT_NE(coverPicture(file, &ofOtherBytes), other);
}

}
