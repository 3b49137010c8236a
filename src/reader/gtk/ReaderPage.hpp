#pragma once

#include "page/WebView.hpp"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pagora {

class RunLoop;

// A page view and the operations on it that the reader window needs: its widget, its flicks and, where set, its use of
// keys, page direction, background and accessible name.
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
    // Sets what is called with the background of the page's document; nullopt if it has none.
    std::function<void(std::function<void(const std::optional<Color>& ground)> handler)> setGroundHandler = {};
    // The namer is called at once and whenever the shown text changes or the name may have changed, with the title of
    // the page's document.
    std::function<void(std::function<std::string(const std::string& title)> namer)> setNamer = {};
    std::function<void()> nameMayHaveChanged = {};
    // Sets what is called when the user presses a picture, with its file in the book's folder. Needs `runLoop`.
    std::function<void(std::function<void(const std::string& file)> handler)> setPictureHandler = {};
    RunLoop* runLoop = nullptr;
    // Replaces the page's accessible text; an empty text restores it.
    std::function<void(const std::string& notice)> setNotice = {};
    // True if its processes are confined. Otherwise the book's scripts are disabled and the user is told.
    bool isConfined = true;
};

}
