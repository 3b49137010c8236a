#pragma once

#include "reader/gtk/MarkedPage.hpp"

namespace pagora {

// The window of the layout "FixedLayout": a reader window for fixed-layout pages. Main thread only.
class FixedWindowGtk : public MarkedWindowRole<FixedWindow> {
public:
    FixedWindowGtk(Toplevel& toplevel, ReaderPage page);

    void setPageIsMissing(bool isMissing) override;
};

}
