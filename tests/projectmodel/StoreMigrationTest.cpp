#include "tests/projectmodel/ProjectFacts.h"

#include "host/projectmodel/AxisRecordData.h"
#include "host/projectmodel/SourceModel.h"
#include "host/projectmodel/StoreRows.h"
#include "sdk/AxisDefaults.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

/// Files that an older version has written.
class StoreMigrationTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void anOlderFileIsBroughtUpToDate();
    void recordsOfAnOlderFormatGetTheKeysThatTheyLack();
    void aCopyOfTheOlderFileStandsBesideIt();
    void anOlderFileThatIsDamagedIsLeftAlone();
    void anOlderFileWhoseControllerCannotBeReadIsLeftAlone_data();
    void anOlderFileWhoseControllerCannotBeReadIsLeftAlone();
    void aSecondCopyDoesNotReplaceTheFirst();

private:
    void makeOld();
    QString path() const { return m_folder->filePath(QStringLiteral("old.kproj")); }
    ProjectModel* open();
    void close(ProjectModel* project) { ProjectModelManager::instance()->closeProject(project); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_error;
};

namespace {

class Sql {
public:
    explicit Sql(const QString& path)
        : m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("old")))
    {
        m_database.setDatabaseName(path);
        m_database.open();
    }
    ~Sql()
    {
        m_database.close();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("old"));
    }
    Sql(const Sql&) = delete;
    Sql& operator=(const Sql&) = delete;

    QSqlQuery run(const QString& sql)
    {
        QSqlQuery query(m_database);
        if (!query.exec(sql))
            qFatal("%s: %s", qPrintable(sql), qPrintable(query.lastError().text()));
        return query;
    }

private:
    QSqlDatabase m_database;
};

} // namespace

void StoreMigrationTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_error.clear();
    makeOld();
}

/// A file as version 1 wrote it: two axes without view information, the second in an older record format.
void StoreMigrationTest::makeOld()
{
    ProjectModel* project = ProjectModelManager::instance()->createProject(
        path(), shippedController(QStringLiteral("KM1_M16")), &m_error);
    QVERIFY2(project, qPrintable(m_error));
    project->axisModel()
        ->addAxisTable(QStringLiteral("A"))
        ->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    project->axisModel()->addAxisTable(QStringLiteral("B"));
    project->sourceModel()->setSource(QStringLiteral("Main"), QStringLiteral("x"));
    QVERIFY(project->save(&m_error));
    close(project);

    Sql sql(path());
    sql.run(QStringLiteral("DELETE FROM axis_property WHERE axis=2 AND key IN ('Probe2', 'HomeTimeOut')"));
    sql.run(QStringLiteral("UPDATE axis_property SET value='2' WHERE axis=2 AND key='Version'"));
    for (const quint32 id : { 1u, 2u }) {
        AxisRecordData record{ id, id == 1 ? QStringLiteral("A") : QStringLiteral("B"), {}, {} };
        QSqlQuery query = sql.run(QStringLiteral("SELECT key, value FROM axis_property WHERE axis=%1").arg(id));
        while (query.next())
            record.properties.insert(query.value(0).toString(), query.value(1).toString());
        query.finish();
        sql.run(QStringLiteral("UPDATE axis SET checksum=%1 WHERE id=%2").arg(checksumOf(record, 1)).arg(id));
    }
    sql.run(QStringLiteral("DROP TABLE axis_view"));
    sql.run(QStringLiteral("PRAGMA user_version=1"));
}

ProjectModel* StoreMigrationTest::open()
{
    return ProjectModelManager::instance()->openProject(path(), &m_error);
}

void StoreMigrationTest::anOlderFileIsBroughtUpToDate()
{
    for (int opening = 0; opening < 2; ++opening) {
        ProjectModel* project = open();
        QVERIFY2(project, qPrintable(m_error));
        QVERIFY(!project->isModified());
        AxisTable* axis = project->axisModel()->axisTable(1);
        QCOMPARE(axis->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
        QCOMPARE(project->sourceModel()->source(QStringLiteral("Main")), QStringLiteral("x"));
        axis->setViewInfo(QStringLiteral("View"), QStringLiteral("v"));
        QVERIFY(axis->save());
        close(project);
    }
    Sql sql(path());
    QSqlQuery query = sql.run(QStringLiteral("PRAGMA user_version"));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), 2);
}

void StoreMigrationTest::recordsOfAnOlderFormatGetTheKeysThatTheyLack()
{
    close(open());
    ProjectModel* project = open();
    QVERIFY2(project, qPrintable(m_error));
    const AxisTable* axis = project->axisModel()->axisTable(2);
    QCOMPARE(axis->property(QStringLiteral("Version"), QString()), QStringLiteral("3"));
    QCOMPARE(axis->property(QStringLiteral("Probe2"), QString()), QStringLiteral("0"));
    QCOMPARE(axis->property(QStringLiteral("HomeTimeOut"), QString()), QStringLiteral("50000"));
    close(project);
}

void StoreMigrationTest::aCopyOfTheOlderFileStandsBesideIt()
{
    ProjectModel* project = open();
    QVERIFY2(project, qPrintable(m_error));
    close(project);
    QCOMPARE(
        QDir(m_folder->path()).entryList(QDir::Files).join(QLatin1Char(' ')), QStringLiteral("old.kproj old.kproj.v1"));
    Sql sql(path() + QStringLiteral(".v1"));
    QSqlQuery query = sql.run(QStringLiteral("PRAGMA user_version"));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), 1);
    query = sql.run(QStringLiteral("SELECT count(*) FROM axis_property"));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), 63 + 61);
}

void StoreMigrationTest::anOlderFileThatIsDamagedIsLeftAlone()
{
    Sql(path()).run(QStringLiteral("UPDATE axis_property SET value='x' WHERE axis=1 AND key='MaxVel'"));
    const QByteArray bytes = bytesOf(path());
    QVERIFY(!open());
    QVERIFY(m_error.startsWith(path()));
    QCOMPARE(bytesOf(path()), bytes);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ QStringLiteral("old.kproj") });
}

void StoreMigrationTest::anOlderFileWhoseControllerCannotBeReadIsLeftAlone_data()
{
    QTest::addColumn<QString>("role");
    QTest::newRow("the present one") << presentRole();
    QTest::newRow("the former one") << formerRole();
}

/// The row is whole, but no description of a controller.
void StoreMigrationTest::anOlderFileWhoseControllerCannotBeReadIsLeftAlone()
{
    QFETCH(QString, role);
    const QString table = QStringLiteral("controller");
    const QString text = QStringLiteral("{}");
    {
        Sql sql(path());
        sql.run(
            QStringLiteral("INSERT OR REPLACE INTO controller (role, description, checksum) VALUES ('%1', '%2', %3)")
                .arg(role, text)
                .arg(textChecksum(table, role, text)));
        QSqlQuery query = sql.run(QStringLiteral("SELECT count(*) FROM controller"));
        QVERIFY(query.next());
        const int rows = query.value(0).toInt();
        query.finish();
        sql.run(QStringLiteral("UPDATE tally SET row_count=%1, checksum=%2 WHERE name='controller'")
                    .arg(rows)
                    .arg(tallyChecksum(table, rows)));
    }
    const QByteArray bytes = bytesOf(path());
    QVERIFY(!open());
    QVERIFY2(m_error.startsWith(path() + QStringLiteral(": controller: /")), qPrintable(m_error));
    QCOMPARE(m_error.count(path()), 1);
    QCOMPARE(bytesOf(path()), bytes);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ QStringLiteral("old.kproj") });
}

void StoreMigrationTest::aSecondCopyDoesNotReplaceTheFirst()
{
    writeBytes(path() + QStringLiteral(".v1"), "what was there");
    ProjectModel* project = open();
    QVERIFY2(project, qPrintable(m_error));
    close(project);
    QCOMPARE(bytesOf(path() + QStringLiteral(".v1")), QByteArray("what was there"));
    QVERIFY(QFile::exists(path() + QStringLiteral(".v1.2")));
}

QTEST_GUILESS_MAIN(StoreMigrationTest)
#include "StoreMigrationTest.moc"
