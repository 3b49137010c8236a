#pragma once

#include "reader/SelectedText.hpp"

#include <optional>

namespace pagora {

class EpubController;
class EpubWindow;
class ReaderHub;

// The selected text of a reflowable book, which can be searched for and looked up. Main thread only.
class Selections : public SelectedText {
public:
    // All of them outlive it.
    Selections(EpubController& reader, EpubWindow& window, ReaderHub& hub);
    ~Selections();
    Selections(const Selections&) = delete;
    Selections& operator=(const Selections&) = delete;

    // Searches the book for the beginning of the selected text.
    void find();
    // Looks the beginning of the selected text up in a dictionary or on the web.
    void lookUp();

private:
    EpubController& _reader;
    EpubWindow& _window;
    ReaderHub& _hub;
    // The selection for which the bar was shown last.
    std::optional<PageSelection> _selection;
};

}
