#pragma once

#include <gtkmm/widget.h>

namespace pagora {

class tocLinkTextField;

// A row of the contents pane. Draws its current link, or nothing. Main thread only.
class TocRow : public Gtk::Widget {
public:
    TocRow();

    // In pixels. A point has more pixels if the desktop enlarges text.
    static int rowHeight();
    // `link` must outlive the time it is shown.
    void setLink(const tocLinkTextField* link);
    const tocLinkTextField* link() const { return _link; }

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override { return Gtk::SizeRequestMode::CONSTANT_SIZE; }
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural, int& minimumBaseline,
        int& naturalBaseline) const override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;

private:
    const tocLinkTextField* _link = nullptr;
};

}
