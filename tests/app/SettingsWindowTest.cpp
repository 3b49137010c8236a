#include "tests/app/Program.hpp"

#include <gtest/gtest.h>

namespace pagora {

namespace {

constexpr int copyRow = 0;
constexpr int moveRow = 1;

struct SettingsWindow : testing::Test {
    test::LaunchedProgram program;
    test::FakeSegmentedControl& matrix = program.window.dragDropMatrixFake;
};

}

TEST_F(SettingsWindow, OpensWithTheStoredMode)
{
    program.defaults.setObject("DragDropMode", "Move");
    program.window.actions.openSettings();
    EXPECT_EQ(matrix.tag(matrix.selected), 2);
    EXPECT_TRUE(program.window.settingsWinFake.key);
    program.defaults.setObject("DragDropMode", "Copy");
    program.window.actions.openSettings();
    EXPECT_EQ(matrix.tag(matrix.selected), 1);
}

TEST_F(SettingsWindow, AnUnknownModeLeavesTheSelection)
{
    matrix.selected = moveRow;
    program.defaults.setObject("DragDropMode", "Link");
    program.window.actions.openSettings();
    EXPECT_EQ(matrix.selected, moveRow);
    program.defaults.removeObject("DragDropMode");
    program.window.actions.openSettings();
    EXPECT_EQ(matrix.selected, moveRow);
    EXPECT_TRUE(program.window.settingsWinFake.visible);
}

TEST_F(SettingsWindow, SavingStoresTheSelectedRow)
{
    matrix.selected = moveRow;
    program.window.actions.saveSettings();
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Move");
    matrix.selected = copyRow;
    program.window.actions.saveSettings();
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Copy");
}

TEST_F(SettingsWindow, SavingWithNoRowSelectedStoresCopy)
{
    matrix.selected = -1;
    program.window.actions.saveSettings();
    EXPECT_EQ(program.defaults.stringForKey("DragDropMode"), "Copy");
}

TEST_F(SettingsWindow, SavingPutsTheWindowAway)
{
    program.window.actions.openSettings();
    program.window.actions.saveSettings();
    EXPECT_FALSE(program.window.settingsWinFake.visible);
}

TEST_F(SettingsWindow, WhatWasSavedIsOnTheDisk)
{
    matrix.selected = moveRow;
    program.window.actions.saveSettings();
    program.defaults.waitForBackup();
    EXPECT_EQ(UserDefaults(program.home.path("defaults")).stringForKey("DragDropMode"), "Move");
}

}
