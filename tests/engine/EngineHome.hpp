#pragma once

#include "tests/support/TemporaryFolder.hpp"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace pagora::test {

// A temporary home folder for the program under test. The user's own home folder is not accessed.
class EngineHome {
public:
    EngineHome()
    {
        set("HOME", "home");
        set("XDG_CONFIG_HOME", "config");
        set("XDG_CACHE_HOME", "cache");
        set("XDG_DATA_HOME", "data");
        set("XDG_STATE_HOME", "state");
    }

private:
    void set(const char* variable, const std::string& name)
    {
        std::filesystem::create_directories(_folder.path(name));
        setenv(variable, _folder.path(name).c_str(), 1);
    }

    TemporaryFolder _folder;
};

}
