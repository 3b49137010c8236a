#pragma once

#include "marks/MarksExport.hpp"

#include <cstddef>
#include <functional>
#include <string>

namespace pagora {

// An export of the library's marks: one file for each book.
struct MarksExportRequest {
    ExportFormat format = ExportFormat::Markdown;
    MarksFilter filter;
    std::string folder;
};

// Asks which marks of the library are exported, and shows the progress of the export. Main thread only.
class MarksExportPanel {
public:
    virtual ~MarksExportPanel() = default;
    // `start` receives the choice; `cancel` is called if the user cancels a running export. A panel that is open is
    // raised.
    virtual void open(std::function<void(const MarksExportRequest&)> start, std::function<void()> cancel) = 0;
    virtual void setProgress(std::size_t done, std::size_t count) = 0;
    // Shows the result of the export in one line.
    virtual void setOutcome(const std::string& line) = 0;
};

}
