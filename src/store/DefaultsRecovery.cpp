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
using Values = std::map<std::string, Value>;

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
    Opening(const DefaultsPaths& paths, DefaultsIndex& index, Values& values, std::string& problem)
        : _paths(paths)
        , _index(index)
        , _values(values)
        , _problem(problem)
    {
    }

    std::unique_ptr<DefaultsFile> open()
    {
        auto file = openOrRestore();
        if ((!file || file->isReadOnly()) && _problem.empty())
            _problem = formatted(
                _("The library cannot be saved in %s; what changes is lost when Pagora ends."), _paths.folder.c_str());
        return file;
    }

    std::unique_ptr<DefaultsFile> setAsideAndRestore()
    {
        _problem = _("The stored library was damaged and could not be set aside.");
        return setFileAside(DefaultsCondition::Damaged).empty() ? nullptr : restore();
    }

private:
    std::unique_ptr<DefaultsFile> openOrRestore()
    {
        g_mkdir_with_parents(_paths.folder.c_str(), 0700);
        DefaultsCondition condition = DefaultsCondition::Good;
        if (auto file = openAndLoad(condition))
            return file;
        switch (condition) {
        case DefaultsCondition::Missing:
            if (!exists(_paths.backup))
                return makeEmpty();
            _problem = _("The stored library was missing");
            if (exists(_paths.file) && setFileAside(DefaultsCondition::Damaged).empty())
                return openToRead();
            return restore();
        case DefaultsCondition::Damaged:
            return setAsideAndRestore();
        case DefaultsCondition::Newer:
            _problem
                = _("The stored library was written by a later version of the program and could not be set aside.");
            if (setFileAside(condition).empty())
                return nullptr;
            _problem = formatted(_("%s; the library is read from its folder again."), _problem.c_str());
            return makeEmpty();
        default:
            return openToRead();
        }
    }

    std::unique_ptr<DefaultsFile> openAndLoad(DefaultsCondition& condition)
    {
        auto file = DefaultsFile::open(_paths.file, Journal::Log, condition);
        if (file)
            condition = _index.load(*file, _values);
        return condition == DefaultsCondition::Good ? std::move(file) : nullptr;
    }

    // With an unreadable log the file may be half updated; the backup is complete without a log.
    std::unique_ptr<DefaultsFile> openToRead()
    {
        for (const auto& path : { _paths.file, _paths.backup }) {
            DefaultsCondition condition;
            auto file = DefaultsFile::openToRead(path, condition);
            if (file && _index.load(*file, _values) == DefaultsCondition::Good)
                return file;
        }
        _values.clear();
        return nullptr;
    }

    std::unique_ptr<DefaultsFile> makeEmpty()
    {
        auto file = DefaultsFile::make(_paths.file, Journal::Log);
        if (file && _index.load(*file, _values) == DefaultsCondition::Good)
            return file;
        return nullptr;
    }

    std::string setFileAside(DefaultsCondition condition)
    {
        std::string name = setAside(_paths.file, condition);
        if (!name.empty())
            _problem = formatted(condition == DefaultsCondition::Newer
                    ? _("The stored library was written by a later version of the program and is kept as %s")
                    : _("The stored library was damaged and is kept as %s"),
                name.c_str());
        return name;
    }

    std::unique_ptr<DefaultsFile> restore()
    {
        DefaultsCondition condition;
        auto backup = DefaultsFile::open(_paths.backup, Journal::InPlace, condition);
        if (backup)
            condition = _index.load(*backup, _values);
        if (condition == DefaultsCondition::Good) {
            _problem = formatted(_("%s; the last backup is used."), _problem.c_str());
            // Without disk space for the copy the values stay in memory; the next flush tries again.
            if (!backup->copyTo(_paths.file))
                return nullptr;
            backup.reset();
            return openAndLoad(condition);
        }
        backup.reset();
        _values.clear();
        if (condition == DefaultsCondition::Damaged)
            _problem = formatted(
                _("%s, like its backup (%s)"), _problem.c_str(), setAside(_paths.backup, condition).c_str());
        _problem = formatted(
            _("%s; there is no usable backup, so the library is read from its folder again."), _problem.c_str());
        return makeEmpty();
    }

    const DefaultsPaths& _paths;
    DefaultsIndex& _index;
    Values& _values;
    std::string& _problem;
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

std::unique_ptr<DefaultsFile> openDefaults(
    const DefaultsPaths& paths, DefaultsIndex& index, Values& values, std::string& problem)
{
    return Opening(paths, index, values, problem).open();
}

std::unique_ptr<DefaultsFile> restoreDefaults(
    const DefaultsPaths& paths, DefaultsIndex& index, Values& values, std::string& problem)
{
    return Opening(paths, index, values, problem).setAsideAndRestore();
}

std::optional<Value> readDefaults(const std::string& folder, std::string& problem)
{
    const DefaultsPaths paths(folder);
    DefaultsCondition condition;
    const auto file = DefaultsFile::openToRead(paths.file, condition);
    DefaultsIndex index(std::make_shared<StoredDataSource>(paths.file, paths.backup));
    Values values;
    if (file)
        condition = index.load(*file, values);
    if (condition == DefaultsCondition::Good || condition == DefaultsCondition::Missing)
        return Value(Value::Dictionary(values.begin(), values.end()));
    problem = formatted(condition == DefaultsCondition::Newer ? _("%s was written by a later version of Pagora")
            : condition == DefaultsCondition::Damaged         ? _("%s is damaged")
                                                              : _("%s cannot be read"),
        paths.file.c_str());
    return std::nullopt;
}

}
