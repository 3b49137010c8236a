#include "controls/gtk/FontLetters.hpp"
#include "controls/gtk/PopUpControl.hpp"
#include "tests/engine/ToolkitTest.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>

namespace pagora::test {

namespace {

// A font menu in a window.
class FontMenu : public ToolkitTest {
protected:
    FontMenu()
    {
        // As in the layouts, the search is enabled before the menu is set up.
        _dropDown.set_enable_search(true);
        _menu = std::make_unique<PopUpControl>(_dropDown, PopUpControl::TitlesAreFonts::Yes);
        _window.set_child(_dropDown);
        _window.present();
        for (const char* family : { "Arial", "Georgia", "DejaVu Sans", "TeX Gyre Pagella", "D050000L" })
            _menu->addItem(family);
        EXPECT_TRUE(waitUntil([this] { return _dropDown.get_model()->get_n_items() == 5; }));
    }

    static std::vector<GtkWidget*> below(GtkWidget* widget, GType type)
    {
        std::vector<GtkWidget*> found;
        for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
            if (g_type_is_a(G_OBJECT_TYPE(child), type))
                found.push_back(child);
            for (auto* const each : below(child, type))
                found.push_back(each);
        }
        return found;
    }
    GtkWidget* panel() { return below(GTK_WIDGET(_dropDown.gobj()), GTK_TYPE_POPOVER).at(0); }
    GtkSearchEntry* field() { return GTK_SEARCH_ENTRY(below(panel(), GTK_TYPE_SEARCH_ENTRY).at(0)); }
    std::size_t shownCount()
    {
        auto* const list = GTK_LIST_VIEW(below(panel(), GTK_TYPE_LIST_VIEW).at(0));
        return g_list_model_get_n_items(G_LIST_MODEL(gtk_list_view_get_model(list)));
    }
    // Returns the label with this text in the open list.
    GtkLabel* rowOf(const std::string& title)
    {
        for (auto* const label : below(panel(), GTK_TYPE_LABEL)) {
            if (gtk_label_get_text(GTK_LABEL(label)) == title)
                return GTK_LABEL(label);
        }
        return nullptr;
    }
    bool hasFontOfItsOwn(const std::string& title)
    {
        gtk_popover_popup(GTK_POPOVER(panel()));
        EXPECT_TRUE(waitUntil([&] { return rowOf(title) != nullptr; })) << title;
        auto* const attributes = gtk_label_get_attributes(rowOf(title));
        GSList* const all = attributes ? pango_attr_list_get_attributes(attributes) : nullptr;
        g_slist_free_full(all, reinterpret_cast<GDestroyNotify>(pango_attribute_destroy));
        return all != nullptr;
    }
    void type(const char* text)
    {
        gtk_popover_popup(GTK_POPOVER(panel()));
        gtk_editable_set_text(GTK_EDITABLE(field()), text);
    }

    Gtk::Window _window;
    Gtk::DropDown _dropDown;
    std::unique_ptr<PopUpControl> _menu;
};

}

TEST_F(FontMenu, TakesWhatIsTypedWhileItIsOpen)
{
    EXPECT_EQ(gtk_search_entry_get_key_capture_widget(field()), panel());
}

TEST_F(FontMenu, FindsAFontByAnyPartOfItsName)
{
    type("pag");
    EXPECT_TRUE(waitUntil([this] { return shownCount() == 1; }));
    type("dejavu s");
    EXPECT_TRUE(waitUntil([this] { return shownCount() == 1; }));
    type("");
    EXPECT_TRUE(waitUntil([this] { return shownCount() == 5; }));
}

TEST_F(FontMenu, EnterTakesTheFirstFontThatIsFound)
{
    int chosen = 0;
    _menu->setAction([&] { ++chosen; });
    type("pag");
    ASSERT_TRUE(waitUntil([this] { return shownCount() == 1; }));
    g_signal_emit_by_name(field(), "activate");
    EXPECT_TRUE(waitUntil([&] { return chosen == 1; }));
    EXPECT_EQ(_menu->titleOfSelectedItem(), "TeX Gyre Pagella");
}

TEST_F(FontMenu, WritesEachNameInItsOwnFont)
{
    EXPECT_TRUE(hasFontOfItsOwn("DejaVu Sans"));
    EXPECT_TRUE(hasFontOfItsOwn("Arial"));
}

TEST_F(FontMenu, WritesTheNameOfAFontWithoutLatinLettersInTheInterfacesFont)
{
    EXPECT_FALSE(hasLatinLetters("D050000L"));
    EXPECT_FALSE(hasFontOfItsOwn("D050000L"));
}

}
