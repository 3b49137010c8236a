#pragma once

#include "page/PageSelection.hpp"
#include "running/Task.hpp"

#include <optional>

namespace pagora {

class EpubController;
class EpubWindow;
class ReaderHub;

// What the person does with selected text: shows the window's bar for it, and runs the actions of the bar. Main thread.
class Selections {
public:
    // All of them outlive it.
    Selections(EpubController& reader, EpubWindow& window, ReaderHub& hub);
    ~Selections();
    Selections(const Selections&) = delete;
    Selections& operator=(const Selections&) = delete;

    // Shows the bar, and gives it the keyboard, where text is selected.
    void ask();
    // Hides the bar. The text stays selected.
    void end();

    // Copies the whole selected text, which the page is asked for.
    void copy();
    // Searches the book for the beginning of the selected text.
    void find();
    // Looks the beginning of the selected text up in a dictionary or on the web.
    void lookUp();

private:
    Task<void> copyText();

    EpubController& _reader;
    EpubWindow& _window;
    ReaderHub& _hub;
    // The one that the bar was shown for last.
    std::optional<PageSelection> _selection;
    // What the page was asked for last.
    Task<void> _asking;
};

}
