#include "epub/ContainerParser.hpp"

#include "tests/support/EpubBuilder.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

std::optional<std::string> opfFileOf(const std::string& document)
{
    test::TemporaryFolder folder;
    ContainerParser parser(Url::file(test::makeFile(folder.path("container file.xml"), document)));
    EXPECT_FALSE(parser.opfFile());
    parser.parse();
    return parser.opfFile();
}

}

TEST(ContainerParser, RootfileNamesThePackageDocument)
{
    EXPECT_EQ(opfFileOf("<container><rootfiles><rootfile full-path='OEBPS/content.opf'/></rootfiles></container>"),
        "OEBPS/content.opf");
}

TEST(ContainerParser, ElementNamesCountInAnyCase)
{
    EXPECT_EQ(opfFileOf("<ROOTFILE full-path='a.opf'/>"), "a.opf");
    EXPECT_EQ(opfFileOf("<RootFile full-path='a.opf'/>"), "a.opf");
}

TEST(ContainerParser, PrefixedRootfileDoesNotCount)
{
    EXPECT_EQ(opfFileOf("<ocf:rootfile xmlns:ocf='u' full-path='a.opf'/>"), std::nullopt);
}

TEST(ContainerParser, LastRootfileWins)
{
    EXPECT_EQ(opfFileOf("<c><rootfile full-path='a.opf'/><rootfile full-path='b.opf'/></c>"), "b.opf");
}

TEST(ContainerParser, LaterRootfileWithoutPathClearsTheResult)
{
    EXPECT_EQ(opfFileOf("<c><rootfile full-path='a.opf'/><rootfile/></c>"), std::nullopt);
}

TEST(ContainerParser, RootfileBeforeAnErrorStands)
{
    EXPECT_EQ(opfFileOf("<c><rootfile full-path='a.opf'/><open></c>"), "a.opf");
}

TEST(ContainerParser, FileThatCannotBeReadGivesNothing)
{
    ContainerParser parser(Url::file("/nothing/container.xml"));
    parser.parse();
    EXPECT_FALSE(parser.opfFile());
    EXPECT_EQ(opfFileOf(""), std::nullopt);
}

}
