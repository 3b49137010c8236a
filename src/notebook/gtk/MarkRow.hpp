#pragma once

#include "notebook/MarksPane.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <string>

namespace pagora {

// One line of the list of marks: a heading, or a mark with its note. Main thread.
class MarkRow : public Gtk::Box {
public:
    MarkRow();
    void show(const MarkLine& line);

private:
    Gtk::Label _text;
    Gtk::Label _note;
};

// What assistive technology is told of a line.
std::string spokenMark(const MarkLine& line);
// The name of a colour of marks, for display.
std::string colorTitle(const std::string& color);

}
