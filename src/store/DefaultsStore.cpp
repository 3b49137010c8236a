#include "store/DefaultsStore.hpp"

#include "base/Translation.hpp"

#include <utility>

namespace pagora {

DefaultsStore::DefaultsStore(const std::string& folder)
    : _paths(folder)
    , _source(std::make_shared<StoredDataSource>(_paths.file, _paths.backup))
    , _index(_source)
{
}

DefaultsStore::Opened DefaultsStore::open()
{
    return use(openDefaults(_paths, _index));
}

DefaultsStore::Opened DefaultsStore::use(OpenedDefaults opened)
{
    _file = std::move(opened.file);
    _source->reopen();
    if (isWritable()) {
        _backup = std::make_unique<DefaultsBackup>(_paths.file, _paths.backup);
        _backup->catchUp();
    }
    return { std::move(opened.values), std::move(opened.problem) };
}

DefaultsStore::Written DefaultsStore::write(const DefaultsIndex::Changes& changes)
{
    Opened opened;
    if (!isWritable()) {
        _file.reset();
        opened = open();
        if (!isWritable())
            return { false, std::move(opened.values), problemOf(_("the file cannot be written")) };
    }
    auto applied = apply(changes);
    if (applied.outcome == DefaultsFile::Outcome::OtherState) {
        // Another process has written to the file, so the index is read again.
        if (!_index.load(*_file))
            return { false, std::move(opened.values), problemOf(_("another program has changed the file")) };
        applied = apply(changes);
    }
    if (applied.outcome == DefaultsFile::Outcome::Damaged) {
        // The destructor of the backup brings it up to date.
        _backup.reset();
        _file.reset();
        opened.problem = use(restoreDefaults(_paths, _index)).problem;
        if (_file)
            applied = apply(changes);
    }
    if (applied.outcome == DefaultsFile::Outcome::Done)
        return { true, std::move(opened.values), std::move(opened.problem) };
    return { false, std::move(opened.values), problemOf(applied.error) };
}

DefaultsFile::Applied DefaultsStore::apply(const DefaultsIndex::Changes& changes)
{
    auto plan = _index.plan(changes);
    if (plan.isEmpty())
        return { DefaultsFile::Outcome::Done };
    auto applied = _file->apply(plan.rows);
    if (applied.outcome == DefaultsFile::Outcome::Done) {
        _index.commit(plan);
        _backup->follow(std::move(plan.rows));
    }
    return applied;
}

std::string DefaultsStore::problemOf(const std::string& reason) const
{
    return formatted(_("The library cannot be saved in %s (%s); it is tried again with the next change."),
        _paths.folder.c_str(), reason.c_str());
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
