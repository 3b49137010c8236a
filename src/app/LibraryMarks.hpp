#pragma once

#include "app/LibraryState.hpp"
#include "notebook/LibraryExport.hpp"
#include "running/Task.hpp"

namespace pagora {

// Exports the marks of all books of the library, one book after the other in the background. Main thread only.
class LibraryMarks {
public:
    // Both must outlive this object.
    LibraryMarks(const Platform& platform, const LibraryState& state)
        : _platform(platform)
        , _state(state)
    {
    }

    // Opens the panel that asks which marks are exported, and where to.
    void askForExport();

private:
    Task<void> exportAll(MarksExportRequest request);
    MarksExportPanel& panel() { return _platform.libraryWindow.marksExportPanel(); }

    Platform _platform;
    const LibraryState& _state;
    bool _isCancelled = false;
    Task<void> _exporting;
};

}
