#pragma once

#include "base/Bounds.hpp"
#include "base/FileDescriptor.hpp"
#include "base/Result.hpp"
#include "files/ArchiveDirectory.hpp"

#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace pagora {

class SpareFiles;

// Extraction from a ZIP archive into a folder, compatible with the classic command: existing files are overwritten,
// each member keeps its folders, missing members are skipped, and "*", "?" and "[" in a requested name are wildcards.
// Nothing is written outside the destination: "../" and a leading "/" are dropped, symbolic links are neither created
// nor followed, and encrypted members are skipped. Member names that are not UTF-8 are decoded as code page 437. Use
// each object on one thread at a time.
class Archive {
public:
    // Opens the archive at `path`. Fails if it is not a readable ZIP archive or if its directory exceeds a limit.
    static Result<Archive, ArchiveProblem> open(const std::string& path, const ArchiveLimits& limits = {});
    // Opens the archive in an open file. Fails if the descriptor is invalid.
    static Result<Archive, ArchiveProblem> open(FileDescriptor file, const ArchiveLimits& limits = {});
    Archive(Archive&&) noexcept;
    Archive& operator=(Archive&&) noexcept;
    ~Archive();

    // Returns the extraction path of each member that is a file, relative to the destination.
    std::vector<std::string> filePaths() const;

    // Extracts the members that match one of `members`, or all if it is empty. A damaged member is extracted up to the
    // damage, and a member that is longer than the directory states up to the stated length. Returns early if `stop` is
    // requested. Reuses files from `spare` while it has any.
    void extract(const std::vector<std::string>& members, const std::string& destination,
        const std::stop_token& stop = {}, SpareFiles* spare = nullptr);

    // Limits the disk space of later extractions.
    void setRoom(std::uint64_t bytes);
    // Returns whether members were left out because of that limit.
    bool isOutOfRoom() const;
    // Returns whether members were left out because the destination's disk is full or read-only.
    bool isDiskFull() const;

    // Returns the content of the member with exactly that name; nullopt if there is none or if it is larger than
    // `limit` bytes.
    std::optional<std::string> read(const std::string& member, std::uint64_t limit) const;

private:
    struct Handle;
    explicit Archive(std::unique_ptr<Handle> handle);
    std::unique_ptr<Handle> _handle;
};

}
