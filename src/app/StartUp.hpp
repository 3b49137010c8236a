#pragma once

#include "app/LibraryState.hpp"
#include "epub/EpubImport.hpp"
#include "library_views/LibraryViews.hpp"
#include "running/Task.hpp"

#include <string>
#include <vector>

namespace pagora {

// The launch: creates the folders, resets stored values after a version change, loads catalogue and settings, and
// imports the library folder. Long steps run in the background, so that the window stays responsive. Main thread only.
class StartUp {
public:
    StartUp(const Platform& platform, LibraryState& state, LibraryViews& views, EpubImport& import);

    Task<void> initPagoraData();

private:
    void layOutLibraryFolder();
    void checkVersion();
    void loadCatalogue();
    // Empties the temporary folder and removes unfinished copies from the library folder.
    Task<void> clearFolders();
    // Finishes removals that a crash interrupted.
    Task<void> finishRemovals(std::vector<std::string> archives);

    Platform _platform;
    LibraryState& _state;
    LibraryViews& _views;
    EpubImport& _import;
};

// Hides all items of a toolbar's context menu except 0, 1 and 3, and inserts a separator before the third.
void trimToolbarMenu(Menu& menu);

}
