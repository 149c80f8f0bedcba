#include "tests/plugin/DialogInput.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"

#include <QDialog>
#include <QtTest>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

} // namespace

/// A plug-in object that goes while one of its dialogs is open: the command ends when the dialog does.
class PluginLifetimeTest : public QObject {
    Q_OBJECT

private slots:
    void commandEndsWithTheObject_data();
    void commandEndsWithTheObject();
};

void PluginLifetimeTest::commandEndsWithTheObject_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("New Axis") << QByteArray("addNewAxis");
    QTest::newRow("Rename") << QByteArray("renameAxis");
    QTest::newRow("Delete Axis") << QByteArray("deleteAxis");
    QTest::newRow("Delete All Axis") << QByteArray("deleteAllAxis");
    QTest::newRow("Motion Control Task CFG") << QByteArray("motionControlTaskCfg");
}

void PluginLifetimeTest::commandEndsWithTheObject()
{
    QFETCH(QByteArray, slot);
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.send(slot == "deleteAllAxis" ? fixture.project.unitPath() : fixture.pathOf(axis), Solution::NodeSelected);
    fixture.host.calls.clear();
    MessageBoxWatcher boxes;
    boxes.meanwhile([&fixture] { fixture.plugin.reset(); });
    boxes.answer(text("Yes"));
    ModalDialogDriver dialogs([&](QDialog* dialog) {
        fixture.plugin.reset();
        if (slot == "motionControlTaskCfg")
            dialog->accept();
        else
            DialogInput::enter(dialog, text("lift"));
    });
    fixture.call(slot.constData());
    QVERIFY(!fixture.plugin);
    QCOMPARE(boxes.count() + dialogs.count, 1);
    QCOMPARE(fixture.axisNames(), QStringList{ text("feed") });
    QCOMPARE(fixture.shownAxes(), QStringList{ text("feed") });
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

QTEST_MAIN(PluginLifetimeTest)
#include "PluginLifetimeTest.moc"
