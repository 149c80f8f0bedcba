#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "host/projectmodel/SafeProjectModel.h"

#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

class SafeProjectModelTest : public QObject {
    Q_OBJECT

private slots:
    void nullHoldsNothing();
    void anUnknownNameHoldsNothing();
    void anOpenProjectIsFoundByItsName();
    void aProjectThatIsClosedInsideAGuardDiesWithTheLastGuard();
    void aProjectThatIsClosedInsideAGuardIsNotFoundAnyMore();
    void aProjectThatIsStillClosingIsNotOpenedASecondTime();
    void guardsOnSeveralProjectsAreIndependent();
    void theModelsAreReachedByName();
};

void SafeProjectModelTest::nullHoldsNothing()
{
    const SafeProjectModel guard(static_cast<AbstractProjectModel*>(nullptr));
    QVERIFY(!guard);
    QVERIFY(!guard.model());
}

void SafeProjectModelTest::anUnknownNameHoldsNothing()
{
    QVERIFY(!SafeProjectModel(QStringLiteral("NoSuchProject")));
    QVERIFY(!SafeProjectModel(QString()));
}

void SafeProjectModelTest::anOpenProjectIsFoundByItsName()
{
    const TestProject project(QStringLiteral("KM1_M16"));
    const SafeProjectModel guard(project.name());
    QVERIFY(guard);
    QCOMPARE(guard.model(), project.model());
    QCOMPARE(guard->name(), project.name());
    QVERIFY(!SafeProjectModel(project.name().toUpper()));
}

void SafeProjectModelTest::aProjectThatIsClosedInsideAGuardDiesWithTheLastGuard()
{
    TestProject project(QStringLiteral("KM1_M16"));
    const QPointer<ProjectModel> model = project.model();
    AxisTable* axis = project.addAxis(QStringLiteral("A"));
    {
        const SafeProjectModel outer(model.data());
        {
            const SafeProjectModel inner(project.name());
            project.close();
            QVERIFY(model);
            QCOMPARE(axis->name(), QStringLiteral("A"));
        }
        QVERIFY(model);
        axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
        QVERIFY(axis->save());
    }
    QVERIFY(!model);
    project.reopen();
    QCOMPARE(project.axisModel()->axisTable(1)->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
}

void SafeProjectModelTest::aProjectThatIsClosedInsideAGuardIsNotFoundAnyMore()
{
    TestProject project(QStringLiteral("KM1_M16"));
    ProjectModel* model = project.model();
    const SafeProjectModel guard(model);
    QSignalSpy spy(ProjectModelManager::instance(), &ProjectModelManager::projectAboutToClose);
    project.close();
    QCOMPARE(spy.size(), 1);
    QVERIFY(!SafeProjectModel(project.name()));
    QVERIFY(ProjectModelManager::instance()->projects().isEmpty());
    ProjectModelManager::instance()->closeProject(model);
    QCOMPARE(spy.size(), 1);
}

void SafeProjectModelTest::aProjectThatIsStillClosingIsNotOpenedASecondTime()
{
    TestProject project(QStringLiteral("KM1_M16"));
    QString error;
    {
        const SafeProjectModel guard(project.model());
        project.close();
        QVERIFY(!ProjectModelManager::instance()->openProject(project.filePath(), &error));
        QVERIFY(error.startsWith(project.filePath()));
    }
    project.reopen();
}

void SafeProjectModelTest::guardsOnSeveralProjectsAreIndependent()
{
    TestProject first(QStringLiteral("KM1_M16"), QStringLiteral("First"));
    TestProject second(QStringLiteral("KM1_M16"), QStringLiteral("Second"));
    const QPointer<ProjectModel> firstModel = first.model();
    const QPointer<ProjectModel> secondModel = second.model();
    const SafeProjectModel guard(first.name());
    second.close();
    QVERIFY(!secondModel);
    first.close();
    QVERIFY(firstModel);
}

void SafeProjectModelTest::theModelsAreReachedByName()
{
    const TestProject project(QStringLiteral("KM1_M16"));
    ProjectModelManager* manager = ProjectModelManager::instance();
    AbstractProjectModel* model = manager->projectModel(project.name().toStdString(), false);
    QCOMPARE(model, manager->projectModel(project.name().toStdString(), true));
    QVERIFY(qobject_cast<AxisModel*>(model->subModel("AxisModel")));
    QCOMPARE(model->subModel("AxisModel")->project(), model);
    QVERIFY(model->subModel("SourceModel"));
    QVERIFY(!model->subModel("axismodel"));
    QVERIFY(!model->subModel(""));
}

QTEST_GUILESS_MAIN(SafeProjectModelTest)
#include "SafeProjectModelTest.moc"
