#pragma once

#include "platform/WebView.hpp"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>

namespace pagora {

// The page view that a reader window takes in, with what the window needs of it besides: its widget, and how to hear of
// flicks.
struct ReaderPage {
    std::unique_ptr<WebView> webView;
    Gtk::Widget* widget = nullptr;
    std::function<void(std::function<void(double deltaX)> handler)> setFlickHandler;
};

}
