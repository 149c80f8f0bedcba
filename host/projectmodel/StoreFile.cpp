#include "host/projectmodel/StoreFile.h"

#include "host/projectmodel/StoreSchema.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Where a database file's header holds what, and where its users lock it: both fixed by SQLite's file format.
constexpr int headerSize = 100;
constexpr int pageSizeOffset = 16;
constexpr int pageCountOffset = 28;
constexpr int versionOffset = 60;
constexpr int applicationOffset = 68;
constexpr char magic[16] = "SQLite format 3";
constexpr off_t lockStart = 0x40000000;
constexpr off_t lockLength = 512;

class Descriptor {
public:
    Descriptor(const QString& path, int flags)
        : m_descriptor(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC))
    {
    }
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return m_descriptor; }
    bool synchronise() const { return m_descriptor >= 0 && ::fsync(m_descriptor) == 0; }

private:
    int m_descriptor;
};

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// The size that a file with that header has to have. A file with a log may have grown beyond what the header knows.
qint64 leastSize(const QByteArray& header)
{
    // A page of 65536 bytes does not fit into the two bytes for it, so 1 stands for it.
    const auto pageSize = qFromBigEndian<quint16>(header.constData() + pageSizeOffset);
    return qint64(pageSize == 1 ? 65536 : pageSize) * qFromBigEndian<quint32>(header.constData() + pageCountOffset);
}

bool copyFile(const QString& from, const QString& to, QString* error)
{
    QFile source(from);
    if (source.copy(to))
        return QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
    *error = source.errorString();
    return false;
}

} // namespace

std::unique_ptr<StoreSnapshot> StoreSnapshot::take(const QString& path, QString* error)
{
    std::unique_ptr<StoreSnapshot> snapshot(new StoreSnapshot);
    const StoreFile file(path);
    const StoreFile copy(snapshot->path());
    if (!snapshot->m_directory.isValid()) {
        *error = snapshot->m_directory.errorString();
        return nullptr;
    }
    if (!copyFile(path, snapshot->path(), error))
        return nullptr;
    if (file.hasLog() && !copyFile(file.logPath(), copy.logPath(), error))
        return nullptr;
    return snapshot;
}

void StoreFile::tell(QString* error, const QString& path, const QString& reason)
{
    if (error)
        *error = path + QStringLiteral(": ") + reason;
}

bool StoreFile::checkHeader(QString* error) const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    const QByteArray header = file.read(headerSize);
    if (header.size() < headerSize || std::memcmp(header.constData(), magic, sizeof magic) != 0)
        *error = tr("this is not a project file");
    else if (qFromBigEndian<quint32>(header.constData() + applicationOffset) != StoreSchema::applicationId)
        *error = tr("this is a file of another program");
    else if (qFromBigEndian<qint32>(header.constData() + versionOffset) > StoreSchema::version)
        *error = tr("a newer version of this program has written it");
    else if (file.size() < leastSize(header))
        *error = tr("the file is damaged (a part of it is missing)");
    else
        return true;
    return false;
}

void StoreFile::prepareForRescue() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadWrite))
        return;
    const QByteArray header = file.read(headerSize);
    if (header.size() < headerSize)
        return;
    file.seek(0);
    file.write(magic, sizeof magic);
    // A count that is itself damaged must not fill the disk.
    constexpr int mostGrowth = 100;
    const qint64 size = leastSize(header);
    if (size > file.size() && size / mostGrowth <= file.size())
        file.resize(size);
}

bool StoreFile::isWritable() const
{
    const QFileInfo file(m_path);
    return file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

bool StoreFile::hasLog() const
{
    return QFileInfo(logPath()).size() > 0;
}

QString StoreFile::logPath() const
{
    return m_path + QStringLiteral("-wal");
}

bool StoreFile::isLockedElsewhere() const
{
    const Descriptor file(m_path, O_RDONLY);
    struct flock lock { };
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = lockStart;
    lock.l_len = lockLength;
    return file.get() >= 0 && ::fcntl(file.get(), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool StoreFile::moveInPlace(const QString& from, const QString& to, bool replace, QString* error)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (!Descriptor(from, O_RDWR).synchronise()) {
        *error = systemError();
        return false;
    }
    // A log that belongs to the replaced file must never be taken for the new one's.
    if (replace)
        ::unlink(QFile::encodeName(StoreFile(to).logPath()).constData());
    if (!replace && QFile::exists(to)) {
        *error = tr("the file exists already");
        return false;
    }
    if (std::rename(source.constData(), target.constData()) != 0) {
        *error = systemError();
        return false;
    }
    Descriptor(QFileInfo(to).absolutePath(), O_RDONLY | O_DIRECTORY).synchronise();
    return true;
}

void StoreFile::remove() const
{
    for (const char* suffix : { "", "-wal", "-shm", "-journal" })
        QFile::remove(m_path + QLatin1String(suffix));
}
