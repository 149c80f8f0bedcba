#include "tests/projectmodel/CommandSpy.h"
#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "host/projectmodel/ModelRemoveCommand.h"

#include <QtTest>

class ModelRemoveCommandTest : public QObject {
    Q_OBJECT

private slots:
    void bothOrdersOfPushAndRemoval_data();
    void bothOrdersOfPushAndRemoval();
    void aMacroBringsAllRecordsBackInOneStep();
    void theCommandIsAnInsertCommand();
    void aCommandThatIsNeverPushedChangesNothing();
};

void ModelRemoveCommandTest::bothOrdersOfPushAndRemoval_data()
{
    QTest::addColumn<bool>("pushFirst");
    QTest::newRow("the push comes before the removal") << true;
    QTest::newRow("the push comes after the removal") << false;
}

void ModelRemoveCommandTest::bothOrdersOfPushAndRemoval()
{
    QFETCH(bool, pushFirst);
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisModel* model = project.axisModel();
    AxisTable* axis = project.addAxis(QStringLiteral("A"));
    auto* command = new ModelRemoveCommand(axis, model);
    if (pushFirst) {
        spy.host.viewHelper.pushCommand(command);
        QCOMPARE(recordsOf(model).size(), std::size_t(1));
        QVERIFY(model->removeAxisTable(axis));
    } else {
        QVERIFY(model->removeAxisTable(axis));
        spy.host.viewHelper.pushCommand(command);
    }
    QVERIFY(recordsOf(model).empty());
    QCOMPARE(spy.takeReports(), QString());

    for (int round = 0; round < 3; ++round) {
        spy.stack().undo();
        QCOMPARE(model->axisTable(1), axis);
        QCOMPARE(spy.takeReports(), QStringLiteral("PROJECT_MODEL_STACK_INSERT,AxisModel,1,"));
        spy.stack().redo();
        QVERIFY(recordsOf(model).empty());
        QCOMPARE(spy.takeReports(), QStringLiteral("PROJECT_MODEL_STACK_REMOVE,AxisModel,1,"));
    }
}

void ModelRemoveCommandTest::aMacroBringsAllRecordsBackInOneStep()
{
    CommandSpy spy;
    TestProject project(QStringLiteral("KM1_M16"));
    AxisModel* model = project.axisModel();
    for (const char* name : { "A", "B", "C" })
        project.addAxis(QLatin1String(name));
    spy.host.viewHelper.beginMacro();
    const std::vector<AxisTable*> records = recordsOf(model);
    for (auto it = records.rbegin(); it != records.rend(); ++it) {
        auto* command = new ModelRemoveCommand(*it, model);
        QVERIFY(model->removeAxisTable(*it));
        spy.host.viewHelper.pushCommand(command);
    }
    spy.host.viewHelper.endMacro();
    QVERIFY(recordsOf(model).empty());
    QCOMPARE(spy.stack().count(), 1);
    spy.stack().undo();
    QCOMPARE(namesOf(model).join(QLatin1Char(' ')), QStringLiteral("A B C"));
    QCOMPARE(valuesOf(model, QStringLiteral("AxisNo")).join(QLatin1Char(' ')), QStringLiteral("0 1 2"));
    QCOMPARE(spy.reports.size(), 3);
    spy.stack().redo();
    QVERIFY(recordsOf(model).empty());
    QCOMPARE(spy.reports.size(), 6);
}

void ModelRemoveCommandTest::theCommandIsAnInsertCommand()
{
    TestProject project(QStringLiteral("KM1_M16"));
    QUndoCommand* command = new ModelRemoveCommand(project.addAxis(QStringLiteral("A")), project.axisModel());
    QVERIFY(dynamic_cast<ModelInsertCommand*>(command));
    delete command;
}

void ModelRemoveCommandTest::aCommandThatIsNeverPushedChangesNothing()
{
    TestProject project(QStringLiteral("KM1_M16"));
    delete new ModelRemoveCommand(project.addAxis(QStringLiteral("A")), project.axisModel());
    QCOMPARE(recordsOf(project.axisModel()).size(), std::size_t(1));
}

QTEST_MAIN(ModelRemoveCommandTest)
#include "ModelRemoveCommandTest.moc"
