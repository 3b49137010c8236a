#pragma once

#include "page/PageSelection.hpp"
#include "running/Task.hpp"

#include <optional>

namespace pagora {

class ReaderWindow;

// The selected text of the page in a reader window: shows the window's bar beside it, and copies it. Main thread only.
class SelectedText {
public:
    // `window` must outlive this object.
    explicit SelectedText(ReaderWindow& window)
        : _window(window)
    {
    }

    // Called when the page reports another selection, or none. Shows or hides the bar.
    void didChange(const std::optional<PageSelection>& selection);
    // Shows the bar and gives it the keyboard focus if text is selected.
    void ask();
    // Hides the bar. The text stays selected.
    void end();
    // Gets the whole selected text from the page and copies it.
    void copy();

private:
    Task<void> copyText();

    ReaderWindow& _window;
    // The last request to the page.
    Task<void> _asking;
};

}
