#include "tests/projectmodel/StoreScenario.h"

#include "host/projectmodel/SourceModel.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <unistd.h>

/// Files that are not as they should be, or not to be had.
class ProjectFileTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void badFilesAreRefusedAndLeftAsTheyAre_data();
    void badFilesAreRefusedAndLeftAsTheyAre();
    void aFileThatWasCutOffIsNamedSo_data();
    void aFileThatWasCutOffIsNamedSo();
    void rowsThatWereTamperedWithAreNoticed_data();
    void rowsThatWereTamperedWithAreNoticed();
    void everyFlippedByteOfTheContentsIsNoticed();
    void aFlippedByteAnywhereIsNoticedOrChangesNothing();
    void aDamagedFileWithALogStaysAsItIs();
    void aDamagedFileWithoutTheModeOfALogStaysAsItIs();
    void aProjectThatAnotherProcessHasOpenIsRefused();
    void aProjectThatAnotherProcessHasOpenIsNotReplacedBySaveAs();
    void whatIsReadOnlyOpensToBeReadOnly_data();
    void whatIsReadOnlyOpensToBeReadOnly();
    void aReadOnlyProjectIsSavedUnderAnotherName();
    void aReadOnlyFileWithALogShowsWhatTheLogHolds();
    void theLogOfAReplacedFileIsNotTakenForThatOfTheNewOne();

private:
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    void makeRich(const QString& path);
    QByteArray contentsOf(const QString& path, QString* error) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

/// For its scope the process is nobody in particular where it was the superuser, to whom nothing is read-only.
class WithoutPrivileges {
public:
    WithoutPrivileges()
    {
        if (::geteuid() == 0 && ::setresuid(65534, 65534, 0) != 0)
            qFatal("the user cannot be changed");
    }
    ~WithoutPrivileges()
    {
        uid_t real = 0;
        uid_t effective = 0;
        uid_t saved = 0;
        if (::getresuid(&real, &effective, &saved) != 0 || (saved == 0 && ::setresuid(0, 0, 0) != 0))
            qFatal("the user cannot be changed back");
    }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
};

void runSql(const QString& path, const QStringList& statements)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("tamper"));
        database.setDatabaseName(path);
        if (!database.open())
            qFatal("cannot open %s", qPrintable(path));
        for (const QString& each : statements) {
            QSqlQuery query(database);
            if (!query.exec(each))
                qFatal("%s: %s", qPrintable(each), qPrintable(query.lastError().text()));
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("tamper"));
}

/// All places of the file at which one of the texts stands.
QVector<int> placesOf(const QByteArray& file, const QVector<QByteArray>& texts)
{
    QVector<bool> marked(file.size());
    for (const QByteArray& text : texts)
        for (int at = file.indexOf(text); at >= 0; at = file.indexOf(text, at + 1))
            std::fill(marked.begin() + at, marked.begin() + at + text.size(), true);
    QVector<int> places;
    for (int i = 0; i < marked.size(); ++i)
        if (marked.at(i))
            places.append(i);
    return places;
}

void setNumber(QByteArray& bytes, int at, quint32 number)
{
    char encoded[sizeof number];
    qToBigEndian(number, encoded);
    bytes.replace(at, sizeof encoded, encoded, sizeof encoded);
}

} // namespace

void ProjectFileTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void ProjectFileTest::cleanup()
{
    const QVector<ProjectModel*> left = ProjectModelManager::instance()->projects();
    for (ProjectModel* each : left)
        ProjectModelManager::instance()->closeProject(each);
    m_folder.reset();
}

/// A project with something in every table.
void ProjectFileTest::makeRich(const QString& path)
{
    QString error;
    ProjectModel* project
        = ProjectModelManager::instance()->createProject(path, shippedController(QStringLiteral("KM1_M16")), &error);
    QVERIFY2(project, qPrintable(error));
    for (int i = 0; i < 6; ++i) {
        AxisTable* axis = project->axisModel()->addAxisTable(QStringLiteral("Station%1").arg(i));
        axis->setProperty(QStringLiteral("MaxVel"), QString::number(100 + i));
        axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("lineEditPos%1").arg(i));
    }
    project->sourceModel()->setSource(QStringLiteral("Main"), QStringLiteral("PROGRAM Main\nEND_PROGRAM\n"));
    project->setSetting(QStringLiteral("Author"), QStringLiteral("Somebody"));
    project->changeController(shippedController(QStringLiteral("NV2_H48Q8E")));
    QVERIFY2(project->save(&error), qPrintable(error));
    ProjectModelManager::instance()->closeProject(project);
}

/// Everything that a project shows, as one text; empty with the error set when it does not open.
QByteArray ProjectFileTest::contentsOf(const QString& path, QString* error) const
{
    ProjectModel* project = ProjectModelManager::instance()->openProject(path, error);
    if (!project)
        return QByteArray();
    QString all;
    QDebug out(&all);
    for (const AxisTable* each : recordsOf(project->axisModel()))
        out << each->id() << each->getCompareData()
            << each->getViewInfo(QStringLiteral("LineEditPosObjectName"), QString())
            << each->property(QStringLiteral("AxisNo"), QString());
    const QStringList sources = project->sourceModel()->sourceNames();
    for (const QString& each : sources)
        out << each << project->sourceModel()->source(each);
    QString group = QStringLiteral("PulseEncodeMode");
    out << project->setting(QStringLiteral("Author"), QString()) << project->controller().json()
        << project->axisModel()->getPreAxisBaseSettingList(group);
    ProjectModelManager::instance()->closeProject(project);
    return all.toUtf8();
}

void ProjectFileTest::badFilesAreRefusedAndLeftAsTheyAre_data()
{
    QTest::addColumn<QString>("fault");
    for (const char* fault :
        { "there is no file", "an empty file", "not a database", "a database of another program", "a newer version",
            "version 0", "truncated to a page", "truncated by a byte", "truncated to half", "no rights at all" })
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void ProjectFileTest::badFilesAreRefusedAndLeftAsTheyAre()
{
    QFETCH(QString, fault);
    const QString file = path("bad.kproj");
    makeRich(file);
    QByteArray bytes = bytesOf(file);
    if (fault == QLatin1String("an empty file"))
        bytes.clear();
    else if (fault == QLatin1String("not a database"))
        bytes = QByteArray(4096, 'x');
    else if (fault == QLatin1String("a database of another program"))
        setNumber(bytes, 68, 0x01020304);
    else if (fault == QLatin1String("a newer version"))
        setNumber(bytes, 60, 3);
    else if (fault == QLatin1String("version 0"))
        setNumber(bytes, 60, 0);
    else if (fault == QLatin1String("truncated to a page"))
        bytes.truncate(4096);
    else if (fault == QLatin1String("truncated by a byte"))
        bytes.chop(1);
    else if (fault == QLatin1String("truncated to half"))
        bytes.truncate(bytes.size() / 2);
    writeBytes(file, bytes);
    if (fault == QLatin1String("there is no file"))
        QFile::remove(file);
    QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));
    if (fault == QLatin1String("no rights at all"))
        QFile::setPermissions(file, QFile::Permissions());

    QString error;
    {
        std::unique_ptr<WithoutPrivileges> user;
        if (fault == QLatin1String("no rights at all"))
            user = std::make_unique<WithoutPrivileges>();
        QVERIFY(!ProjectModelManager::instance()->openProject(file, &error));
    }
    QVERIFY2(error.startsWith(file + QStringLiteral(": ")) && error.size() > file.size() + 6, qPrintable(error));
    QVERIFY(ProjectModelManager::instance()->projects().isEmpty());
    if (fault == QLatin1String("there is no file"))
        QVERIFY(!QFile::exists(file));
    else
        QCOMPARE(bytesOf(file), bytes);
    QVERIFY(QDir(m_folder->path()).entryList(QDir::Files).size() <= 1);
}

void ProjectFileTest::aFileThatWasCutOffIsNamedSo_data()
{
    QTest::addColumn<int>("pageSize");
    for (const int size : { 512, 4096, 65536 })
        QTest::newRow(qPrintable(QStringLiteral("pages of %1 bytes").arg(size))) << size;
}

void ProjectFileTest::aFileThatWasCutOffIsNamedSo()
{
    QFETCH(int, pageSize);
    const QString file = path("cut.kproj");
    makeRich(file);
    runSql(file,
        { QStringLiteral("PRAGMA journal_mode=DELETE"), QStringLiteral("PRAGMA page_size=%1").arg(pageSize),
            QStringLiteral("VACUUM") });
    QString error;
    QVERIFY2(!contentsOf(file, &error).isEmpty(), qPrintable(error));
    const QByteArray bytes = bytesOf(file);
    QCOMPARE(bytes.size() % pageSize, 0);
    writeBytes(file, bytes.chopped(pageSize));
    QVERIFY(!ProjectModelManager::instance()->openProject(file, &error));
    QVERIFY2(error.contains(QLatin1String("a part of it is missing")), qPrintable(error));
}

void ProjectFileTest::rowsThatWereTamperedWithAreNoticed_data()
{
    QTest::addColumn<QString>("sql");
    const auto row = [](const char* name, const char* sql) { QTest::newRow(name) << QString::fromLatin1(sql); };
    row("a changed value", "UPDATE axis_property SET value='99' WHERE axis=2 AND key='MaxVel'");
    row("a changed key", "UPDATE axis_property SET key='MaxVil' WHERE axis=2 AND key='MaxVel'");
    row("a lost property", "DELETE FROM axis_property WHERE axis=2 AND key='MaxVel'");
    row("a property more", "INSERT INTO axis_property VALUES(2, 'More', '1')");
    row("a property of another axis", "UPDATE axis_property SET axis=9 WHERE axis=2");
    row("swapped values",
        "UPDATE axis_property SET value=CASE key WHEN 'MaxVel' THEN '500000' ELSE '101' END "
        "WHERE axis=2 AND key IN ('MaxVel', 'MaxAcc')");
    row("a changed view information", "UPDATE axis_view SET value='x' WHERE axis=1");
    row("a lost view information", "DELETE FROM axis_view WHERE axis=1");
    row("a changed name", "UPDATE axis SET name='x' WHERE id=3");
    row("a changed id", "UPDATE axis SET id=77 WHERE id=3");
    row("a lost axis without a trace", "DELETE FROM axis WHERE id=6;");
    row("a changed checksum", "UPDATE axis SET checksum=checksum+1 WHERE id=3");
    row("a changed setting", "UPDATE setting SET value='x'");
    row("a renamed setting", "UPDATE setting SET key='x'");
    row("a lost setting", "DELETE FROM setting");
    row("a changed source", "UPDATE source SET text='x'");
    row("a source behind a byte order mark", "UPDATE source SET text=char(65279) || text");
    row("a lost source", "DELETE FROM source");
    row("a changed description", "UPDATE controller SET description=replace(description, 'PTO0', 'PTO9')");
    row("swapped descriptions", "UPDATE controller SET role=CASE role WHEN 'present' THEN 'former' ELSE 'x' END");
    row("a lost description", "DELETE FROM controller WHERE role='former'");
    row("a changed tally", "UPDATE tally SET row_count=row_count+1 WHERE name='source'");
    row("a lost tally", "DELETE FROM tally WHERE name='setting'");
    row("a table more", "CREATE TABLE more(a)");
    row("a lost table", "DROP TABLE axis_view");
    row("another declaration of a table", "ALTER TABLE setting ADD COLUMN more TEXT");
}

void ProjectFileTest::rowsThatWereTamperedWithAreNoticed()
{
    QFETCH(QString, sql);
    const QString file = path("bad.kproj");
    makeRich(file);
    QStringList statements{ sql };
    if (sql.endsWith(QLatin1Char(';')))
        statements = QStringList{ sql.chopped(1), QStringLiteral("DELETE FROM axis_property WHERE axis=6"),
            QStringLiteral("DELETE FROM axis_view WHERE axis=6") };
    runSql(file, statements);
    const QByteArray bytes = bytesOf(file);
    QString error;
    QVERIFY(!ProjectModelManager::instance()->openProject(file, &error));
    QVERIFY2(error.startsWith(file + QStringLiteral(": ")), qPrintable(error));
    QCOMPARE(bytesOf(file), bytes);
}

void ProjectFileTest::everyFlippedByteOfTheContentsIsNoticed()
{
    const QString file = path("flip.kproj");
    makeRich(file);
    runSql(file, { QStringLiteral("VACUUM") });
    const QByteArray bytes = bytesOf(file);
    QVector<QByteArray> texts{ "MainPROGRAM Main\nEND_PROGRAM\n", "AuthorSomebody" };
    for (int i = 0; i < 6; ++i) {
        texts.append(QStringLiteral("Station%1").arg(i).toUtf8());
        texts.append(QStringLiteral("LineEditPosObjectNamelineEditPos%1").arg(i).toUtf8());
        texts.append(QStringLiteral("MaxVel%1").arg(100 + i).toUtf8());
        texts.append(QStringLiteral("AxisNo%1").arg(i).toUtf8());
        for (const AxisDefaultGroup* group : { &AxisUnitDefaults, &AxisHomeDefaults })
            for (auto it = group->begin(); it != group->end(); ++it)
                texts.append((it.key() + it.value()).toUtf8());
    }
    for (const char* model : { "KM1_M16", "NV2_H48Q8E" })
        for (const QByteArray& line : shippedController(QLatin1String(model)).json().split('\n'))
            if (line.size() > 40)
                texts.append(line);
    // A text that stands in the file once more than in the project has been left in free space, where it means nothing.
    const QByteArray all = QByteArrayList(texts.toList()).join('\n');
    texts.erase(std::remove_if(texts.begin(), texts.end(),
                    [&](const QByteArray& text) { return bytes.count(text) != all.count(text); }),
        texts.end());
    const QVector<int> places = placesOf(bytes, texts);
    QVERIFY(places.size() > 30000);
    for (int i = 0; i < 400; ++i) {
        const int place = places.at(static_cast<int>(qint64(places.size()) * i / 400));
        QByteArray damaged = bytes;
        damaged[place] = static_cast<char>(damaged.at(place) ^ (1 << (i % 8)));
        writeBytes(file, damaged);
        QString error;
        const QByteArray what
            = "byte " + QByteArray::number(place) + " in " + bytes.mid(place - 60, 120).replace('\0', '.');
        QVERIFY2(!ProjectModelManager::instance()->openProject(file, &error), what.constData());
        QVERIFY2(error.startsWith(file + QStringLiteral(": ")), what.constData());
        QVERIFY2(bytesOf(file) == damaged, what.constData());
    }
}

void ProjectFileTest::aFlippedByteAnywhereIsNoticedOrChangesNothing()
{
    const QString file = path("flip.kproj");
    makeRich(file);
    QString error;
    const QByteArray whole = contentsOf(file, &error);
    QVERIFY2(!whole.isEmpty(), qPrintable(error));
    const QByteArray bytes = bytesOf(file);
    int noticed = 0;
    for (int i = 0; i < 500; ++i) {
        // The first hundred hit the header, where a byte decides over all others.
        const int place = i < 100 ? i : static_cast<int>(qint64(bytes.size()) * (i - 100) / 400);
        QByteArray damaged = bytes;
        damaged[place] = static_cast<char>(damaged.at(place) ^ (1 << (i % 8)));
        writeBytes(file, damaged);
        error.clear();
        const QByteArray found = contentsOf(file, &error);
        if (found.isEmpty()) {
            ++noticed;
            QVERIFY2(error.startsWith(file + QStringLiteral(": ")), qPrintable(error));
        } else {
            QVERIFY2(found == whole, QByteArray("byte " + QByteArray::number(place)).constData());
        }
    }
    QVERIFY(noticed > 250);
}

void ProjectFileTest::aDamagedFileWithALogStaysAsItIs()
{
    const QString file = path("log.kproj");
    makeRich(file);
    const QString log = file + QStringLiteral("-wal");
    QString error;
    QByteArray logBytes;
    {
        // What a killed program leaves: the file, and beside it a log with the last save.
        ProjectModel* project = ProjectModelManager::instance()->openProject(file, &error);
        QVERIFY2(project, qPrintable(error));
        recordsOf(project->axisModel()).front()->setProperty(QStringLiteral("MaxVel"), QStringLiteral("5"));
        QVERIFY(recordsOf(project->axisModel()).front()->save());
        logBytes = bytesOf(log);
        ProjectModelManager::instance()->closeProject(project);
    }
    QVERIFY(!logBytes.isEmpty());
    QByteArray bytes = bytesOf(file);
    const int place = bytes.indexOf("AuthorSomebody");
    bytes[place] = 'B';
    writeBytes(file, bytes);
    writeBytes(log, logBytes);
    QVERIFY(!ProjectModelManager::instance()->openProject(file, &error));
    QCOMPARE(bytesOf(file), bytes);
    QCOMPARE(bytesOf(log), logBytes);
}

void ProjectFileTest::aDamagedFileWithoutTheModeOfALogStaysAsItIs()
{
    const QString file = path("journal.kproj");
    makeRich(file);
    runSql(file, { QStringLiteral("PRAGMA journal_mode=DELETE") });
    QByteArray bytes = bytesOf(file);
    const int place = bytes.indexOf("AuthorSomebody");
    QVERIFY(place > 0);
    bytes[place] = 'B';
    writeBytes(file, bytes);
    QString error;
    QVERIFY(!ProjectModelManager::instance()->openProject(file, &error));
    QVERIFY2(error.startsWith(file), qPrintable(error));
    QCOMPARE(bytesOf(file), bytes);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ QStringLiteral("journal.kproj") });
    bytes[place] = 'A';
    writeBytes(file, bytes);
    QVERIFY2(ProjectModelManager::instance()->openProject(file, &error), qPrintable(error));
    QCOMPARE(int(bytesOf(file).at(18)), 2);
}

void ProjectFileTest::aProjectThatAnotherProcessHasOpenIsRefused()
{
    StoreScenario scenario(path("held.kproj"));
    QVERIFY2(scenario.create(), qPrintable(scenario.error()));
    scenario.close();
    QProcess child;
    child.start(QStringLiteral(KESTRUN_STORE_CHILD), { QStringLiteral("hold"), scenario.path() });
    QVERIFY(child.waitForReadyRead(20000));
    QCOMPARE(child.readAll(), QByteArray("open\n"));
    QVERIFY(!scenario.open());
    QVERIFY2(
        scenario.error().contains(QLatin1String("another program has the file open")), qPrintable(scenario.error()));
    {
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));
        const WithoutPrivileges user;
        QVERIFY(!scenario.open());
        QVERIFY2(scenario.error().contains(QLatin1String("another program has the file open")),
            qPrintable(scenario.error()));
    }
    child.closeWriteChannel();
    QVERIFY(child.waitForFinished(20000));
    QVERIFY2(scenario.open(), qPrintable(scenario.error()));

    // The other way round: this process is the first.
    child.start(QStringLiteral(KESTRUN_STORE_CHILD), { QStringLiteral("hold"), scenario.path() });
    QVERIFY(child.waitForFinished(20000));
    QVERIFY(child.readAll().contains("another program has the file open"));
}

void ProjectFileTest::aProjectThatAnotherProcessHasOpenIsNotReplacedBySaveAs()
{
    StoreScenario held(path("held.kproj"));
    QVERIFY(held.create());
    held.close();
    StoreScenario scenario(path("mine.kproj"));
    QVERIFY(scenario.create());
    QProcess child;
    child.start(QStringLiteral(KESTRUN_STORE_CHILD), { QStringLiteral("hold"), held.path() });
    QVERIFY(child.waitForReadyRead(20000));
    const QByteArray bytes = bytesOf(held.path());
    QString error;
    QVERIFY(!ProjectModelManager::instance()->saveProjectAs(scenario.project(), held.path(), &error));
    QVERIFY2(error.contains(QLatin1String("another program has the file open")), qPrintable(error));
    QCOMPARE(bytesOf(held.path()), bytes);
    QVERIFY(!QFile::exists(held.path() + QStringLiteral(".part")));
    child.closeWriteChannel();
    QVERIFY(child.waitForFinished(20000));
}

void ProjectFileTest::whatIsReadOnlyOpensToBeReadOnly_data()
{
    QTest::addColumn<bool>("folderIsWritable");
    QTest::newRow("a read-only file") << true;
    QTest::newRow("a file in a read-only folder") << false;
}

void ProjectFileTest::whatIsReadOnlyOpensToBeReadOnly()
{
    QFETCH(bool, folderIsWritable);
    StoreScenario scenario(path("line.kproj"));
    QVERIFY(scenario.create());
    scenario.close();
    QFile::setPermissions(scenario.path(), QFile::Permissions(folderIsWritable ? 0x4444 : 0x6666));
    QFile::setPermissions(m_folder->path(), QFile::Permissions(folderIsWritable ? 0x7777 : 0x5555));
    const QByteArray bytes = bytesOf(scenario.path());
    {
        const WithoutPrivileges user;
        QVERIFY2(scenario.open(), qPrintable(scenario.error()));
        QVERIFY(scenario.project()->isReadOnly());
        QVERIFY(!scenario.project()->axisModel()->addAxisTable(QStringLiteral("New")));
        AxisTable* axis = recordsOf(scenario.project()->axisModel()).front();
        QSignalSpy spy(scenario.project(), &AbstractProjectModel::storeFailed);
        // What an editor writes while it builds its pages is no reason for a message.
        axis->pageBuild = true;
        axis->setViewInfo(QStringLiteral("A"), QStringLiteral("b"));
        axis->pageBuild = false;
        QVERIFY(!axis->save());
        QCOMPARE(spy.size(), 0);
        QVERIFY(!scenario.saveAxis(0, 4));
        QCOMPARE(spy.size(), 1);
        QVERIFY(spy.at(0).at(0).toString().contains(scenario.path()));
        QVERIFY(axis->modified);
        QVERIFY(!scenario.saveProject(5));
        QVERIFY(axis->load());
        QCOMPARE(scenario.stateOf(0), 0);
        scenario.close();
    }
    QCOMPARE(bytesOf(scenario.path()), bytes);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ QStringLiteral("line.kproj") });
    QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7700));
}

void ProjectFileTest::aReadOnlyProjectIsSavedUnderAnotherName()
{
    StoreScenario scenario(path("line.kproj"));
    QVERIFY(scenario.create());
    scenario.close();
    QFile::setPermissions(scenario.path(), QFile::Permissions(0x4444));
    QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777));
    const QString copy = path("copy.kproj");
    {
        const WithoutPrivileges user;
        QVERIFY2(scenario.open(), qPrintable(scenario.error()));
        QVERIFY(!scenario.saveAxis(1, 9));
        QString error;
        QVERIFY2(ProjectModelManager::instance()->saveProjectAs(scenario.project(), copy, &error), qPrintable(error));
        QVERIFY(!scenario.project()->isReadOnly());
        QVERIFY(scenario.saveAxis(2, 8));
        scenario.close();
    }
    StoreScenario copied(copy);
    QVERIFY2(copied.open(), qPrintable(copied.error()));
    QCOMPARE(copied.stateOf(0), 0);
    QCOMPARE(copied.stateOf(1), 9);
    QCOMPARE(copied.stateOf(2), 8);
    QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7700));
}

void ProjectFileTest::aReadOnlyFileWithALogShowsWhatTheLogHolds()
{
    StoreScenario scenario(path("line.kproj"));
    QVERIFY(scenario.create());
    QVERIFY(scenario.open());
    const QByteArray bytes = bytesOf(scenario.path());
    QVERIFY(scenario.saveAxis(0, 6));
    const QByteArray log = bytesOf(scenario.path() + QStringLiteral("-wal"));
    scenario.close();
    writeBytes(scenario.path(), bytes);
    writeBytes(scenario.path() + QStringLiteral("-wal"), log);
    QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555));
    {
        const WithoutPrivileges user;
        QVERIFY2(scenario.open(), qPrintable(scenario.error()));
        QVERIFY(scenario.project()->isReadOnly());
        QCOMPARE(scenario.stateOf(0), 6);
        scenario.close();
    }
    QCOMPARE(bytesOf(scenario.path()), bytes);
    QCOMPARE(bytesOf(scenario.path() + QStringLiteral("-wal")), log);
    QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7700));
}

void ProjectFileTest::theLogOfAReplacedFileIsNotTakenForThatOfTheNewOne()
{
    StoreScenario former(path("former.kproj"));
    QVERIFY(former.create());
    QVERIFY(former.saveAxis(0, 6));
    const QByteArray log = bytesOf(former.path() + QStringLiteral("-wal"));
    QVERIFY(!log.isEmpty());
    former.close();
    writeBytes(former.path() + QStringLiteral("-wal"), log);
    StoreScenario scenario(path("mine.kproj"));
    QVERIFY(scenario.create());
    QVERIFY(scenario.saveProject(3));
    QString error;
    QVERIFY2(
        ProjectModelManager::instance()->saveProjectAs(scenario.project(), former.path(), &error), qPrintable(error));
    QVERIFY(bytesOf(former.path() + QStringLiteral("-wal")) != log);
    scenario.close();
    QVERIFY2(former.open(), qPrintable(former.error()));
    for (int i = 0; i < StoreScenario::axes; ++i)
        QCOMPARE(former.stateOf(i), 3);
    QCOMPARE(former.settingState(), 3);
}

QTEST_GUILESS_MAIN(ProjectFileTest)
#include "ProjectFileTest.moc"
