#pragma once

#include "base/Log.hpp"
#include "tests/support/FakeEpubWindow.hpp"
#include "tests/support/FakeReaderHub.hpp"
#include "tests/support/ManualRunLoop.hpp"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace pagora::test {

// The arguments for a reader of either kind. Captures the log.
class ReaderFixture : public testing::Test {
protected:
    FakeWebView& page() { return parts->webView; }

    // Destroys the reader while a script that prepares the page is pending, and then answers the script.
    template <typename Reader>
    void endWhileAScriptRuns(std::unique_ptr<Reader>& reader)
    {
        page().holdsReplies = true;
        page().finishDocument();
        page().replyToNext();
        reader->changePage(1);
        ASSERT_EQ(page().heldReplies(), 1U);
        reader = nullptr;
        page().replyToAll();
    }

    std::vector<std::string> logged;
    LogCapture capture { [this](const std::string& line) { logged.push_back(line); } };
    ManualRunLoop loop;
    FakeReaderHub hub;
    ReaderState state;
    std::shared_ptr<ReaderWindowParts> parts = std::make_shared<ReaderWindowParts>();
};

}
