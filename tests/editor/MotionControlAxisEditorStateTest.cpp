#include "editor/MotionControlAxisEditor.h"

#include "editor/BasicSetWidget.h"
#include "editor/DocumentSetWidget.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisTable.h"
#include "online/OnlineDebugWidget.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "pages/OriginReturnSetWidget.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

const QString axisView = QStringLiteral("AxisView");

/// What happens around an open editor.
enum Event { GoOnline, GoOffline, CompareStarts, CompareEnds };

/// A page of the test's own: a scroll area over a tall content with line edits at fixed places.
class TallPage : public QWidget {
public:
    explicit TallPage(const QString& name) : area(new QScrollArea(this)), content(new QWidget)
    {
        setObjectName(name);
        content->setFixedSize(300, 2000);
        area->setWidget(content);
        area->setGeometry(0, 0, 400, 301);
    }

    QLineEdit* addEdit(const QString& name, QWidget* parent, const QPoint& place)
    {
        auto* edit = new QLineEdit(QStringLiteral("text"), parent);
        edit->setObjectName(name);
        edit->setGeometry(QRect(place, QSize(100, 24)));
        return edit;
    }

    QScrollArea* area;
    QWidget* content;
};

} // namespace

Q_DECLARE_METATYPE(QVector<Event>)

class MotionControlAxisEditorStateTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pagesFollowTheHost_data();
    void pagesFollowTheHost();
    void withoutTransferPagesStayAsBuilt();
    void openedOnlineIsNotReadOnly();
    void openedDuringAComparison();
    void openedDuringAComparisonOnline();
    void framesAndTabsStayEnabled();
    void setReadOnlyTwiceChangesThePagesOnce();
    void setReadOnlySwitchesThePages();
    void onlinePageHearsOfTheConnection();

    void gotoNowhere();
    void gotoUnknownPageChangesNothing();
    void gotoAPageFocusesNothing();
    void gotoAControlFocusesAndSelectsIt();
    void gotoAControlTakesTheLastSection();
    void gotoAnUnknownControlShowsThePage();
    void gotoClearsOtherSelections();
    void gotoScrollsToTheMiddle_data();
    void gotoScrollsToTheMiddle();
    void gotoWithoutScrollAreaFocusesOnly();
    void gotoARealPin();

    void findsReferences_data();
    void findsReferences();
    void referencesTellThePlace();
    void referencesNeedHostAndTree();

    void clickOnAPinMovesTheFindPosition();
    void findPositionIsEmptyForAnotherEditor();

private:
    std::unique_ptr<MotionControlAxisEditor> open() const;
    QString path() const { return m_project->axisPath(m_axis->id()); }
    static PropertyEditorView* viewOf(IEditor& editor) { return qobject_cast<PropertyEditorView*>(editor.widget()); }
    static QWidget* contentOf(const QWidget* page)
    {
        const auto* area = page ? page->findChild<QScrollArea*>() : nullptr;
        return area ? area->widget() : nullptr;
    }
    /// Whether the contents of the four setting pages are enabled; "mixed" when they differ.
    static QString settingState(const IEditor& editor, QWidget* view);
    static bool onlineEnabled(QWidget* view) { return contentOf(view->findChild<OnlineDebugWidget*>())->isEnabled(); }
    void happen(Event event);
    TallPage* addTallPage(IEditor& editor, const QString& name) const;

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    AxisTable* m_axis = nullptr;
};

void MotionControlAxisEditorStateTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"), QStringLiteral("Axis_Pulse"));
}

void MotionControlAxisEditorStateTest::cleanup()
{
    m_project.reset();
    m_host.reset();
}

std::unique_ptr<MotionControlAxisEditor> MotionControlAxisEditorStateTest::open() const
{
    auto editor = std::make_unique<MotionControlAxisEditor>();
    return editor->open(path(), axisView) ? std::move(editor) : nullptr;
}

QString MotionControlAxisEditorStateTest::settingState(const IEditor& editor, QWidget* view)
{
    Q_UNUSED(editor)
    const QList<const QWidget*> pages{ view->findChild<BasicSetWidget*>(), view->findChild<DocumentSetWidget*>(),
        view->findChild<ModelAndParamtSetWidget*>(), view->findChild<OriginReturnSetWidget*>() };
    QSet<bool> states;
    for (const QWidget* page : pages) {
        for (const QScrollArea* area : page->findChildren<QScrollArea*>())
            states.insert(area->widget()->isEnabled());
    }
    if (states.size() != 1)
        return QStringLiteral("mixed");
    return *states.begin() ? QStringLiteral("enabled") : QStringLiteral("disabled");
}

void MotionControlAxisEditorStateTest::happen(Event event)
{
    switch (event) {
    case GoOnline:
        m_host->transfer.setOnline(true);
        break;
    case GoOffline:
        m_host->transfer.setOnline(false);
        break;
    case CompareStarts:
        m_host->comparatorMan.setComparing(true);
        break;
    case CompareEnds:
        m_host->comparatorMan.setComparing(false);
        break;
    }
}

TallPage* MotionControlAxisEditorStateTest::addTallPage(IEditor& editor, const QString& name) const
{
    auto* page = new TallPage(name);
    viewOf(editor)->addTab(page, name);
    return page;
}

void MotionControlAxisEditorStateTest::pagesFollowTheHost_data()
{
    QTest::addColumn<QVector<Event>>("events");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("online");
    QTest::addColumn<bool>("readOnly");
    const QString on = QStringLiteral("enabled");
    const QString off = QStringLiteral("disabled");
    using Events = QVector<Event>;
    QTest::newRow("opened off line") << Events{} << on << false << false;
    QTest::newRow("going on line") << Events{ GoOnline } << off << true << false;
    QTest::newRow("going off line again") << Events{ GoOnline, GoOffline } << on << false << false;
    QTest::newRow("a comparison starts off line") << Events{ CompareStarts } << off << true << true;
    QTest::newRow("a comparison ends off line") << Events{ CompareStarts, CompareEnds } << on << false << false;
    QTest::newRow("a comparison starts on line") << Events{ GoOnline, CompareStarts } << off << true << false;
    QTest::newRow("a comparison ends on line")
        << Events{ GoOnline, CompareStarts, CompareEnds } << off << true << false;
    QTest::newRow("going on line during a comparison") << Events{ CompareStarts, GoOnline } << off << true << true;
    QTest::newRow("a comparison from before ends on line")
        << Events{ CompareStarts, GoOnline, CompareEnds } << off << true << true;
    QTest::newRow("going off line during a comparison")
        << Events{ CompareStarts, GoOnline, GoOffline } << on << false << true;
    QTest::newRow("a comparison that ends off line after that")
        << Events{ CompareStarts, GoOnline, GoOffline, CompareEnds } << on << false << false;
}

void MotionControlAxisEditorStateTest::pagesFollowTheHost()
{
    QFETCH(QVector<Event>, events);
    QFETCH(QString, setting);
    QFETCH(bool, online);
    QFETCH(bool, readOnly);
    const auto editor = open();
    QVERIFY(editor);
    for (const Event event : events)
        happen(event);
    QCOMPARE(settingState(*editor, editor->widget()), setting);
    QCOMPARE(onlineEnabled(editor->widget()), online);
    QCOMPARE(editor->isReadOnly(), readOnly);
}

void MotionControlAxisEditorStateTest::withoutTransferPagesStayAsBuilt()
{
    m_host->withhold(QStringLiteral("zelport.Transfer"));
    const auto editor = open();
    QCOMPARE(settingState(*editor, editor->widget()), QStringLiteral("enabled"));
    QVERIFY(onlineEnabled(editor->widget()));
    QVERIFY(!editor->isReadOnly());
    // Without a connection to ask, a comparison rules the pages.
    m_host->comparatorMan.setComparing(true);
    QVERIFY(editor->isReadOnly());
    QCOMPARE(settingState(*editor, editor->widget()), QStringLiteral("disabled"));
}

void MotionControlAxisEditorStateTest::openedOnlineIsNotReadOnly()
{
    m_host->transfer.setOnline(true);
    const auto editor = open();
    QCOMPARE(settingState(*editor, editor->widget()), QStringLiteral("disabled"));
    QVERIFY(onlineEnabled(editor->widget()));
    QVERIFY(!editor->isReadOnly());
}

void MotionControlAxisEditorStateTest::openedDuringAComparison()
{
    m_host->cookies.setValue(QStringLiteral("IDE/ProjectCompration"), true);
    const auto editor = open();
    QCOMPARE(m_host->cookies.lastFallback(QStringLiteral("IDE/ProjectCompration")), QVariant(false));
    QCOMPARE(settingState(*editor, editor->widget()), QStringLiteral("disabled"));
    QVERIFY(onlineEnabled(editor->widget()));
    QVERIFY(editor->isReadOnly());
}

void MotionControlAxisEditorStateTest::openedDuringAComparisonOnline()
{
    m_host->cookies.setValue(QStringLiteral("IDE/ProjectCompration"), true);
    m_host->transfer.setOnline(true);
    const auto editor = open();
    QVERIFY(!editor->isReadOnly());
    QCOMPARE(settingState(*editor, editor->widget()), QStringLiteral("disabled"));
}

void MotionControlAxisEditorStateTest::framesAndTabsStayEnabled()
{
    const auto editor = open();
    m_host->transfer.setOnline(true);
    QVERIFY(editor->widget()->isEnabled());
    for (const QScrollArea* area : editor->widget()->findChildren<QScrollArea*>())
        QVERIFY(area->isEnabled());
    m_host->transfer.setOnline(false);
    for (const QScrollArea* area : editor->widget()->findChildren<QScrollArea*>())
        QVERIFY(area->isEnabled());
}

void MotionControlAxisEditorStateTest::setReadOnlyTwiceChangesThePagesOnce()
{
    const auto editor = open();
    editor->setReadOnly(true);
    QWidget* content = contentOf(editor->widget()->findChild<BasicSetWidget*>());
    QVERIFY(!content->isEnabled());
    content->setEnabled(true);
    editor->setReadOnly(true);
    QVERIFY(content->isEnabled());
    QVERIFY(editor->isReadOnly());
}

void MotionControlAxisEditorStateTest::setReadOnlySwitchesThePages()
{
    const auto editor = open();
    editor->setReadOnly(true);
    QVERIFY(editor->isReadOnly());
    QCOMPARE(settingState(*editor, editor->widget()), QStringLiteral("disabled"));
    QVERIFY(onlineEnabled(editor->widget()));
    editor->setReadOnly(false);
    QVERIFY(!editor->isReadOnly());
    QCOMPARE(settingState(*editor, editor->widget()), QStringLiteral("enabled"));
    QVERIFY(!onlineEnabled(editor->widget()));
}

void MotionControlAxisEditorStateTest::onlinePageHearsOfTheConnection()
{
    const auto editor = open();
    auto* page = editor->widget()->findChild<OnlineDebugWidget*>();
    const char* const signal = SIGNAL(onlineState(bool));
    const char* const slot = SLOT(onlineStatechanged(bool));
    QVERIFY(disconnect(&m_host->transfer, signal, editor.get(), slot));
    QVERIFY(!disconnect(&m_host->transfer, signal, editor.get(), slot));
    QVERIFY(disconnect(&m_host->transfer, signal, page, slot));
    QVERIFY(!disconnect(&m_host->transfer, signal, page, slot));
    QVERIFY(
        disconnect(&m_host->comparatorMan, SIGNAL(cmpStateChanged(bool)), editor.get(), SLOT(onCmpStateChanged(bool))));
}

void MotionControlAxisEditorStateTest::gotoNowhere()
{
    const auto editor = open();
    QVERIFY(!editor->gotoLocation(QString()));
}

void MotionControlAxisEditorStateTest::gotoUnknownPageChangesNothing()
{
    const auto editor = open();
    QWidget* before = viewOf(*editor)->currentWidget();
    QVERIFY(editor->gotoLocation(QStringLiteral("NoSuchPage.lineEditPos")));
    QCOMPARE(viewOf(*editor)->currentWidget(), before);
}

void MotionControlAxisEditorStateTest::gotoAPageFocusesNothing()
{
    const auto editor = open();
    editor->widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor->widget()));
    TallPage* page = addTallPage(*editor, QStringLiteral("TallPage"));
    QLineEdit* edit = page->addEdit(QStringLiteral("edit"), page->content, QPoint(0, 1500));
    QVERIFY(editor->gotoLocation(QStringLiteral("TallPage")));
    QCOMPARE(viewOf(*editor)->currentWidget(), page);
    QVERIFY(!edit->hasFocus());
    QVERIFY(!edit->hasSelectedText());
    QCOMPARE(page->area->verticalScrollBar()->value(), 0);
}

void MotionControlAxisEditorStateTest::gotoAControlFocusesAndSelectsIt()
{
    const auto editor = open();
    TallPage* page = addTallPage(*editor, QStringLiteral("TallPage"));
    QLineEdit* edit = page->addEdit(QStringLiteral("edit"), page->content, QPoint(0, 10));
    editor->widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor->widget()));
    QVERIFY(editor->gotoLocation(QStringLiteral("TallPage.edit")));
    QCOMPARE(viewOf(*editor)->currentWidget(), page);
    QVERIFY(edit->hasFocus());
    QCOMPARE(edit->selectedText(), QStringLiteral("text"));
}

void MotionControlAxisEditorStateTest::gotoAControlTakesTheLastSection()
{
    const auto editor = open();
    TallPage* page = addTallPage(*editor, QStringLiteral("TallPage"));
    QLineEdit* first = page->addEdit(QStringLiteral("first"), page->content, QPoint(0, 10));
    QLineEdit* last = page->addEdit(QStringLiteral("last"), page->content, QPoint(0, 50));
    QVERIFY(editor->gotoLocation(QStringLiteral("TallPage.first.last")));
    QVERIFY(last->hasSelectedText());
    QVERIFY(!first->hasSelectedText());
}

void MotionControlAxisEditorStateTest::gotoAnUnknownControlShowsThePage()
{
    const auto editor = open();
    TallPage* page = addTallPage(*editor, QStringLiteral("TallPage"));
    QVERIFY(editor->gotoLocation(QStringLiteral("TallPage.nothing")));
    QCOMPARE(viewOf(*editor)->currentWidget(), page);
}

void MotionControlAxisEditorStateTest::gotoClearsOtherSelections()
{
    const auto editor = open();
    TallPage* page = addTallPage(*editor, QStringLiteral("TallPage"));
    QLineEdit* first = page->addEdit(QStringLiteral("first"), page->content, QPoint(0, 10));
    QLineEdit* last = page->addEdit(QStringLiteral("last"), page->content, QPoint(0, 50));
    TallPage* elsewhere = addTallPage(*editor, QStringLiteral("Elsewhere"));
    QLineEdit* untouched = elsewhere->addEdit(QStringLiteral("other"), elsewhere->content, QPoint(0, 10));
    for (QLineEdit* edit : { first, last, untouched })
        edit->selectAll();
    QVERIFY(editor->gotoLocation(QStringLiteral("TallPage")));
    QVERIFY(!first->hasSelectedText());
    QVERIFY(!last->hasSelectedText());
    QVERIFY(untouched->hasSelectedText());
}

void MotionControlAxisEditorStateTest::gotoScrollsToTheMiddle_data()
{
    QTest::addColumn<int>("boxTop");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("scrolled");
    // The area is 301 high, the content 2000, the control 24. The control's own position counts twice.
    QTest::newRow("negative target: to the top") << -1 << 10 << 0;
    QTest::newRow("just below 0: to the top") << -1 << 63 << 0;
    QTest::newRow("just above 0") << -1 << 64 << 1;
    QTest::newRow("in the middle: 2 * 400 + 24 + 150 - 301") << -1 << 400 << 673;
    QTest::newRow("past the end: to the bottom, 2000 - 301") << -1 << 1500 << 1699;
    QTest::newRow("in a box: 500 + 2 * 30 + 24 + 150 - 301") << 500 << 30 << 433;
}

void MotionControlAxisEditorStateTest::gotoScrollsToTheMiddle()
{
    QFETCH(int, boxTop);
    QFETCH(int, top);
    QFETCH(int, scrolled);
    const auto editor = open();
    auto* page = new TallPage(QStringLiteral("TallPage"));
    QWidget* parent = page->content;
    if (boxTop >= 0) {
        parent = new QWidget(page->content);
        parent->setGeometry(0, boxTop, 300, 200);
    }
    page->addEdit(QStringLiteral("edit"), parent, QPoint(0, top));
    viewOf(*editor)->addTab(page, QStringLiteral("tall"));
    editor->widget()->show();
    QVERIFY(QTest::qWaitForWindowExposed(editor->widget()));
    QVERIFY(editor->gotoLocation(QStringLiteral("TallPage")));
    QTRY_VERIFY(page->isVisible());
    QCOMPARE(page->area->height(), 301);
    // Far from any target, so that a value that is set shows.
    page->area->verticalScrollBar()->setValue(77);
    QVERIFY(editor->gotoLocation(QStringLiteral("TallPage.edit")));
    QCOMPARE(page->area->verticalScrollBar()->value(), scrolled);
}

void MotionControlAxisEditorStateTest::gotoWithoutScrollAreaFocusesOnly()
{
    const auto editor = open();
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("FlatPage"));
    auto* edit = new QLineEdit(QStringLiteral("text"), page);
    edit->setObjectName(QStringLiteral("edit"));
    viewOf(*editor)->addTab(page, QStringLiteral("flat"));
    QVERIFY(editor->gotoLocation(QStringLiteral("FlatPage.edit")));
    QVERIFY(edit->hasSelectedText());
}

void MotionControlAxisEditorStateTest::gotoARealPin()
{
    m_axis->setProperty(QStringLiteral("NegsLimitEnable"), QStringLiteral("TRUE"));
    const auto editor = open();
    editor->widget()->resize(700, 400);
    editor->widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor->widget()));
    auto* page = editor->widget()->findChild<OriginReturnSetWidget*>();
    auto* pin = page->findChild<QLineEdit*>(QStringLiteral("lineEditNeg"));
    const QString location = page->objectName() + QStringLiteral(".lineEditNeg");
    QVERIFY(editor->gotoLocation(location));
    QCOMPARE(viewOf(*editor)->currentWidget(), page);
    QTRY_VERIFY(pin->hasFocus());
    QCOMPARE(pin->selectedText(), pin->text());
    QVERIFY(!pin->visibleRegion().isEmpty());
}

void MotionControlAxisEditorStateTest::findsReferences_data()
{
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<QStringList>("pins");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("labels");
    const auto three = [](const char* a, const char* b, const char* c) {
        return QStringList{ QString::fromLatin1(a), QString::fromLatin1(b), QString::fromLatin1(c) };
    };
    const QString stop = QStringLiteral("Main.stop");
    // Columns in the order negative, positive, origin.
    QTest::newRow("three results in order")
        << three("TRUE", "TRUE", "TRUE") << three("Main.stop", "Main.stop", "Main.stop") << stop
        << three("Negative limit:Main.stop", "Positive limit:Main.stop", "Origin signal:Main.stop");
    QTest::newRow("enable words in any case")
        << three("true", "True", "FALSE") << three("Main.stop", "Main.stop", "Main.stop") << stop
        << QStringList{ QStringLiteral("Negative limit:Main.stop"), QStringLiteral("Positive limit:Main.stop") };
    QTest::newRow("disabled pins are left out")
        << three("FALSE", "", "1") << three("Main.stop", "Main.stop", "Main.stop") << stop << QStringList();
    QTest::newRow("only the pin that begins the path")
        << three("TRUE", "TRUE", "TRUE") << three("Main.st", "Main.door", "Main.stop") << stop
        << QStringList{ QStringLiteral("Origin signal:Main.stop") };
    QTest::newRow("the pin's segments begin the path's")
        << three("TRUE", "FALSE", "FALSE") << three("Main.door", "", "") << QStringLiteral("Main.door.open")
        << QStringList{ QStringLiteral("Negative limit:Main.door") };
    QTest::newRow("the pin is taken as a whole, unparsed")
        << three("TRUE", "FALSE", "FALSE") << three("Main.stop AND Main.stop", "", "") << stop << QStringList();
}

void MotionControlAxisEditorStateTest::findsReferences()
{
    QFETCH(QStringList, enabled);
    QFETCH(QStringList, pins);
    QFETCH(QString, path);
    QFETCH(QStringList, labels);
    const auto editor = open();
    const QStringList enableKeys{ QStringLiteral("NegsLimitEnable"), QStringLiteral("PosLimitEnable"),
        QStringLiteral("OrgSignalEnable") };
    const QStringList pinKeys{ QStringLiteral("NegLimitPin"), QStringLiteral("PosLimitPin"),
        QStringLiteral("OrgSignalPin") };
    for (int row = 0; row < 3; ++row) {
        m_axis->setProperty(enableKeys.at(row), enabled.at(row));
        m_axis->setProperty(pinKeys.at(row), pins.at(row));
    }
    QVector<FindResult> results;
    QVERIFY(editor->findReferences(path, results));
    QStringList found;
    for (const FindResult& result : results)
        found.append(result.label);
    QCOMPARE(found, labels);
}

void MotionControlAxisEditorStateTest::referencesTellThePlace()
{
    const auto editor = open();
    const QString pin = QStringLiteral("Main.stop");
    for (const char* key : { "NegsLimitEnable", "PosLimitEnable", "OrgSignalEnable" })
        m_axis->setProperty(QString::fromLatin1(key), QStringLiteral("TRUE"));
    for (const char* key : { "NegLimitPin", "PosLimitPin", "OrgSignalPin" })
        m_axis->setProperty(QString::fromLatin1(key), pin);
    QVector<FindResult> results{ FindResult() };
    QVERIFY(editor->findReferences(pin, results));
    QCOMPARE(results.size(), 4);
    QCOMPARE(results.first().kind, -1);
    const QString page = editor->widget()->findChild<OriginReturnSetWidget*>()->objectName();
    QVERIFY(!page.isEmpty());
    // The first two controls stand crossed over.
    const QStringList controls{ QStringLiteral(".lineEditPos"), QStringLiteral(".lineEditNeg"),
        QStringLiteral(".lineEditOrg") };
    for (int row = 0; row < 3; ++row) {
        const FindResult& result = results.at(row + 1);
        QCOMPARE(result.typeKey, axisView);
        QCOMPARE(result.nodePath, path());
        QCOMPARE(result.objectName, QStringLiteral("Feeder"));
        QCOMPARE(result.text, pin);
        QCOMPARE(result.matchedText, pin);
        QCOMPARE(result.dataType, QStringLiteral("BOOL"));
        QVERIFY(result.section.isEmpty());
        QVERIFY(result.access.isEmpty());
        QCOMPARE(result.location, QString(page + controls.at(row)));
        QCOMPARE(result.kind, 1);
    }
}

void MotionControlAxisEditorStateTest::referencesNeedHostAndTree()
{
    const auto editor = open();
    QVector<FindResult> results;
    m_host->withhold(QStringLiteral("Solution.View"));
    QVERIFY(!editor->findReferences(QStringLiteral("Main.stop"), results));
    m_host->restore(QStringLiteral("Solution.View"));
    QVERIFY(editor->findReferences(QStringLiteral("Main.stop"), results));
    QVERIFY(results.isEmpty());
}

void MotionControlAxisEditorStateTest::clickOnAPinMovesTheFindPosition()
{
    for (const char* key : { "NegsLimitEnable", "PosLimitEnable", "OrgSignalEnable" })
        m_axis->setProperty(QString::fromLatin1(key), QStringLiteral("TRUE"));
    auto* editor = open().release();
    m_host->editorManager.adoptEditor(path(), editor);
    editor->widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor->widget()));
    auto* page = editor->widget()->findChild<OriginReturnSetWidget*>();
    viewOf(*editor)->setCurrentWidget(page);
    qRegisterMetaType<IEditor*>();
    const QSignalSpy messages(&m_host->editorManager, &IEditorManager::editorMessage);
    for (const char* name : { "lineEditPos", "lineEditNeg", "lineEditOrg" }) {
        auto* pin = page->findChild<QLineEdit*>(QString::fromLatin1(name));
        QTest::mouseClick(pin, Qt::LeftButton);
        QCOMPARE(editor->currentFindPosition(), QString::fromLatin1(name));
        QCOMPARE(messages.last().at(0).value<IEditor*>(), editor);
        QCOMPARE(messages.last().at(1).toString(), QStringLiteral("UPDATE_FIND_INDEX"));
        QCOMPARE(messages.last().at(2).toString(), QString::fromLatin1(name));
    }
    page->findChild<QLineEdit*>(QStringLiteral("lineEdit_7"))->setFocus();
    QTest::mouseClick(page->findChild<QLineEdit*>(QStringLiteral("lineEdit_7")), Qt::LeftButton);
    QCOMPARE(editor->currentFindPosition(), QString());
    QCOMPARE(messages.last().at(2).toString(), QString());
    m_host->editorManager.closeAllEditors();
}

void MotionControlAxisEditorStateTest::findPositionIsEmptyForAnotherEditor()
{
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    auto* editor = open().release();
    m_host->editorManager.adoptEditor(path(), editor);
    editor->widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor->widget()));
    auto* page = editor->widget()->findChild<OriginReturnSetWidget*>();
    viewOf(*editor)->setCurrentWidget(page);
    QTest::mouseClick(page->findChild<QLineEdit*>(QStringLiteral("lineEditPos")), Qt::LeftButton);
    QCOMPARE(editor->currentFindPosition(), QStringLiteral("lineEditPos"));

    AxisTable* other = m_project->addAxis(QStringLiteral("Gripper"));
    auto* second = new MotionControlAxisEditor;
    QVERIFY(second->open(m_project->axisPath(other->id()), axisView));
    m_host->editorManager.adoptEditor(m_project->axisPath(other->id()), second);
    QCOMPARE(editor->currentFindPosition(), QString());
    m_host->withhold(QStringLiteral("editor"));
    QCOMPARE(editor->currentFindPosition(), QStringLiteral("lineEditPos"));
    m_host->restore(QStringLiteral("editor"));
    m_host->editorManager.closeAllEditors();
}

QTEST_MAIN(MotionControlAxisEditorStateTest)
#include "MotionControlAxisEditorStateTest.moc"
