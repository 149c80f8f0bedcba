#include "sdk/EditorLocation.h"
#include "sdk/FindResult.h"
#include "sdk/IAppIdleTimer.h"
#include "sdk/IApplication.h"
#include "sdk/IComparatorMan.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "sdk/IEditorManager.h"
#include "sdk/IOptionManager.h"
#include "sdk/ModelCommandType.h"
#include "sdk/PluginInterface.h"
#include "sdk/SolutionTypes.h"
#include "sdk/SolutionView.h"
#include "sdk/SolutionViewHelper.h"
#include "sdk/Transaction.h"
#include "sdk/Transfer.h"

#include <QMetaMethod>
#include <QtTest>

Q_DECLARE_METATYPE(const QMetaObject*)

namespace {

QStringList methodsOf(const QMetaObject& meta, QMetaMethod::MethodType type)
{
    QStringList signatures;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        if (method.methodType() == type)
            signatures.append(QString::fromLatin1(method.methodSignature()));
    }
    return signatures;
}

QStringList chainOf(const QMetaObject* meta)
{
    QStringList names;
    for (; meta; meta = meta->superClass())
        names.append(QString::fromLatin1(meta->className()));
    return names;
}

} // namespace

class InterfacesTest : public QObject {
    Q_OBJECT

private slots:
    void classDeclaresItsSignalsInOrder_data();
    void classDeclaresItsSignalsInOrder();
    void editorManagerDeclaresItsSlots();
    void optionManagerDeclaresItsSlots();
    void basesFormOneChain_data();
    void basesFormOneChain();
    void newRecordsAreEmpty();
    void pluginBaseStartsEnabledAndEmpty();
    void enumerationsHaveTheValuesOfTheContract();
    void undoTextsAreThoseOfTheContract();
};

void InterfacesTest::classDeclaresItsSignalsInOrder_data()
{
    QTest::addColumn<const QMetaObject*>("meta");
    QTest::addColumn<QString>("expected");
    const auto add = [](const QMetaObject& meta, const char* expected) {
        QTest::newRow(meta.className()) << &meta << QString::fromLatin1(expected);
    };
    add(IApplication::staticMetaObject, "loaded() aboutToQuit() key_escape() aboutToClse() fileDropped(QString)");
    add(IEditorManager::staticMetaObject,
        "currentEditorChanged(IEditor*) editorCreated(IEditor*) editorAboutToClose(IEditor*) "
        "editorAboutToSave(IEditor*) editorSaved(IEditor*) editorClosed(IEditor*) "
        "editorMessage(IEditor*,QString,QString)");
    add(Solution::View::staticMetaObject,
        "nodeEvent(QString,Solution::NodeEvent,QVariant) displayEvent(QString,Solution::DataEvent,QVariant) "
        "projectOpened(QString,Solution::ProjectInfo,Solution::NodeLevel) projectClosed() compileResult() "
        "aboutToBeDestroyed()");
    add(Solution::ViewHelper::staticMetaObject, "commandExecuted(QString,QString,QString,QString)");
    add(IConfiguration::staticMetaObject, "valueChanged(QString)");
    add(Transfer::staticMetaObject, "onlineState(bool)");
    add(IComparatorMan::staticMetaObject, "cmpStateChanged(bool)");
    add(IEditor::staticMetaObject, "modificationChanged(bool)");
    add(IOptionManager::staticMetaObject, "applyOption(QString)");
    add(IAppIdleTimer::staticMetaObject, "appIdle(int)");
}

void InterfacesTest::classDeclaresItsSignalsInOrder()
{
    QFETCH(const QMetaObject*, meta);
    QFETCH(QString, expected);
    QCOMPARE(methodsOf(*meta, QMetaMethod::Signal), expected.split(QLatin1Char(' ')));
}

void InterfacesTest::editorManagerDeclaresItsSlots()
{
    const QStringList declared = methodsOf(IEditorManager::staticMetaObject, QMetaMethod::Slot);
    const QStringList expected = QStringLiteral(
        "saveEditor(IEditor*,bool) saveEditor(IEditor*) saveEditor() saveEditorAs(IEditor*) saveEditorAs() "
        "saveAllEditors(bool) saveAllEditors() closeEditor(IEditor*) closeEditor() closeAllEditors()")
                                     .split(QLatin1Char(' '));
    QCOMPARE(declared, expected);
}

void InterfacesTest::optionManagerDeclaresItsSlots()
{
    const QStringList expected{ QStringLiteral("exec(QString)"), QStringLiteral("exec(QString,QString)") };
    QCOMPARE(methodsOf(IOptionManager::staticMetaObject, QMetaMethod::Slot), expected);
}

void InterfacesTest::basesFormOneChain_data()
{
    QTest::addColumn<const QMetaObject*>("meta");
    QTest::addColumn<QString>("expected");
    const auto add = [](const QMetaObject& meta, const char* expected) {
        QTest::newRow(meta.className()) << &meta << QString::fromLatin1(expected);
    };
    add(IApplication::staticMetaObject, "IApplication IObject QObject");
    add(IEditorManager::staticMetaObject, "IEditorManager IManager QObject");
    add(IEditor::staticMetaObject, "IEditor IView IObject QObject");
    add(IEditorFactory::staticMetaObject, "IEditorFactory QObject");
    add(PluginInterface::staticMetaObject, "PluginInterface QObject");
    add(Transaction::staticMetaObject, "Transaction QObject");
}

void InterfacesTest::basesFormOneChain()
{
    QFETCH(const QMetaObject*, meta);
    QFETCH(QString, expected);
    QCOMPARE(chainOf(meta), expected.split(QLatin1Char(' ')));
}

void InterfacesTest::newRecordsAreEmpty()
{
    const FindResult result;
    QCOMPARE(result.kind, -1);
    QVERIFY(QString(result.typeKey + result.nodePath + result.objectName + result.text + result.matchedText
        + result.dataType + result.section + result.access + result.label + result.location)
                .isEmpty());
    const EditorLocation location;
    QVERIFY(location.atEnd);
    QVERIFY(QString(location.text + location.matchedText + location.location + location.label).isEmpty());
    QVERIFY(!location.data.isValid());
    const Solution::NodeDescription node;
    QVERIFY(!node.checkable);
    QVERIFY(node.visible);
    QVERIFY(!node.color.isValid());
    QVERIFY(node.properties.isEmpty());
}

void InterfacesTest::pluginBaseStartsEnabledAndEmpty()
{
    struct Plugin : PluginInterface {
        bool initialize() override { return true; }
        void finish() override { }
    };
    const Plugin plugin;
    QCOMPARE(plugin.loadOrder, 0);
    QCOMPARE(plugin.state, 0);
    QCOMPARE(plugin.enabled, 1);
    QVERIFY(QString(
        plugin.name + plugin.version + plugin.description + plugin.provider + plugin.category + plugin.packageText)
                .isEmpty());
    QCOMPARE(qobject_interface_iid<PluginInterface*>(), "vornhal.Kestrun/1.1");
}

void InterfacesTest::enumerationsHaveTheValuesOfTheContract()
{
    QCOMPARE(static_cast<int>(Solution::NodeContextMenu), 2);
    QCOMPARE(static_cast<int>(Solution::NodeRename), 8);
    QCOMPARE(static_cast<int>(Solution::NodeDelete), 9);
    QCOMPARE(static_cast<int>(Solution::DataControllerChanged), 4);
    QCOMPARE(static_cast<int>(Solution::LevelConfiguration), 2);
    QCOMPARE(static_cast<int>(Solution::LevelController), 3);
    QCOMPARE(static_cast<int>(Solution::LevelDevice), 5);
}

void InterfacesTest::undoTextsAreThoseOfTheContract()
{
    QCOMPARE(ModelCommandType::insert(), QStringLiteral("PROJECT_MODEL_STACK_INSERT"));
    QCOMPARE(ModelCommandType::remove(), QStringLiteral("PROJECT_MODEL_STACK_REMOVE"));
    QCOMPARE(ModelCommandType::rename(), QStringLiteral("PROJECT_MODEL_STACK_RENAME"));
    QCOMPARE(ModelCommandType::separator(), QStringLiteral("[*PROJECT_MODEL_STACK*]"));
}

QTEST_APPLESS_MAIN(InterfacesTest)
#include "InterfacesTest.moc"
