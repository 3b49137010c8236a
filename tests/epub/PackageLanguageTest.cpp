#include "epub/PackageLanguage.hpp"

#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace pagora::test {

namespace {

std::string package(const std::string& metadata)
{
    return "<?xml version='1.0'?><package xmlns='http://www.idpf.org/2007/opf' xml:lang='fr'><metadata>" + metadata
        + "</metadata></package>";
}

void writePackage(const std::string& file, const std::string& language)
{
    std::ofstream(file) << package("<dc:language>" + language + "</dc:language>");
}

}

TEST(PackageLanguage, IsTheFirstOneThatIsNamed)
{
    EXPECT_EQ(languageInPackage(package("<dc:language>de</dc:language><dc:language>en</dc:language>")), "de");
}

TEST(PackageLanguage, MayHaveARegionAndBlanksAround)
{
    EXPECT_EQ(languageInPackage(package("<dc:language id='l'>\n  pt-BR\n</dc:language>")), "pt-BR");
}

TEST(PackageLanguage, IsReadWithAnyPrefix)
{
    EXPECT_EQ(languageInPackage(package("<language xmlns='http://purl.org/dc/elements/1.1/'>sv</language>")), "sv");
}

TEST(PackageLanguage, IsEmptyWhereTheTextIsNoLanguage)
{
    EXPECT_EQ(languageInPackage(package("<dc:language>not a language</dc:language>")), "");
    EXPECT_EQ(languageInPackage(package("<dc:language/>")), "");
    EXPECT_EQ(languageInPackage(package("<dc:title>A language</dc:title>")), "");
}

TEST(PackageLanguage, IsReadFromThePackageDocumentThatTheContainerNames)
{
    TemporaryFolder folder;
    EXPECT_EQ(packageLanguage(folder.path()), "");
    std::filesystem::create_directories(folder.path("META-INF"));
    std::filesystem::create_directories(folder.path("OPS"));
    writePackage(folder.path("OPS/book.opf"), "it");
    writePackage(folder.path("other.opf"), "es");
    std::ofstream(folder.path("META-INF/container.xml"))
        << "<container><rootfiles><rootfile media-type='x' full-path=\"OPS/book.opf\"/></rootfiles></container>";
    EXPECT_EQ(packageLanguage(folder.path()), "it");
}

TEST(PackageLanguage, IsNotReadOutsideTheBook)
{
    TemporaryFolder folder;
    std::filesystem::create_directories(folder.path("book/META-INF"));
    writePackage(folder.path("outside.opf"), "it");
    std::ofstream(folder.path("book/META-INF/container.xml")) << "<rootfile full-path='../outside.opf'/>";
    EXPECT_EQ(packageLanguage(folder.path("book")), "");
}

}
