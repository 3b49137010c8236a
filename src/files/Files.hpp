#pragma once

#include "base/Result.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pagora {

class FileDescriptor;

// File operations. Paths are absolute; nullopt and `false` stand for every failure. Thread-safe.

bool fileExists(const std::string& path);
bool isFolder(const std::string& path);
// Returns whether the path is a regular file, not a link to one or a folder.
bool isPlainFile(const std::string& path);
bool isReadable(const std::string& path);
// Returns the names in a folder without "." and "..", in the system's order; nullopt if the folder cannot be read.
std::optional<std::vector<std::string>> folderEntries(const std::string& path);
// Creates the folder and its parents. On failure, returns the system's description of the error.
Result<Done, std::string> createFolder(const std::string& path);
// Creates the folder and its parents, and removes everything in it.
void makeEmptyFolder(const std::string& path);
// Removes a file, or a folder with its content. Links are removed, not followed. Returns false if nothing was removed.
bool removeItem(const std::string& path);
// Opens a regular file for reading. Returns an invalid descriptor for a pipe, a device or a file that cannot be opened.
FileDescriptor openFile(const std::string& path);
// Returns the whole file; nullopt if it cannot be read or is larger than `limit` bytes.
std::optional<std::string> readFile(const std::string& path, std::size_t limit = 64u << 20);
// Writes a temporary file beside the destination, flushes it to the disk and renames it, so that the destination is
// never incomplete.
bool writeFile(const std::string& path, const std::string& bytes);
// Writes all of the bytes to an open file.
bool writeAll(int file, std::string_view bytes);
// Copies from the current position of one open file to the end into another.
bool copyBytes(int source, int destination);
// Flushes the names in a folder to the disk.
bool flushFolder(const std::string& path);
// Copies the file at `source` to the path `destination` in the same way. An existing destination that is not the same
// file is never overwritten: the copy fails and leaves it unchanged.
bool copyFile(const std::string& source, const std::string& destination);
// Removes temporary files of interrupted copies and writes. Files that are still being written, by this or another
// process, stay.
void removeUnfinishedFiles(const std::string& folder);

}
