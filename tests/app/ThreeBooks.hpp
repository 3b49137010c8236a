#pragma once

#include "tests/app/Program.hpp"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pagora {

using test::EpubBuilder;
using Names = std::vector<std::string>;

// The codes of an alert's buttons.
constexpr int cancel = 1000;
constexpr int goForward = 1001;

// A library of three books with identifiers. Their archives are in the library folder.
struct ThreeBooks : testing::Test {
    ThreeBooks()
    {
        for (const char* name : { "Sea", "Plan", "Tale" })
            program.drop({ program.download(std::string(name) + ".epub", EpubBuilder().identifier(name)) });
    }

    test::LaunchedProgram program;
};

}
