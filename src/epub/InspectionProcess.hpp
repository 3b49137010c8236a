#pragma once

#include "base/Bounds.hpp"
#include "confinement/HelperProcess.hpp"
#include "epub/EpubInspection.hpp"

#include <functional>
#include <optional>
#include <string>

namespace pagora {

// Runs EpubInspection in a confined helper process. A book that exceeds its budget of time or memory, or that crashes
// the process, is rejected as exceeding a limit, and the process is restarted for the next book. If the process cannot
// be started, each book is rejected with a line that says so. Works in the library's only scratch folder, so only one
// inspection may run at a time, on any thread.
class InspectionProcess {
public:
    // When `isEnded`, which may be called on any thread, returns true, an inspection returns no record and reports no
    // line.
    InspectionProcess(InspectionHub& hub, std::function<bool()> isEnded, const InspectionLimits& limits = {},
        std::string program = "pagora-inspect");

    // See EpubInspection.
    BookInfoPtr getBookInfo(
        const std::string& archivePath, StopOnErrors stopOnErrors, const ScaledCover* prefetchedCover = nullptr);
    // Removes the files that the last inspection has left in the scratch folder.
    void emptyScratch();

    // Returns the process id; 0 if no process is running.
    pid_t process() const { return _process.process(); }
    // Ends the process, if it is running, and returns its resource usage.
    const HelperProcess::Usage& end()
    {
        _process.end();
        return _process.usage();
    }

private:
    std::optional<Value> ask(Value::Dictionary question, FileDescriptor archive);
    BookInfoPtr take(const Value& answer, const std::string& archivePath);
    void reject(const std::string& archivePath, const std::string& reason);
    void prepare();

    InspectionHub& _mainController;
    std::function<bool()> _isEnded;
    const InspectionLimits _limits;
    HelperProcess _process;
};

// Prefetches covers in a helper process that can access only the archive. Use each object on one thread at a time.
class CoverProcess {
public:
    explicit CoverProcess(std::function<bool()> isEnded);

    // Returns nullopt if the cover cannot be prefetched.
    std::optional<ScaledCover> prefetchCover(const std::string& archivePath);

private:
    HelperProcess _process;
};

}
