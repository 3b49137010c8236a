#include "store/StoredData.hpp"

#include "base/Log.hpp"
#include "store/DefaultsFile.hpp"
#include "store/ValueCoding.hpp"

#include <utility>

namespace pagora {

StoredDataSource::StoredDataSource(std::string path, std::string backupPath)
    : _path(std::move(path))
    , _backupPath(std::move(backupPath))
{
}

StoredDataSource::~StoredDataSource() = default;

std::optional<std::string> StoredDataSource::read(std::int64_t id)
{
    const std::lock_guard lock(_mutex);
    if (!_file) {
        if (auto opened = DefaultsFile::openToRead(_path))
            _file = std::move(*opened);
    }
    if (_file) {
        if (auto bytes = _file->readData(id))
            return bytes;
    }
    log("Stored data " + std::to_string(id) + " cannot be read from " + _path + "; trying the backup.");
    const auto backup = DefaultsFile::openToRead(_backupPath);
    return backup ? (*backup)->readData(id) : std::nullopt;
}

void StoredDataSource::reopen()
{
    const std::lock_guard lock(_mutex);
    _file.reset();
}

StoredDataRow::StoredDataRow(std::shared_ptr<StoredDataSource> source, std::int64_t id)
    : source(std::move(source))
    , id(id)
{
}

std::optional<Value> StoredDataRow::read() const
{
    const auto bytes = source->read(id);
    return bytes ? decodeValue(*bytes) : std::nullopt;
}

}
