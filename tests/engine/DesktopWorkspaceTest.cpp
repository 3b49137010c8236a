#include "desktop/gtk/DesktopWorkspace.hpp"

#include "files/Files.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace pagora::test {

TEST(DesktopWorkspace, CopiesFilesUnderTheirNames)
{
    const TemporaryFolder source;
    const TemporaryFolder destination;
    ASSERT_TRUE(writeFile(source.path("a.epub"), "a"));
    DesktopWorkspace workspace;
    const auto copies = workspace.copyFiles(source.path(), destination.path(), { "a.epub", "missing.epub" });
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[0], "a.epub");
    EXPECT_FALSE(copies[1]);
    EXPECT_EQ(readFile(destination.path("a.epub")), "a");
}

TEST(DesktopWorkspace, MountedVolumeIsToldByTheFirstSevenCharacters)
{
    DesktopWorkspace workspace;
    EXPECT_TRUE(workspace.isOnMountedVolume("/Volumes/Stick/Sea.epub"));
    EXPECT_TRUE(workspace.isOnMountedVolume("/Volume/Sea.epub"));
    EXPECT_FALSE(workspace.isOnMountedVolume("/home/reader/Volumes/Sea.epub"));
    EXPECT_FALSE(workspace.isOnMountedVolume("/volumes/Sea.epub"));
}

TEST(DesktopWorkspace, MountedVolumeIsToldByTheMountOfTheFile)
{
    DesktopWorkspace workspace([](const std::string& path) {
        return path.starts_with("/media/stick/") ? FileMount { "/media/stick", false, true } : FileMount { "/" };
    });
    EXPECT_TRUE(workspace.isOnMountedVolume("/media/stick/Sea.epub"));
    EXPECT_FALSE(workspace.isOnMountedVolume("/home/reader/Sea.epub"));
    EXPECT_TRUE(workspace.isOnMountedVolume("/Volumes/Sea.epub"));
}

TEST(DesktopWorkspace, FileThatIsNotThereDoesNotGoToTheTrash)
{
    const TemporaryFolder folder;
    DesktopWorkspace workspace;
    EXPECT_FALSE(workspace.recycleFiles(folder.path(), { "missing.epub" }));
}

TEST(DesktopWorkspace, PageOpensOnlyWhatABrowserShows)
{
    const auto mayOpen = [](const std::string& text, RequestedBy requestedBy) {
        return DesktopWorkspace::mayOpen(*Url::fromString(text), requestedBy);
    };
    for (const char* link : { "http://a.example/", "https://a.example/", "HTTPS://a.example/" }) {
        EXPECT_TRUE(mayOpen(link, RequestedBy::Page)) << link;
        EXPECT_TRUE(mayOpen(link, RequestedBy::User)) << link;
    }
    for (const char* link : { "mailto:a@b.example", "tel:123", "sms:123" }) {
        EXPECT_FALSE(mayOpen(link, RequestedBy::Page)) << link;
        EXPECT_TRUE(mayOpen(link, RequestedBy::User)) << link;
    }
    for (const char* link : { "file:///etc/passwd", "admin:///etc/shadow", "smb://a/b", "ssh://a", "trash:///",
             "view-source:http://a.example/", "resource:///org", "apt:sl", "vscode://x", "x-unknown:y",
             "/etc/passwd" }) {
        EXPECT_FALSE(mayOpen(link, RequestedBy::Page)) << link;
        EXPECT_FALSE(mayOpen(link, RequestedBy::User)) << link;
    }
}

TEST(DesktopWorkspace, FileSystemWithoutTrashKeepsItsFiles)
{
    DesktopWorkspace workspace;
    EXPECT_FALSE(workspace.canRecycleFile("/proc/version"));
    EXPECT_FALSE(workspace.recycleFiles("/proc", { "version" }));
    EXPECT_TRUE(fileExists("/proc/version"));
}

TEST(DesktopWorkspace, InAFlatpakThePortalDecidesAboutTheTrash)
{
    EXPECT_TRUE(DesktopWorkspace(mountOf, Surroundings::Flatpak).canRecycleFile("/proc/version"));
}

}
