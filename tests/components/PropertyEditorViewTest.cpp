#include "host/components/PropertyEditorView.h"
#include "sdk/IEditContext.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

namespace {

QString a()
{
    return QStringLiteral("first");
}
QString b()
{
    return QStringLiteral("second");
}
QString c()
{
    return QStringLiteral("third");
}

/// A window as a workbench has it, with a project's undo and redo and an editor's view with three pages.
struct Window {
    Window()
    {
        oneLayout.addWidget(&field);
        oneLayout.addWidget(&box);
        view.addTab(&one, a());
        view.addTab(&two, b());
        view.addTab(&three, c());
        undo.setShortcut(QKeySequence::Undo);
        redo.setShortcuts({ QKeySequence(QKeySequence::Redo), QKeySequence(Qt::CTRL + Qt::Key_Y) });
        window.addActions({ &undo, &redo });
        window.setCentralWidget(&view);
        window.show();
        QApplication::setActiveWindow(&window);
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("the window does not become active");
        field.setFocus();
    }

    ~Window() { window.takeCentralWidget(); }

    QTabBar* bar() { return view.findChild<QTabBar*>(); }
    QStringList titles()
    {
        QStringList list;
        for (int i = 0; i < bar()->count(); ++i)
            list.append(bar()->tabText(i));
        return list;
    }

    QMainWindow window;
    QAction undo;
    QAction redo;
    PropertyEditorView view;
    QWidget& one = *new QWidget;
    QWidget& two = *new QWidget;
    QWidget& three = *new QWidget;
    QVBoxLayout& oneLayout = *new QVBoxLayout(&one);
    QLineEdit& field = *new QLineEdit;
    QCheckBox& box = *new QCheckBox;
    QSignalSpy undone{ &undo, &QAction::triggered };
    QSignalSpy redone{ &redo, &QAction::triggered };
};

} // namespace

/// The pages of an editor as tabs.
class PropertyEditorViewTest : public QObject {
    Q_OBJECT

private slots:
    void pagesBecomeTabsInOrder();
    void pagesDieWithTheView();
    void aHiddenTabKeepsItsPage();
    void hiddenTabsComeBackInTheirPlace_data();
    void hiddenTabsComeBackInTheirPlace();
    void unknownTitlesChangeNothing();
    void hidingTheTabInFrontShowsAnother();
    void aPageIsBroughtToTheFront();
    void aHiddenOrForeignPageIsNot();
    void aHiddenPageIsFoundByItsName();
    void aDeletedPageLeavesNoTrace();
    void tabsAreReachedByKeyboard();
    void undoKeysUndoTyping();
    void undoKeysNeverReachTheProject();
    void otherKeysReachTheProject();
    void withoutABlockTheProjectUndoes();
    void theContextIsTheFocusedField();
    void theContextIsEmptyElsewhere();
    void aClickBesideTheFieldsEndsTheEdit();
    void namesForTests();
};

void PropertyEditorViewTest::pagesBecomeTabsInOrder()
{
    Window w;
    QCOMPARE(w.titles(), (QStringList{ a(), b(), c() }));
    QVERIFY(w.view.currentWidget() == &w.one);
    QVERIFY(w.view.isAncestorOf(&w.three));
    w.view.addTab(nullptr, QStringLiteral("none"));
    QCOMPARE(w.bar()->count(), 3);
}

void PropertyEditorViewTest::pagesDieWithTheView()
{
    QPointer<QWidget> shown = new QWidget;
    QPointer<QWidget> hidden = new QWidget;
    {
        PropertyEditorView view;
        view.addTab(shown, a());
        view.addTab(hidden, b());
        view.setTabVisible(b(), false);
    }
    QVERIFY(shown.isNull());
    QVERIFY(hidden.isNull());
}

void PropertyEditorViewTest::aHiddenTabKeepsItsPage()
{
    Window w;
    w.field.setText(QStringLiteral("kept"));
    w.view.setTabVisible(a(), false);
    QVERIFY(!w.view.isTabVisible(a()));
    QVERIFY(!w.field.isVisible());
    QCOMPARE(w.titles(), (QStringList{ b(), c() }));
    w.view.setTabVisible(a(), true);
    QVERIFY(w.view.isTabVisible(a()));
    QCOMPARE(w.field.text(), QStringLiteral("kept"));
}

void PropertyEditorViewTest::hiddenTabsComeBackInTheirPlace_data()
{
    QTest::addColumn<QStringList>("hide");
    QTest::addColumn<QStringList>("show");
    QTest::addColumn<QStringList>("left");

    QTest::newRow("the first") << QStringList{ a() } << QStringList{ a() } << QStringList{ a(), b(), c() };
    QTest::newRow("the last") << QStringList{ c() } << QStringList{ c() } << QStringList{ a(), b(), c() };
    QTest::newRow("all, from the last on")
        << QStringList{ a(), b(), c() } << QStringList{ c(), b(), a() } << QStringList{ a(), b(), c() };
    QTest::newRow("the middle before the first")
        << QStringList{ a(), b() } << QStringList{ b() } << QStringList{ b(), c() };
    QTest::newRow("hidden twice") << QStringList{ b(), b() } << QStringList{ b() } << QStringList{ a(), b(), c() };
    QTest::newRow("shown twice") << QStringList{ b() } << QStringList{ b(), b() } << QStringList{ a(), b(), c() };
    QTest::newRow("shown without having been hidden")
        << QStringList{} << QStringList{ a() } << QStringList{ a(), b(), c() };
}

void PropertyEditorViewTest::hiddenTabsComeBackInTheirPlace()
{
    QFETCH(const QStringList, hide);
    QFETCH(const QStringList, show);
    Window w;
    for (const QString& title : hide)
        w.view.setTabVisible(title, false);
    for (const QString& title : show)
        w.view.setTabVisible(title, true);
    QTEST(w.titles(), "left");
}

void PropertyEditorViewTest::unknownTitlesChangeNothing()
{
    Window w;
    w.view.setTabVisible(QStringLiteral("First"), false);
    w.view.setTabVisible(QString(), false);
    QCOMPARE(w.bar()->count(), 3);
    QVERIFY(!w.view.isTabVisible(QStringLiteral("First")));
}

void PropertyEditorViewTest::hidingTheTabInFrontShowsAnother()
{
    Window w;
    w.view.setCurrentWidget(&w.two);
    w.view.setTabVisible(b(), false);
    QVERIFY(w.view.currentWidget() != &w.two);
    QVERIFY(w.view.currentWidget()->isVisible());
    w.view.setTabVisible(a(), false);
    w.view.setTabVisible(c(), false);
    QVERIFY(w.view.currentWidget() == nullptr);
}

void PropertyEditorViewTest::aPageIsBroughtToTheFront()
{
    Window w;
    w.view.setCurrentWidget(&w.three);
    QVERIFY(w.view.currentWidget() == &w.three);
    QVERIFY(w.three.isVisible());
    QVERIFY(!w.one.isVisible());
}

void PropertyEditorViewTest::aHiddenOrForeignPageIsNot()
{
    Window w;
    QWidget foreign;
    w.view.setTabVisible(b(), false);
    w.view.setCurrentWidget(&w.two);
    w.view.setCurrentWidget(&foreign);
    w.view.setCurrentWidget(nullptr);
    QVERIFY(w.view.currentWidget() == &w.one);
    QVERIFY(!w.two.isVisible());
}

void PropertyEditorViewTest::aHiddenPageIsFoundByItsName()
{
    Window w;
    w.two.setObjectName(QStringLiteral("OriginReturnSetWidget"));
    w.view.setTabVisible(b(), false);
    QVERIFY(w.view.findChild<QWidget*>(QStringLiteral("OriginReturnSetWidget")) == &w.two);
}

void PropertyEditorViewTest::aDeletedPageLeavesNoTrace()
{
    Window w;
    w.view.setTabVisible(b(), false);
    delete &w.two;
    w.view.setTabVisible(b(), true);
    QVERIFY(!w.view.isTabVisible(b()));
    QCOMPARE(w.titles(), (QStringList{ a(), c() }));
}

void PropertyEditorViewTest::tabsAreReachedByKeyboard()
{
    Window w;
    QTest::keyClick(&w.field, Qt::Key_Tab, Qt::ControlModifier);
    QVERIFY(w.view.currentWidget() == &w.two);
    QTest::keyClick(w.bar(), Qt::Key_Right);
    QVERIFY(w.view.currentWidget() == &w.three);
    QTest::keyClick(w.bar(), Qt::Key_Tab, Qt::ControlModifier);
    QVERIFY(w.view.currentWidget() == &w.one);
}

void PropertyEditorViewTest::undoKeysUndoTyping()
{
    Window w;
    w.view.blockUndoRedo(true);
    QVERIFY(w.view.isUndoRedoBlocked());
    QTest::keyClicks(&w.field, QStringLiteral("12"));
    QTest::keyClick(&w.field, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(w.field.text(), QString());
    QTest::keyClick(&w.field, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(w.field.text(), QStringLiteral("12"));
    QTest::keyClick(&w.field, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&w.field, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(w.field.text(), QStringLiteral("12"));
    QCOMPARE(w.undone.count() + w.redone.count(), 0);
}

void PropertyEditorViewTest::undoKeysNeverReachTheProject()
{
    Window w;
    w.view.blockUndoRedo(true);
    for (QWidget* focus : { static_cast<QWidget*>(&w.field), static_cast<QWidget*>(&w.box),
             static_cast<QWidget*>(w.bar()), static_cast<QWidget*>(&w.view) }) {
        focus->setFocus();
        QVERIFY(focus->hasFocus());
        QTest::keyClick(focus, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(focus, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::keyClick(focus, Qt::Key_Y, Qt::ControlModifier);
    }
    QCOMPARE(w.undone.count(), 0);
    QCOMPARE(w.redone.count(), 0);
}

void PropertyEditorViewTest::otherKeysReachTheProject()
{
    Window w;
    w.view.blockUndoRedo(true);
    QAction save;
    save.setShortcut(QKeySequence::Save);
    w.window.addAction(&save);
    QSignalSpy saved(&save, &QAction::triggered);
    w.box.setFocus();
    QTest::keyClick(&w.box, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(saved.count(), 1);
}

void PropertyEditorViewTest::withoutABlockTheProjectUndoes()
{
    Window w;
    QVERIFY(!w.view.isUndoRedoBlocked());
    w.box.setFocus();
    QTest::keyClick(&w.box, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(w.undone.count(), 1);
    w.view.blockUndoRedo(true);
    QTest::keyClick(&w.box, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(w.undone.count(), 1);
    w.view.blockUndoRedo(false);
    QTest::keyClick(&w.box, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(w.undone.count(), 2);
}

void PropertyEditorViewTest::theContextIsTheFocusedField()
{
    Window w;
    IEditContext* context = w.view.getCurrentContext();
    QVERIFY(context != nullptr);
    QVERIFY(!context->canUndo());
    QVERIFY(!context->canRedo());
    QTest::keyClicks(&w.field, QStringLiteral("12"));
    QVERIFY(context->canUndo());
    context->undo();
    QCOMPARE(w.field.text(), QString());
    QVERIFY(!context->canUndo());
    QVERIFY(context->canRedo());
    context->redo();
    QCOMPARE(w.field.text(), QStringLiteral("12"));
}

void PropertyEditorViewTest::theContextIsEmptyElsewhere()
{
    Window w;
    IEditContext* context = w.view.getCurrentContext();
    QTest::keyClicks(&w.field, QStringLiteral("12"));
    w.box.setFocus();
    QVERIFY(!context->canUndo());
    context->undo();
    context->redo();
    QCOMPARE(w.field.text(), QStringLiteral("12"));
    QLineEdit outside(&w.window);
    outside.show();
    outside.setFocus();
    QTest::keyClicks(&outside, QStringLiteral("x"));
    QVERIFY(!context->canUndo());
}

void PropertyEditorViewTest::aClickBesideTheFieldsEndsTheEdit()
{
    Window w;
    QVERIFY(w.field.hasFocus());
    QTest::mouseClick(&w.one, Qt::LeftButton, Qt::NoModifier, QPoint(w.one.width() - 1, w.one.height() - 1));
    QVERIFY(!w.field.hasFocus());
}

void PropertyEditorViewTest::namesForTests()
{
    const PropertyEditorView view;
    QCOMPARE(view.objectName(), QStringLiteral("PropertyEditorView"));
    QVERIFY(view.findChild<QTabWidget*>(QStringLiteral("propertyTabs")) != nullptr);
    QVERIFY(!view.findChild<QTabWidget*>()->accessibleName().isEmpty());
}

QTEST_MAIN(PropertyEditorViewTest)
#include "PropertyEditorViewTest.moc"
