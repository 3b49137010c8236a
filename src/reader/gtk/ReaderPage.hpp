#pragma once

#include "page/WebView.hpp"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <string>

namespace pagora {

// The page view that a reader window takes in, with what the window needs of it besides: its widget, how to hear of
// flicks, and, where they are set, whether a control of the page needs the keys, which way the pages run, the colour
// behind the page, and the name under which assistive technology finds it.
struct ReaderPage {
    std::unique_ptr<WebView> webView;
    Gtk::Widget* widget = nullptr;
    std::function<void(std::function<void(double deltaX)> handler)> setFlickHandler;
    std::function<bool()> takesKeys = {};
    // Whether the page has a use for the Escape key.
    std::function<bool()> takesEscape = {};
    // Whether the pages run from right to left.
    std::function<bool()> runsRightToLeft = {};
    std::function<void(const Color& color)> setBackground = {};
    // The name is asked for at once and whenever the text that is shown changes, or the name itself may have; it gets
    // the title of the page's document.
    std::function<void(std::function<std::string(const std::string& title)> namer)> setNamer = {};
    std::function<void()> nameMayHaveChanged = {};
    // What is read in place of the page's text; an empty text gives it back.
    std::function<void(const std::string& notice)> setNotice = {};
    // Whether its processes are shut in. Otherwise the book's own scripts are off, and the person is told.
    bool isConfined = true;
};

}
