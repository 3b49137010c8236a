#include "store/DefaultsFile.hpp"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <unistd.h>

namespace pagora {

namespace {

// Suffix of an unfinished copy's name, followed by the id of the process that makes it.
constexpr std::string_view unfinishedMark = ".copy-";

// Removes the unfinished copies of this process and of processes that have exited.
void removeUnfinishedCopies(const std::string& path)
{
    const std::filesystem::path target(path);
    const std::string start = target.filename().string() + std::string(unfinishedMark);
    std::error_code ignored;
    for (const auto& item : std::filesystem::directory_iterator(target.parent_path(), ignored)) {
        const std::string name = item.path().filename();
        if (!name.starts_with(start))
            continue;
        const pid_t process = std::atoi(name.c_str() + start.size());
        if (process == getpid() || kill(process, 0) != 0)
            std::filesystem::remove(item.path(), ignored);
    }
}

}

bool DefaultsFile::copyTo(const std::string& path)
{
    // The name contains only the process id, so this process makes one copy at a time.
    static std::mutex copying;
    const std::lock_guard lock(copying);
    removeUnfinishedCopies(path);
    const std::string unfinished = path + std::string(unfinishedMark) + std::to_string(getpid());
    std::error_code ignored;
    try {
        SQLite::Database copy(unfinished, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, busyMilliseconds);
        copy.exec("PRAGMA synchronous = FULL");
        if (SQLite::Backup(copy, *_database).executeStep() != SQLITE_DONE)
            return false;
        copy.exec("PRAGMA journal_mode = DELETE");
    } catch (const SQLite::Exception&) {
        std::filesystem::remove(unfinished, ignored);
        return false;
    }
    // A journal or log of the replaced file does not belong to the copy.
    for (const char* companion : { "-journal", "-wal", "-shm" })
        std::filesystem::remove(path + companion, ignored);
    if (std::rename(unfinished.c_str(), path.c_str()) != 0)
        return false;
    if (const int folder = ::open(std::filesystem::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY);
        folder >= 0) {
        fsync(folder);
        close(folder);
    }
    return true;
}

}
