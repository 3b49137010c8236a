// The entry points of the module that the program loads; see ReaderModule in app/gtk.

#include "reader_windows/gtk/ReaderWindowFactoryGtk.hpp"

extern "C" pagora::ReaderWindowFactory* pagoraMakeReaderWindowFactory(
    const std::string& temporaryFolder, pagora::Toplevel& toplevel, pagora::RunLoop& runLoop)
{
    return new pagora::ReaderWindowFactoryGtk(temporaryFolder, toplevel, runLoop);
}
