#pragma once

#include <gtkmm/box.h>

#include <functional>
#include <string>

namespace pagora {

// The line that says that no installed font has the letters of a book's language. Main thread.
class MissingFontNote : public Gtk::Box {
public:
    // `whenDone`: the person has closed the line.
    MissingFontNote(const std::string& language, std::function<void()> whenDone);
};

// Whether the person is still to be told that the language has no font, which happens once a language and session.
bool isMissingFontUntold(const std::string& language);

}
