#pragma once

#include "page/PageSelection.hpp"
#include "running/Task.hpp"

#include <optional>

namespace pagora {

class ReaderWindow;

// The selected text of the page in a reader window: shows the window's bar beside it, and copies it. Main thread only.
class SelectedText {
public:
    // The window outlives this.
    explicit SelectedText(ReaderWindow& window)
        : _window(window)
    {
    }

    // The page reports another selection, or none: shows or hides the bar.
    void didChange(const std::optional<PageSelection>& selection);
    // Shows the bar and gives it the keyboard focus if text is selected.
    void ask();
    // Hides the bar. The text stays selected.
    void end();
    // Copies the whole selected text, which the page is asked for.
    void copy();

private:
    Task<void> copyText();

    ReaderWindow& _window;
    // The last request to the page.
    Task<void> _asking;
};

}
