#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"

#include <QtTest>

namespace {

const QString insertType = QStringLiteral("PROJECT_MODEL_STACK_INSERT");
const QString removeType = QStringLiteral("PROJECT_MODEL_STACK_REMOVE");
const QString renameType = QStringLiteral("PROJECT_MODEL_STACK_RENAME");
const QString axisModelName = QStringLiteral("AxisModel");

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

void report(PluginFixture& fixture, const QString& type, const QString& subModel, const QString& path,
    const QString& param = QString())
{
    fixture.host.calls.clear();
    emit fixture.host.viewHelper.commandExecuted(type, subModel, path, param);
}

} // namespace

/// How the tree follows what the undo stack has done to the model.
class AxisTreeSyncTest : public QObject {
    Q_OBJECT

private slots:
    void removedRecordLosesItsNode();
    void insertedRecordGetsItsNodeInItsRow_data();
    void insertedRecordGetsItsNodeInItsRow();
    void renamedRecordGetsItsTextAndLosesItsEditor();
    void renameNeedsExactlyTwoNames_data();
    void renameNeedsExactlyTwoNames();
    void otherCommandsLeaveTheTreeAlone_data();
    void otherCommandsLeaveTheTreeAlone();
    void followingEndsSilentlyWithout_data();
    void followingEndsSilentlyWithout();
    void renameWithoutEditorManagerStillChangesTheText();
    void onlineDoesNotHoldItUp();
};

void AxisTreeSyncTest::removedRecordLosesItsNode()
{
    PluginFixture fixture;
    AxisTable* axis = fixture.addAxis(text("feed"));
    QVERIFY(fixture.project.axisModel()->removeAxisTable(axis));
    report(fixture, removeType, axisModelName, text("1"));
    QCOMPARE(fixture.host.calls.entries(),
        (QStringList{ text("view.nodePathOfKey(AxisNode, 1)"),
            text("view.removeNode(Line.ConfigAndSetup.Axis.AxisView1, true)") }));
    QVERIFY(fixture.shownAxes().isEmpty());
}

void AxisTreeSyncTest::insertedRecordGetsItsNodeInItsRow_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<int>("expected");
    QTest::newRow("no row") << QString() << 0;
    QTest::newRow("first row") << "0" << 0;
    QTest::newRow("second row") << "1" << 1;
    QTest::newRow("past the end") << "9" << 9;
    QTest::newRow("no number") << "x" << 0;
}

void AxisTreeSyncTest::insertedRecordGetsItsNodeInItsRow()
{
    QFETCH(QString, row);
    QFETCH(int, expected);
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    fixture.addAxis(text("lift"));
    AxisTable* axis = fixture.project.addAxis(text("turn"));
    if (!row.isNull())
        axis->setProperty(text("Row"), row);
    report(fixture, insertType, axisModelName, text("3"));
    QCOMPARE(fixture.host.calls.entries(),
        QStringList{ text("view.insertNode(Line.ConfigAndSetup.Axis, %1, AxisView3)").arg(expected) });
    QCOMPARE(fixture.shownAxes().indexOf(text("turn")), qMin(expected, 2));
    const Solution::NodeDescription* node = fixture.host.view.node(fixture.pathOf(axis));
    QCOMPARE(node->properties,
        (QMap<QString, QVariant>{ { text("FileName"), fixture.pathOf(axis) }, { text("MimeType"), text("AxisView") },
            { text("NodeType"), text("AxisNode") }, { text("DataBaseKey"), 3u } }));
    QVERIFY(!node->checkable && node->visible && !node->color.isValid());
}

void AxisTreeSyncTest::renamedRecordGetsItsTextAndLosesItsEditor()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
    report(fixture, renameType, axisModelName, text("1"), text("feed[*PROJECT_MODEL_STACK*]lift"));
    const QString path = fixture.pathOf(axis);
    QCOMPARE(fixture.host.calls.entries(),
        (QStringList{ text("view.nodePathOfKey(AxisNode, 1)"),
            text("view.setNodeProperty(%1, DisplayName, lift)").arg(path),
            text("view.nodeProperty(%1, FileName)").arg(path), text("application.manager(editor)"),
            text("editorManager.findEditor(%1, true)").arg(path), text("editorManager.closeEditor(%1)").arg(path) }));
    QCOMPARE(fixture.host.view.lastFallback, QVariant(QString()));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
}

void AxisTreeSyncTest::renameNeedsExactlyTwoNames_data()
{
    QTest::addColumn<QString>("param");
    QTest::addColumn<QString>("shown");
    QTest::newRow("no separator") << "lift"
                                  << "feed";
    QTest::newRow("nothing") << ""
                             << "feed";
    QTest::newRow("separator twice") << "a[*PROJECT_MODEL_STACK*]b[*PROJECT_MODEL_STACK*]c"
                                     << "feed";
    QTest::newRow("separator at the end too") << "a[*PROJECT_MODEL_STACK*]b[*PROJECT_MODEL_STACK*]"
                                              << "feed";
    QTest::newRow("no old name") << "[*PROJECT_MODEL_STACK*]lift"
                                 << "lift";
    QTest::newRow("no new name") << "feed[*PROJECT_MODEL_STACK*]"
                                 << "";
}

void AxisTreeSyncTest::renameNeedsExactlyTwoNames()
{
    QFETCH(QString, param);
    QFETCH(QString, shown);
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    report(fixture, renameType, axisModelName, text("1"), param);
    QCOMPARE(fixture.shownAxes(), QStringList{ shown });
}

void AxisTreeSyncTest::otherCommandsLeaveTheTreeAlone_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("subModel");
    QTest::addColumn<QString>("path");
    const QStringList types{ insertType, removeType, renameType };
    for (const QString& type : types) {
        QTest::newRow(qPrintable(type + text(" of another sub-model"))) << type << "SourceModel"
                                                                        << "1";
        QTest::newRow(qPrintable(type + text(" of another case"))) << type << "axismodel"
                                                                   << "1";
        if (type != removeType)
            QTest::newRow(qPrintable(type + text(" of an unknown record"))) << type << "AxisModel"
                                                                            << "99";
    }
    QTest::newRow("unknown type") << "PROJECT_MODEL_STACK_MOVE"
                                  << "AxisModel"
                                  << "1";
    QTest::newRow("no type") << ""
                             << "AxisModel"
                             << "1";
}

void AxisTreeSyncTest::otherCommandsLeaveTheTreeAlone()
{
    QFETCH(QString, type);
    QFETCH(QString, subModel);
    QFETCH(QString, path);
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    report(fixture, type, subModel, path, text("feed[*PROJECT_MODEL_STACK*]lift"));
    QVERIFY(fixture.host.calls.entries().isEmpty());
    QCOMPARE(fixture.shownAxes(), QStringList{ text("feed") });
}

void AxisTreeSyncTest::followingEndsSilentlyWithout_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("the tree") << "Solution.View";
    QTest::newRow("the project") << "project";
}

void AxisTreeSyncTest::followingEndsSilentlyWithout()
{
    QFETCH(QString, missing);
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    MessageBoxWatcher boxes;
    if (missing == text("project"))
        fixture.project.close();
    else
        fixture.host.withhold(missing);
    report(fixture, removeType, axisModelName, text("1"));
    report(fixture, insertType, axisModelName, text("1"));
    QVERIFY(fixture.host.calls.entries().isEmpty());
    QCOMPARE(boxes.count(), 0);
}

void AxisTreeSyncTest::renameWithoutEditorManagerStillChangesTheText()
{
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    fixture.host.withhold(text("editor"));
    report(fixture, renameType, axisModelName, text("1"), text("feed[*PROJECT_MODEL_STACK*]lift"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
}

void AxisTreeSyncTest::onlineDoesNotHoldItUp()
{
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    fixture.host.transfer.setOnline(true);
    report(fixture, removeType, axisModelName, text("1"));
    QVERIFY(fixture.shownAxes().isEmpty());
}

QTEST_MAIN(AxisTreeSyncTest)
#include "AxisTreeSyncTest.moc"
