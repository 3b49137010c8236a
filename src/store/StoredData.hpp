#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace pagora {

class DefaultsFile;

// Reads large data from the store, or from its backup if the store's bytes are damaged. Has its own connection, opened
// at the first read. Must live as long as data may be read. Thread-safe.
class StoredDataSource {
public:
    StoredDataSource(std::string path, std::string backupPath);
    ~StoredDataSource();

    std::optional<std::string> read(std::int64_t id);
    // Called when the store's file was replaced.
    void reopen();

private:
    const std::string _path;
    const std::string _backupPath;
    std::mutex _mutex;
    std::unique_ptr<DefaultsFile> _file;
};

// One row of large data, or of an encoded container. Lives as long as a value in memory may read it.
struct StoredDataRow : Value::Source {
    StoredDataRow(std::shared_ptr<StoredDataSource> source, std::int64_t id);
    std::optional<Value> read() const override;

    const std::shared_ptr<StoredDataSource> source;
    const std::int64_t id;
};

// Reads the data of a row.
struct StoredDataReader {
    std::shared_ptr<const StoredDataRow> row;
    std::optional<std::string> operator()() const { return row->source->read(row->id); }
};

}
