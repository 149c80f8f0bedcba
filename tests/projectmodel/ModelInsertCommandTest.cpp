#include "tests/projectmodel/CommandSpy.h"
#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "host/projectmodel/ModelInsertCommand.h"

#include <QtTest>

class ModelInsertCommandTest : public QObject {
    Q_OBJECT

private slots:
    void thePushChangesAndReportsNothing();
    void undoTakesTheRecordOutAndReportsThatItHasLeft();
    void redoPutsTheSameRecordBack();
    void redoAfterRedo();
    void theModelIsChangedBeforeTheReport();
    void withoutAHostTheModelIsChangedAllTheSame();
    void aClosedProjectIsLeftAlone();
    void aNameTakenMeanwhileIsNotReported();
    void whatWasRedoneIsStoredWithTheProject();
};

void ModelInsertCommandTest::thePushChangesAndReportsNothing()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("A"));
    spy.host.viewHelper.pushCommand(new ModelInsertCommand(axis, project.axisModel()));
    QCOMPARE(recordsOf(project.axisModel()).size(), std::size_t(1));
    QCOMPARE(spy.takeReports(), QString());
    QCOMPARE(spy.stack().count(), 1);
}

void ModelInsertCommandTest::undoTakesTheRecordOutAndReportsThatItHasLeft()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    project.addAxis(QStringLiteral("A"));
    AxisTable* axis = project.addAxis(QStringLiteral("B"));
    spy.stack().push(new ModelInsertCommand(axis, project.axisModel()));
    spy.stack().undo();
    QCOMPARE(namesOf(project.axisModel()).join(QLatin1Char(' ')), QStringLiteral("A"));
    QCOMPARE(spy.takeReports(), QStringLiteral("PROJECT_MODEL_STACK_REMOVE,AxisModel,2,"));
}

void ModelInsertCommandTest::redoPutsTheSameRecordBack()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("A"));
    axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    spy.stack().push(new ModelInsertCommand(axis, project.axisModel()));
    spy.stack().undo();
    spy.takeReports();
    spy.stack().redo();
    QCOMPARE(project.axisModel()->axisTable(1), axis);
    QCOMPARE(axis->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
    QCOMPARE(spy.takeReports(), QStringLiteral("PROJECT_MODEL_STACK_INSERT,AxisModel,1,"));
}

void ModelInsertCommandTest::redoAfterRedo()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("A"));
    spy.stack().push(new ModelInsertCommand(axis, project.axisModel()));
    for (int round = 0; round < 3; ++round) {
        spy.stack().undo();
        QVERIFY(recordsOf(project.axisModel()).empty());
        spy.stack().redo();
        QCOMPARE(recordsOf(project.axisModel()).size(), std::size_t(1));
    }
    QCOMPARE(spy.reports.size(), 6);
}

void ModelInsertCommandTest::theModelIsChangedBeforeTheReport()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("A"));
    QVector<bool> inModel;
    connect(&spy.host.viewHelper, &Solution::ViewHelper::commandExecuted, this,
        [&] { inModel.append(project.axisModel()->axisTable(1) != nullptr); });
    spy.stack().push(new ModelInsertCommand(axis, project.axisModel()));
    spy.stack().undo();
    spy.stack().redo();
    QCOMPARE(inModel, (QVector<bool>{ false, true }));
}

void ModelInsertCommandTest::withoutAHostTheModelIsChangedAllTheSame()
{
    TestProject project(QStringLiteral("KM1_M16"));
    QUndoStack stack;
    stack.push(new ModelInsertCommand(project.addAxis(QStringLiteral("A")), project.axisModel()));
    stack.undo();
    QVERIFY(recordsOf(project.axisModel()).empty());
    stack.redo();
    QCOMPARE(recordsOf(project.axisModel()).size(), std::size_t(1));
}

void ModelInsertCommandTest::aClosedProjectIsLeftAlone()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    spy.stack().push(new ModelInsertCommand(project.addAxis(QStringLiteral("A")), project.axisModel()));
    project.close();
    spy.stack().undo();
    spy.stack().redo();
    QCOMPARE(spy.takeReports(), QString());
}

void ModelInsertCommandTest::aNameTakenMeanwhileIsNotReported()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    spy.stack().push(new ModelInsertCommand(project.addAxis(QStringLiteral("A")), project.axisModel()));
    spy.stack().undo();
    project.addAxis(QStringLiteral("A"));
    spy.takeReports();
    spy.stack().redo();
    QCOMPARE(recordsOf(project.axisModel()).size(), std::size_t(1));
    QCOMPARE(spy.takeReports(), QString());
}

void ModelInsertCommandTest::whatWasRedoneIsStoredWithTheProject()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisTable* axis = project.addAxis(QStringLiteral("A"));
    QVERIFY(axis->save());
    spy.stack().push(new ModelInsertCommand(axis, project.axisModel()));
    spy.stack().undo();
    project.save();
    spy.stack().redo();
    project.save();
    project.reopen();
    QCOMPARE(namesOf(project.axisModel()), QStringList{ QStringLiteral("A") });
}

QTEST_MAIN(ModelInsertCommandTest)
#include "ModelInsertCommandTest.moc"
