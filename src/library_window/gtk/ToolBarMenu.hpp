#pragma once

#include "controls/Controls.hpp"

#include <giomm/menu.h>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/popovermenu.h>
#include <gtkmm/widget.h>

#include <string>
#include <vector>

namespace pagora {

// The context menu of a toolbar, which sets the look of its buttons. The items are "Icon and Text", "Icon Only", "Text
// Only", "Use Small Size" and "Customize Toolbar…", in this order. Main thread only.
class ToolBarMenu : public Menu {
public:
    explicit ToolBarMenu(Gtk::Widget& toolBar);
    ~ToolBarMenu() override;

    int numberOfItems() const override { return static_cast<int>(_items.size()); }
    void setItemHidden(int index, bool hidden) override;
    void insertSeparator(int index) override;

    // Returns the visible titles from the top; a separator is "-".
    std::vector<std::string> visibleTitles() const;
    // Shows the menu at a position in points from the toolbar's top left corner.
    void popUp(double x, double y);

private:
    struct Item {
        std::string title;
        std::string action;
        bool hidden = false;
        bool isSeparator() const { return title.empty(); }
    };

    void addActions();
    void rebuild();
    void setDisplayMode(const Glib::ustring& mode);

    Gtk::Widget& _toolBar;
    std::vector<Item> _items;
    Glib::RefPtr<Gio::Menu> _model;
    Glib::RefPtr<Gio::SimpleActionGroup> _actions;
    Gtk::PopoverMenu _popover;
};

}
