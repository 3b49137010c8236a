#include "desktop/gtk/AccessibleNames.hpp"

#include "base/Translation.hpp"

#include <gtk/gtk.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/popover.h>
#include <gtkmm/textview.h>
#include <gtkmm/togglebutton.h>

namespace pagora {

namespace {

Glib::ustring withoutAccessKey(const Glib::ustring& label)
{
    Glib::ustring name;
    for (auto character = label.begin(); character != label.end(); ++character) {
        if (*character == '_' && std::next(character) != label.end())
            ++character;
        name += *character;
    }
    return name;
}

// Emits a focus change so that assistive technology notices the widget. Done when idle, because a window that is being
// mapped is not ready.
void introduceSoon(Gtk::Widget& widget)
{
    const auto introduce = +[](gpointer widget) -> gboolean {
        gtk_widget_set_focusable(GTK_WIDGET(widget), TRUE);
        gtk_widget_set_focusable(GTK_WIDGET(widget), FALSE);
        return G_SOURCE_REMOVE;
    };
    g_idle_add_full(G_PRIORITY_DEFAULT, introduce, g_object_ref(widget.gobj()), g_object_unref);
}

}

void setAccessibleName(Gtk::Widget& widget, const Glib::ustring& name)
{
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str(), -1);
}

// Newer toolkits give no name to a widget with the role of a status. Measured with 4.8 and 4.18.
void makeStatus(Gtk::Widget& widget)
{
    const auto role = gtk_get_minor_version() <= 8 ? GTK_ACCESSIBLE_ROLE_STATUS : GTK_ACCESSIBLE_ROLE_LOG;
    if (gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(widget.gobj())) != role)
        g_object_set(widget.gobj(), "accessible-role", role, nullptr);
}

bool isStatus(const Gtk::Widget& widget)
{
    const auto role = widget.get_accessible_role();
    return role == Gtk::Accessible::Role::STATUS || role == Gtk::Accessible::Role::LOG;
}

void correctAccessibleNames(Gtk::Widget& root)
{
    if (auto* const button = dynamic_cast<Gtk::Button*>(&root)) {
        // The inner label already names it, without the mnemonic mark.
        if (button->get_use_underline() && !button->get_label().empty())
            gtk_accessible_reset_property(GTK_ACCESSIBLE(button->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL);
    } else if (auto* const check = dynamic_cast<Gtk::CheckButton*>(&root)) {
        if (check->get_use_underline())
            setAccessibleName(*check, withoutAccessKey(check->get_label()));
    } else if (auto* const menu = dynamic_cast<Gtk::MenuButton*>(&root)) {
        setAccessibleName(*menu, menu->get_tooltip_text());
        if (auto* const popover = menu->get_popover())
            setAccessibleName(*popover, menu->get_tooltip_text());
    } else if (auto* const dropDown = dynamic_cast<Gtk::DropDown*>(&root)) {
        setAccessibleName(*dropDown->get_first_child(), dropDown->get_tooltip_text());
    }
    for (auto* child = root.get_first_child(); child; child = child->get_next_sibling())
        correctAccessibleNames(*child);
}

void leaveUnnamed(Gtk::Widget& root)
{
    if (GTK_IS_STACK(root.gobj())) {
        g_autoptr(GtkSelectionModel) pages = gtk_stack_get_pages(GTK_STACK(root.gobj()));
        for (guint i = 0; i < g_list_model_get_n_items(G_LIST_MODEL(pages)); ++i) {
            g_autoptr(GtkAccessible) page = GTK_ACCESSIBLE(g_list_model_get_item(G_LIST_MODEL(pages), i));
            gtk_accessible_update_property(page, GTK_ACCESSIBLE_PROPERTY_LABEL, "", -1);
        }
    }
    const auto role = gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(root.gobj()));
    const auto* const label = dynamic_cast<Gtk::Label*>(&root);
    const bool saysNothing = label && role == GTK_ACCESSIBLE_ROLE_LABEL && label->get_text().empty();
    if (role == GTK_ACCESSIBLE_ROLE_WIDGET || role == GTK_ACCESSIBLE_ROLE_SCROLLBAR || saysNothing)
        setAccessibleName(root, {});
    for (auto* child = root.get_first_child(); child; child = child->get_next_sibling())
        leaveUnnamed(*child);
}

void tellOfChanges(Gtk::Widget& root)
{
    if (isStatus(root))
        makeStatus(root);
    if (isStatus(root) || root.get_accessible_role() == Gtk::Accessible::Role::PROGRESS_BAR)
        root.signal_map().connect([&root] { introduceSoon(root); });
    for (auto* child = root.get_first_child(); child; child = child->get_next_sibling())
        tellOfChanges(*child);
}

void nameToolkitControls(Gtk::Widget& root, const Glib::ustring& name)
{
    if (auto* const image = dynamic_cast<Gtk::Image*>(&root)) {
        g_object_set(image->gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
    } else if (GTK_IS_SEARCH_ENTRY(root.gobj())) {
        setAccessibleName(root, _("Search"));
    } else if (auto* const toggle = dynamic_cast<Gtk::ToggleButton*>(&root)) {
        if (toggle->get_icon_name() == "edit-find-symbolic")
            setAccessibleName(root, _("Search"));
    } else if (dynamic_cast<Gtk::MenuButton*>(&root) || dynamic_cast<Gtk::TextView*>(&root)) {
        setAccessibleName(root, name);
    }
    for (auto* child = root.get_first_child(); child; child = child->get_next_sibling())
        nameToolkitControls(*child, name);
}

}
