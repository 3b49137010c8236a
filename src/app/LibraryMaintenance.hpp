#pragma once

#include "app/LibraryState.hpp"
#include "epub/EpubImport.hpp"
#include "library_views/LibraryViews.hpp"
#include "running/Task.hpp"

#include <string>

namespace pagora {

// Operations on the whole library. Long work runs in the background; an operation is finished when its task is. Main
// thread only.
class LibraryMaintenance {
public:
    LibraryMaintenance(const Platform& platform, LibraryState& state, LibraryViews& views, EpubImport& import);

    // Removes all stored values and rebuilds the catalogue from the library folder. A catalogue whose folder has no
    // book is kept. Waits for imports in progress.
    Task<void> resetAppSettings();
    // Moves the books of a folder into the library folder (mode "move"), or copies them (any other mode but "empty"),
    // and imports the content of the library folder.
    Task<void> resetEpubLibrary(std::string folder, std::string mode);
    // Removes the temporary folder and stores the catalogue.
    Task<void> killTempItems();
    void showLibFolderInFinder();
    // Writes a line to the log.
    void testAction();

private:
    std::vector<std::string> bringIn(const std::string& folder, const std::string& mode);

    Platform _platform;
    LibraryState& _state;
    LibraryViews& _views;
    EpubImport& _import;
};

}
