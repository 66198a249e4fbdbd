#include "dump/forms/Sqlite.h"

#include "dump/forms/SqliteFile.h"
#include "dump/rows/Tables.h"
#include "text/Utf8.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace dump {

namespace {

// "petl", by which programs that look at files tell what the database is.
constexpr std::int64_t applicationId = 0x7065746C;

std::string identifier(std::string_view name)
{
    return std::string("\"").append(name).append("\"");
}

std::string_view typeName(const Column& column)
{
    switch (column.type) {
    case ColumnType::integer:
        return column.isNumberOfRow ? "INTEGER PRIMARY KEY" : "INTEGER";
    case ColumnType::real:
        return "REAL";
    case ColumnType::text:
        break;
    }
    return "TEXT";
}

// What stands behind the name of the table in the statements that make and fill it.
template <typename Describe>
std::string listed(const Table& table, const Describe& describe)
{
    std::string list;
    for (const Column& column : table.columns)
        list.append(list.empty() ? "(" : ", ").append(describe(column));
    return list + ")";
}

std::string withoutNul(std::string_view text)
{
    std::string result;
    for (const char c : text)
        result += c == '\0' ? text::replacementCharacter : std::string_view(&c, 1);
    return result;
}

class Database {
public:
    Database(const std::string& path, const std::string& theName) : name(theName), file(path, theName)
    {
        // A file that fails is thrown away whole, so nothing has to be kept for going back.
        for (const char* const setting : {"journal_mode = OFF", "synchronous = OFF", "locking_mode = EXCLUSIVE",
                                          "temp_store = MEMORY", "cache_size = -16000"})
            run(std::string("PRAGMA ").append(setting));
        run("PRAGMA application_id = " + std::to_string(applicationId));
        run("PRAGMA user_version = " + std::to_string(schemaVersion));
        run("BEGIN");
        for (const Table& table : tables())
            make(table);
    }

    void add(TableName table, std::span<const Cell> cells)
    {
        sqlite3_stmt* const insertion = insertions[static_cast<std::size_t>(table)].get();
        for (std::size_t i = 0; i < cells.size(); ++i)
            require(bind(insertion, static_cast<int>(i) + 1, cells[i]));
        require(sqlite3_step(insertion) == SQLITE_DONE ? SQLITE_OK : SQLITE_ERROR);
        require(sqlite3_reset(insertion));
    }

    void finish()
    {
        insertions.clear();
        for (const Table& table : tables())
            for (const Column& column : table.columns)
                if (column.isLookedUp)
                    run("CREATE INDEX " + identifier(std::string(table.name).append("_by_").append(column.name)) +
                        " ON " + identifier(table.name) + "(" + identifier(column.name) + ")");
        run("COMMIT");
    }

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

    void make(const Table& table)
    {
        run("CREATE TABLE " + identifier(table.name) + listed(table, [](const Column& column) {
                return identifier(column.name).append(" ").append(typeName(column));
            }));
        const std::string insertion =
            "INSERT INTO " + identifier(table.name) + " VALUES " + listed(table, [](const Column&) { return "?"; });
        sqlite3_stmt* statement = nullptr;
        require(sqlite3_prepare_v2(file.database(), insertion.c_str(), -1, &statement, nullptr));
        insertions.emplace_back(statement);
    }

    static int bind(sqlite3_stmt* statement, int place, const Cell& cell)
    {
        if (const auto* const whole = std::get_if<std::int64_t>(&cell))
            return sqlite3_bind_int64(statement, place, *whole);
        if (const auto* const real = std::get_if<double>(&cell))
            return sqlite3_bind_double(statement, place, *real);
        if (const auto* const text = std::get_if<std::string_view>(&cell))
            return bindText(statement, place, *text);
        return sqlite3_bind_null(statement, place);
    }

    // An empty text must not be a null pointer, which is no text.
    static int bindText(sqlite3_stmt* statement, int place, std::string_view text)
    {
        if (text.find('\0') == std::string_view::npos)
            return sqlite3_bind_text64(statement, place, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                                       SQLITE_UTF8);
        const std::string replaced = withoutNul(text);
        return sqlite3_bind_text64(statement, place, replaced.data(), replaced.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }

    void run(const std::string& statement)
    {
        require(sqlite3_exec(file.database(), statement.c_str(), nullptr, nullptr, nullptr));
    }

    void require(int code) const
    {
        if (code == SQLITE_OK)
            return;
        if (file.error() != 0)
            throw std::system_error(file.error(), std::generic_category(), name);
        throw std::runtime_error(name + ": SQLite cannot take this: " + sqlite3_errmsg(file.database()));
    }

    std::string name;
    SqliteFile file;
    std::vector<Statement> insertions; // as the tables
};

} // namespace

std::string sqliteVersion()
{
    return sqlite3_libversion();
}

void writeSqlite(const Source& source, const std::string& path, const std::string& name)
{
    Database database(path, name);
    giveRows(source, [&](TableName table, std::span<const Cell> cells) { database.add(table, cells); });
    database.finish();
}

} // namespace dump
