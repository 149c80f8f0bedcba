#include "tests/plugin/DialogInput.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/PopupMenuDriver.h"

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
    QTest::addColumn<bool>("onAxis");
    QTest::newRow("New Axis") << false;
    QTest::newRow("Motion Control Task CFG") << false;
    QTest::newRow("Delete All Axis") << false;
    QTest::newRow("Delete Axis") << true;
    QTest::newRow("Rename") << true;
}

void PluginLifetimeTest::commandEndsWithTheObject()
{
    QFETCH(bool, onAxis);
    const QString entry = text(QTest::currentDataTag());
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    PopupMenuDriver menus;
    menus.choose(entry);
    MessageBoxWatcher boxes;
    boxes.meanwhile([&fixture] { fixture.plugin.reset(); });
    boxes.answer(text("Yes"));
    ModalDialogDriver dialogs([&](QDialog* dialog) {
        fixture.plugin.reset();
        if (entry == text("Motion Control Task CFG"))
            dialog->accept();
        else
            DialogInput::enter(dialog, text("lift"));
    });
    fixture.send(onAxis ? fixture.pathOf(axis) : fixture.project.unitPath(), Solution::NodeContextMenu, QPoint(1, 1));
    QVERIFY(!fixture.plugin);
    QCOMPARE(menus.menus.size(), 1);
    QCOMPARE(boxes.count() + dialogs.count, 1);
    QCOMPARE(fixture.axisNames(), QStringList{ text("feed") });
    QCOMPARE(fixture.shownAxes(), QStringList{ text("feed") });
    QVERIFY(!fixture.host.viewHelper.stack.canUndo());
}

QTEST_MAIN(PluginLifetimeTest)
#include "PluginLifetimeTest.moc"
