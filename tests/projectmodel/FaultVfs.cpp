#include "tests/projectmodel/FaultVfs.h"

#include <QFile>

#include <sqlite3.h>

#include <cstring>

namespace FaultVfs {

namespace {

struct State {
    sqlite3_vfs* below = nullptr;
    sqlite3_vfs layer{};
    sqlite3_io_methods methods{};

    bool isFailing = false;
    Operation operation = Operation::Write;
    int countdown = 0;
    bool forGood = false;
    int code = 0;
    bool hasFailed = false;

    bool isLogging = false;
    QVector<Step> log;
};

State& state()
{
    static State only;
    return only;
}

/// The database gives each file this much memory, behind which the file of the layer below has its own.
struct LayerFile {
    sqlite3_file base;
    char* name;
};

LayerFile* layerOf(sqlite3_file* file)
{
    return reinterpret_cast<LayerFile*>(file);
}

sqlite3_file* below(sqlite3_file* file)
{
    return reinterpret_cast<sqlite3_file*>(layerOf(file) + 1);
}

/// True when this operation is one that has to fail.
bool fails(Operation operation)
{
    State& s = state();
    if (!s.isFailing || s.operation != operation)
        return false;
    --s.countdown;
    const bool now = s.countdown == 0 || (s.countdown < 0 && s.forGood);
    s.hasFailed = s.hasFailed || now;
    return now;
}

int codeOr(int usual)
{
    return state().code ? state().code : usual;
}

void note(Operation operation, const char* name, qint64 offset, const QByteArray& data = QByteArray())
{
    if (state().isLogging)
        state().log.append({ operation, QString::fromLocal8Bit(name), offset, data });
}

int closeFile(sqlite3_file* file)
{
    const int result = below(file)->pMethods->xClose(below(file));
    delete[] layerOf(file)->name;
    return result;
}

int readFile(sqlite3_file* file, void* data, int size, sqlite3_int64 offset)
{
    return below(file)->pMethods->xRead(below(file), data, size, offset);
}

int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset)
{
    if (fails(Operation::Write))
        return codeOr(SQLITE_IOERR_WRITE);
    note(Operation::Write, layerOf(file)->name, offset, QByteArray(static_cast<const char*>(data), size));
    return below(file)->pMethods->xWrite(below(file), data, size, offset);
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    if (fails(Operation::Truncate))
        return codeOr(SQLITE_IOERR_TRUNCATE);
    note(Operation::Truncate, layerOf(file)->name, size);
    return below(file)->pMethods->xTruncate(below(file), size);
}

// Nothing waits for the disk: what a cut leaves is told by the log, not by the machine.
int syncFile(sqlite3_file* file, int)
{
    if (fails(Operation::Sync))
        return codeOr(SQLITE_IOERR_FSYNC);
    note(Operation::Sync, layerOf(file)->name, 0);
    return SQLITE_OK;
}

int fileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return below(file)->pMethods->xFileSize(below(file), size);
}

int lockFile(sqlite3_file* file, int level)
{
    return below(file)->pMethods->xLock(below(file), level);
}

int unlockFile(sqlite3_file* file, int level)
{
    return below(file)->pMethods->xUnlock(below(file), level);
}

int checkReservedLock(sqlite3_file* file, int* result)
{
    return below(file)->pMethods->xCheckReservedLock(below(file), result);
}

int fileControl(sqlite3_file* file, int operation, void* argument)
{
    return below(file)->pMethods->xFileControl(below(file), operation, argument);
}

int sectorSize(sqlite3_file* file)
{
    return below(file)->pMethods->xSectorSize(below(file));
}

int deviceCharacteristics(sqlite3_file* file)
{
    return below(file)->pMethods->xDeviceCharacteristics(below(file));
}

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    State& s = state();
    file->pMethods = nullptr;
    const int result = s.below->xOpen(s.below, name, below(file), flags, outFlags);
    if (result != SQLITE_OK)
        return result;
    const std::size_t length = name ? std::strlen(name) : 0;
    layerOf(file)->name = new char[length + 1];
    std::memcpy(layerOf(file)->name, name ? name : "", length);
    layerOf(file)->name[length] = '\0';
    file->pMethods = &s.methods;
    return SQLITE_OK;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncDirectory)
{
    if (fails(Operation::Delete))
        return codeOr(SQLITE_IOERR_DELETE);
    if (QFile::exists(QString::fromLocal8Bit(name)))
        note(Operation::Delete, name, 0);
    return state().below->xDelete(state().below, name, syncDirectory);
}

} // namespace

// The methods are those of version 1, which has no shared memory: a store that needed any would not work here.
void install()
{
    State& s = state();
    s.below = sqlite3_vfs_find(nullptr);
    s.methods.iVersion = 1;
    s.methods.xClose = closeFile;
    s.methods.xRead = readFile;
    s.methods.xWrite = writeFile;
    s.methods.xTruncate = truncateFile;
    s.methods.xSync = syncFile;
    s.methods.xFileSize = fileSize;
    s.methods.xLock = lockFile;
    s.methods.xUnlock = unlockFile;
    s.methods.xCheckReservedLock = checkReservedLock;
    s.methods.xFileControl = fileControl;
    s.methods.xSectorSize = sectorSize;
    s.methods.xDeviceCharacteristics = deviceCharacteristics;
    s.layer = *s.below;
    s.layer.zName = "fault";
    s.layer.pNext = nullptr;
    s.layer.szOsFile = static_cast<int>(sizeof(LayerFile)) + s.below->szOsFile;
    s.layer.xOpen = openFile;
    s.layer.xDelete = deleteFile;
    if (sqlite3_vfs_register(&s.layer, 1) != SQLITE_OK)
        qFatal("the layer cannot be installed");
}

void failNth(Operation operation, int n, bool forGood, int code)
{
    State& s = state();
    s.isFailing = true;
    s.operation = operation;
    s.countdown = n;
    s.forGood = forGood;
    s.code = code;
    s.hasFailed = false;
}

bool stopFailing()
{
    state().isFailing = false;
    return state().hasFailed;
}

void startLog()
{
    state().log.clear();
    state().isLogging = true;
}

QVector<Step> takeLog()
{
    state().isLogging = false;
    return std::move(state().log);
}

int logSize()
{
    return state().log.size();
}

} // namespace FaultVfs
