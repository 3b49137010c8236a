#include "store/DefaultsStore.hpp"

#include "base/Translation.hpp"

#include <utility>

namespace pagora {

DefaultsStore::DefaultsStore(const std::string& folder, Values& values, std::string& problem)
    : _paths(folder)
    , _source(std::make_shared<StoredDataSource>(_paths.file, _paths.backup))
    , _index(_source)
{
    open(values, problem);
}

void DefaultsStore::open(Values& values, std::string& problem)
{
    use(openDefaults(_paths, _index, values, problem));
}

void DefaultsStore::use(std::unique_ptr<DefaultsFile> file)
{
    _file = std::move(file);
    _source->reopen();
    if (!isWritable())
        return;
    _backup = std::make_unique<DefaultsBackup>(_paths.file, _paths.backup);
    _backup->catchUp();
}

bool DefaultsStore::write(const DefaultsIndex::Changes& changes, Values& found, std::string& problem)
{
    if (!isWritable()) {
        _file.reset();
        open(found, problem);
        if (!isWritable())
            return fail(_("the file cannot be written"), problem);
    }
    std::string error;
    auto outcome = apply(changes, error);
    if (outcome == DefaultsFile::Outcome::OtherState) {
        // Another process has written to the file: read the index again.
        Values ignored;
        if (_index.load(*_file, ignored) != DefaultsCondition::Good)
            return fail(_("another program has changed the file"), problem);
        outcome = apply(changes, error);
    }
    if (outcome == DefaultsFile::Outcome::Damaged && restore(problem))
        outcome = apply(changes, error);
    return outcome == DefaultsFile::Outcome::Done || fail(error, problem);
}

DefaultsFile::Outcome DefaultsStore::apply(const DefaultsIndex::Changes& changes, std::string& error)
{
    auto plan = _index.plan(changes);
    if (plan.isEmpty())
        return DefaultsFile::Outcome::Done;
    const auto outcome = _file->apply(plan.rows, error);
    if (outcome == DefaultsFile::Outcome::Done) {
        _index.commit(plan);
        _backup->follow(std::move(plan.rows));
    }
    return outcome;
}

bool DefaultsStore::restore(std::string& problem)
{
    // The backup is brought up to date first.
    _backup.reset();
    _file.reset();
    Values ignored;
    use(restoreDefaults(_paths, _index, ignored, problem));
    return _file != nullptr;
}

bool DefaultsStore::fail(const std::string& reason, std::string& problem) const
{
    problem = formatted(_("The library cannot be saved in %s (%s); it is tried again with the next change."),
        _paths.folder.c_str(), reason.c_str());
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
