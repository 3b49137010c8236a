#include "confinement/Confinement.hpp"

#include "tests/support/TemporaryFolder.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace pagora::test {

class ConfinementTest : public testing::Test {
protected:
    // A stand-in for the program that confines processes.
    std::string program(const std::string& script)
    {
        const auto path = _folder.path("confine");
        std::ofstream(path) << "#!/bin/sh\n" << script << '\n';
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }
    static Confinement probed(const std::string& program, double timeout = 60)
    {
        return ConfinementProbe({ program, timeout }).result();
    }

    TemporaryFolder _folder;
};

TEST_F(ConfinementTest, IsThereWhereTheProgramShutsAnotherOneIn)
{
    EXPECT_EQ(probed(program("exit 0")), Confinement::Full);
}

TEST_F(ConfinementTest, IsNotThereWhereTheProgramFails)
{
    EXPECT_EQ(probed(program("exit 1")), Confinement::None);
    EXPECT_EQ(probed(program("kill -TRAP $$")), Confinement::None);
}

TEST_F(ConfinementTest, IsNotThereWithoutTheProgram)
{
    EXPECT_EQ(probed(_folder.path("missing")), Confinement::None);
}

TEST_F(ConfinementTest, IsNotThereWhereTheProgramNeverEnds)
{
    EXPECT_EQ(probed(program("exec sleep 100000"), 0.1), Confinement::None);
}

TEST_F(ConfinementTest, IsNotThereWhereThePersonSwitchedItOff)
{
    const ConfinementSwitchedOff off;
    EXPECT_TRUE(isConfinementSwitchedOff());
    EXPECT_EQ(probed(program("exit 0")), Confinement::None);
}

TEST_F(ConfinementTest, SwitchIsBackWhereItWas)
{
    prepareConfinementSwitch();
    {
        const ConfinementSwitchedOff off;
    }
    EXPECT_FALSE(isConfinementSwitchedOff());
    EXPECT_STREQ(std::getenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS"), "0");
}

TEST_F(ConfinementTest, AsksForWhatTheEngineAsksFor)
{
    const auto asked = _folder.path("asked");
    EXPECT_EQ(probed(program("echo \"$@\" > " + asked)), Confinement::Full);
    std::string line;
    std::getline(std::ifstream(asked), line);
    for (const char* part : { "--unshare-pid", "--unshare-net", "--unshare-ipc", "--proc /proc", "--seccomp ",
             "-- xdg-dbus-proxy --version" })
        EXPECT_NE(line.find(part), std::string::npos) << part << " in " << line;
}

// The expected result does not depend on what this system permits.
TEST_F(ConfinementTest, IsWhatTheSystemAllows)
{
    const bool isAllowed
        = std::system("bwrap --unshare-pid --unshare-net --ro-bind / / --proc /proc --dev /dev true 2>/dev/null") == 0;
    EXPECT_EQ(ConfinementProbe().result() == Confinement::Full, isAllowed);
}

}
