#include "host/projectmodel/StoreConnection.h"

namespace {

// SQLite's primary result codes, as far as their reasons differ for the user.
enum ResultCode {
    Busy = 5,
    Locked = 6,
    ReadOnly = 8,
    InputOutput = 10,
    Corrupt = 11,
    Full = 13,
    CantOpen = 14,
    NotADatabase = 26
};

QString nextConnectionName()
{
    static int count = 0;
    return QStringLiteral("kestrun-project-%1").arg(++count);
}

} // namespace

StoreConnection::StoreConnection()
    : m_name(nextConnectionName()), m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name))
{
    m_database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
}

StoreConnection::~StoreConnection()
{
    m_prepared.clear();
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

bool StoreConnection::open(const QString& path)
{
    m_database.setDatabaseName(path);
    // The locking mode comes before the first access: only then does the log do without a shared-memory file.
    return configure({ "PRAGMA locking_mode=EXCLUSIVE", "PRAGMA trusted_schema=OFF", "PRAGMA cell_size_check=ON",
        "PRAGMA synchronous=FULL" });
}

bool StoreConnection::isLogged()
{
    return value(QStringLiteral("PRAGMA journal_mode")).toString() == QLatin1String("wal");
}

bool StoreConnection::useLog()
{
    return value(QStringLiteral("PRAGMA journal_mode=WAL")).toString() == QLatin1String("wal");
}

bool StoreConnection::openNew(const QString& path)
{
    m_database.setDatabaseName(path);
    return configure({ "PRAGMA locking_mode=EXCLUSIVE", "PRAGMA synchronous=FULL" });
}

bool StoreConnection::configure(std::initializer_list<const char*> pragmas)
{
    if (!m_database.open()) {
        m_error = m_database.lastError();
        return false;
    }
    QSqlQuery query(m_database);
    for (const char* pragma : pragmas) {
        if (!query.exec(QLatin1String(pragma))) {
            m_error = query.lastError();
            return false;
        }
    }
    return true;
}

QSqlQuery* StoreConnection::prepared(const QString& sql)
{
    const auto known = m_prepared.find(sql);
    if (known != m_prepared.end())
        return &*known;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(sql)) {
        m_error = query.lastError();
        return nullptr;
    }
    return &*m_prepared.insert(sql, query);
}

bool StoreConnection::execute(QSqlQuery& query)
{
    if (query.exec())
        return true;
    m_error = query.lastError();
    query.finish();
    return false;
}

bool StoreConnection::endedWell(const QSqlQuery& query)
{
    if (!query.lastError().isValid())
        return true;
    m_error = query.lastError();
    return false;
}

QVariant StoreConnection::value(const QString& sql)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(sql)) {
        m_error = query.lastError();
        return QVariant();
    }
    return query.next() ? query.value(0) : QVariant();
}

void StoreConnection::rollback()
{
    QSqlQuery query(m_database);
    query.exec(QStringLiteral("ROLLBACK"));
}

QString StoreConnection::errorText() const
{
    switch (m_error.nativeErrorCode().toInt() & 0xff) {
    case Busy:
    case Locked:
        return tr("another program has the file open");
    case ReadOnly:
        return tr("the file cannot be written");
    case InputOutput:
        return tr("the disk reports an error (%1)").arg(m_error.databaseText());
    case Corrupt:
    case NotADatabase:
        return tr("the file is damaged (%1)").arg(m_error.databaseText());
    case Full:
        return tr("the disk is full");
    case CantOpen:
        return tr("the file, or one beside it, cannot be opened");
    default:
        return m_error.databaseText().isEmpty() ? m_error.text() : m_error.databaseText();
    }
}

StoreTransaction::StoreTransaction(StoreConnection& connection) : m_connection(connection), m_open(connection.begin())
{
}

StoreTransaction::~StoreTransaction()
{
    if (m_open)
        m_connection.rollback();
}

bool StoreTransaction::commit()
{
    if (!m_open || !m_connection.commit())
        return false;
    m_open = false;
    return true;
}
