#pragma once

#include "catalogue/Catalogue.hpp"
#include "catalogue/LibraryFolders.hpp"
#include "catalogue/Settings.hpp"
#include "desktop/Workspace.hpp"
#include "epub/FaultyBooks.hpp"
#include "fixed/FixedLayoutWindowController.hpp"
#include "library_window/LibraryWindow.hpp"
#include "reader/ReaderState.hpp"
#include "reflowable/EpubWindowController.hpp"
#include "running/RunLoop.hpp"
#include "store/UserDefaults.hpp"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// Where the program keeps its things and what it is called, as the system says.
struct ProgramInfo {
    std::string documentsFolder;
    std::string cachesFolder;
    std::string homeFolder;
    // For example org.pagora.Pagora.
    std::string bundleIdentifier;
    std::string bundleVersion;
};

// What the hub is built on. All of it outlives the hub.
struct Platform {
    ProgramInfo program;
    UserDefaults& defaults;
    Workspace& workspace;
    RunLoop& runLoop;
    LibraryWindow& libraryWindow;
    ReaderWindowFactory& readerWindows;
};

// The hub's state: what start-up, opening and closing share. Main thread, save for the parts that are safe on any.
struct LibraryState {
    LibraryFolders folders;
    // Where inspection put the last book that it looked at, and its record.
    std::string _epubPath;
    BookInfoPtr _bookInfo;
    Catalogue catalogue;
    FaultyBooks faultyBooks;

    // Files that the desktop asked to open and that are being handled.
    std::optional<std::vector<std::string>> _filesToOpenByApp;
    bool _PagoraLaunched = false;
    bool _initProcessing = false;
    // The catalogue is being built anew.
    bool isResetting = false;

    BookInfoPtr currentBook;
    // The book that is read was opened from outside the library, and its archive is a copy made for this reading.
    bool _singleEpub = false;
    bool singleEpubWasCopied = false;

    ReaderState reader;
    ReaderSettings settings;
    // Position handed to the reader at opening and read back at closing.
    std::uint64_t curStorageIndex = 0;
    float curStorageCap = 0;
    bool fullScreenMode = false;
    bool epubWinInFullScreen = false;
    bool inCloseEpubMethod = false;
    bool exitedByCode = false;

    std::unique_ptr<EpubWindowController> _epubWindowController;
    std::unique_ptr<FixedLayoutWindowController> _fixedWindowController;
    // A reader window whose reading has ended and that is still leaving full screen.
    std::unique_ptr<EpubWindowController> leavingEpubWindow;
    std::unique_ptr<FixedLayoutWindowController> leavingFixedWindow;
};

}
