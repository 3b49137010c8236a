#pragma once

#include "desktop/Window.hpp"
#include "tests/support/FakeControls.hpp"

#include <string>
#include <utility>
#include <vector>

namespace pagora::test {

// A window that records its calls. The test calls the handlers of full screen itself. `laidOut` replies at once, unless
// `holdsLayout` is set.
class FakeWindow : public Window {
public:
    void setTitle(const std::string& value) override { title = value; }
    Rect frame() const override { return rect; }
    void setFrame(const Rect& value) override
    {
        rect = value;
        note("setFrame");
    }
    void animateToFrame(const Rect& value) override
    {
        rect = value;
        animatedTo.push_back(value);
        note("animateToFrame");
    }
    void center() override { note("center"); }

    void orderFront() override
    {
        visible = true;
        note("orderFront");
    }
    void makeKeyAndOrderFront() override
    {
        visible = true;
        key = true;
        note("makeKeyAndOrderFront");
    }
    void orderOut() override
    {
        visible = false;
        key = false;
        note("orderOut");
    }
    bool isVisible() const override { return visible; }
    bool isKeyWindow() const override { return key; }
    bool isFullScreen() const override { return fullScreen; }

    void toggleFullScreen() override
    {
        ++timesToggled;
        note("toggleFullScreen");
    }

    Reply<void> laidOut() override
    {
        if (!holdsLayout)
            return Reply<void>::of();
        Reply<void> reply;
        _layouts.push_back(reply.resolver());
        return reply;
    }
    // Answers all held `laidOut` calls.
    void finishLayout()
    {
        for (const auto& answer : std::exchange(_layouts, {}))
            answer();
    }

    void keepJournal(Journal& lines, std::string asName)
    {
        journal = &lines;
        name = std::move(asName);
    }

    std::string title;
    Rect rect;
    bool visible = false;
    // A test that makes another window key clears it here.
    bool key = false;
    // True if the window is in full screen. Toggling does not change it; the test does.
    bool fullScreen = false;
    int timesToggled = 0;
    std::vector<Rect> animatedTo;
    bool holdsLayout = false;
    Journal* journal = nullptr;
    std::string name;

private:
    void note(const std::string& operation)
    {
        if (journal)
            journal->push_back(name + "." + operation);
    }

    std::vector<Reply<void>::Resolver> _layouts;
};

}
