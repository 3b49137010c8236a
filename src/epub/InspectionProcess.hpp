#pragma once

#include "base/Bounds.hpp"
#include "confinement/HelperProcess.hpp"
#include "epub/EpubInspection.hpp"

#include <functional>
#include <optional>
#include <string>

namespace pagora {

// Inspects archives as EpubInspection does, in a confined process apart: a book that takes more than its budget of time
// or memory, or ends that process, is rejected as one that is past a bound, and the process is started anew for the
// next. Works in the library's one scratch folder; one inspection at a time, any thread.
class InspectionProcess {
public:
    // Once `isEnded` says so, which any thread may bring about, an inspection gives no record and no line.
    InspectionProcess(InspectionHub& hub, std::function<bool()> isEnded, const InspectionLimits& limits = {});

    // As EpubInspection says.
    BookInfoPtr getBookInfo(
        const std::string& archivePath, StopOnErrors stopOnErrors, const ScaledCover* coverAhead = nullptr);
    // Removes what the last inspection has left in the scratch folder.
    void emptyScratch();

    // 0 when none runs.
    pid_t process() const { return _process.process(); }
    // Ends the process, if one runs, and tells what it has taken.
    const HelperProcess::Usage& end()
    {
        _process.end();
        return _process.usage();
    }

private:
    std::optional<Value> ask(Value::Dictionary question, FileDescriptor archive);
    BookInfoPtr take(const Value& answer, const std::string& archivePath);
    void prepare();

    InspectionHub& _mainController;
    std::function<bool()> _isEnded;
    const InspectionLimits _limits;
    HelperProcess _process;
};

// Scales covers ahead in a process of the same kind, that reaches nothing but the archive. One thread at a time.
class CoverProcess {
public:
    explicit CoverProcess(std::function<bool()> isEnded);

    // Missing when it cannot be made ahead.
    std::optional<ScaledCover> coverAhead(const std::string& archivePath);

private:
    HelperProcess _process;
};

}
