#pragma once

#include "base/Bounds.hpp"
#include "confinement/HelperProcess.hpp"
#include "epub/EpubInspection.hpp"

#include <functional>
#include <optional>
#include <string>

namespace pagora {

// Runs EpubInspection in a confined helper process. A book that exceeds its budget of time or memory, or crashes the
// process, is rejected as past a bound, and the process is restarted for the next. Where it cannot be started, each
// book is rejected with a line that says so. Works in the library's one scratch folder; one inspection at a time, any
// thread.
class InspectionProcess {
public:
    // Once `isEnded` returns true, on any thread, an inspection gives no record and no line.
    InspectionProcess(InspectionHub& hub, std::function<bool()> isEnded, const InspectionLimits& limits = {},
        std::string program = "pagora-inspect");

    // As EpubInspection says.
    BookInfoPtr getBookInfo(
        const std::string& archivePath, StopOnErrors stopOnErrors, const ScaledCover* prefetchedCover = nullptr);
    // Removes what the last inspection has left in the scratch folder.
    void emptyScratch();

    // 0 when none runs.
    pid_t process() const { return _process.process(); }
    // Ends the process, if one runs, and returns its resource usage.
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

// Prefetches covers in a helper process that can access only the archive. One thread at a time.
class CoverProcess {
public:
    explicit CoverProcess(std::function<bool()> isEnded);

    // Missing when it cannot be prefetched.
    std::optional<ScaledCover> prefetchCover(const std::string& archivePath);

private:
    HelperProcess _process;
};

}
