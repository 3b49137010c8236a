#pragma once

#include <memory>
#include <optional>
#include <string>

namespace pagora {

// A copy of a file whose bytes are already on the disk but which has no name yet: the slow part of `copyIntoFolder`,
// done in advance. Without a name it is removed with this object. One thread at a time.
class PrefetchedCopy {
public:
    // Null when the file system does not support it, or a file of that name is in the folder.
    static std::unique_ptr<PrefetchedCopy> of(const std::string& source, const std::string& folder);
    struct Parts;
    // For `of`.
    explicit PrefetchedCopy(std::unique_ptr<Parts> parts);
    ~PrefetchedCopy();

    // Gives the copy a name as `copyIntoFolder` does, without flushing the folder. A source that has changed meanwhile
    // is copied again.
    std::optional<std::string> takeName();

private:
    std::unique_ptr<Parts> _parts;
};

}
