#include "sdk/EditorLocation.h"
#include "sdk/FindResult.h"
#include "sdk/IApplication.h"
#include "sdk/IComparator.h"
#include "sdk/IComparatorMan.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "sdk/IEditorFinder.h"
#include "sdk/IEditorManager.h"
#include "sdk/ILogManager.h"
#include "sdk/ILogger.h"
#include "sdk/MotionControlDebug.h"
#include "sdk/PluginInterface.h"
#include "sdk/SolutionTypes.h"
#include "sdk/SolutionView.h"
#include "sdk/SolutionViewHelper.h"
#include "sdk/Transaction.h"
#include "sdk/Transfer.h"

#include <QPixmap>
#include <QtTest>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>

namespace {

// A pointer to a virtual operation tells the operation's slot in the Itanium C++ ABI, as x86-64 compilers other than
// Microsoft's follow it: 1 + 8 * slot.
#if !defined(__GXX_ABI_VERSION) || !defined(__x86_64__)
#error "pointers to operations do not tell their slots here"
#endif

template <typename Operation>
int slotOf(Operation operation)
{
    static_assert(sizeof operation >= sizeof(std::ptrdiff_t), "a pointer to an operation");
    std::ptrdiff_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return word % 2 == 1 ? static_cast<int>(word / 8) : -1;
}

template <typename... Operations>
QVector<int> slotsOf(Operations... operations)
{
    return { slotOf(operations)... };
}

/// Where a class's own operations begin: after the two destructors, or after all of QObject's operations.
constexpr int firstAfterDestructor = 2;
constexpr int firstAfterQObject = 12;

quintptr placeOf(const void* member)
{
    return reinterpret_cast<quintptr>(member);
}

} // namespace

/// The order of what modules of different makers share: the operations in their slots, the fields in their places.
class InterfaceLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void operationsStandInTheirOrder_data();
    void operationsStandInTheirOrder();
    void pluginMembersStandInTheirOrder();
    void projectInfoIsInOrder_data();
    void projectInfoIsInOrder();
    void projectInfoIsTwelveTextsAndThreeFlags();
    void nodeDescriptionIsInOrder();
    void findResultIsInOrder();
    void editorLocationIsInOrder();
};

void InterfaceLayoutTest::operationsStandInTheirOrder_data()
{
    QTest::addColumn<QVector<int>>("found");
    QTest::addColumn<int>("first");
    const auto row
        = [](const char* name, int first, const QVector<int>& found) { QTest::newRow(name) << found << first; };
    row("IApplication", firstAfterQObject, slotsOf(&IApplication::manager));
    row("PluginInterface", firstAfterQObject, slotsOf(&PluginInterface::initialize, &PluginInterface::finish));
    using Editors = IEditorManager;
    row("IEditorManager", firstAfterQObject,
        slotsOf(&Editors::openEditor, &Editors::addEditorFactory, &Editors::currentEditor, &Editors::activateEditor,
            &Editors::findEditor, &Editors::updateCurrentEditor, &Editors::sendEditorMessage,
            static_cast<void (Editors::*)(IEditor*)>(&Editors::closeEditor)));
    using Solution::View;
    row("Solution::View", firstAfterQObject,
        slotsOf(&View::addNode, &View::insertNode, &View::removeNode, &View::setNodeProperty, &View::nodeProperty,
            &View::childNodes, &View::nodeRow, &View::fileNameOf, &View::nodePathOfFile, &View::nodePathOfKey));
    using Solution::ViewHelper;
    row("Solution::ViewHelper", firstAfterQObject,
        slotsOf(&ViewHelper::pushCommand, &ViewHelper::beginMacro, &ViewHelper::endMacro));
    // The reading of values is the second operation of its own.
    row("IConfiguration", firstAfterQObject + 1, slotsOf(&IConfiguration::value));
    row("ILogManager", firstAfterQObject, slotsOf(&ILogManager::logger));
    row("ILogger", firstAfterDestructor, slotsOf(&ILogger::write));
    row("Transfer", firstAfterQObject, slotsOf(&Transfer::isOnline, &Transfer::isDirectLogin));
    row("IComparatorMan", firstAfterQObject, slotsOf(&IComparatorMan::addComparator));
    row("Transaction", firstAfterQObject, slotsOf(&Transaction::execute));
    row("MotionControlDebug", firstAfterQObject, slotsOf(&MotionControlDebug::createTransaction));
    using Factory = IEditorFactory;
    row("IEditorFactory", firstAfterQObject,
        slotsOf(&Factory::typeKeys, &Factory::createEditor, &Factory::createEditorForPath, &Factory::typeKey,
            &Factory::typeName, &Factory::canCreate, &Factory::createFinder));
    row("IView and IEditor", firstAfterQObject,
        slotsOf(&IView::widget, &IView::displayName, &IView::icon, &IEditor::open, &IEditor::load, &IEditor::reload,
            &IEditor::save, &IEditor::saveAs, &IEditor::gotoLocation, &IEditor::locationInfo, &IEditor::locationText,
            &IEditor::findReferences, &IEditor::setReadOnly, &IEditor::isReadOnly, &IEditor::modifiedHook,
            &IEditor::closeCheck, &IEditor::isModified, &IEditor::nodePath, &IEditor::typeKey, &IEditor::fileFilter,
            &IEditor::saveState, &IEditor::restoreState, &IEditor::activated, &IEditor::contextObject,
            &IEditor::currentContext));
    using Finder = IEditorFinder;
    row("IEditorFinder", firstAfterDestructor,
        slotsOf(&Finder::typeKey, &Finder::nodePath, &Finder::bindNode, &Finder::setFindFlags, &Finder::currentPosition,
            &Finder::optionText, &Finder::startPosition, &Finder::setStartPosition, &Finder::endPosition,
            &Finder::setEndPosition, &Finder::findNext, &Finder::result, &Finder::optionCheckA, &Finder::optionCheckB,
            &Finder::optionCheckC, &Finder::findReferences, &Finder::optionCheckD, &Finder::optionCheckE));
    row("IComparator", firstAfterDestructor,
        slotsOf(&IComparator::typeKey, &IComparator::compare, &IComparator::optionCheck, &IComparator::optionObject));
}

void InterfaceLayoutTest::operationsStandInTheirOrder()
{
    QFETCH(QVector<int>, found);
    QFETCH(int, first);
    QCOMPARE(found.first(), first);
    for (int index = 1; index < found.size(); ++index)
        QVERIFY2(found.at(index - 1) < found.at(index), qPrintable(QStringLiteral("operation %1").arg(index + 1)));
}

void InterfaceLayoutTest::pluginMembersStandInTheirOrder()
{
    struct Plugin : PluginInterface {
        bool initialize() override { return true; }
        void finish() override { }
    };
    const Plugin plugin;
    const QVector<quintptr> places{ placeOf(&plugin), placeOf(&plugin.name), placeOf(&plugin.version),
        placeOf(&plugin.description), placeOf(&plugin.provider), placeOf(&plugin.category), placeOf(&plugin.loadOrder),
        placeOf(&plugin.state), placeOf(&plugin.enabled), placeOf(&plugin.packageText) };
    QVERIFY(std::adjacent_find(places.begin(), places.end(), std::greater_equal<quintptr>()) == places.end());
}

void InterfaceLayoutTest::projectInfoIsInOrder_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<bool>("current");
    QTest::newRow("first flag") << 1 << false;
    QTest::newRow("second flag") << 2 << false;
    QTest::newRow("third flag") << 3 << true;
}

void InterfaceLayoutTest::projectInfoIsInOrder()
{
    QFETCH(int, flag);
    QFETCH(bool, current);
    const auto text = [](int number) { return QString::number(number); };
    const Solution::ProjectInfo info{ text(1), text(2), text(3), text(4), text(5), text(6), text(7), text(8), text(9),
        text(10), text(11), text(12), flag == 1, flag == 2, flag == 3 };
    QCOMPARE(info.kind, text(7));
    QCOMPARE(info.current, current);
}

void InterfaceLayoutTest::projectInfoIsTwelveTextsAndThreeFlags()
{
    const Solution::ProjectInfo info;
    QVERIFY(!info.readOnly && !info.recovered && !info.current);
    const QString* const texts = &info.name;
    QCOMPARE(placeOf(texts + 6), placeOf(&info.kind));
    QCOMPARE(placeOf(texts + 12), placeOf(&info.readOnly));
    QCOMPARE(placeOf(&info.readOnly + 2), placeOf(&info.current));
}

void InterfaceLayoutTest::nodeDescriptionIsInOrder()
{
    QPixmap image(4, 4);
    image.fill(Qt::red);
    const QMap<QString, QVariant> properties{ { QStringLiteral("NodeType"), QStringLiteral("AxisNode") } };
    const Solution::NodeDescription node{ true, false, QStringLiteral("1"), QStringLiteral("2"), QIcon(image),
        QColor(Qt::red), properties };
    QVERIFY(node.checkable);
    QVERIFY(!node.visible);
    QCOMPARE(node.name, QStringLiteral("1"));
    QCOMPARE(node.displayText, QStringLiteral("2"));
    QVERIFY(!node.icon.isNull());
    QCOMPARE(node.color, QColor(Qt::red));
    QCOMPARE(node.properties, properties);
}

void InterfaceLayoutTest::findResultIsInOrder()
{
    const auto text = [](int number) { return QString::number(number); };
    const FindResult result{ text(1), text(2), text(3), text(4), text(5), text(6), text(7), text(8), text(9), text(10),
        11 };
    const QStringList fields{ result.typeKey, result.nodePath, result.objectName, result.text, result.matchedText,
        result.dataType, result.section, result.access, result.label, result.location };
    for (int index = 0; index < fields.size(); ++index)
        QCOMPARE(fields.at(index), text(index + 1));
    QCOMPARE(result.kind, 11);
}

void InterfaceLayoutTest::editorLocationIsInOrder()
{
    const auto text = [](int number) { return QString::number(number); };
    const EditorLocation location{ text(1), text(2), text(3), text(4), 5, false };
    QCOMPARE(location.text, text(1));
    QCOMPARE(location.matchedText, text(2));
    QCOMPARE(location.location, text(3));
    QCOMPARE(location.label, text(4));
    QCOMPARE(location.data, QVariant(5));
    QVERIFY(!location.atEnd);
}

QTEST_MAIN(InterfaceLayoutTest)
#include "InterfaceLayoutTest.moc"
