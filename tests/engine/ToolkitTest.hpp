#pragma once

#include "catalogue/BookInfo.hpp"

#include <gtkmm/widget.h>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace pagora::test {

// Base class of tests with widgets.
class ToolkitTest : public testing::Test {
protected:
    // Runs the main loop until the condition holds. Returns false on timeout.
    static bool waitUntil(const std::function<bool()>& condition, unsigned seconds = 120)
    {
        bool isLate = false;
        const auto timeout = g_timeout_add_seconds(
            seconds,
            [](gpointer late) -> gboolean {
                *static_cast<bool*>(late) = true;
                return G_SOURCE_CONTINUE;
            },
            &isLate);
        while (!condition() && !isLate)
            g_main_context_iteration(nullptr, TRUE);
        g_source_remove(timeout);
        return condition();
    }

    // Handles all pending events of the main loop.
    static void settle()
    {
        while (g_main_context_iteration(nullptr, FALSE)) { }
    }

    // Sends a key to the window or a panel in the capture phase. Returns whether it was handled.
    static bool press(gpointer window, guint keyval, GdkModifierType state = GdkModifierType(0))
    {
        gboolean taken = FALSE;
        g_autoptr(GListModel) controllers = gtk_widget_observe_controllers(GTK_WIDGET(window));
        for (guint i = 0; i < g_list_model_get_n_items(controllers) && !taken; ++i) {
            g_autoptr(GtkEventController) each = GTK_EVENT_CONTROLLER(g_list_model_get_item(controllers, i));
            if (GTK_IS_EVENT_CONTROLLER_KEY(each)
                && gtk_event_controller_get_propagation_phase(each) == GTK_PHASE_CAPTURE)
                g_signal_emit_by_name(each, "key-pressed", keyval, 0u, state, &taken);
        }
        return taken;
    }

    // Returns whether the widget shows a tooltip when the pointer rests on it.
    static bool showsTooltip(Gtk::Widget& widget)
    {
        gboolean shows = FALSE;
        g_autoptr(GtkTooltip) tooltip = GTK_TOOLTIP(g_object_new(GTK_TYPE_TOOLTIP, nullptr));
        g_signal_emit_by_name(widget.gobj(), "query-tooltip", 0, 0, FALSE, tooltip, &shows);
        return shows;
    }

    // Returns books with the titles "Title 0", "Title 1", …
    static std::shared_ptr<std::vector<BookInfoPtr>> makeBooks(int count)
    {
        auto books = std::make_shared<std::vector<BookInfoPtr>>();
        for (int i = 0; i < count; ++i) {
            auto book = std::make_shared<BookInfo>();
            book->setTitle("Title " + std::to_string(i));
            book->setAuthor("Author " + std::to_string(i));
            book->setIsbn("isbn-" + std::to_string(i));
            books->push_back(std::move(book));
        }
        return books;
    }
};

}
