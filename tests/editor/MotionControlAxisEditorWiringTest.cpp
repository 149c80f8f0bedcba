#include "editor/MotionControlAxisEditor.h"

#include "host/projectmodel/AxisTable.h"
#include "online/OnlineDebugWidget.h"
#include "pages/OriginReturnSetWidget.h"
#include "tests/support/ReceiverCount.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

const QString axisView = QStringLiteral("AxisView");

} // namespace

/// How an editor hangs together with the host and its pages, also where it could not be opened.
class MotionControlAxisEditorWiringTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void openedOnlineStartsTheMonitor();
    void openedOfflineDoesNotMonitor();
    void everyOpenHearsTheComparisonAgain();
    void everyOpenHearsTheConnectionOnce();
    void refreshRunsThroughThePagesInOrder();
    void refreshLeavesTheOnlinePageAlone();
    void withoutHomingPageReferencesNameTheControlAlone();
    void withoutHomingPageTheFindPositionIsEmpty();
    void findPositionNeedsNoCurrentEditor();

private:
    QString path() const { return m_project->axisPath(m_axis->id()); }
    /// An editor that knows its axis but has no pages: the tree was missing as it was opened.
    std::unique_ptr<MotionControlAxisEditor> openWithoutTree() const;

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    AxisTable* m_axis = nullptr;
};

void MotionControlAxisEditorWiringTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"), QStringLiteral("Axis_Pulse"));
}

void MotionControlAxisEditorWiringTest::cleanup()
{
    m_project.reset();
    m_host.reset();
}

std::unique_ptr<MotionControlAxisEditor> MotionControlAxisEditorWiringTest::openWithoutTree() const
{
    m_host->withhold(QStringLiteral("Solution.View"));
    auto editor = std::make_unique<MotionControlAxisEditor>();
    const bool opened = editor->open(path(), axisView);
    m_host->restore(QStringLiteral("Solution.View"));
    return opened ? nullptr : std::move(editor);
}

void MotionControlAxisEditorWiringTest::openedOnlineStartsTheMonitor()
{
    m_host->transfer.setOnline(true);
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    const auto* timer = editor.widget()->findChild<OnlineDebugWidget*>()->findChild<QTimer*>();
    QVERIFY(timer);
    QVERIFY(timer->isActive());
    QCOMPARE(m_host->calls.count(QStringLiteral("varMonitor.addAxis")), 1);
}

void MotionControlAxisEditorWiringTest::openedOfflineDoesNotMonitor()
{
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    QVERIFY(!editor.widget()->findChild<OnlineDebugWidget*>()->findChild<QTimer*>()->isActive());
    QCOMPARE(m_host->calls.count(QStringLiteral("varMonitor.addAxis")), 0);
}

void MotionControlAxisEditorWiringTest::everyOpenHearsTheComparisonAgain()
{
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    QCOMPARE(receiverCount(m_host->comparatorMan, SIGNAL(cmpStateChanged(bool))), 1);
    QVERIFY(editor.open(path(), axisView));
    QCOMPARE(receiverCount(m_host->comparatorMan, SIGNAL(cmpStateChanged(bool))), 2);
}

void MotionControlAxisEditorWiringTest::everyOpenHearsTheConnectionOnce()
{
    const char* const signal = SIGNAL(onlineState(bool));
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    QCOMPARE(receiverCount(m_host->transfer, signal), 2);
    // The editor itself is not connected twice; the second online page is another object.
    QVERIFY(editor.open(path(), axisView));
    QCOMPARE(receiverCount(m_host->transfer, signal), 3);
}

void MotionControlAxisEditorWiringTest::refreshRunsThroughThePagesInOrder()
{
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    const QString basicKey = QStringLiteral("OutputDevice");
    const QString motionKey = QStringLiteral("CompareOutputPin");
    const QString homingKey = QStringLiteral("HomeMode");
    for (const QString& key : { basicKey, motionKey })
        m_axis->setProperty(key, QStringLiteral("99"));
    m_axis->setProperty(homingKey, QStringLiteral("Homing_99"));
    QStringList corrected;
    connect(m_axis, &ModelObject::dataChanged, &editor,
        [&corrected](ModelObject*, const QString&, const QString& key) { corrected.append(key); });
    editor.refreshPages();
    QCOMPARE(m_axis->property(motionKey, QString()), QStringLiteral("0"));
    const int basic = corrected.indexOf(basicKey);
    const int motion = corrected.indexOf(motionKey);
    const int homing = corrected.indexOf(homingKey);
    QVERIFY2(basic >= 0 && basic < motion && motion < homing, qPrintable(corrected.join(QLatin1Char(' '))));
}

void MotionControlAxisEditorWiringTest::refreshLeavesTheOnlinePageAlone()
{
    m_host->transfer.setOnline(true);
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    auto* timer = editor.widget()->findChild<OnlineDebugWidget*>()->findChild<QTimer*>();
    timer->stop();
    m_host->calls.clear();
    editor.refreshPages();
    QVERIFY(!timer->isActive());
    QVERIFY(m_host->calls
                .entriesOf({ QStringLiteral("varMonitor.addAxis"), QStringLiteral("varMonitor.releaseAxis"),
                    QStringLiteral("transfer.isOnline") })
                .isEmpty());
}

void MotionControlAxisEditorWiringTest::withoutHomingPageReferencesNameTheControlAlone()
{
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    m_axis->setProperty(QStringLiteral("PosLimitPin"), QStringLiteral("Main.stop"));
    const auto editor = openWithoutTree();
    QVERIFY(editor);
    QVERIFY(!editor->widget()->findChild<OriginReturnSetWidget*>());
    QVector<FindResult> results;
    QVERIFY(editor->findReferences(QStringLiteral("Main.stop"), results));
    QCOMPARE(results.size(), 1);
    QCOMPARE(results.first().location, QStringLiteral(".lineEditNeg"));
}

void MotionControlAxisEditorWiringTest::withoutHomingPageTheFindPositionIsEmpty()
{
    const auto editor = openWithoutTree();
    QVERIFY(editor);
    qRegisterMetaType<IEditor*>();
    const QSignalSpy messages(&m_host->editorManager, &IEditorManager::editorMessage);
    editor->onUpdateFindIndex();
    QCOMPARE(messages.count(), 1);
    QCOMPARE(messages.first().at(0).value<IEditor*>(), editor.get());
    QCOMPARE(messages.first().at(1).toString(), QStringLiteral("UPDATE_FIND_INDEX"));
    QCOMPARE(messages.first().at(2).toString(), QString());
    QCOMPARE(editor->currentFindPosition(), QString());
}

void MotionControlAxisEditorWiringTest::findPositionNeedsNoCurrentEditor()
{
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    QVERIFY(editor.gotoLocation(QStringLiteral("OriginReturnSetWidget.lineEditPos")));
    editor.widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor.widget()));
    auto* pin = editor.widget()->findChild<QWidget*>(QStringLiteral("lineEditPos"));
    QTest::mouseClick(pin, Qt::LeftButton);
    QCOMPARE(m_host->editorManager.currentEditor(), nullptr);
    QCOMPARE(editor.currentFindPosition(), QStringLiteral("lineEditPos"));
}

QTEST_MAIN(MotionControlAxisEditorWiringTest)
#include "MotionControlAxisEditorWiringTest.moc"
