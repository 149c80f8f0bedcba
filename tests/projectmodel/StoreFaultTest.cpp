#include "tests/projectmodel/FaultVfs.h"
#include "tests/projectmodel/StoreScenario.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <sqlite3.h>

/// The store on disks that fail.
class StoreFaultTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyNthOperationFails_data();
    void everyNthOperationFails();
    void aFullDiskIsToldAndNothingIsLost();
    void aFailedSaveOfTheProjectKeepsEverythingModified();
    void whatAnEditorCorrectedCountsAsAChangeOnceItCouldNotBeStored_data();
    void whatAnEditorCorrectedCountsAsAChangeOnceItCouldNotBeStored();
    void aFailedCopyLeavesNothingBehind();
    void aFailedCreationLeavesNothingBehind();

private:
    struct Attempt {
        int acknowledged = 0;
        int attempted = 0;
    };
    static void runSession(StoreScenario& scenario, QVector<Attempt>* attempts);

    QTemporaryDir m_folder;
    QString m_base;
};

void StoreFaultTest::initTestCase()
{
    FaultVfs::install();
    m_base = m_folder.filePath(QStringLiteral("base.kproj"));
    StoreScenario scenario(m_base);
    QVERIFY2(scenario.create(), qPrintable(scenario.error()));
}

void StoreFaultTest::everyNthOperationFails_data()
{
    using FaultVfs::Operation;
    QTest::addColumn<FaultVfs::Operation>("operation");
    QTest::addColumn<bool>("forGood");
    QTest::newRow("one write") << Operation::Write << false;
    QTest::newRow("all writes from one on") << Operation::Write << true;
    QTest::newRow("one sync") << Operation::Sync << false;
    QTest::newRow("all syncs from one on") << Operation::Sync << true;
    QTest::newRow("one truncation") << Operation::Truncate << false;
    QTest::newRow("all truncations from one on") << Operation::Truncate << true;
    QTest::newRow("one deletion") << Operation::Delete << false;
    QTest::newRow("all deletions from one on") << Operation::Delete << true;
}

/// Opens, saves single records, saves all, closes. Notes for each axis, and for the setting behind them, what was tried
/// and what was acknowledged.
void StoreFaultTest::runSession(StoreScenario& scenario, QVector<Attempt>* attempts)
{
    const auto note = [attempts](int index, int number, bool acknowledged) {
        Attempt& attempt = (*attempts)[index];
        attempt.attempted = number;
        if (acknowledged)
            attempt.acknowledged = number;
    };
    if (!scenario.open())
        return;
    int number = 0;
    for (int round = 0; round < 2; ++round) {
        for (int axis = 0; axis < StoreScenario::axes; ++axis) {
            ++number;
            note(axis, number, scenario.saveAxis(axis, number));
        }
        ++number;
        const bool done = scenario.saveProject(number);
        for (int index = 0; index <= StoreScenario::axes; ++index)
            note(index, number, done);
    }
    scenario.close();
}

void StoreFaultTest::everyNthOperationFails()
{
    QFETCH(FaultVfs::Operation, operation);
    QFETCH(bool, forGood);
    int failures = 0;
    for (int n = 1;; ++n) {
        StoreScenario scenario(m_folder.filePath(QStringLiteral("fault.kproj")));
        QFile::remove(scenario.path());
        QFile::remove(scenario.path() + QStringLiteral("-wal"));
        QVERIFY(QFile::copy(m_base, scenario.path()));
        QVector<Attempt> attempts(StoreScenario::axes + 1);
        FaultVfs::failNth(operation, n, forGood);
        runSession(scenario, &attempts);
        if (!FaultVfs::stopFailing())
            break;
        ++failures;
        QVERIFY2(scenario.open(), qPrintable(QStringLiteral("%1, n %2").arg(scenario.error()).arg(n)));
        for (int index = 0; index <= StoreScenario::axes; ++index) {
            const int found = index < StoreScenario::axes ? scenario.stateOf(index) : scenario.settingState();
            const Attempt attempt = attempts.at(index);
            QVERIFY2(found >= attempt.acknowledged && found <= attempt.attempted,
                qPrintable(QStringLiteral("n %1, place %2: found %3, acknowledged %4, attempted %5")
                               .arg(n)
                               .arg(index)
                               .arg(found)
                               .arg(attempt.acknowledged)
                               .arg(attempt.attempted)));
        }
    }
    // A log without truncation of its own is truncated by nobody; everything else has to have been met.
    QVERIFY(failures > 0 || operation == FaultVfs::Operation::Truncate);
}

void StoreFaultTest::aFullDiskIsToldAndNothingIsLost()
{
    StoreScenario scenario(m_folder.filePath(QStringLiteral("full.kproj")));
    QVERIFY(QFile::copy(m_base, scenario.path()));
    QVERIFY(scenario.open());
    AxisTable* axis = recordsOf(scenario.project()->axisModel()).front();
    QSignalSpy spy(scenario.project(), &AbstractProjectModel::storeFailed);
    FaultVfs::failNth(FaultVfs::Operation::Write, 1, true, SQLITE_FULL);
    QVERIFY(!scenario.saveAxis(0, 5));
    QVERIFY(axis->modified);
    QVERIFY(scenario.project()->isModified());
    QCOMPARE(spy.size(), 1);
    const QString text = spy.at(0).at(0).toString();
    QVERIFY2(text.contains(scenario.path()) && text.contains(QLatin1String("the disk is full"))
            && text.contains(QLatin1String("Axis0")),
        qPrintable(text));
    QVERIFY(!scenario.saveAxis(0, 6));
    QVERIFY(FaultVfs::stopFailing());
    QVERIFY(scenario.saveAxis(0, 7));
    QVERIFY(!axis->modified);
    QVERIFY(scenario.open());
    QCOMPARE(scenario.stateOf(0), 7);
    QCOMPARE(scenario.stateOf(1), 0);
}

void StoreFaultTest::aFailedSaveOfTheProjectKeepsEverythingModified()
{
    StoreScenario scenario(m_folder.filePath(QStringLiteral("project.kproj")));
    QVERIFY(QFile::copy(m_base, scenario.path()));
    QVERIFY(scenario.open());
    AxisModel* model = scenario.project()->axisModel();
    model->addAxisTable(QStringLiteral("New"));
    QSignalSpy spy(scenario.project(), &AbstractProjectModel::storeFailed);
    FaultVfs::failNth(FaultVfs::Operation::Sync, 1, true);
    QVERIFY(!scenario.saveProject(3));
    QVERIFY(FaultVfs::stopFailing());
    QVERIFY(scenario.error().startsWith(scenario.path()));
    QCOMPARE(spy.size(), 1);
    for (const AxisTable* each : recordsOf(model))
        QVERIFY(each->modified);
    QVERIFY(scenario.saveProject(4));
    QVERIFY(scenario.open());
    QCOMPARE(namesOf(scenario.project()->axisModel()).last(), QStringLiteral("New"));
    QCOMPARE(scenario.stateOf(3), 4);
}

void StoreFaultTest::whatAnEditorCorrectedCountsAsAChangeOnceItCouldNotBeStored_data()
{
    QTest::addColumn<bool>("view");
    QTest::newRow("a parameter") << false;
    QTest::newRow("the names of its controls") << true;
}

void StoreFaultTest::whatAnEditorCorrectedCountsAsAChangeOnceItCouldNotBeStored()
{
    QFETCH(bool, view);
    const QString path = m_folder.filePath(QStringLiteral("corrected%1.kproj").arg(view));
    QVERIFY(QFile::copy(m_base, path));
    StoreScenario scenario(path);
    QVERIFY(scenario.open());
    AxisTable* axis = recordsOf(scenario.project()->axisModel()).front();
    axis->pageBuild = true;
    if (view)
        axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("lineEditPos"));
    else
        axis->setProperty(QStringLiteral("OutputPin"), QStringLiteral("3"));
    axis->pageBuild = false;
    QVERIFY(!axis->modified);
    FaultVfs::failNth(FaultVfs::Operation::Write, 1, true);
    QVERIFY(!axis->save());
    QVERIFY(FaultVfs::stopFailing());
    QVERIFY(axis->modified);
    QVERIFY(axis->save());
    QVERIFY(!axis->modified);
}

void StoreFaultTest::aFailedCopyLeavesNothingBehind()
{
    StoreScenario scenario(m_folder.filePath(QStringLiteral("original.kproj")));
    QVERIFY(QFile::copy(m_base, scenario.path()));
    const QString target = m_folder.filePath(QStringLiteral("target.kproj"));
    int failures = 0;
    for (int n = 1;; ++n) {
        writeBytes(target, "what was there");
        QVERIFY(scenario.open());
        AxisTable* axis = recordsOf(scenario.project()->axisModel()).front();
        axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
        QString error;
        FaultVfs::failNth(FaultVfs::Operation::Write, n, true, SQLITE_FULL);
        const bool done = ProjectModelManager::instance()->saveProjectAs(scenario.project(), target, &error);
        if (!FaultVfs::stopFailing())
            break;
        ++failures;
        if (!done) {
            QVERIFY(error.startsWith(target));
            QCOMPARE(scenario.project()->filePath(), scenario.path());
            QVERIFY(axis->modified);
            QVERIFY(!QFile::exists(target + QStringLiteral(".part")));
        }
    }
    QVERIFY(failures > 5);
    QCOMPARE(scenario.project()->filePath(), target);
}

void StoreFaultTest::aFailedCreationLeavesNothingBehind()
{
    QTemporaryDir folder;
    StoreScenario scenario(folder.filePath(QStringLiteral("new.kproj")));
    int failures = 0;
    for (int n = 1;; ++n) {
        QString error;
        FaultVfs::failNth(FaultVfs::Operation::Write, n, true, SQLITE_FULL);
        const ProjectModel* made = ProjectModelManager::instance()->createProject(
            scenario.path(), shippedController(QStringLiteral("KM1_M16")), &error);
        if (!FaultVfs::stopFailing())
            break;
        ++failures;
        if (!made) {
            QVERIFY(error.startsWith(scenario.path()));
            QVERIFY(!QFile::exists(scenario.path() + QStringLiteral(".part")));
            if (QFile::exists(scenario.path()))
                QVERIFY2(scenario.open(), qPrintable(scenario.error()));
        } else {
            ProjectModelManager::instance()->closeProject(const_cast<ProjectModel*>(made));
        }
        scenario.close();
        QFile::remove(scenario.path());
    }
    QVERIFY(failures > 5);
}

QTEST_GUILESS_MAIN(StoreFaultTest)
#include "StoreFaultTest.moc"
