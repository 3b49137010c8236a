#include "desktop/gtk/Dictionary.hpp"

#include "files/Files.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/TemporaryFolder.hpp"

#include <filesystem>

namespace pagora::test {

namespace {

class Dictionary : public ToolkitTest {
protected:
    // Installs a dictionary that writes each of its arguments to a line of a file.
    void install(const std::string& id, const std::string& places = {})
    {
        const auto program = _folder.path("program");
        ASSERT_TRUE(writeFile(program,
            "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + words() + ".new'\nmv '" + words() + ".new' '" + words() + "'\n"));
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        ASSERT_TRUE(writeFile(
            _folder.path(id), "[Desktop Entry]\nType=Application\nName=Words\nExec='" + program + "'" + places + "\n"));
    }
    bool lookUp(const std::string& text)
    {
        return lookUpInDictionary(text, [this](const std::string& id) -> Glib::RefPtr<Gio::DesktopAppInfo> {
            if (!fileExists(_folder.path(id)))
                return {};
            return Gio::DesktopAppInfo::create_from_filename(_folder.path(id));
        });
    }
    std::string words() const { return _folder.path("words"); }
    std::string arguments()
    {
        // Another process writes the file, so a timer wakes the main loop.
        const auto look = Glib::signal_timeout().connect([] { return true; }, 20);
        waitUntil([this] { return fileExists(words()); });
        sigc::connection(look).disconnect();
        return readFile(words()).value_or("");
    }

    TemporaryFolder _folder;
};

}

TEST_F(Dictionary, GetsTheWordsAsItTakesThem)
{
    install("org.gnome.Dictionary.desktop");
    EXPECT_TRUE(lookUp("old lamp"));
    EXPECT_EQ(arguments(), "--look-up=old lamp\n");
}

TEST_F(Dictionary, GetsTheWordsInThePlaceOfFiles)
{
    install("xfce4-dict.desktop", " @@u %U @@");
    EXPECT_TRUE(lookUp("lamp"));
    EXPECT_EQ(arguments(), "lamp\n");
}

TEST_F(Dictionary, GetsSignsOfTheShellAndOfDesktopFilesAsTheyAre)
{
    install("org.goldendict.GoldenDict.desktop");
    EXPECT_TRUE(lookUp("100 %U '$HOME' `id` \"x\" \\ ;"));
    EXPECT_EQ(arguments(), "100 %U '$HOME' `id` \"x\" \\ ;\n");
}

TEST_F(Dictionary, GetsNoOptionsFromABook)
{
    install("xfce4-dict.desktop");
    EXPECT_TRUE(lookUp("--verbose"));
    EXPECT_EQ(arguments(), "verbose\n");
}

TEST_F(Dictionary, IsNotAskedForDashesAlone)
{
    install("xfce4-dict.desktop");
    EXPECT_FALSE(lookUp("-- -"));
}

TEST_F(Dictionary, IsMissingWhereNoneIsInstalled)
{
    EXPECT_FALSE(lookUp("lamp"));
}

}
