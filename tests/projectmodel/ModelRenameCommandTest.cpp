#include "tests/projectmodel/CommandSpy.h"
#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "host/projectmodel/ModelRenameCommand.h"
#include "host/projectmodel/SourceModel.h"

#include <QtTest>

class ModelRenameCommandTest : public QObject {
    Q_OBJECT

private slots:
    void thePushChangesAndReportsNothing();
    void undoAndRedoRenameAndReportOldAndNewName();
    void aNameTakenMeanwhileIsNotReported();
    void aClosedProjectIsLeftAlone();
    void sourcesAreNoObjectsOfCommands();

private:
    static const QString separator;
};

const QString ModelRenameCommandTest::separator = QStringLiteral("[*PROJECT_MODEL_STACK*]");

void ModelRenameCommandTest::thePushChangesAndReportsNothing()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("New"));
    spy.stack().push(new ModelRenameCommand(axis, project.axisModel(), QStringLiteral("Old"), QStringLiteral("New")));
    QCOMPARE(axis->name(), QStringLiteral("New"));
    QCOMPARE(spy.takeReports(), QString());
}

void ModelRenameCommandTest::undoAndRedoRenameAndReportOldAndNewName()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("New"));
    const QString prefix = QStringLiteral("PROJECT_MODEL_STACK_RENAME,AxisModel,1,");
    spy.stack().push(new ModelRenameCommand(axis, project.axisModel(), QStringLiteral("Old"), QStringLiteral("New")));
    for (int round = 0; round < 3; ++round) {
        spy.stack().undo();
        QCOMPARE(axis->name(), QStringLiteral("Old"));
        QCOMPARE(spy.takeReports(), QString(prefix + QStringLiteral("New") + separator + QStringLiteral("Old")));
        spy.stack().redo();
        QCOMPARE(axis->name(), QStringLiteral("New"));
        QCOMPARE(spy.takeReports(), QString(prefix + QStringLiteral("Old") + separator + QStringLiteral("New")));
    }
}

void ModelRenameCommandTest::aNameTakenMeanwhileIsNotReported()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("New"));
    spy.stack().push(new ModelRenameCommand(axis, project.axisModel(), QStringLiteral("Old"), QStringLiteral("New")));
    project.addAxis(QStringLiteral("OLD"));
    spy.stack().undo();
    QCOMPARE(axis->name(), QStringLiteral("New"));
    QCOMPARE(spy.takeReports(), QString());
}

void ModelRenameCommandTest::aClosedProjectIsLeftAlone()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("New"));
    spy.stack().push(new ModelRenameCommand(axis, project.axisModel(), QStringLiteral("Old"), QStringLiteral("New")));
    project.close();
    spy.stack().undo();
    spy.stack().redo();
    QCOMPARE(spy.takeReports(), QString());
}

void ModelRenameCommandTest::sourcesAreNoObjectsOfCommands()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("New"));
    SubModel* sources = project.model()->sourceModel();
    spy.stack().push(new ModelRenameCommand(axis, sources, QStringLiteral("Old"), QStringLiteral("New")));
    spy.stack().undo();
    QCOMPARE(axis->name(), QStringLiteral("New"));
    QVERIFY(!sources->takeObject(axis));
    QVERIFY(!sources->putObjectBack(axis));
    QCOMPARE(spy.takeReports(), QString());
}

QTEST_MAIN(ModelRenameCommandTest)
#include "ModelRenameCommandTest.moc"
