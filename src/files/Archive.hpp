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

// Extraction from a ZIP archive into a folder, with the contract of the classic command: existing files are
// overwritten, each member keeps its folders, a member that is not there is passed over, and "*", "?" and "[" in an
// asked-for name are wildcards. Nothing is written outside the destination: "../" and a leading "/" are dropped,
// symbolic links are neither made nor followed, and encrypted members are passed over. A name in an archive that is not
// UTF-8 is read as code page 437. Any thread; one thread an object.
class Archive {
public:
    // The archive at `path`, or why there is none: it is no readable ZIP archive, or breaks a bound by what its
    // directory says.
    static Result<Archive, ArchiveProblem> open(const std::string& path, const ArchiveLimits& limits = {});
    // The same for a file that is open already; none is no archive.
    static Result<Archive, ArchiveProblem> open(FileDescriptor file, const ArchiveLimits& limits = {});
    Archive(Archive&&) noexcept;
    Archive& operator=(Archive&&) noexcept;
    ~Archive();

    // Where each member that is a file would go, as a path below the destination.
    std::vector<std::string> filePaths() const;

    // Extracts the members that match one of `members`, or all when it is empty. A damaged member is extracted up to
    // the damage, and one that is longer than the directory states up to that length. Returns early when `stop` is
    // requested. Files are taken from `spare` while it has some.
    void extract(const std::vector<std::string>& members, const std::string& destination,
        const std::stop_token& stop = {}, SpareFiles* spare = nullptr);

    // Limits the disk space of everything that is extracted from now on.
    void setRoom(std::uint64_t bytes);
    // Whether members were left out because of that limit.
    bool isOutOfRoom() const;
    // Whether something did not come because the destination's disk is full, or may not be written.
    bool isDiskFull() const;

    // The bytes of the member of that very name; missing when there is none, or it holds more than `limit`.
    std::optional<std::string> read(const std::string& member, std::uint64_t limit) const;

private:
    struct Handle;
    explicit Archive(std::unique_ptr<Handle> handle);
    std::unique_ptr<Handle> _handle;
};

}
