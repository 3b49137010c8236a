#pragma once

#include "reader/gtk/ReaderWindowGtk.hpp"

namespace pagora {

// The window of the layout "FixedLayout": a reader window whose pages come with their layout. Main thread.
class FixedWindowGtk : public ReaderWindowRole<ReaderWindow> {
public:
    FixedWindowGtk(Toplevel& toplevel, ReaderPage page);

    void setPageIsMissing(bool isMissing) override;
};

}
