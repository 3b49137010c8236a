#pragma once

#include "find/BookFinder.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <string>

namespace pagora {

// One line of the results: the name of a chapter, or a match with the words around it. Main thread.
class SearchResultRow : public Gtk::Box {
public:
    SearchResultRow();
    void showChapter(const std::string& name);
    void showResult(const FoundText& found);

private:
    Gtk::Label _text;
};

// What assistive technology is told of a result.
std::string spokenResult(const FoundText& found);

}
