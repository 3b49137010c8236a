#include "store/DefaultsRecovery.hpp"

#include "base/Path.hpp"
#include "base/Translation.hpp"

#include <glib.h>

#include <cstdio>
#include <ctime>
#include <filesystem>

namespace pagora {

namespace {

using Journal = DefaultsFile::Journal;

bool exists(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

std::string universalTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts {};
    gmtime_r(&now, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
    return text;
}

class Opening {
public:
    Opening(const DefaultsPaths& paths, DefaultsIndex& index)
        : _paths(paths)
        , _index(index)
    {
    }

    OpenedDefaults open() &&
    {
        openOrRestore();
        if ((!_opened.file || _opened.file->isReadOnly()) && problem().empty())
            problem() = formatted(
                _("The library cannot be saved in %s; what changes is lost when Pagora ends."), _paths.folder.c_str());
        return std::move(_opened);
    }

    OpenedDefaults restore() &&
    {
        setAsideAndRestore();
        return std::move(_opened);
    }

private:
    std::string& problem() { return _opened.problem; }

    // Takes ownership of the file if its content can be loaded; otherwise returns its condition.
    DefaultsCondition load(DefaultsFile::Opened opened)
    {
        if (!opened)
            return opened.reason();
        auto values = _index.load(**opened);
        if (!values)
            return values.reason();
        _opened.file = std::move(*opened);
        _opened.values = std::move(*values);
        return DefaultsCondition::Good;
    }

    void openOrRestore()
    {
        g_mkdir_with_parents(_paths.folder.c_str(), 0700);
        const auto condition = load(DefaultsFile::open(_paths.file, Journal::Log));
        switch (condition) {
        case DefaultsCondition::Good:
            return;
        case DefaultsCondition::Missing:
            if (!exists(_paths.backup))
                return makeEmpty();
            problem() = _("The stored library was missing");
            if (exists(_paths.file) && setFileAside(DefaultsCondition::Damaged).empty())
                return openToRead();
            return useBackup();
        case DefaultsCondition::Damaged:
            return setAsideAndRestore();
        case DefaultsCondition::Newer:
            problem()
                = _("The stored library was written by a later version of the program and could not be set aside.");
            if (setFileAside(condition).empty())
                return;
            problem() = formatted(_("%s; the library is read from its folder again."), problem().c_str());
            return makeEmpty();
        default:
            return openToRead();
        }
    }

    void setAsideAndRestore()
    {
        problem() = _("The stored library was damaged and could not be set aside.");
        if (!setFileAside(DefaultsCondition::Damaged).empty())
            useBackup();
    }

    // If the log is unreadable, the file may be half updated. The backup is complete without a log.
    void openToRead()
    {
        for (const auto& path : { _paths.file, _paths.backup }) {
            if (load(DefaultsFile::openToRead(path)) == DefaultsCondition::Good)
                return;
        }
    }

    void makeEmpty()
    {
        if (auto file = DefaultsFile::make(_paths.file, Journal::Log))
            load(std::move(file));
    }

    std::string setFileAside(DefaultsCondition condition)
    {
        std::string name = setAside(_paths.file, condition);
        if (!name.empty())
            problem() = formatted(condition == DefaultsCondition::Newer
                    ? _("The stored library was written by a later version of the program and is kept as %s")
                    : _("The stored library was damaged and is kept as %s"),
                name.c_str());
        return name;
    }

    void useBackup()
    {
        const auto condition = load(DefaultsFile::open(_paths.backup, Journal::InPlace));
        auto backup = std::move(_opened.file);
        if (condition == DefaultsCondition::Good) {
            problem() = formatted(_("%s; the last backup is used."), problem().c_str());
            // If there is no disk space for the copy, the values stay in memory and the next flush tries again.
            if (!backup->copyTo(_paths.file))
                return;
            backup.reset();
            load(DefaultsFile::open(_paths.file, Journal::Log));
            return;
        }
        if (condition == DefaultsCondition::Damaged)
            problem() = formatted(
                _("%s, like its backup (%s)"), problem().c_str(), setAside(_paths.backup, condition).c_str());
        problem() = formatted(
            _("%s; there is no usable backup, so the library is read from its folder again."), problem().c_str());
        makeEmpty();
    }

    const DefaultsPaths& _paths;
    DefaultsIndex& _index;
    OpenedDefaults _opened;
};

}

DefaultsPaths::DefaultsPaths(const std::string& folder)
    : folder(folder)
    , file(folder + "/defaults.sqlite")
    , backup(folder + "/defaults-backup.sqlite")
{
}

std::string setAside(const std::string& path, DefaultsCondition condition)
{
    const std::string folder = std::filesystem::path(path).parent_path();
    const std::string stem
        = std::string(condition == DefaultsCondition::Newer ? "defaults-newer-" : "defaults-damaged-")
        + universalTime();
    std::string name = stem + ".sqlite";
    for (int number = 2; exists(appendingPathComponent(folder, name)); ++number)
        name.assign(stem).append("-").append(std::to_string(number)).append(".sqlite");
    const std::string target = folder + "/" + name;
    if (std::rename(path.c_str(), target.c_str()) != 0)
        return {};
    for (const char* companion : { "-wal", "-shm", "-journal" })
        std::rename((path + companion).c_str(), (target + companion).c_str());
    return name;
}

OpenedDefaults openDefaults(const DefaultsPaths& paths, DefaultsIndex& index)
{
    return Opening(paths, index).open();
}

OpenedDefaults restoreDefaults(const DefaultsPaths& paths, DefaultsIndex& index)
{
    return Opening(paths, index).restore();
}

Result<Value, std::string> readDefaults(const std::string& folder)
{
    const DefaultsPaths paths(folder);
    auto condition = DefaultsCondition::Good;
    if (const auto file = DefaultsFile::openToRead(paths.file)) {
        DefaultsIndex index(std::make_shared<StoredDataSource>(paths.file, paths.backup));
        if (const auto values = index.load(**file))
            return Value(Value::Dictionary(values->begin(), values->end()));
        else
            condition = values.reason();
    } else
        condition = file.reason();
    if (condition == DefaultsCondition::Missing)
        return Value(Value::Dictionary());
    return formatted(condition == DefaultsCondition::Newer ? _("%s was written by a later version of Pagora")
            : condition == DefaultsCondition::Damaged      ? _("%s is damaged")
                                                           : _("%s cannot be read"),
        paths.file.c_str());
}

}
