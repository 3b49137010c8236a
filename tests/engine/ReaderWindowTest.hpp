#pragma once

#include "desktop/gtk/Toplevel.hpp"
#include "reflowable/gtk/EpubWindowGtk.hpp"
#include "tests/engine/ToolkitTest.hpp"
#include "tests/support/FakeWebView.hpp"

#include <gtkmm/drawingarea.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/revealer.h>
#include <gtkmm/stack.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pagora::test {

// A reader window with a fake page. Records the window's actions.
class ReaderWindowTest : public ToolkitTest {
protected:
    ReaderPage makePage()
    {
        auto view = std::make_unique<FakeWebView>();
        webView = view.get();
        area.set_focusable(true);
        return { std::move(view), &area, [this](std::function<void(double)> handler) { flick = handler; } };
    }

    // Creates a window whose actions are recorded in `done`.
    void makeEpubWindow()
    {
        epub = std::make_unique<EpubWindowGtk>(toplevel, makePage());
        ReaderWindowActions actions;
        actions.closeEPUB = [this] {
            done.push_back("close");
            epub.reset();
        };
        actions.toggleLeftView = [this] { done.push_back("contents"); };
        actions.changePage = [this](int tag) { done.push_back("page " + std::to_string(tag)); };
        actions.goToFirstPage = [this] { done.push_back("first"); };
        actions.goToLastPage = [this] { done.push_back("last"); };
        actions.scrollWheelBegan = [this](double deltaX) { done.push_back(deltaX > 0 ? "flick right" : "flick left"); };
        actions.displayOptions = [this] { done.push_back("options"); };
        actions.changeWidth = [this] { done.push_back("columns"); };
        actions.searchContent = [this](const std::string& text) { done.push_back("search " + text); };
        actions.search = [this](const std::string& text, WholeWords words) {
            done.push_back("find " + text + (words == WholeWords::Yes ? " as words" : ""));
        };
        actions.goToResult = [this](std::size_t index) { done.push_back("result " + std::to_string(index)); };
        actions.goToNextResult = [this] { done.push_back("next"); };
        actions.goToPreviousResult = [this] { done.push_back("previous"); };
        actions.endSearch = [this] { done.push_back("end"); };
        actions.goBack = [this] { done.push_back("back"); };
        actions.goForward = [this] { done.push_back("on"); };
        actions.toggleFullScreen = [this] { done.push_back("full screen"); };
        epub->setActions(std::move(actions));
    }

    Gtk::Window& window() { return toplevel.window(); }
    template <typename Widget>
    Widget& widget(const char* name)
    {
        return epub->parts().widget<Widget>(name);
    }

    // Sends the key after ordering the window front.
    bool press(guint keyval, GdkModifierType state = GdkModifierType(0))
    {
        epub->window().orderFront();
        return ToolkitTest::press(window().gobj(), keyval, state);
    }

    // Moves the pointer onto a widget.
    static void enter(Gtk::Widget& widget)
    {
        const auto controllers = widget.observe_controllers();
        for (guint i = 0; i < controllers->get_n_items(); ++i) {
            if (const auto motion = std::dynamic_pointer_cast<Gtk::EventControllerMotion>(controllers->get_object(i)))
                g_signal_emit_by_name(motion->gobj(), "enter", 1.0, 1.0);
        }
    }
    // Moves the pointer within a widget.
    static void moveTo(Gtk::Widget& widget, double y)
    {
        const auto controllers = widget.observe_controllers();
        for (guint i = 0; i < controllers->get_n_items(); ++i) {
            if (const auto motion = std::dynamic_pointer_cast<Gtk::EventControllerMotion>(controllers->get_object(i)))
                g_signal_emit_by_name(motion->gobj(), "motion", 10.0, y);
        }
    }
    bool waitForDone(std::size_t count)
    {
        return waitUntil([&] { return done.size() >= count; });
    }

    using Lines = std::vector<std::string>;
    Toplevel toplevel;
    Gtk::DrawingArea area;
    FakeWebView* webView = nullptr;
    std::function<void(double)> flick;
    std::unique_ptr<EpubWindowGtk> epub;
    Lines done;
};

}
