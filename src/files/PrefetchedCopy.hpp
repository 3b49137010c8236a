#pragma once

#include <memory>
#include <optional>
#include <string>

namespace pagora {

// A copy of a file whose bytes are on the disk but which has no name yet: the slow part of `copyIntoFolder`, done in
// advance. Without a name it is removed with this object. Use each object on one thread at a time.
class PrefetchedCopy {
public:
    // Copies the file. Returns null if the file system does not support unnamed files, or if the folder has a file of
    // that name.
    static std::unique_ptr<PrefetchedCopy> of(const std::string& source, const std::string& folder);
    struct Parts;
    // Called by `of`.
    explicit PrefetchedCopy(std::unique_ptr<Parts> parts);
    ~PrefetchedCopy();

    // Gives the copy a name as `copyIntoFolder` does, without flushing the folder. Copies the source again if it has
    // changed.
    std::optional<std::string> takeName();

private:
    std::unique_ptr<Parts> _parts;
};

}
