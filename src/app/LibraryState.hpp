#pragma once

#include "app/Launch.hpp"
#include "app/Reading.hpp"
#include "app/WindowSwitch.hpp"
#include "catalogue/Catalogue.hpp"
#include "catalogue/LibraryFolders.hpp"
#include "catalogue/Settings.hpp"
#include "desktop/Workspace.hpp"
#include "epub/FaultyBooks.hpp"
#include "kept_pages/KeptPages.hpp"
#include "library_window/LibraryWindow.hpp"
#include "reader/ReaderState.hpp"
#include "running/RunLoop.hpp"
#include "store/UserDefaults.hpp"

#include <memory>
#include <string>

namespace pagora {

// The program's folders and names.
struct ProgramInfo {
    std::string documentsFolder;
    std::string cachesFolder;
    std::string homeFolder;
    // The application identifier, such as org.pagora.Pagora.
    std::string bundleIdentifier;
    std::string bundleVersion;
};

// The objects that the hub uses. All must outlive the hub.
struct Platform {
    ProgramInfo program;
    UserDefaults& defaults;
    Workspace& workspace;
    RunLoop& runLoop;
    LibraryWindow& libraryWindow;
    ReaderWindowFactory& readerWindows;
    // The records of the stored books, created before the start-up needs them. May be null.
    std::shared_ptr<PreparedRecords> records = nullptr;
};

// The hub's state, shared by start-up, opening and closing. Main thread only, except for thread-safe parts.
struct LibraryState {
    LibraryFolders folders;
    // The folder and the record of the last inspected book.
    std::string _epubPath;
    BookInfoPtr _bookInfo;
    Catalogue catalogue;
    FaultyBooks faultyBooks;

    Launch launch;
    Reading reading;
    WindowSwitch windows;
    ReaderState reader;
    ReaderSettings settings;
    KeptPages keptPages;
};

}
