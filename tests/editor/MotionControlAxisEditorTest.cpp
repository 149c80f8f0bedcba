#include "editor/MotionControlAxisEditor.h"

#include "editor/BasicSetWidget.h"
#include "editor/DocumentSetWidget.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "online/OnlineDebugWidget.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "pages/OriginReturnSetWidget.h"
#include "sdk/IEditContext.h"
#include "sdk/ServiceLocator.h"
#include "tests/support/ReceiverCount.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

#include <memory>

namespace {

const QString axisView = QStringLiteral("AxisView");

QStringList slotsOf(const QMetaObject& meta)
{
    QStringList names;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        if (meta.method(index).methodType() == QMetaMethod::Slot)
            names.append(QString::fromLatin1(meta.method(index).methodSignature()));
    }
    return names;
}

} // namespace

class MotionControlAxisEditorTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void slotsStandInTheirOrder();
    void isMadeWithAnEmptyView();
    void plainAnswers();
    void viewDiesWithTheEditor();
    void viewMayDieFirst();
    void closingWithAPendingEditIsSurvived();

    void openBuildsThePagesInOrder();
    void openBlocksUndo();
    void openTakesThePathApart_data();
    void openTakesThePathApart();
    void openFails_data();
    void openFails();
    void openWithoutAHostFails();
    void openStoresWhatThePagesCorrected();
    void openReportsNoModification();
    void openFailsAtTheSecondLookUp();
    void openAppliesTabVisibility_data();
    void openAppliesTabVisibility();
    void openTwiceReportsOnce();
    void openSurvivesMissingServices_data();
    void openSurvivesMissingServices();
    void pagesAreWiredOnce();
    void typeChangeReachesThePagesInOrder();

    void displayNameFollowsTheRecord();
    void loadAndReloadBringTheStoredStateBack_data();
    void loadAndReloadBringTheStoredStateBack();
    void saveStoresTheRecord();
    void answersFalseWhenTheRecordIsGone_data();
    void answersFalseWhenTheRecordIsGone();
    void modificationIsReported();
    void isModifiedFinishesAPendingEdit();
    void undoContextComesFromTheView();
    void refreshPagesFollowsTheRecord();
    void refreshPagesWithoutPages();
    void textChangeUpdatesTheCurrentEditorOnly();

private:
    QString path() const { return m_project->axisPath(m_axis->id()); }
    /// An open editor of the axis.
    std::unique_ptr<MotionControlAxisEditor> open() const;
    static PropertyEditorView* viewOf(IEditor& editor) { return qobject_cast<PropertyEditorView*>(editor.widget()); }
    static bool show(IEditor& editor)
    {
        editor.widget()->show();
        return QTest::qWaitForWindowActive(editor.widget());
    }
    void loseRecord(bool projectClosed);

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    QPointer<AxisTable> m_axis;
};

void MotionControlAxisEditorTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"), QStringLiteral("Axis_Pulse"));
}

void MotionControlAxisEditorTest::cleanup()
{
    m_project.reset();
    m_host.reset();
}

std::unique_ptr<MotionControlAxisEditor> MotionControlAxisEditorTest::open() const
{
    auto editor = std::make_unique<MotionControlAxisEditor>();
    return editor->open(path(), axisView) ? std::move(editor) : nullptr;
}

void MotionControlAxisEditorTest::loseRecord(bool projectClosed)
{
    if (projectClosed)
        m_project->close();
    else
        QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
}

void MotionControlAxisEditorTest::slotsStandInTheirOrder()
{
    const QStringList expected{ QStringLiteral("onTextChanged()"), QStringLiteral("onlineStatechanged(bool)"),
        QStringLiteral("onUpdateFindIndex()"), QStringLiteral("onCmpStateChanged(bool)"),
        QStringLiteral("emitModificationChanged(ModelObject*,QString,QString)") };
    QCOMPARE(slotsOf(MotionControlAxisEditor::staticMetaObject), expected);
}

void MotionControlAxisEditorTest::isMadeWithAnEmptyView()
{
    MotionControlAxisEditor editor;
    QVERIFY(viewOf(editor));
    QCOMPARE(editor.widget()->parent(), nullptr);
    QVERIFY(!editor.widget()->findChild<BasicSetWidget*>());
    QVERIFY(!editor.isReadOnly());
    QVERIFY(editor.nodePath().isEmpty());
    QVERIFY(editor.displayName().isEmpty());
}

void MotionControlAxisEditorTest::plainAnswers()
{
    const auto editor = open();
    QVERIFY(editor);
    QVERIFY(editor->icon().isNull());
    QVERIFY(editor->saveAs());
    const EditorLocation location = editor->locationInfo();
    QVERIFY(location.atEnd && location.location.isEmpty() && location.data.isNull());
    QVERIFY(editor->locationText().isEmpty());
    QVERIFY(editor->closeCheck());
    QCOMPARE(editor->nodePath(), path());
    QCOMPARE(editor->typeKey(), axisView);
    QVERIFY(editor->fileFilter().isEmpty());
    QVERIFY(editor->saveState().isEmpty());
    QVERIFY(editor->restoreState(QByteArrayLiteral("anything")));
    QCOMPARE(editor->contextObject(), nullptr);
    const QMap<QString, QString> before = m_axis->getCompareData();
    editor->modifiedHook();
    editor->activated();
    QCOMPARE(m_axis->getCompareData(), before);
}

void MotionControlAxisEditorTest::viewDiesWithTheEditor()
{
    QWidget tab;
    auto editor = open();
    const QPointer<QWidget> view = editor->widget();
    view->setParent(&tab);
    editor.reset();
    QVERIFY(!view);
}

void MotionControlAxisEditorTest::viewMayDieFirst()
{
    const auto editor = open();
    {
        QWidget tab;
        editor->widget()->setParent(&tab);
    }
    QCOMPARE(editor->widget(), nullptr);
    m_host->transfer.setOnline(true);
    m_host->transfer.setOnline(false);
    emit m_host->comparatorMan.cmpStateChanged(true);
    editor->refreshPages();
    QVERIFY(editor->gotoLocation(QStringLiteral("OriginReturnSetWidget.lineEditPos")));
    QVERIFY(!editor->isModified());
    QCOMPARE(editor->currentContext(), nullptr);
    QVector<FindResult> results;
    QVERIFY(editor->findReferences(QStringLiteral("Main.flag"), results));
}

void MotionControlAxisEditorTest::closingWithAPendingEditIsSurvived()
{
    auto editor = open();
    QVERIFY(show(*editor));
    auto* page = editor->widget()->findChild<DocumentSetWidget*>();
    viewOf(*editor)->setCurrentWidget(page);
    auto* field = page->findChild<QLineEdit*>(QStringLiteral("lineEdit_2"));
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("2.5"));
    QVERIFY(field->hasFocus());
    const QPointer<QWidget> view = editor->widget();
    editor.reset();
    QVERIFY(!view);
}

void MotionControlAxisEditorTest::openBuildsThePagesInOrder()
{
    const auto editor = open();
    QVERIFY(editor);
    const auto* tabs = editor->widget()->findChild<QTabWidget*>();
    QVERIFY(tabs);
    QStringList titles;
    QStringList classes;
    for (int index = 0; index < tabs->count(); ++index) {
        titles.append(tabs->tabText(index));
        classes.append(QString::fromLatin1(tabs->widget(index)->metaObject()->className()));
    }
    QCOMPARE(titles,
        (QStringList{ QStringLiteral("basic setting"), QStringLiteral("document setting"),
            QStringLiteral("model and param setting"), QStringLiteral("origin return setting"),
            QStringLiteral("online debug setting") }));
    QCOMPARE(classes,
        (QStringList{ QStringLiteral("BasicSetWidget"), QStringLiteral("DocumentSetWidget"),
            QStringLiteral("ModelAndParamtSetWidget"), QStringLiteral("OriginReturnSetWidget"),
            QStringLiteral("OnlineDebugWidget") }));
}

void MotionControlAxisEditorTest::openBlocksUndo()
{
    const auto editor = open();
    QVERIFY(viewOf(*editor)->isUndoRedoBlocked());
}

void MotionControlAxisEditorTest::openTakesThePathApart_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("mimeType");
    QTest::newRow("the path of the node") << QStringLiteral("Line.ConfigAndSetup.Axis.AxisView%1") << axisView;
    QTest::newRow("a short path") << QStringLiteral("Line.AxisView%1") << axisView;
    QTest::newRow("another type before the id") << QStringLiteral("Line.Any%1") << QStringLiteral("Any");
    QTest::newRow("the type twice") << QStringLiteral("Line.AxisViewAxisView%1") << axisView;
    QTest::newRow("the id alone") << QStringLiteral("Line.%1") << axisView;
}

void MotionControlAxisEditorTest::openTakesThePathApart()
{
    QFETCH(QString, pattern);
    QFETCH(QString, mimeType);
    MotionControlAxisEditor editor;
    const QString fileName = pattern.arg(m_axis->id());
    QVERIFY(editor.open(fileName, mimeType));
    QCOMPARE(editor.nodePath(), fileName);
    QCOMPARE(editor.displayName(), QStringLiteral("Feeder"));
}

void MotionControlAxisEditorTest::openFails_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("withheld");
    const QString good = QStringLiteral("Line.ConfigAndSetup.Axis.AxisView1");
    QTest::newRow("no such project") << QStringLiteral("Nowhere.ConfigAndSetup.Axis.AxisView1") << QString();
    QTest::newRow("no such record") << QStringLiteral("Line.ConfigAndSetup.Axis.AxisView99") << QString();
    QTest::newRow("no number in the last section") << QStringLiteral("Line.ConfigAndSetup.Axis.AxisView") << QString();
    QTest::newRow("an empty path") << QString() << QString();
    QTest::newRow("no project tree") << good << QStringLiteral("Solution.View");
}

void MotionControlAxisEditorTest::openFails()
{
    QFETCH(QString, fileName);
    QFETCH(QString, withheld);
    QCOMPARE(m_axis->id(), 1U);
    m_host->withhold(withheld);
    MotionControlAxisEditor editor;
    QVERIFY(!editor.open(fileName, axisView));
    QCOMPARE(editor.nodePath(), fileName);
    QVERIFY(!editor.widget()->findChild<BasicSetWidget*>());
    QVERIFY(!m_axis->pageBuild);
    editor.refreshPages();
    editor.setReadOnly(true);
    QVERIFY(editor.gotoLocation(QStringLiteral("OriginReturnSetWidget.lineEditPos")));
}

void MotionControlAxisEditorTest::openWithoutAHostFails()
{
    Solution::publishApplication(nullptr);
    MotionControlAxisEditor editor;
    const bool opened = editor.open(path(), axisView);
    Solution::publishApplication(m_host.get());
    QVERIFY(!opened);
    QCOMPARE(editor.nodePath(), path());
    QVERIFY(!editor.widget()->findChild<BasicSetWidget*>());
}

void MotionControlAxisEditorTest::openStoresWhatThePagesCorrected()
{
    m_axis->setProperty(QStringLiteral("OutputDevice"), QStringLiteral("99"));
    QVERIFY(m_axis->save());
    m_axis->setProperty(QStringLiteral("OutputDevice"), QStringLiteral("98"));
    QVERIFY(m_axis->modified);
    const auto editor = open();
    QVERIFY(editor);
    QVERIFY(!m_axis->pageBuild);
    QVERIFY(!m_axis->modified);
    const QString corrected = m_axis->property(QStringLiteral("OutputDevice"), QString());
    QVERIFY(corrected != QLatin1String("98"));
    QVERIFY(m_axis->load());
    QCOMPARE(m_axis->property(QStringLiteral("OutputDevice"), QString()), corrected);
}

void MotionControlAxisEditorTest::openReportsNoModification()
{
    m_axis->setProperty(QStringLiteral("OutputDevice"), QStringLiteral("99"));
    MotionControlAxisEditor editor;
    const QSignalSpy modified(&editor, &IEditor::modificationChanged);
    bool builtUnderFlag = true;
    connect(m_axis, &ModelObject::dataChanged, &editor, [&] { builtUnderFlag = builtUnderFlag && m_axis->pageBuild; });
    const QSignalSpy changed(m_axis, &ModelObject::dataChanged);
    QVERIFY(editor.open(path(), axisView));
    QVERIFY(changed.count() > 0);
    QVERIFY(builtUnderFlag);
    QCOMPARE(modified.count(), 0);
}

void MotionControlAxisEditorTest::openFailsAtTheSecondLookUp()
{
    m_axis->setProperty(QStringLiteral("OutputDevice"), QStringLiteral("99"));
    MotionControlAxisEditor editor;
    // The tree goes away while the pages are being built.
    connect(m_axis, &ModelObject::dataChanged, &editor, [this] { m_host->withhold(QStringLiteral("Solution.View")); });
    m_host->cookies.setValue(QStringLiteral("IDE/ProjectCompration"), true);
    QVERIFY(!editor.open(path(), axisView));
    QVERIFY(editor.widget()->findChild<OnlineDebugWidget*>());
    QVERIFY(!editor.isReadOnly());
    const QSignalSpy modified(&editor, &IEditor::modificationChanged);
    m_axis->setProperty(QStringLiteral("HomeSpeed"), QStringLiteral("11"));
    QCOMPARE(modified.count(), 0);
}

void MotionControlAxisEditorTest::openAppliesTabVisibility_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QList<bool>>("visible");
    QTest::newRow("virtual") << QStringLiteral("Axis_Virtual") << QList<bool>{ true, false, true, true, true };
    QTest::newRow("pulse") << QStringLiteral("Axis_Pulse") << QList<bool>{ true, true, true, true, true };
    QTest::newRow("encoder") << QStringLiteral("Axis_Encoder") << QList<bool>{ true, true, true, false, false };
    QTest::newRow("EtherCAT") << QStringLiteral("Axis_EtherCAT") << QList<bool>{ true, true, true, true, true };
}

void MotionControlAxisEditorTest::openAppliesTabVisibility()
{
    QFETCH(QString, type);
    QFETCH(QList<bool>, visible);
    m_axis->setProperty(QStringLiteral("AxisType"), type);
    const auto editor = open();
    const PropertyEditorView* view = viewOf(*editor);
    QList<bool> shown;
    for (const char* title : { "basic setting", "document setting", "model and param setting", "origin return setting",
             "online debug setting" })
        shown.append(view->isTabVisible(QString::fromLatin1(title)));
    QCOMPARE(shown, visible);
}

void MotionControlAxisEditorTest::openTwiceReportsOnce()
{
    const auto editor = open();
    QVERIFY(editor->open(path(), axisView));
    const QSignalSpy modified(editor.get(), &IEditor::modificationChanged);
    m_axis->setProperty(QStringLiteral("HomeSpeed"), QStringLiteral("11"));
    QCOMPARE(modified.count(), 1);
}

void MotionControlAxisEditorTest::openSurvivesMissingServices_data()
{
    QTest::addColumn<QString>("withheld");
    const QStringList keys = TestHost::keys();
    for (const QString& key : keys) {
        if (key != QLatin1String("Solution.View"))
            QTest::newRow(qPrintable(key)) << key;
    }
}

void MotionControlAxisEditorTest::openSurvivesMissingServices()
{
    QFETCH(QString, withheld);
    m_host->withhold(withheld);
    const auto editor = open();
    QVERIFY(editor);
    QVERIFY(editor->widget()->findChild<OnlineDebugWidget*>());
    QVERIFY(!editor->isReadOnly());
    editor->onTextChanged();
    editor->onUpdateFindIndex();
    QVERIFY(editor->currentFindPosition().isEmpty());
}

void MotionControlAxisEditorTest::pagesAreWiredOnce()
{
    const auto editor = open();
    auto* basic = editor->widget()->findChild<BasicSetWidget*>();
    auto* unit = editor->widget()->findChild<DocumentSetWidget*>();
    auto* motion = editor->widget()->findChild<ModelAndParamtSetWidget*>();
    auto* homing = editor->widget()->findChild<OriginReturnSetWidget*>();
    using Basic = BasicSetWidget;
    using Motion = ModelAndParamtSetWidget;
    using Homing = OriginReturnSetWidget;
    QCOMPARE(receiverCount(*basic, SIGNAL(axisTypeChanged())), 3);
    QCOMPARE(receiverCount(*basic, SIGNAL(axisInputDeviceChanged())), 1);
    QCOMPARE(receiverCount(*basic, SIGNAL(axisOutputDeviceChanged())), 1);
    QCOMPARE(receiverCount(*homing, SIGNAL(updateFindIndex())), 1);
    const auto taken = [&] {
        return QList<bool>{ disconnect(basic, &Basic::axisTypeChanged, unit, &DocumentSetWidget::axisTypeChanged),
            disconnect(basic, &Basic::axisTypeChanged, motion, &Motion::axisTypeChanged),
            disconnect(basic, &Basic::axisTypeChanged, homing, &Homing::updateWidget),
            disconnect(basic, &Basic::axisInputDeviceChanged, motion, &Motion::updateWidget),
            disconnect(basic, &Basic::axisOutputDeviceChanged, motion, &Motion::updateWidget),
            disconnect(homing, &Homing::updateFindIndex, editor.get(), &MotionControlAxisEditor::onUpdateFindIndex) };
    };
    QCOMPARE(taken(), (QList<bool>{ true, true, true, true, true, true }));
    QVERIFY(!disconnect(basic, nullptr, homing, nullptr));
    QVERIFY(!disconnect(basic, nullptr, unit, nullptr));
    QVERIFY(!disconnect(basic, nullptr, motion, nullptr));
}

void MotionControlAxisEditorTest::typeChangeReachesThePagesInOrder()
{
    m_axis->setProperty(QStringLiteral("PulseCountPerCircle"), QStringLiteral("1"));
    m_axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("1"));
    m_axis->setProperty(QStringLiteral("HomeMode"), QStringLiteral("Homing_17"));
    const auto editor = open();
    QStringList keys;
    connect(m_axis, &ModelObject::dataChanged, editor.get(),
        [&](ModelObject*, const QString&, const QString& key) { keys.append(key); });
    m_axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Virtual"));
    auto* basic = editor->widget()->findChild<BasicSetWidget*>();
    emit basic->axisTypeChanged();
    const int unit = keys.indexOf(QStringLiteral("PulseCountPerCircle"));
    const int mode = keys.indexOf(QStringLiteral("MaxVel"));
    const int homing = keys.indexOf(QStringLiteral("HomeMode"));
    QVERIFY2(unit >= 0 && unit < mode && mode < homing, qPrintable(keys.join(QLatin1Char(' '))));
}

void MotionControlAxisEditorTest::displayNameFollowsTheRecord()
{
    const auto editor = open();
    QCOMPARE(editor->displayName(), QStringLiteral("Feeder"));
    QVERIFY(m_project->axisModel()->renameAxisTable(m_axis->id(), QStringLiteral("Gripper")));
    QCOMPARE(editor->displayName(), QStringLiteral("Gripper"));
    QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    QCOMPARE(editor->displayName(), QString());
    m_project->close();
    QCOMPARE(editor->displayName(), QString());
}

void MotionControlAxisEditorTest::loadAndReloadBringTheStoredStateBack_data()
{
    QTest::addColumn<bool>("reload");
    QTest::newRow("load") << false;
    QTest::newRow("reload") << true;
}

void MotionControlAxisEditorTest::loadAndReloadBringTheStoredStateBack()
{
    QFETCH(bool, reload);
    const auto editor = open();
    m_axis->setProperty(QStringLiteral("HomeAcc"), QStringLiteral("777"));
    QVERIFY(reload ? editor->reload() : editor->load());
    QCOMPARE(m_axis->property(QStringLiteral("HomeAcc"), QString()), QStringLiteral("100"));
    QVERIFY(!editor->isModified());
}

void MotionControlAxisEditorTest::saveStoresTheRecord()
{
    const auto editor = open();
    m_axis->setProperty(QStringLiteral("HomeAcc"), QStringLiteral("777"));
    QVERIFY(editor->isModified());
    QVERIFY(editor->save());
    QVERIFY(!editor->isModified());
    QVERIFY(m_axis->load());
    QCOMPARE(m_axis->property(QStringLiteral("HomeAcc"), QString()), QStringLiteral("777"));
}

void MotionControlAxisEditorTest::answersFalseWhenTheRecordIsGone_data()
{
    QTest::addColumn<bool>("projectClosed");
    QTest::newRow("the project is closed") << true;
    QTest::newRow("the axis is removed") << false;
}

void MotionControlAxisEditorTest::answersFalseWhenTheRecordIsGone()
{
    QFETCH(bool, projectClosed);
    const auto editor = open();
    m_axis->setProperty(QStringLiteral("HomeAcc"), QStringLiteral("777"));
    loseRecord(projectClosed);
    QVERIFY(!editor->load());
    QVERIFY(!editor->reload());
    QVERIFY(!editor->save());
    QVERIFY(!editor->isModified());
    QVector<FindResult> results;
    QVERIFY(!editor->findReferences(QStringLiteral("Main.stop"), results));
    QVERIFY(results.isEmpty());
    QVERIFY(editor->displayName().isEmpty());
    QVERIFY(editor->saveAs());
}

void MotionControlAxisEditorTest::modificationIsReported()
{
    const auto editor = open();
    const QSignalSpy modified(editor.get(), &IEditor::modificationChanged);
    m_axis->setProperty(QStringLiteral("HomeAcc"), QStringLiteral("777"));
    m_axis->setProperty(QStringLiteral("Row"), QStringLiteral("4"));
    QCOMPARE(modified.count(), 2);
    QCOMPARE(modified.at(0).at(0).toBool(), true);
    QCOMPARE(modified.at(1).at(0).toBool(), true);
    QVERIFY(editor->save());
    for (const QList<QVariant>& arguments : modified)
        QCOMPARE(arguments.at(0).toBool(), true);
}

void MotionControlAxisEditorTest::isModifiedFinishesAPendingEdit()
{
    const auto editor = open();
    QVERIFY(show(*editor));
    auto* page = editor->widget()->findChild<DocumentSetWidget*>();
    viewOf(*editor)->setCurrentWidget(page);
    auto* field = page->findChild<QLineEdit*>(QStringLiteral("lineEdit_2"));
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("2.5"));
    QVERIFY(!m_axis->modified);
    QVERIFY(editor->isModified());
    QVERIFY(!field->hasFocus());
    QVERIFY(editor->widget()->hasFocus());
    QCOMPARE(m_axis->property(QStringLiteral("UnUseGearValue"), QString()), QStringLiteral("2.500000"));
}

void MotionControlAxisEditorTest::undoContextComesFromTheView()
{
    const auto editor = open();
    QVERIFY(editor->currentContext());
    QCOMPARE(editor->currentContext(), viewOf(*editor)->getCurrentContext());
}

void MotionControlAxisEditorTest::refreshPagesFollowsTheRecord()
{
    const auto editor = open();
    QWidget* view = editor->widget();
    const auto* type = view->findChild<QComboBox*>(QStringLiteral("comboBoxAxisType"));
    const auto* homeSpeed
        = view->findChild<OriginReturnSetWidget*>()->findChild<QLineEdit*>(QStringLiteral("lineEdit_7"));
    QString group = QStringLiteral("AxisPulseOutputDev");
    m_axis->setProperty(QStringLiteral("CompareOutputPin"), QStringLiteral("99"));
    m_axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Virtual"));
    QVERIFY(homeSpeed->isEnabled());
    editor->refreshPages();
    QCOMPARE(type->currentText(), m_project->axisModel()->getAxisTypeNameMap().value(QStringLiteral("Axis_Virtual")));
    QVERIFY(!homeSpeed->isEnabled());
    QVERIFY(m_project->axisModel()->getAxisBaseSettingList(group).size() > 1);
}

void MotionControlAxisEditorTest::refreshPagesWithoutPages()
{
    MotionControlAxisEditor editor;
    editor.refreshPages();
    QVERIFY(!editor.widget()->findChild<BasicSetWidget*>());
}

void MotionControlAxisEditorTest::textChangeUpdatesTheCurrentEditorOnly()
{
    auto* first = open().release();
    m_host->editorManager.adoptEditor(path(), first);
    AxisTable* other = m_project->addAxis(QStringLiteral("Gripper"));
    auto* second = new MotionControlAxisEditor;
    QVERIFY(second->open(m_project->axisPath(other->id()), axisView));
    m_host->editorManager.adoptEditor(m_project->axisPath(other->id()), second);
    m_host->calls.clear();
    first->onTextChanged();
    QCOMPARE(m_host->calls.count(QStringLiteral("editorManager.updateCurrentEditor")), 0);
    second->onTextChanged();
    QCOMPARE(m_host->calls.count(QStringLiteral("editorManager.updateCurrentEditor")), 1);
    m_host->editorManager.closeAllEditors();
}

QTEST_MAIN(MotionControlAxisEditorTest)
#include "MotionControlAxisEditorTest.moc"
