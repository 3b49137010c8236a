#include "platform/DefaultsStore.hpp"

#include "platform/Log.hpp"

#include <utility>

namespace pagora {

DefaultsStore::DefaultsStore(const std::string& folder, Values& values, std::string& problem)
    : _paths(folder)
    , _index(std::make_shared<StoredDataSource>(_paths.file, _paths.backup))
{
    open(values, problem);
}

void DefaultsStore::open(Values& values, std::string& problem)
{
    _file = openDefaults(_paths, _index, values, problem);
    if (!_file || _file->isReadOnly())
        return;
    _backup = std::make_unique<DefaultsBackup>(_paths.file, _paths.backup);
    _backup->catchUp();
}

bool DefaultsStore::write(const DefaultsIndex::Changes& changes, Values& found)
{
    std::string error;
    if (!_file || _file->isReadOnly()) {
        _file.reset();
        open(found, error);
        if (!error.empty())
            log(error);
        if (!_file || _file->isReadOnly())
            return fail("the file cannot be written");
    }
    auto plan = _index.plan(changes);
    if (plan.isEmpty())
        return true;
    auto outcome = _file->apply(plan.rows, error);
    if (outcome == DefaultsFile::Outcome::OtherState) {
        // Another process has written meanwhile: what the file holds is found out anew.
        Values ignored;
        if (_index.load(*_file, ignored) != DefaultsCondition::Good)
            return fail("another program has changed the file");
        plan = _index.plan(changes);
        outcome = _file->apply(plan.rows, error);
    }
    if (outcome != DefaultsFile::Outcome::Done)
        return fail(error);
    _index.commit(plan);
    _backup->follow(std::move(plan.rows));
    return true;
}

bool DefaultsStore::fail(const std::string& reason)
{
    log("The library's data cannot be stored in " + _paths.file + ": " + reason);
    return false;
}

void DefaultsStore::waitForBackup()
{
    if (_backup)
        _backup->wait();
}

int DefaultsStore::rowsChanged() const
{
    return _file ? _file->rowsChanged() : 0;
}

}
