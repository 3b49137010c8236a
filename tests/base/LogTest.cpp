#include "base/Log.hpp"

#include <gtest/gtest.h>

using namespace pagora;

TEST(Log, ALineStaysOneLine)
{
    std::vector<std::string> lines;
    const LogCapture capture([&](const std::string& line) { lines.push_back(line); });
    log("first\nhalf");
    EXPECT_EQ(lines, std::vector<std::string> { "first half" });
}

TEST(Log, GoesToStandardErrorWithoutACapture)
{
    testing::internal::CaptureStderr();
    log("a line");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a line\n");
}
