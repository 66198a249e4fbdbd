#include "dump/forms/SqliteFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace dump {

struct SqliteFile::Access {
    int descriptor = -1;
    int error = 0;
    sqlite3_vfs system = {};
    sqlite3* database = nullptr;

    // The first failure is the reason of those that follow.
    int fail(int code)
    {
        error = error == 0 ? errno : error;
        return error == ENOSPC || error == EDQUOT ? SQLITE_FULL : code;
    }
};

namespace {

// What SQLite has of an open file: its own part comes first.
struct OpenFile {
    sqlite3_file base;
    SqliteFile::Access* access;
};

SqliteFile::Access& accessOf(sqlite3_file* file)
{
    return *reinterpret_cast<OpenFile*>(file)->access;
}

int closeFile(sqlite3_file* /*file*/)
{
    return SQLITE_OK;
}

// What lies behind the end of the file counts as zeros.
int readFile(sqlite3_file* file, void* to, int count, sqlite3_int64 offset)
{
    auto* at = static_cast<char*>(to);
    while (count > 0) {
        const ssize_t length = pread(accessOf(file).descriptor, at, static_cast<std::size_t>(count), offset);
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            return accessOf(file).fail(SQLITE_IOERR_READ);
        if (length == 0)
            break;
        at += length;
        offset += length;
        count -= static_cast<int>(length);
    }
    std::fill_n(at, count, '\0');
    return count == 0 ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int writeFile(sqlite3_file* file, const void* from, int count, sqlite3_int64 offset)
{
    const auto* at = static_cast<const char*>(from);
    while (count > 0) {
        const ssize_t length = pwrite(accessOf(file).descriptor, at, static_cast<std::size_t>(count), offset);
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            return accessOf(file).fail(SQLITE_IOERR_WRITE);
        at += length;
        offset += length;
        count -= static_cast<int>(length);
    }
    return SQLITE_OK;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    return ftruncate(accessOf(file).descriptor, size) == 0 ? SQLITE_OK : accessOf(file).fail(SQLITE_IOERR_TRUNCATE);
}

// Who puts the file in place makes it last.
int syncFile(sqlite3_file* /*file*/, int /*flags*/)
{
    return SQLITE_OK;
}

int sizeOfFile(sqlite3_file* file, sqlite3_int64* size)
{
    struct stat status = {};
    if (fstat(accessOf(file).descriptor, &status) != 0)
        return accessOf(file).fail(SQLITE_IOERR_FSTAT);
    *size = status.st_size;
    return SQLITE_OK;
}

int lockFile(sqlite3_file* /*file*/, int /*lock*/)
{
    return SQLITE_OK;
}

int isReserved(sqlite3_file* /*file*/, int* result)
{
    *result = 0;
    return SQLITE_OK;
}

int controlFile(sqlite3_file* /*file*/, int /*request*/, void* /*argument*/)
{
    return SQLITE_NOTFOUND;
}

int sectorSize(sqlite3_file* /*file*/)
{
    return 0; // the usual one
}

int characteristics(sqlite3_file* /*file*/)
{
    return 0;
}

constexpr sqlite3_io_methods methods = {.iVersion = 1,
                                        .xClose = closeFile,
                                        .xRead = readFile,
                                        .xWrite = writeFile,
                                        .xTruncate = truncateFile,
                                        .xSync = syncFile,
                                        .xFileSize = sizeOfFile,
                                        .xLock = lockFile,
                                        .xUnlock = lockFile,
                                        .xCheckReservedLock = isReserved,
                                        .xFileControl = controlFile,
                                        .xSectorSize = sectorSize,
                                        .xDeviceCharacteristics = characteristics,
                                        .xShmMap = nullptr,
                                        .xShmLock = nullptr,
                                        .xShmBarrier = nullptr,
                                        .xShmUnmap = nullptr,
                                        .xFetch = nullptr,
                                        .xUnfetch = nullptr};

int openFile(sqlite3_vfs* system, const char* /*name*/, sqlite3_file* file, int flags, int* flagsTaken)
{
    const bool isDatabase = (static_cast<unsigned>(flags) & static_cast<unsigned>(SQLITE_OPEN_MAIN_DB)) != 0;
    new (file) OpenFile{{isDatabase ? &methods : nullptr}, static_cast<SqliteFile::Access*>(system->pAppData)};
    if (flagsTaken)
        *flagsTaken = flags;
    return isDatabase ? SQLITE_OK : SQLITE_CANTOPEN;
}

int removeFile(sqlite3_vfs* /*system*/, const char* /*name*/, int /*sync*/)
{
    return SQLITE_OK;
}

int isFileThere(sqlite3_vfs* /*system*/, const char* /*name*/, int /*flags*/, int* result)
{
    *result = 0;
    return SQLITE_OK;
}

int fullPath(sqlite3_vfs* /*system*/, const char* name, int size, char* result)
{
    std::strncpy(result, name, static_cast<std::size_t>(size));
    return SQLITE_OK;
}

// Nothing that is written depends on it, so two dumps of a file are the same.
int randomBytes(sqlite3_vfs* /*system*/, int count, char* bytes)
{
    std::fill_n(bytes, count, '\0');
    return count;
}

int sleepFor(sqlite3_vfs* /*system*/, int /*microseconds*/)
{
    return 0;
}

int currentTime(sqlite3_vfs* /*system*/, double* time)
{
    *time = 0;
    return SQLITE_OK;
}

int lastError(sqlite3_vfs* system, int /*size*/, char* /*text*/)
{
    return static_cast<SqliteFile::Access*>(system->pAppData)->error;
}

sqlite3_vfs systemOf(SqliteFile::Access& access)
{
    constexpr int longestPath = 64;
    sqlite3_vfs system = {};
    system.iVersion = 1;
    system.szOsFile = sizeof(OpenFile);
    system.mxPathname = longestPath;
    system.zName = "petal-dump";
    system.pAppData = &access;
    system.xOpen = openFile;
    system.xDelete = removeFile;
    system.xAccess = isFileThere;
    system.xFullPathname = fullPath;
    system.xRandomness = randomBytes;
    system.xSleep = sleepFor;
    system.xCurrentTime = currentTime;
    system.xGetLastError = lastError;
    return system;
}

} // namespace

SqliteFile::SqliteFile(const std::string& path, const std::string& name) : access(std::make_unique<Access>())
{
    access->descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (access->descriptor < 0)
        throw std::system_error(errno, std::generic_category(), name);
    // One thread uses it, and nobody asks how much memory that takes. Refused when it has begun with that already.
    static_cast<void>(sqlite3_config(SQLITE_CONFIG_SINGLETHREAD));
    static_cast<void>(sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0));
    access->system = systemOf(*access);
    const bool isOpen = sqlite3_vfs_register(&access->system, 0) == SQLITE_OK &&
                        sqlite3_open_v2("dump", &access->database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                                        access->system.zName) == SQLITE_OK;
    if (isOpen)
        return;
    sqlite3_close(access->database);
    sqlite3_vfs_unregister(&access->system);
    close(access->descriptor);
    throw std::bad_alloc(); // there is nothing else that could go wrong
}

SqliteFile::~SqliteFile()
{
    sqlite3_close(access->database);
    sqlite3_vfs_unregister(&access->system);
    close(access->descriptor);
}

sqlite3* SqliteFile::database() const
{
    return access->database;
}

int SqliteFile::error() const
{
    return access->error;
}

} // namespace dump
