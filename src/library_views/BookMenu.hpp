#pragma once

#include <functional>
#include <string>
#include <vector>

namespace pagora {

// An item of a context menu; one without a title is a separator.
struct BookMenuItem {
    std::string title;
    std::function<void()> action;

    bool isSeparator() const { return title.empty(); }
};

// The items of a library view's context menu, from the top down.
using BookMenu = std::vector<BookMenuItem>;

}
