#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/RecordingTranslator.h"

#include <QtTest>

// The model refuses to let go of the axis of this name. The linker leads the plug-in's calls of
// AxisModel::removeAxisTable to the wrapper, since the model itself never refuses a record that it holds.
static QString heldAxis;

extern "C" bool __real__ZN9AxisModel15removeAxisTableEP9AxisTable(AxisModel* model, AxisTable* table);
extern "C" bool __wrap__ZN9AxisModel15removeAxisTableEP9AxisTable(AxisModel* model, AxisTable* table)
{
    return table->name() != heldAxis && __real__ZN9AxisModel15removeAxisTableEP9AxisTable(model, table);
}

/// "Delete All Axis" where the model refuses one of them, and "Delete Axis" where it refuses the only one.
class DeleteFailureTest : public QObject {
    Q_OBJECT

private slots:
    void init() { heldAxis = QStringLiteral("lift"); }
    void axisThatStaysIsToldAndTheOthersGo();
    void axisThatStaysIsToldInPlainContext();
    void singleDeletionDoesNotLookAtTheResult();
};

void DeleteFailureTest::axisThatStaysIsToldAndTheOthersGo()
{
    PluginFixture fixture;
    for (const char* name : { "feed", "lift", "turn" })
        fixture.addAxis(QString::fromLatin1(name));
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    MessageBoxWatcher boxes;
    boxes.answer(QStringLiteral("Yes"));
    boxes.answer(QStringLiteral("OK"));
    fixture.call("deleteAllAxis");

    QCOMPARE(boxes.count(), 2);
    QCOMPARE(boxes.boxes.last().title, QStringLiteral("Kestrun"));
    QCOMPARE(boxes.boxes.last().text, QStringLiteral("delete axis(lift) error!"));
    QCOMPARE(boxes.boxes.last().buttons, QStringList{ QStringLiteral("OK") });
    QVERIFY(!boxes.boxes.last().hasParent);
    QCOMPARE(fixture.axisNames(), QStringList{ QStringLiteral("lift") });
    QCOMPARE(fixture.shownAxes(), QStringList{ QStringLiteral("lift") });
    QCOMPARE(fixture.host.calls.count(QStringLiteral("viewHelper.pushCommand")), 2);
    QCOMPARE(fixture.host.viewHelper.stack.count(), 1);
}

void DeleteFailureTest::axisThatStaysIsToldInPlainContext()
{
    PluginFixture fixture;
    fixture.addAxis(QStringLiteral("lift"));
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    const RecordingTranslator translator;
    MessageBoxWatcher boxes;
    boxes.answer(QStringLiteral("MotionControlAxisPlugin|Yes"));
    fixture.call("deleteAllAxis");
    QCOMPARE(boxes.count(), 2);
    QCOMPARE(boxes.boxes.last().text, QStringLiteral("QObject|delete axis(lift) error!"));
    QCOMPARE(boxes.boxes.last().title, QStringLiteral("QObject|Kestrun"));
    QCOMPARE(boxes.boxes.last().buttons, QStringList{ QStringLiteral("QObject|OK") });
}

void DeleteFailureTest::singleDeletionDoesNotLookAtTheResult()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(QStringLiteral("lift"));
    fixture.send(fixture.pathOf(axis), Solution::NodeSelected);
    MessageBoxWatcher boxes;
    boxes.answer(QStringLiteral("Yes"));
    fixture.call("deleteAxis");
    QCOMPARE(boxes.count(), 1);
    QVERIFY(fixture.shownAxes().isEmpty());
    QCOMPARE(fixture.host.viewHelper.stack.count(), 1);
}

QTEST_MAIN(DeleteFailureTest)
#include "DeleteFailureTest.moc"
