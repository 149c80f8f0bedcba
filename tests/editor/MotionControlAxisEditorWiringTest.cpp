#include "editor/MotionControlAxisEditor.h"

#include "editor/BasicSetWidget.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "online/OnlineDebugWidget.h"
#include "pages/OriginReturnSetWidget.h"
#include "sdk/AxisDefaults.h"
#include "sdk/ServiceLocator.h"
#include "tests/support/ReceiverCount.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QComboBox>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

const QString axisView = QStringLiteral("AxisView");

/// A text of the same form as a default, but another one.
QString another(const QString& standard)
{
    if (standard == QLatin1String("TRUE"))
        return QStringLiteral("FALSE");
    if (standard == QLatin1String("FALSE"))
        return QStringLiteral("TRUE");
    if (standard.startsWith(QLatin1String("Homing_")))
        return QStringLiteral("Homing_17");
    return standard.startsWith(QLatin1Char('%')) ? QStringLiteral("%IX7.7") : QStringLiteral("1") + standard;
}

/// The keys of a group that do not hold what the function makes of their defaults.
template <typename Expected>
QStringList deviating(const AxisTable& axis, const AxisDefaultGroup& group, Expected expected)
{
    QStringList keys;
    for (auto entry = group.begin(); entry != group.end(); ++entry) {
        if (axis.property(entry.key(), QString()) != expected(entry.value()))
            keys.append(entry.key());
    }
    return keys;
}

QString asItIs(const QString& standard)
{
    return standard;
}

} // namespace

/// How an editor hangs together with the host and its pages, also where it could not be opened.
class MotionControlAxisEditorWiringTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void openedOnlineStartsTheMonitor();
    void openedOfflineDoesNotMonitor();
    void projectIsNotHeldWhileOpening_data();
    void projectIsNotHeldWhileOpening();
    void comparisonNeedsNoManagerToBeHeeded();
    void everyOpenHearsTheComparisonAgain();
    void everyOpenHearsTheConnectionOnce();
    void refreshRunsThroughThePagesInOrder();
    void refreshLeavesTheOnlinePageAlone();
    void loadingLeavesThePagesAsTheyAre_data();
    void loadingLeavesThePagesAsTheyAre();
    void typeChangeResetsUnitAndModeAndLeavesHoming();
    void referencesNeedAHost();
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

void MotionControlAxisEditorWiringTest::projectIsNotHeldWhileOpening_data()
{
    QTest::addColumn<QString>("call");
    // A page asks for the theme as it is made, and the editor for the comparison once it is built.
    QTest::newRow("while the pages are made") << QStringLiteral("cookies.value(Werkbay/Qss)");
    QTest::newRow("after the record was stored") << QStringLiteral("cookies.value(IDE/ProjectCompration)");
}

void MotionControlAxisEditorWiringTest::projectIsNotHeldWhileOpening()
{
    QFETCH(QString, call);
    const QPointer<QObject> model = m_project->model();
    bool heard = false;
    m_host->calls.heard = [&](const QString& entry) {
        if (entry != call || heard)
            return;
        heard = true;
        m_project->close();
        QVERIFY2(!model, "a project without a guard goes as it is closed");
    };
    MotionControlAxisEditor editor;
    editor.open(path(), axisView);
    QVERIFY(heard);
}

void MotionControlAxisEditorWiringTest::comparisonNeedsNoManagerToBeHeeded()
{
    m_host->withhold(QStringLiteral("COMPARATORMAN"));
    m_host->cookies.setValue(QStringLiteral("IDE/ProjectCompration"), true);
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    QVERIFY(editor.isReadOnly());
    QVERIFY(!editor.widget()->findChild<BasicSetWidget*>()->findChild<QScrollArea*>()->widget()->isEnabled());
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

void MotionControlAxisEditorWiringTest::loadingLeavesThePagesAsTheyAre_data()
{
    QTest::addColumn<bool>("reload");
    QTest::newRow("load") << false;
    QTest::newRow("reload") << true;
}

void MotionControlAxisEditorWiringTest::loadingLeavesThePagesAsTheyAre()
{
    QFETCH(bool, reload);
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    editor.widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor.widget()));
    auto* types = editor.widget()->findChild<QComboBox*>(QStringLiteral("comboBoxAxisType"));
    types->setFocus();
    QTest::keyClick(types, Qt::Key_Up);
    QCOMPARE(m_axis->property(QStringLiteral("AxisType"), QString()), QStringLiteral("Axis_Virtual"));
    QCOMPARE(types->currentText(), QStringLiteral("Virtual Axis"));
    QVERIFY(reload ? editor.reload() : editor.load());
    QCOMPARE(m_axis->property(QStringLiteral("AxisType"), QString()), QStringLiteral("Axis_Pulse"));
    QCOMPARE(types->currentText(), QStringLiteral("Virtual Axis"));
    editor.refreshPages();
    QCOMPARE(types->currentText(), QStringLiteral("Pulse Axis"));
}

void MotionControlAxisEditorWiringTest::typeChangeResetsUnitAndModeAndLeavesHoming()
{
    m_axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Virtual"));
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    for (const AxisDefaultGroup& group : { AxisUnitDefaults, AxisModeDefaults, AxisHomeDefaults }) {
        for (auto entry = group.begin(); entry != group.end(); ++entry)
            m_axis->setProperty(entry.key(), another(entry.value()));
    }
    QCOMPARE(deviating(*m_axis, AxisModeDefaults, asItIs).size(), AxisModeDefaults.size());
    editor.widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor.widget()));
    auto* types = editor.widget()->findChild<QComboBox*>(QStringLiteral("comboBoxAxisType"));
    types->setFocus();
    QTest::keyClick(types, Qt::Key_Down);
    QCOMPARE(m_axis->property(QStringLiteral("AxisType"), QString()), QStringLiteral("Axis_Pulse"));
    QCOMPARE(AxisUnitDefaults.size() + AxisModeDefaults.size(), 41);
    QCOMPARE(deviating(*m_axis, AxisUnitDefaults, asItIs), QStringList());
    QCOMPARE(deviating(*m_axis, AxisModeDefaults, asItIs), QStringList());
    QCOMPARE(AxisHomeDefaults.size(), 14);
    QCOMPARE(deviating(*m_axis, AxisHomeDefaults, another), QStringList());
}

void MotionControlAxisEditorWiringTest::referencesNeedAHost()
{
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    QVector<FindResult> results;
    QVERIFY(editor.findReferences(QStringLiteral("Main.stop"), results));
    Solution::publishApplication(nullptr);
    const bool found = editor.findReferences(QStringLiteral("Main.stop"), results);
    Solution::publishApplication(m_host.get());
    QVERIFY(!found);
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
