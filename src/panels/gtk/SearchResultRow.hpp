#pragma once

#include "find/BookFinder.hpp"

#include <gtkmm/widget.h>

#include <pangomm/layout.h>
#include <string>

namespace pagora {

// One row of the results: the name of a chapter, or a match with its context. Draws the text itself, because a list
// creates about 200 rows at once, and a label computes its layout several times. Main thread only.
class SearchResultRow : public Gtk::Widget {
public:
    SearchResultRow();
    void showChapter(const std::string& name);
    void showResult(const FoundText& found);
    Glib::ustring text() const { return _layout->get_text(); }

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override { return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH; }
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural, int& minimumBaseline,
        int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    void show(const Glib::ustring& markup, int maxLines);

    Glib::RefPtr<Pango::Layout> _layout;
};

// Returns the accessible name of a result.
std::string spokenResult(const FoundText& found);

}
