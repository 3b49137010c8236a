#pragma once

#include <memory>
#include <optional>
#include <string>

namespace pagora {

// The bytes of a file in another folder and on the disk, but without a name there: what takes long of `copyIntoFolder`,
// done before its time. They go again unless they are given a name. One thread at a time.
class CopyAhead {
public:
    // Null when the file cannot be copied so, or a file of its name is in the folder already.
    static std::unique_ptr<CopyAhead> of(const std::string& source, const std::string& folder);
    struct Parts;
    // For `of`.
    explicit CopyAhead(std::unique_ptr<Parts> parts);
    ~CopyAhead();

    // Ends as `copyIntoFolder` does, save that the folder is not flushed; a source that has changed meanwhile is copied
    // again.
    std::optional<std::string> takeName();

private:
    std::unique_ptr<Parts> _parts;
};

}
