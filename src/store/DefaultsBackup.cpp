#include "store/DefaultsBackup.hpp"

#include "base/Log.hpp"
#include "store/DefaultsRecovery.hpp"

#include <utility>

namespace pagora {

DefaultsBackup::DefaultsBackup(std::string path, std::string backupPath)
    : _path(std::move(path))
    , _backupPath(std::move(backupPath))
{
}

void DefaultsBackup::catchUp()
{
    _worker.perform([this] { bring(nullptr); });
}

void DefaultsBackup::follow(RowChanges changes)
{
    // Shared, because a worker's function must be copyable.
    _worker.perform([this, changes = std::make_shared<const RowChanges>(std::move(changes))] { bring(changes.get()); });
}

void DefaultsBackup::wait()
{
    _worker.wait();
}

void DefaultsBackup::bring(const RowChanges* changes)
{
    if (!_file) {
        if (auto opened = DefaultsFile::open(_path, DefaultsFile::Journal::Log))
            _file = std::move(*opened);
    }
    const auto state = _file ? _file->state() : std::nullopt;
    if (!state)
        return;
    if (!bringUpTo(changes ? changes->after : *state, changes))
        log("The backup of the stored values cannot be brought up to date: " + _backupPath);
    _file->emptyLog();
}

bool DefaultsBackup::bringUpTo(const StoreState& state, const RowChanges* changes)
{
    if (!_backup)
        openBackup();
    if (_backup) {
        const auto current = _backup->state();
        // A copy of the whole file may already contain the changes reported here.
        if (current && current->series == state.series && current->flush >= state.flush)
            return true;
        if (changes && _backup->apply(*changes).outcome == DefaultsFile::Outcome::Done)
            return true;
        _backup.reset();
    }
    if (!_file->copyTo(_backupPath))
        return false;
    openBackup();
    return _backup != nullptr;
}

void DefaultsBackup::openBackup()
{
    auto opened = DefaultsFile::open(_backupPath, DefaultsFile::Journal::InPlace);
    if (opened) {
        _backup = std::move(*opened);
        return;
    }
    _backup.reset();
    const auto condition = opened.reason();
    if (condition == DefaultsCondition::Damaged || condition == DefaultsCondition::Newer)
        log("The backup of the stored values could not be read; it was set aside as " + setAside(_backupPath, condition)
            + ".");
}

}
