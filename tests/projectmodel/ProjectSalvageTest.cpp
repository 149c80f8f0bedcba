#include "tests/projectmodel/ProjectFacts.h"

#include "host/projectmodel/SourceModel.h"

#include <QTemporaryDir>
#include <QtTest>

/// What is rescued from damaged files.
class ProjectSalvageTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aWholeFileIsRescuedWhole();
    void aDamagedRecordIsLeftOutAndTheOthersAreRescued();
    void aDamagedSourceOrSettingIsLeftOut();
    void aDamagedDescriptionIsLeftOut();
    void aDamagedMarkDoesNotHinder();
    void aFileThatWasCutOffGivesWhatIsLeft();
    void whatLiesInALogIsRescuedToo();
    void aFileThatIsNothingGivesNothing_data();
    void aFileThatIsNothingGivesNothing();
    void anExistingFileIsNotReplaced();
    void noDamageOfAByteCrashesTheRescue();

private:
    static constexpr int axes = 40;

    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    void damage(const QByteArray& text);
    int salvage();
    ProjectModel* openRescued();

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_error;
};

void ProjectSalvageTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_error.clear();
    ProjectModelManager* manager = ProjectModelManager::instance();
    ProjectModel* project
        = manager->createProject(path("bad.kproj"), shippedController(QStringLiteral("KM1_M16")), &m_error);
    QVERIFY2(project, qPrintable(m_error));
    for (int i = 0; i < axes; ++i) {
        AxisTable* axis = project->axisModel()->addAxisTable(QStringLiteral("Station%1").arg(i));
        axis->setProperty(QStringLiteral("Note"), QStringLiteral("note %1.").arg(i));
        axis->setViewInfo(QStringLiteral("View"), QStringLiteral("view %1.").arg(i));
    }
    project->sourceModel()->setSource(QStringLiteral("Main"), QStringLiteral("PROGRAM Main END_PROGRAM"));
    project->sourceModel()->setSource(QStringLiteral("Other"), QStringLiteral("PROGRAM Other END_PROGRAM"));
    project->setSetting(QStringLiteral("Author"), QStringLiteral("Somebody"));
    project->setSetting(QStringLiteral("Company"), QStringLiteral("Some company"));
    QVERIFY(project->save(&m_error));
    QVERIFY(manager->saveProjectAs(project, path("damaged.kproj"), &m_error));
    manager->closeProject(project);
}

void ProjectSalvageTest::cleanup()
{
    const QVector<ProjectModel*> left = ProjectModelManager::instance()->projects();
    for (ProjectModel* each : left)
        ProjectModelManager::instance()->closeProject(each);
    m_folder.reset();
}

/// Changes a byte of each place at which the text stands, and shows that the file no longer opens.
void ProjectSalvageTest::damage(const QByteArray& text)
{
    QByteArray bytes = bytesOf(path("damaged.kproj"));
    QVERIFY(bytes.contains(text));
    QByteArray changed = text;
    changed[text.size() / 2] = static_cast<char>(changed.at(text.size() / 2) ^ 1);
    writeBytes(path("damaged.kproj"), bytes.replace(text, changed));
    QVERIFY(!ProjectModelManager::instance()->openProject(path("damaged.kproj"), &m_error));
}

int ProjectSalvageTest::salvage()
{
    const QByteArray before = bytesOf(path("damaged.kproj"));
    const int count
        = ProjectModelManager::instance()->salvageProject(path("damaged.kproj"), path("rescued.kproj"), &m_error);
    return bytesOf(path("damaged.kproj")) == before ? count : -2;
}

ProjectModel* ProjectSalvageTest::openRescued()
{
    return ProjectModelManager::instance()->openProject(path("rescued.kproj"), &m_error);
}

void ProjectSalvageTest::aWholeFileIsRescuedWhole()
{
    QCOMPARE(salvage(), int(axes));
    const ProjectModel* project = openRescued();
    QVERIFY2(project, qPrintable(m_error));
    QCOMPARE(recordsOf(project->axisModel()).size(), std::size_t(axes));
    QCOMPARE(project->sourceModel()->sourceNames().size(), 2);
    QCOMPARE(project->setting(QStringLiteral("Author"), QString()), QStringLiteral("Somebody"));
    QCOMPARE(project->controller().model(), QStringLiteral("KM1_M16"));
}

void ProjectSalvageTest::aDamagedRecordIsLeftOutAndTheOthersAreRescued()
{
    damage("note 7.");
    damage("view 9.");
    QCOMPARE(salvage(), axes - 2);
    const ProjectModel* project = openRescued();
    QVERIFY2(project, qPrintable(m_error));
    QVERIFY(!project->axisModel()->axisTable(8));
    QVERIFY(!project->axisModel()->axisTable(10));
    const AxisTable* axis = project->axisModel()->axisTable(9);
    QCOMPARE(axis->name(), QStringLiteral("Station8"));
    QCOMPARE(axis->property(QStringLiteral("Note"), QString()), QStringLiteral("note 8."));
    QCOMPARE(axis->getViewInfo(QStringLiteral("View"), QString()), QStringLiteral("view 8."));
}

void ProjectSalvageTest::aDamagedSourceOrSettingIsLeftOut()
{
    damage("PROGRAM Other END_PROGRAM");
    damage("Some company");
    QCOMPARE(salvage(), int(axes));
    const ProjectModel* project = openRescued();
    QVERIFY2(project, qPrintable(m_error));
    QCOMPARE(project->sourceModel()->sourceNames(), QStringList{ QStringLiteral("Main") });
    QCOMPARE(project->setting(QStringLiteral("Company"), QStringLiteral("none")), QStringLiteral("none"));
    QCOMPARE(project->setting(QStringLiteral("Author"), QString()), QStringLiteral("Somebody"));
}

void ProjectSalvageTest::aDamagedDescriptionIsLeftOut()
{
    damage("\"MaxAxis\": 16");
    QCOMPARE(salvage(), int(axes));
    ProjectModel* project = openRescued();
    QVERIFY2(project, qPrintable(m_error));
    QVERIFY(project->controller().isNull());
    QVERIFY(project->axisModel()->getMaxAxisNumber().isEmpty());
    project->changeController(shippedController(QStringLiteral("KM1_M16")));
    QVERIFY(project->save(&m_error));
    ProjectModelManager::instance()->closeProject(project);
    project = openRescued();
    QVERIFY2(project, qPrintable(m_error));
    QCOMPARE(project->controller().model(), QStringLiteral("KM1_M16"));
}

void ProjectSalvageTest::aDamagedMarkDoesNotHinder()
{
    damage("SQLite format 3");
    QCOMPARE(salvage(), int(axes));
    QVERIFY2(openRescued(), qPrintable(m_error));
}

void ProjectSalvageTest::aFileThatWasCutOffGivesWhatIsLeft()
{
    QByteArray bytes = bytesOf(path("damaged.kproj"));
    bytes.truncate(bytes.size() * 3 / 4);
    writeBytes(path("damaged.kproj"), bytes);
    const int count = salvage();
    QVERIFY2(count >= 0 && count < axes, qPrintable(m_error));
    const ProjectModel* project = openRescued();
    QVERIFY2(project, qPrintable(m_error));
    for (const AxisTable* each : recordsOf(project->axisModel()))
        QCOMPARE(each->property(QStringLiteral("Note"), QString()), QStringLiteral("note %1.").arg(each->id() - 1));
}

void ProjectSalvageTest::whatLiesInALogIsRescuedToo()
{
    ProjectModel* project = ProjectModelManager::instance()->openProject(path("damaged.kproj"), &m_error);
    QVERIFY2(project, qPrintable(m_error));
    AxisTable* axis = project->axisModel()->axisTable(3);
    axis->setProperty(QStringLiteral("Note"), QStringLiteral("latest"));
    QVERIFY(axis->save());
    const QByteArray log = bytesOf(path("damaged.kproj-wal"));
    const QByteArray bytes = bytesOf(path("damaged.kproj"));
    ProjectModelManager::instance()->closeProject(project);
    writeBytes(path("damaged.kproj"), bytes);
    writeBytes(path("damaged.kproj-wal"), log);
    QCOMPARE(salvage(), int(axes));
    project = openRescued();
    QVERIFY2(project, qPrintable(m_error));
    QCOMPARE(project->axisModel()->axisTable(3)->property(QStringLiteral("Note"), QString()), QStringLiteral("latest"));
}

void ProjectSalvageTest::aFileThatIsNothingGivesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("a text") << QByteArray("once upon a time");
    QTest::newRow("pages of zeros") << QByteArray(16384, '\0');
}

void ProjectSalvageTest::aFileThatIsNothingGivesNothing()
{
    QFETCH(QByteArray, bytes);
    writeBytes(path("damaged.kproj"), bytes);
    QCOMPARE(salvage(), -1);
    QVERIFY2(m_error.startsWith(path("damaged.kproj") + QStringLiteral(": ")), qPrintable(m_error));
    QVERIFY(!QFile::exists(path("rescued.kproj")));
    QCOMPARE(ProjectModelManager::instance()->salvageProject(path("none.kproj"), path("rescued.kproj"), &m_error), -1);
    QVERIFY(m_error.startsWith(path("none.kproj")));
}

void ProjectSalvageTest::anExistingFileIsNotReplaced()
{
    writeBytes(path("rescued.kproj"), "mine");
    QCOMPARE(salvage(), -1);
    QVERIFY(m_error.startsWith(path("rescued.kproj")));
    QCOMPARE(bytesOf(path("rescued.kproj")), QByteArray("mine"));
}

void ProjectSalvageTest::noDamageOfAByteCrashesTheRescue()
{
    const QByteArray bytes = bytesOf(path("damaged.kproj"));
    int rescued = 0;
    for (int i = 0; i < 100; ++i) {
        QByteArray damaged = bytes;
        // A third of the places lie in the first page, where the file's structure is described.
        const int place = i % 3 == 0 ? i * 40 : static_cast<int>(qint64(bytes.size()) * i / 100);
        damaged[place] = static_cast<char>(~damaged.at(place));
        writeBytes(path("damaged.kproj"), damaged);
        QFile::remove(path("rescued.kproj"));
        const int count = salvage();
        QVERIFY(count >= -1 && count <= axes);
        rescued += count >= axes - 2 ? 1 : 0;
    }
    QVERIFY2(rescued > 60, qPrintable(QString::number(rescued)));
}

QTEST_GUILESS_MAIN(ProjectSalvageTest)
#include "ProjectSalvageTest.moc"
