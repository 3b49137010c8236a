#pragma once

#include "notebook/MarksPane.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <string>

namespace pagora {

// One row of the list of marks: a heading, or a mark with its note. Main thread only.
class MarkRow : public Gtk::Box {
public:
    MarkRow();
    void show(const MarkLine& line);

private:
    Gtk::Label _text;
    Gtk::Label _note;
};

// Returns the accessible name of a row.
std::string spokenMark(const MarkLine& line);
// Returns the name of a mark's colour, for display.
std::string colorTitle(const std::string& color);

}
