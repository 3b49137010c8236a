#pragma once

#include "app/LibraryState.hpp"
#include "epub/EpubImport.hpp"
#include "library_views/LibraryViews.hpp"
#include "running/Task.hpp"

#include <string>
#include <vector>

namespace pagora {

// The launch: lays out the folders, wipes stored state when the version changed, loads catalogue and settings, and
// brings in what lies in the library folder. Long steps run in the background, so that the window lives meanwhile. Main
// thread.
class StartUp {
public:
    StartUp(const Platform& platform, LibraryState& state, LibraryViews& views, EpubImport& import);

    Task<void> initPagoraData();

private:
    void layOutLibraryFolder();
    void checkVersion();
    void loadCatalogue();
    // Empties the temporary folder, and clears the library folder of copies that a sudden end has left unfinished.
    Task<void> clearFolders();
    // Moves the archives to the Trash that a sudden end has left in the library folder.
    Task<void> finishRemovals(std::vector<std::string> archives);

    Platform _platform;
    LibraryState& _state;
    LibraryViews& _views;
    EpubImport& _import;
};

// Hides what is beyond the items 0, 1 and 3 of a toolbar's context menu and parts the third from the first two.
void trimToolbarMenu(Menu& menu);

}
