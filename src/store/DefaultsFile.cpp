#include "store/DefaultsFile.hpp"

#include "store/ValueCoding.hpp"

#include <SQLiteCpp/SQLiteCpp.h>
#include <glib.h>
#include <sqlite3.h>

#include <filesystem>

namespace pagora {

namespace {

constexpr int schemaVersion = 1;
constexpr const char* schema = R"sql(
        CREATE TABLE state (id INTEGER PRIMARY KEY, series INTEGER, flush INTEGER, "values" INTEGER, elements INTEGER,
                            checksum INTEGER);
        CREATE TABLE value (key TEXT PRIMARY KEY, isArray INTEGER, payload BLOB, checksum INTEGER);
        CREATE TABLE element (id INTEGER PRIMARY KEY, key TEXT, rank INTEGER, payload BLOB, checksum INTEGER);
        CREATE TABLE data (id INTEGER PRIMARY KEY, bytes BLOB, checksum INTEGER);
        CREATE TABLE leftData (id INTEGER PRIMARY KEY);
    )sql";

DefaultsCondition conditionFrom(const SQLite::Exception& exception)
{
    switch (exception.getErrorCode()) {
    // The statement does not match the tables, or the tables do not match the file.
    case SQLITE_ERROR:
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
    case SQLITE_MISMATCH:
    case SQLITE_RANGE:
        return DefaultsCondition::Damaged;
    default:
        return exception.getExtendedErrorCode() == SQLITE_IOERR_SHORT_READ ? DefaultsCondition::Damaged
                                                                           : DefaultsCondition::Unusable;
    }
}

std::string_view blob(const SQLite::Column& column)
{
    const auto* bytes = static_cast<const char*>(column.getBlob());
    return bytes ? std::string_view(bytes, static_cast<std::size_t>(column.getBytes())) : std::string_view();
}

void bindBlob(SQLite::Statement& statement, int index, std::string_view bytes)
{
    statement.bindNoCopy(index, bytes.data(), static_cast<int>(bytes.size()));
}

std::int64_t sumOf(const ValueRow& row, std::string_view payload)
{
    return static_cast<std::int64_t>(checksum(payload, checksum(row.key, row.isArray)));
}

std::int64_t sumOf(const ElementRow& row, std::string_view payload)
{
    const auto place = static_cast<std::uint64_t>(row.id) * 31 + static_cast<std::uint64_t>(row.rank);
    return static_cast<std::int64_t>(checksum(payload, checksum(row.key, place)));
}

std::int64_t sumOf(std::int64_t id, std::string_view bytes)
{
    return static_cast<std::int64_t>(checksum(bytes, static_cast<std::uint64_t>(id)));
}

std::int64_t sumOf(const StoreState& state)
{
    const std::int64_t numbers[] = { state.series, state.flush, state.values, state.elements };
    return sumOf(0, { reinterpret_cast<const char*>(numbers), sizeof numbers });
}

void useJournal(SQLite::Database& database, DefaultsFile::Journal journal)
{
    const bool log = journal == DefaultsFile::Journal::Log;
    database.exec(log ? "PRAGMA journal_mode = WAL" : "PRAGMA journal_mode = DELETE");
    database.exec("PRAGMA synchronous = FULL");
    // Checkpoints run in the background instead.
    database.exec("PRAGMA wal_autocheckpoint = 0");
}

// Runs the statement once for each row; `bind` sets its parameters.
template <typename Rows, typename Bind>
void forEach(SQLite::Database& database, const char* sql, const Rows& rows, Bind bind)
{
    if (rows.empty())
        return;
    SQLite::Statement statement(database, sql);
    for (const auto& row : rows) {
        bind(statement, row);
        statement.exec();
        statement.reset();
        statement.clearBindings();
    }
}

constexpr auto bindFirst = [](SQLite::Statement& statement, const auto& value) { statement.bind(1, value); };

std::string readOnlyUri(const std::string& path, bool unchanging)
{
    char* uri = g_filename_to_uri(path.c_str(), nullptr, nullptr);
    std::string result = uri ? std::string(uri) + (unchanging ? "?immutable=1" : "?mode=ro") : path;
    g_free(uri);
    return result;
}

}

DefaultsFile::DefaultsFile(std::unique_ptr<SQLite::Database> database, bool readOnly)
    : _database(std::move(database))
    , _readOnly(readOnly)
{
}

DefaultsFile::~DefaultsFile() = default;

DefaultsCondition DefaultsFile::check()
{
    const int version = _database->execAndGet("PRAGMA user_version").getInt();
    if (version > schemaVersion)
        return DefaultsCondition::Newer;
    if (version == 0 && _database->execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0)
        return DefaultsCondition::Missing;
    return version == schemaVersion && readState() ? DefaultsCondition::Good : DefaultsCondition::Damaged;
}

DefaultsFile::Opened DefaultsFile::open(const std::string& path, Journal journal)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return DefaultsCondition::Missing;
    try {
        auto file = std::make_unique<DefaultsFile>(
            std::make_unique<SQLite::Database>(path, SQLite::OPEN_READWRITE, DefaultsFile::busyMilliseconds), false);
        if (const auto condition = file->check(); condition != DefaultsCondition::Good)
            return condition;
        file->_readOnly = sqlite3_db_readonly(file->_database->getHandle(), "main") != 0;
        if (!file->_readOnly)
            useJournal(*file->_database, journal);
        return file;
    } catch (const SQLite::Exception& exception) {
        return conditionFrom(exception);
    }
}

DefaultsFile::Opened DefaultsFile::openToRead(const std::string& path)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return DefaultsCondition::Missing;
    // Without a log nobody is writing, and the file opens as immutable, so SQLite need not create a log to read. A log
    // that cannot be shared is ignored.
    for (const bool unchanging : { !std::filesystem::exists(path + "-wal", ignored), true }) {
        try {
            auto file = std::make_unique<DefaultsFile>(
                std::make_unique<SQLite::Database>(readOnlyUri(path, unchanging),
                    SQLite::OPEN_READONLY | SQLite::OPEN_URI, DefaultsFile::busyMilliseconds),
                true);
            if (const auto condition = file->check(); condition != DefaultsCondition::Good)
                return condition;
            return file;
        } catch (const SQLite::Exception& exception) {
            if (const auto condition = conditionFrom(exception); condition != DefaultsCondition::Unusable)
                return condition;
        }
    }
    return DefaultsCondition::Unusable;
}

std::unique_ptr<DefaultsFile> DefaultsFile::make(const std::string& path, Journal journal)
{
    try {
        auto database = std::make_unique<SQLite::Database>(
            path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, DefaultsFile::busyMilliseconds);
        useJournal(*database, journal);
        auto file = std::make_unique<DefaultsFile>(std::move(database), false);
        SQLite::Transaction transaction(*file->_database, SQLite::TransactionBehavior::IMMEDIATE);
        if (file->_database->execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0) {
            file->_database->exec(schema);
            file->_database->exec("PRAGMA user_version = " + std::to_string(schemaVersion));
            StoreState state;
            sqlite3_randomness(sizeof state.series, &state.series);
            file->writeState(state);
        }
        transaction.commit();
        return file;
    } catch (const SQLite::Exception&) {
        return nullptr;
    }
}

std::optional<StoreState> DefaultsFile::state()
{
    try {
        return readState();
    } catch (const SQLite::Exception&) {
        return std::nullopt;
    }
}

std::optional<StoreState> DefaultsFile::readState()
{
    SQLite::Statement query(*_database, "SELECT series, flush, \"values\", elements, checksum FROM state WHERE id = 1");
    if (!query.executeStep())
        return std::nullopt;
    StoreState state;
    state.series = query.getColumn(0).getInt64();
    state.flush = query.getColumn(1).getInt64();
    state.values = query.getColumn(2).getInt64();
    state.elements = query.getColumn(3).getInt64();
    if (query.getColumn(4).getInt64() != sumOf(state))
        return std::nullopt;
    return state;
}

void DefaultsFile::writeState(const StoreState& state)
{
    SQLite::Statement statement(*_database, "INSERT OR REPLACE INTO state VALUES (1, ?, ?, ?, ?, ?)");
    statement.bind(1, state.series);
    statement.bind(2, state.flush);
    statement.bind(3, state.values);
    statement.bind(4, state.elements);
    statement.bind(5, sumOf(state));
    statement.exec();
}

DefaultsCondition DefaultsFile::read(const RowReader& reader)
{
    try {
        // One transaction, so that no flush of another process comes between the statements.
        SQLite::Transaction transaction(*_database);
        const auto state = readState();
        if (!state)
            return DefaultsCondition::Damaged;
        reader.state(*state);
        std::int64_t values = 0;
        SQLite::Statement valueQuery(*_database, "SELECT key, isArray, payload, checksum FROM value");
        for (; valueQuery.executeStep(); ++values) {
            ValueRow row { valueQuery.getColumn(0).getString(), valueQuery.getColumn(1).getInt() != 0,
                std::string(blob(valueQuery.getColumn(2))) };
            if (valueQuery.getColumn(3).getInt64() != sumOf(row, row.payload) || !reader.value(std::move(row)))
                return DefaultsCondition::Damaged;
        }
        std::int64_t elements = 0;
        SQLite::Statement elementQuery(*_database, "SELECT id, key, rank, payload, checksum FROM element");
        for (; elementQuery.executeStep(); ++elements) {
            ElementRow row { elementQuery.getColumn(0).getInt64(), elementQuery.getColumn(1).getString(),
                elementQuery.getColumn(2).getInt64(), {} };
            const SQLite::Column payload = elementQuery.getColumn(3);
            if (elementQuery.getColumn(4).getInt64() != sumOf(row, blob(payload))
                || !reader.element(row, blob(payload)))
                return DefaultsCondition::Damaged;
        }
        SQLite::Statement leftQuery(*_database, "SELECT id FROM leftData");
        while (leftQuery.executeStep())
            reader.leftData(leftQuery.getColumn(0).getInt64());
        return values == state->values && elements == state->elements ? DefaultsCondition::Good
                                                                      : DefaultsCondition::Damaged;
    } catch (const SQLite::Exception& exception) {
        return conditionFrom(exception);
    }
}

std::optional<std::int64_t> DefaultsFile::maxDataId()
{
    try {
        return _database->execAndGet("SELECT coalesce(max(id), 0) FROM data").getInt64();
    } catch (const SQLite::Exception&) {
        return std::nullopt;
    }
}

std::optional<std::string> DefaultsFile::readData(std::int64_t id)
{
    try {
        SQLite::Statement query(*_database, "SELECT bytes, checksum FROM data WHERE id = ?");
        query.bind(1, id);
        if (!query.executeStep())
            return std::nullopt;
        const SQLite::Column column = query.getColumn(0);
        const auto bytes = blob(column);
        if (query.getColumn(1).getInt64() != sumOf(id, bytes))
            return std::nullopt;
        return std::string(bytes);
    } catch (const SQLite::Exception&) {
        return std::nullopt;
    }
}

void DefaultsFile::writeRows(const RowChanges& changes)
{
    SQLite::Database& database = *_database;
    forEach(database, "DELETE FROM value WHERE key = ?", changes.removedValues, bindFirst);
    forEach(database, "DELETE FROM element WHERE id = ?", changes.removedElements, bindFirst);
    forEach(database, "DELETE FROM data WHERE id = ?", changes.removedData, bindFirst);
    forEach(database, "DELETE FROM leftData WHERE id = ?", changes.removedData, bindFirst);
    forEach(database, "DELETE FROM leftData WHERE id = ?", changes.takenData, bindFirst);
    forEach(database, "INSERT OR REPLACE INTO leftData VALUES (?)", changes.leftData, bindFirst);
    forEach(database, "INSERT OR REPLACE INTO data VALUES (?, ?, ?)", changes.data,
        [](SQLite::Statement& statement, const DataRow& row) {
            const std::string bytes = row.data.bytes();
            statement.bind(1, row.id);
            statement.bind(2, bytes.data(), static_cast<int>(bytes.size()));
            statement.bind(3, sumOf(row.id, bytes));
        });
    forEach(database, "INSERT OR REPLACE INTO value VALUES (?, ?, ?, ?)", changes.values,
        [](SQLite::Statement& statement, const ValueRow& row) {
            statement.bind(1, row.key);
            statement.bind(2, row.isArray ? 1 : 0);
            bindBlob(statement, 3, row.payload);
            statement.bind(4, sumOf(row, row.payload));
        });
    forEach(database, "INSERT OR REPLACE INTO element VALUES (?, ?, ?, ?, ?)", changes.elements,
        [](SQLite::Statement& statement, const ElementRow& row) {
            statement.bind(1, row.id);
            statement.bind(2, row.key);
            statement.bind(3, row.rank);
            bindBlob(statement, 4, row.payload);
            statement.bind(5, sumOf(row, row.payload));
        });
}

DefaultsFile::Applied DefaultsFile::apply(const RowChanges& changes)
{
    try {
        SQLite::Transaction transaction(*_database, SQLite::TransactionBehavior::IMMEDIATE);
        if (readState() != changes.before)
            return { Outcome::OtherState };
        writeRows(changes);
        writeState(changes.after);
        transaction.commit();
        return { Outcome::Done };
    } catch (const SQLite::Exception& exception) {
        const bool isDamaged = conditionFrom(exception) == DefaultsCondition::Damaged;
        return { isDamaged ? Outcome::Damaged : Outcome::Failed, exception.what() };
    }
}

void DefaultsFile::emptyLog()
{
    try {
        _database->exec("PRAGMA wal_checkpoint(PASSIVE)");
    } catch (const SQLite::Exception&) {
        // The next flush tries again.
    }
}

int DefaultsFile::rowsChanged() const
{
    return sqlite3_total_changes(_database->getHandle());
}

}
