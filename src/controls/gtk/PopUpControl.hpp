#pragma once

#include "controls/gtk/WidgetControl.hpp"

#include <gtkmm/dropdown.h>
#include <gtkmm/stringlist.h>

#include <vector>

namespace pagora {

// A pop-up button of a layout. Rows are created as they become visible, so long lists open quickly. Changes reach the
// widget when the main loop is idle. Main thread only.
class PopUpControl : public PopUpButton, public WidgetControl {
public:
    // Whether each title in the list is written in the font family that it names.
    enum class TitlesAreFonts : bool { No, Yes };
    PopUpControl(Gtk::DropDown& dropDown, TitlesAreFonts titlesAreFonts);
    ~PopUpControl() override;

    void removeAllItems() override;
    void addItem(const std::string& title) override;
    void addSeparator() override;
    void selectItemWithTitle(const std::string& title) override;
    // Returns an empty text if nothing is selected.
    std::string titleOfSelectedItem() const override;
    void setAction(std::function<void()> action) override { _action = std::move(action); }

    // Includes separators, whose titles are empty.
    const std::vector<std::string>& titles() const { return _titles; }

private:
    void findByTyping();
    void showSoon();
    void showItems();
    void selectionDidChange();

    Gtk::DropDown& _dropDown;
    Glib::RefPtr<Gtk::StringList> _items;
    std::vector<std::string> _titles;
    guint _selected = GTK_INVALID_LIST_POSITION;
    // True if the widget's list is out of date.
    bool _isStale = false;
    bool _isChanging = false;
    std::function<void()> _action;
    sigc::connection _selectionChanged;
    sigc::connection _showing;
};

}
