#pragma once

#include "base/Result.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

class FileDescriptor;

// The file system, in the few operations that the program needs. Paths are absolute; missing results and `false` stand
// for every failure. Safe on any thread.

bool fileExists(const std::string& path);
bool isFolder(const std::string& path);
// Whether it is a file itself, not a link to one or a folder.
bool isPlainFile(const std::string& path);
bool isReadable(const std::string& path);
// The names in a folder, in the order in which the system lists them, without "." and ".."; missing when it cannot be
// listed.
std::optional<std::vector<std::string>> folderEntries(const std::string& path);
// With the folders above it. The reason of a failure is the system's description.
Result<Done, std::string> createFolder(const std::string& path);
// Creates the folder and those above it, and removes everything in it.
void makeEmptyFolder(const std::string& path);
// A file, or a folder with all that is in it. Links are removed, not followed. False when there was nothing.
bool removeItem(const std::string& path);
// An open file to read from, that is a file and not a pipe or a device; none when it cannot be opened.
FileDescriptor openFile(const std::string& path);
// The whole file. Missing when it cannot be read, or is larger than `limit` bytes.
std::optional<std::string> readFile(const std::string& path, std::size_t limit = 64u << 20);
// Written beside the destination, flushed to the disk and then renamed over it, so that a half file never has the
// name.
bool writeFile(const std::string& path, const std::string& bytes);
// Writes all of the bytes to an open file.
bool writeAll(int file, std::string_view bytes);
// Writes all that is still to be read of one open file to another one.
bool copyBytes(int source, int destination);
// Brings the names in a folder to the disk.
bool flushFolder(const std::string& path);
// A copy of the file at `source` under the name `destination`, made the same way. An existing destination that is not
// the same file is never overwritten: the copy fails and leaves it as it was.
bool copyFile(const std::string& source, const std::string& destination);
// Removes unfinished files of copies and writes that were interrupted. Files that are still being written, by this or
// another process, stay.
void removeUnfinishedFiles(const std::string& folder);

}
