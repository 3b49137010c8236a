#pragma once

#include "reader/ReaderHub.hpp"
#include "tests/support/FakeWindow.hpp"

#include <functional>
#include <vector>

namespace pagora::test {

// The hub of the readers. Calls `whenClosed` when the book is closed.
class FakeReaderHub : public ReaderHub {
public:
    void _closeEPUB() override
    {
        ++timesClosed;
        if (whenClosed)
            whenClosed();
    }
    Window& mainWindow() override { return library; }
    bool fullScreenMode() const override { return fullScreen; }
    void setFullScreenMode(bool value) override { fullScreen = value; }
    bool inCloseEpubMethod() const override { return closing; }
    void setInCloseEpubMethod(bool value) override { closing = value; }
    void windowDidExitFullScreen() override { ++timesExitedFullScreen; }
    void openURL(const Url& url, RequestedBy) override { opened.push_back(url); }
    void lookUp(const std::string& text) override { lookedUp.push_back(text); }

    FakeWindow library;
    bool fullScreen = false;
    bool closing = false;
    int timesClosed = 0;
    int timesExitedFullScreen = 0;
    std::function<void()> whenClosed;
    std::vector<Url> opened;
    std::vector<std::string> lookedUp;
};

}
