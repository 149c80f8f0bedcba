#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <utility>

/// One connection to a project's SQLite file. Keeps its statements prepared and the reason of the last failure.
class StoreConnection {
    Q_DECLARE_TR_FUNCTIONS(StoreConnection)

public:
    StoreConnection();
    ~StoreConnection();
    StoreConnection(const StoreConnection&) = delete;
    StoreConnection& operator=(const StoreConnection&) = delete;

    /// Opens the file, for this connection alone once anything is read or written, every commit on the disk before it
    /// returns. Changes nothing in a file that has no log. False: errorText tells why.
    bool open(const QString& path);
    /// The file works with a write-ahead log. To be asked after something has been read.
    bool isLogged();
    /// Has the file work with a write-ahead log, without shared memory. Changes its header if it did not.
    bool useLog();
    /// Opens a file that nobody else knows yet, to be filled in one transaction and closed.
    bool openNew(const QString& path);

    /// Runs a statement with the values in the places of its question marks.
    template <typename... Values>
    bool run(const QString& sql, const Values&... values)
    {
        QSqlQuery* query = prepared(sql);
        return query && execute(*query, values...);
    }

    template <typename... Values>
    bool execute(QSqlQuery& query, const Values&... values)
    {
        int place = 0;
        (query.bindValue(place++, values), ...);
        return execute(query);
    }

    /// The statement, prepared, or null. Stays the connection's; forward only.
    QSqlQuery* prepared(const QString& sql);
    bool execute(QSqlQuery& query);
    /// Notes the reason why a query that was being read has ended early; false if there is one.
    bool endedWell(const QSqlQuery& query);
    /// The first value of the first row, invalid on failure.
    QVariant value(const QString& sql);

    bool begin() { return run(QStringLiteral("BEGIN IMMEDIATE")); }
    bool commit() { return run(QStringLiteral("COMMIT")); }
    /// Harmless where the database has rolled back by itself, as it does when the disk is full.
    void rollback();

    /// Why the last statement failed, as a clause for the user.
    QString errorText() const;

private:
    bool configure(std::initializer_list<const char*> pragmas);

    QString m_name;
    QSqlDatabase m_database;
    QHash<QString, QSqlQuery> m_prepared;
    QSqlError m_error;
};

/// A transaction that is rolled back at the end of its scope unless it has been committed.
class StoreTransaction {
public:
    explicit StoreTransaction(StoreConnection& connection);
    ~StoreTransaction();
    StoreTransaction(const StoreTransaction&) = delete;
    StoreTransaction& operator=(const StoreTransaction&) = delete;

    bool isOpen() const { return m_open; }
    bool commit();

private:
    StoreConnection& m_connection;
    bool m_open;
};
