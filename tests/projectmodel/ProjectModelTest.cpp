#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "host/projectmodel/SourceModel.h"

#include <QSignalSpy>
#include <QtTest>

class ProjectModelTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aNewProjectIsNotModified();
    void settingsAreStoredWithTheProject();
    void theProgramStyleIsASetting();
    void everyKindOfChangeMakesTheProjectModified_data();
    void everyKindOfChangeMakesTheProjectModified();
    void takingAChangeBackLeavesTheProjectUnmodified();
    void theSaveStoresEverythingAtOnce();
    void aChangeOfControllerIsAnnouncedOnce();
    void modificationIsAnnouncedWhenItChangesOnly();

private:
    ProjectModel* model() const { return m_project->model(); }

    std::unique_ptr<TestProject> m_project;
};

void ProjectModelTest::init()
{
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
}

void ProjectModelTest::cleanup()
{
    m_project.reset();
}

void ProjectModelTest::aNewProjectIsNotModified()
{
    QVERIFY(!model()->isModified());
    QVERIFY(!model()->isReadOnly());
    QCOMPARE(model()->filePath(), m_project->filePath());
    QCOMPARE(model()->name(), QStringLiteral("Line"));
    QCOMPARE(model()->controller().model(), QStringLiteral("NV3T_70Q12"));
}

void ProjectModelTest::settingsAreStoredWithTheProject()
{
    model()->setSetting(QStringLiteral("Author"), QStringLiteral("\u674e"));
    model()->setSetting(QStringLiteral("Company"), QString());
    m_project->save();
    m_project->reopen();
    QCOMPARE(model()->setting(QStringLiteral("Author"), QString()), QStringLiteral("\u674e"));
    QCOMPARE(model()->setting(QStringLiteral("Company"), QStringLiteral("none")), QString());
    QCOMPARE(model()->setting(QStringLiteral("Description"), QStringLiteral("none")), QStringLiteral("none"));
}

void ProjectModelTest::theProgramStyleIsASetting()
{
    QCOMPARE(model()->programStyle(), 0);
    model()->setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
    QCOMPARE(model()->programStyle(), 1);
    m_project->save();
    m_project->reopen();
    QCOMPARE(model()->programStyle(), 1);
}

void ProjectModelTest::everyKindOfChangeMakesTheProjectModified_data()
{
    QTest::addColumn<QString>("change");
    for (const char* change : { "a property", "a new axis", "a removed axis", "a renamed axis", "a setting",
             "a new source", "a changed source", "a removed source", "the cycle time", "the controller" })
        QTest::newRow(change) << QString::fromLatin1(change);
}

void ProjectModelTest::everyKindOfChangeMakesTheProjectModified()
{
    QFETCH(QString, change);
    AxisTable* axis = m_project->addAxis(QStringLiteral("A"));
    m_project->addSource(QStringLiteral("Main"), QStringLiteral("PROGRAM Main END_PROGRAM"));
    m_project->save();
    QVERIFY(!model()->isModified());
    QSignalSpy spy(model(), &ProjectModel::modifiedChanged);
    QString cycleTime = QStringLiteral("500");
    if (change == QLatin1String("a property"))
        axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    else if (change == QLatin1String("a new axis"))
        m_project->axisModel()->addAxisTable(QStringLiteral("B"));
    else if (change == QLatin1String("a removed axis"))
        m_project->axisModel()->removeAxisTable(axis);
    else if (change == QLatin1String("a renamed axis"))
        m_project->axisModel()->renameAxisTable(axis->id(), QStringLiteral("B"));
    else if (change == QLatin1String("a setting"))
        model()->setSetting(QStringLiteral("Author"), QStringLiteral("x"));
    else if (change == QLatin1String("a new source"))
        m_project->addSource(QStringLiteral("Other"), QStringLiteral("x"));
    else if (change == QLatin1String("a changed source"))
        m_project->addSource(QStringLiteral("Main"), QStringLiteral("x"));
    else if (change == QLatin1String("a removed source"))
        QVERIFY(model()->sourceModel()->removeSource(QStringLiteral("Main")));
    else if (change == QLatin1String("the cycle time"))
        m_project->axisModel()->setMotionTaskCfgCycleTime(cycleTime);
    else
        m_project->changeController(QStringLiteral("KM1_M16"));
    QVERIFY(model()->isModified());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toBool(), true);
    m_project->save();
    QVERIFY(!model()->isModified());
    QCOMPARE(spy.size(), 2);
}

void ProjectModelTest::takingAChangeBackLeavesTheProjectUnmodified()
{
    model()->setSetting(QStringLiteral("Author"), QStringLiteral("a"));
    m_project->addSource(QStringLiteral("Main"), QStringLiteral("x"));
    m_project->save();
    model()->setSetting(QStringLiteral("Author"), QStringLiteral("b"));
    model()->setSetting(QStringLiteral("Author"), QStringLiteral("a"));
    m_project->addSource(QStringLiteral("Main"), QStringLiteral("y"));
    m_project->addSource(QStringLiteral("Main"), QStringLiteral("x"));
    QVERIFY(!model()->isModified());
}

void ProjectModelTest::theSaveStoresEverythingAtOnce()
{
    AxisTable* axis = m_project->addAxis(QStringLiteral("A"), QStringLiteral("Axis_Pulse"));
    m_project->addAxis(QStringLiteral("B"));
    axis->setViewInfo(QStringLiteral("View"), QStringLiteral("v"));
    m_project->addSource(QStringLiteral("Main"), QStringLiteral("x"));
    model()->setSetting(QStringLiteral("Author"), QStringLiteral("a"));
    m_project->changeController(QStringLiteral("KM1_M16"));
    m_project->save();
    QVERIFY(!axis->modified);
    m_project->reopen();
    QCOMPARE(namesOf(m_project->axisModel()).join(QLatin1Char(' ')), QStringLiteral("A B"));
    axis = m_project->axisModel()->axisTable(1);
    QCOMPARE(axis->property(QStringLiteral("AxisType"), QString()), QStringLiteral("Axis_Pulse"));
    QCOMPARE(axis->getViewInfo(QStringLiteral("View"), QString()), QStringLiteral("v"));
    QCOMPARE(model()->sourceModel()->source(QStringLiteral("Main")), QStringLiteral("x"));
    QCOMPARE(model()->setting(QStringLiteral("Author"), QString()), QStringLiteral("a"));
    QCOMPARE(model()->controller().model(), QStringLiteral("KM1_M16"));
}

void ProjectModelTest::aChangeOfControllerIsAnnouncedOnce()
{
    QSignalSpy spy(model(), &ProjectModel::controllerChanged);
    m_project->changeController(QStringLiteral("KM1_M16"));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(model()->controller().model(), QStringLiteral("KM1_M16"));
    QCOMPARE(model()->controller().json(), shippedController(QStringLiteral("KM1_M16")).json());
}

void ProjectModelTest::modificationIsAnnouncedWhenItChangesOnly()
{
    QSignalSpy spy(model(), &ProjectModel::modifiedChanged);
    AxisTable* axis = m_project->addAxis(QStringLiteral("A"));
    axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    model()->setSetting(QStringLiteral("Author"), QStringLiteral("a"));
    QCOMPARE(spy.size(), 1);
    QVERIFY(axis->save());
    QVERIFY(model()->isModified());
    QCOMPARE(spy.size(), 1);
    m_project->save();
    QCOMPARE(spy.size(), 2);
}

QTEST_GUILESS_MAIN(ProjectModelTest)
#include "ProjectModelTest.moc"
