#pragma once

#include <gtkmm/widget.h>

namespace pagora {

// Sets the accessible name.
void setAccessibleName(Gtk::Widget& widget, const Glib::ustring& name);

// Corrects accessible names that the toolkit gets wrong: removes mnemonic marks, and names a menu and the button of a
// drop-down by their owner's tooltip.
void correctAccessibleNames(Gtk::Widget& root);

// Removes names where the toolkit would use a class name: widgets without a role, scroll bars, stack pages and empty
// labels. Called before the widgets get names and are shown.
void leaveUnnamed(Gtk::Widget& root);

// Makes the widget a status, whose name is read out when it changes. Must be called before the widget is shown.
void makeStatus(Gtk::Widget& widget);
bool isStatus(const Gtk::Widget& widget);

// Announces changes of the status labels and progress bars in a window or view from the time they are shown. The
// toolkit only reports widgets that were queried or had the focus.
void tellOfChanges(Gtk::Widget& root);

// Names the controls that the toolkit's own windows leave unnamed: search fields as such, menus and text fields by
// `name`. Images are hidden. Called before the window is shown.
void nameToolkitControls(Gtk::Widget& root, const Glib::ustring& name);

}
