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
    // All arguments must outlive this object.
    Selections(EpubController& reader, EpubWindow& window, ReaderHub& hub);
    ~Selections();
    Selections(const Selections&) = delete;
    Selections& operator=(const Selections&) = delete;

    // Searches the book for the start of the selected text.
    void find();
    // Looks the start of the selected text up in a dictionary or on the web.
    void lookUp();

private:
    EpubController& _reader;
    EpubWindow& _window;
    ReaderHub& _hub;
    // The last selection for which the bar was shown.
    std::optional<PageSelection> _selection;
};

}
