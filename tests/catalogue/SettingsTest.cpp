#include "catalogue/Settings.hpp"

#include "tests/support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

struct Settings : testing::Test {
    test::TemporaryFolder folder;
    UserDefaults defaults { folder.path() };
};

}

TEST_F(Settings, FreshDefaultsStartWithAFirstPanelAndCopying)
{
    storeStartUpDefaults(defaults);
    EXPECT_TRUE(defaults.boolForKey("Default"));
    EXPECT_EQ(defaults.stringForKey("DragDropMode"), "Copy");
    EXPECT_EQ(defaults.allKeys().size(), 2u);
}

TEST_F(Settings, StoredChoicesStayAsTheyAre)
{
    defaults.setObject("Default", false);
    defaults.setObject("DragDropMode", "Move");
    storeStartUpDefaults(defaults);
    EXPECT_FALSE(defaults.boolForKey("Default"));
    EXPECT_EQ(defaults.stringForKey("DragDropMode"), "Move");
}

TEST_F(Settings, ReaderSettingsThatAreNotStoredAreUnset)
{
    const auto settings = ReaderSettings::load(defaults);
    EXPECT_EQ(settings.curFontName, std::nullopt);
    EXPECT_EQ(settings.curFontSize, -1.0f);
    EXPECT_EQ(settings.curNumOfColumns, -1);
    EXPECT_EQ(settings.curColorOption, -1);
}

TEST_F(Settings, ZeroIsASetValue)
{
    for (const char* key : { "FontSize", "Columns", "Background" })
        defaults.setObject(key, 0);
    const auto settings = ReaderSettings::load(defaults);
    EXPECT_EQ(settings.curFontSize, 0.0f);
    EXPECT_EQ(settings.curNumOfColumns, 0);
    EXPECT_EQ(settings.curColorOption, 0);
}

TEST_F(Settings, ATextThatIsNoNumberReadsAsZero)
{
    for (const char* key : { "FontSize", "Columns", "Background" })
        defaults.setObject(key, "many");
    const auto settings = ReaderSettings::load(defaults);
    EXPECT_EQ(settings.curFontSize, 0.0f);
    EXPECT_EQ(settings.curNumOfColumns, 0);
    EXPECT_EQ(settings.curColorOption, 0);
}

TEST_F(Settings, ReaderSettingsComeBack)
{
    ReaderSettings { "Palatino", 1.25f, 3, 2 }.store(defaults);
    const auto settings = ReaderSettings::load(defaults);
    EXPECT_EQ(settings.curFontName, "Palatino");
    EXPECT_EQ(settings.curFontSize, 1.25f);
    EXPECT_EQ(settings.curNumOfColumns, 3);
    EXPECT_EQ(settings.curColorOption, 2);
}

TEST_F(Settings, AMissingFontNameIsNotStored)
{
    ReaderSettings().store(defaults);
    EXPECT_FALSE(defaults.hasKey("FontName"));
    EXPECT_EQ(defaults.realForKey("FontSize"), -1);
}

TEST_F(Settings, ReaderSettingsAreStoredAndFoundUnderTheirKeys)
{
    const ReaderSettings settings { "Palatino", 1.5f, 3, 2 };
    settings.store(defaults);
    EXPECT_EQ(defaults.stringForKey("FontName"), "Palatino");
    EXPECT_EQ(defaults.integerForKey("Columns"), 3);
    EXPECT_EQ(defaults.integerForKey("Background"), 2);
    defaults.setObject("FontName", "Georgia");
    EXPECT_EQ(ReaderSettings::load(defaults).curFontName, "Georgia");
}

}
