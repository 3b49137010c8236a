#pragma once

#include "reader/gtk/ClosableNote.hpp"

#include <functional>
#include <string>

namespace pagora {

// The notice that no installed font has the letters of a book's language. Main thread only.
class MissingFontNote : public ClosableNote {
public:
    // `whenDone` is called when the user has closed the line.
    MissingFontNote(const std::string& language, std::function<void()> whenDone);
};

// Returns whether no font has the language and the notice was not shown yet. Returns true only once for each language
// in a session.
bool isMissingFontUntold(const std::string& language);

}
