#include "fixed/gtk/FixedWindowGtk.hpp"

namespace pagora {

FixedWindowGtk::FixedWindowGtk(ReaderPage page)
    : ReaderWindowRole("FixedLayout", std::move(page))
{
}

}
