#pragma once

#include <gtkmm/widget.h>

namespace pagora {

// The name by which assistive technology calls the widget.
void setAccessibleName(Gtk::Widget& widget, const Glib::ustring& name);

// Gives the controls in a window or view the names that the toolkit gets wrong: the marks of access keys are no part of
// a name, and a menu and the button in a drop-down are called by the tooltip of what they belong to.
void correctAccessibleNames(Gtk::Widget& root);

// Leaves what has nothing to be called by without a name, where the toolkit would give it that of its class: parts
// without a role, scroll bars, pages of stacks and empty texts. Before the parts have names of their own, and before
// they are shown.
void leaveUnnamed(Gtk::Widget& root);

// Lets assistive technology hear what becomes of the status texts and progress bars in a window or view, from when they
// are shown: the toolkit tells only of widgets that have been asked for or have told of their focus.
void tellOfChanges(Gtk::Widget& root);

// Names what the toolkit's own windows leave unnamed: searches as such, menus and texts by `name`. Pictures there say
// nothing. Before the window is shown.
void nameToolkitControls(Gtk::Widget& root, const Glib::ustring& name);

}
