#pragma once

#include "page/WebView.hpp"

#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pagora {

class RunLoop;

// A page view with the operations on it that the reader window needs. Functions that are not set are optional.
struct ReaderPage {
    std::unique_ptr<WebView> webView;
    Gtk::Widget* widget = nullptr;
    std::function<void(std::function<void(double deltaX)> handler)> setFlickHandler;
    std::function<bool()> takesKeys = {};
    // Returns whether the page uses the Escape key.
    std::function<bool()> takesEscape = {};
    // Returns whether the pages run from right to left.
    std::function<bool()> runsRightToLeft = {};
    std::function<void(const Color& color)> setBackground = {};
    // Sets the callback for the background of the page's document; nullopt if it has none.
    std::function<void(std::function<void(const std::optional<Color>& ground)> handler)> setGroundHandler = {};
    // Sets the function that makes the accessible name from the title of the page's document. It is called immediately
    // and whenever the shown text or the name may have changed.
    std::function<void(std::function<std::string(const std::string& title)> namer)> setNamer = {};
    std::function<void()> nameMayHaveChanged = {};
    // Sets the callback for a picture that the user presses, with its file in the book's folder. Needs `runLoop`.
    std::function<void(std::function<void(const std::string& file)> handler)> setPictureHandler = {};
    RunLoop* runLoop = nullptr;
    // Replaces the page's accessible text; an empty text restores it.
    std::function<void(const std::string& notice)> setNotice = {};
    // True if the engine's processes are confined. Otherwise the book's scripts are disabled and the user is told.
    bool isConfined = true;
};

}
