#include "workbench/EditorManager.h"
#include "host/projectmodel/AxisTable.h"
#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "tests/support/TestProject.h"
#include "workbench/ProjectTree.h"

#include <QDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTabBar>
#include <QVBoxLayout>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

class FakeEditor : public IEditor {
public:
    explicit FakeEditor(QObject* parent) : IEditor(parent)
    {
        auto* layout = new QVBoxLayout(view.get());
        field = new QLineEdit(view.get());
        layout->addWidget(field);
    }

    QWidget* widget() override { return view.get(); }
    QString displayName() override { return name; }
    bool open(const QString& fileName, const QString&) override
    {
        path = fileName;
        name = fileName.contains(QLatin1String("bad")) ? QString() : fileName.section(QLatin1Char('.'), -1);
        return !name.isEmpty();
    }
    bool load() override { return true; }
    bool reload() override
    {
        ++reloads;
        modified = false;
        return true;
    }
    bool save() override
    {
        ++saves;
        modified = false;
        return saveResult;
    }
    bool saveAs() override { return true; }
    bool gotoLocation(const QString&) override { return true; }
    EditorLocation locationInfo() override { return {}; }
    bool findReferences(const QString&, QVector<FindResult>&) override { return true; }
    void setReadOnly(bool) override { }
    bool isReadOnly() override { return false; }
    bool closeCheck() override { return mayClose; }
    bool isModified() override
    {
        ++asked;
        if (meanwhile)
            meanwhile();
        view->setFocus(Qt::OtherFocusReason);
        return modified;
    }
    QString nodePath() override { return path; }
    QString typeKey() override { return QStringLiteral("Fake"); }
    QByteArray saveState() override { return {}; }
    bool restoreState(const QByteArray&) override { return true; }
    void activated() override { ++activations; }
    IEditContext* currentContext() override { return nullptr; }

    std::unique_ptr<QWidget> view = std::make_unique<QWidget>();
    QLineEdit* field = nullptr;
    QString name;
    QString path;
    bool modified = false;
    bool mayClose = true;
    bool saveResult = true;
    int saves = 0;
    int reloads = 0;
    int asked = 0;
    int activations = 0;
    /// What happens while the editor finishes its input.
    std::function<void()> meanwhile;
};

class FakeFactory : public IEditorFactory {
public:
    QStringList typeKeys() override { return {}; }
    IEditor* createEditor(const QString& fileName, const QString& mimeType) override
    {
        ++created;
        if (fileName.contains(QLatin1String("null")))
            return nullptr;
        auto* editor = new FakeEditor(this);
        editor->open(fileName, mimeType);
        return editor;
    }
    IEditor* createEditorForPath(const QString& fileName, const QString& mimeType) override
    {
        return createEditor(fileName, mimeType);
    }
    QString typeKey() override { return QStringLiteral("Misleading"); }
    QString typeName() override { return QStringLiteral("Fake"); }
    bool canCreate(const QString& mimeType) override { return mimeType == QLatin1String("Fake"); }

    int created = 0;
};

} // namespace

class EditorManagerTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void anEditorOpensAsATab();
    void theSameFileOpensOnce();
    void nothingOpens_data();
    void nothingOpens();
    void anEditorThatFailedToOpenIsDeleted();
    void activatingBringsAnEditorToTheFront();
    void nullAndStrangersAreSurvived();
    void savingAsksFirstAndTellsOfBoth();
    void aSaveThatFailsIsNotToldAsSaved();
    void aSaveThatTheStoreRefusedIsNotToldAsSaved();
    void savingGivesTheFocusBack();
    void savingAllSavesTheChangedOnes();
    void closingDeletesTheEditor();
    void anEditorThatIsClosedWhileItFinishesItsInputStandsUntilThen();
    void aFieldWithoutInputIsNotFinished();
    void whatIsTypedIsFinishedThoughTheTextIsTheOldOne();
    void whatIsTypedIsFinishedThoughAnotherWindowCameBetween_data();
    void whatIsTypedIsFinishedThoughAnotherWindowCameBetween();
    void closingAsks_data();
    void closingAsks();
    void anEditorWhoseObjectWasNotStoredStaysOpen();
    void anEditorThatObjectsStaysOpen();
    void withoutAQuestionToAskNothingIsLost();
    void closingAllTakesTheTabsAway();
    void theCloseButtonOfATabClosesIt();
    void theMiddleButtonClosesATab();
    void titlesDoNotAskTheEditor();
    void aNodeThatIsGoneIsSaidInTheTitle();
    void messagesArePassedOn();
    void noFactoryIsAskedOnceTheyAreForgotten();
    void theCurrentEditorFollowsTheTabs();

private:
    FakeEditor* open(const char* file)
    {
        return static_cast<FakeEditor*>(manager->openEditor(QLatin1String(file), QStringLiteral("Fake")));
    }

    std::unique_ptr<ProjectTree> tree;
    std::unique_ptr<FakeFactory> factory;
    std::unique_ptr<EditorManager> manager;
};

void EditorManagerTest::init()
{
    tree = std::make_unique<ProjectTree>();
    factory = std::make_unique<FakeFactory>();
    manager = std::make_unique<EditorManager>(*tree);
    manager->addEditorFactory(factory.get());
    manager->tabs()->resize(400, 300);
    manager->tabs()->show();
    manager->tabs()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(manager->tabs()));
}

void EditorManagerTest::cleanup()
{
    manager.reset();
    factory.reset();
    tree.reset();
}

void EditorManagerTest::anEditorOpensAsATab()
{
    QSignalSpy created(manager.get(), &IEditorManager::editorCreated);
    FakeEditor* editor = open("P.a");
    QVERIFY(editor);
    QCOMPARE(manager->tabs()->count(), 1);
    QVERIFY(manager->tabs()->tabText(0).startsWith(QLatin1Char('a')));
    QCOMPARE(created.count(), 1);
    QCOMPARE(manager->findEditor(QStringLiteral("P.a"), true), editor);
    QCOMPARE(manager->currentEditor(), editor);
}

void EditorManagerTest::theSameFileOpensOnce()
{
    FakeEditor* editor = open("P.a");
    QCOMPARE(open("P.a"), editor);
    QCOMPARE(factory->created, 1);
    QCOMPARE(manager->tabs()->count(), 1);
}

void EditorManagerTest::nothingOpens_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("type");
    QTest::newRow("for a type that no factory makes") << QStringLiteral("P.a") << QStringLiteral("Misleading");
    QTest::newRow("for an empty type") << QStringLiteral("P.a") << QString();
    QTest::newRow("when the factory gives nothing") << QStringLiteral("P.null") << QStringLiteral("Fake");
    QTest::newRow("when the editor's open failed") << QStringLiteral("P.bad") << QStringLiteral("Fake");
}

void EditorManagerTest::nothingOpens()
{
    QFETCH(QString, file);
    QFETCH(QString, type);
    QSignalSpy created(manager.get(), &IEditorManager::editorCreated);
    QCOMPARE(manager->openEditor(file, type), nullptr);
    QCOMPARE(manager->tabs()->count(), 0);
    QCOMPARE(created.count(), 0);
    QCOMPARE(manager->findEditor(file, true), nullptr);
}

void EditorManagerTest::anEditorThatFailedToOpenIsDeleted()
{
    open("P.bad");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(factory->children().isEmpty());
}

void EditorManagerTest::activatingBringsAnEditorToTheFront()
{
    FakeEditor* first = open("P.a");
    FakeEditor* second = open("P.b");
    manager->activateEditor(second);
    QCOMPARE(manager->currentEditor(), second);
    QVERIFY(second->activations > 0);
    manager->activateEditor(first);
    QCOMPARE(manager->currentEditor(), first);
}

void EditorManagerTest::nullAndStrangersAreSurvived()
{
    FakeEditor* known = open("P.a");
    FakeEditor stranger(nullptr);
    for (IEditor* editor : { static_cast<IEditor*>(nullptr), static_cast<IEditor*>(&stranger) }) {
        manager->activateEditor(editor);
        manager->saveEditor(editor, true);
        manager->saveEditorAs(editor);
        manager->closeEditor(editor);
        QVERIFY(manager->closeAsking({ editor }));
    }
    QCOMPARE(stranger.saves, 0);
    QCOMPARE(manager->currentEditor(), known);
}

void EditorManagerTest::savingAsksFirstAndTellsOfBoth()
{
    FakeEditor* editor = open("P.a");
    QSignalSpy about(manager.get(), &IEditorManager::editorAboutToSave);
    QSignalSpy saved(manager.get(), &IEditorManager::editorSaved);
    manager->saveEditor(editor, true);
    QCOMPARE(editor->asked, 1);
    QCOMPARE(editor->saves, 1);
    QCOMPARE(about.count(), 1);
    QCOMPARE(saved.count(), 1);
    manager->saveEditor(editor, false);
    QCOMPARE(about.count(), 1);
    QCOMPARE(saved.count(), 2);
}

void EditorManagerTest::aSaveThatFailsIsNotToldAsSaved()
{
    FakeEditor* editor = open("P.a");
    editor->saveResult = false;
    QSignalSpy saved(manager.get(), &IEditorManager::editorSaved);
    manager->saveEditor(editor, true);
    QCOMPARE(saved.count(), 0);
}

void EditorManagerTest::savingGivesTheFocusBack()
{
    FakeEditor* editor = open("P.a");
    editor->field->setFocus();
    QTRY_VERIFY(editor->field->hasFocus());
    manager->saveEditor(editor, true);
    QVERIFY(editor->field->hasFocus());
}

void EditorManagerTest::savingAllSavesTheChangedOnes()
{
    FakeEditor* changed = open("P.a");
    FakeEditor* unchanged = open("P.b");
    changed->modified = true;
    manager->saveAllEditors(true);
    QCOMPARE(changed->saves, 1);
    QCOMPARE(unchanged->saves, 0);
}

void EditorManagerTest::closingDeletesTheEditor()
{
    QPointer<FakeEditor> editor = open("P.a");
    QPointer<QWidget> widget = editor->widget();
    QSignalSpy about(manager.get(), &IEditorManager::editorAboutToClose);
    QSignalSpy closed(manager.get(), &IEditorManager::editorClosed);
    manager->closeEditor(editor);
    QCOMPARE(about.count(), 1);
    QCOMPARE(closed.count(), 1);
    QCOMPARE(manager->tabs()->count(), 0);
    QCOMPARE(manager->findEditor(QStringLiteral("P.a"), true), nullptr);
    QCOMPARE(manager->currentEditor(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!editor);
    QVERIFY(!widget);
}

void EditorManagerTest::anEditorThatIsClosedWhileItFinishesItsInputStandsUntilThen()
{
    const QPointer<FakeEditor> editor = open("P.a");
    editor->field->setFocus();
    QTest::keyClicks(editor->field, QStringLiteral("1"));
    bool stands = false;
    editor->meanwhile = [this, editor, &stands] {
        QTimer::singleShot(0, manager.get(), [this, editor] { manager->closeEditor(editor); });
        QEventLoop box;
        QTimer::singleShot(0, &box, [&box] { QTimer::singleShot(0, &box, &QEventLoop::quit); });
        box.exec();
        stands = editor;
        if (!stands)
            QFAIL("The editor was deleted under its own feet.");
    };
    QVERIFY(!manager->finishInput());
    QVERIFY(stands);
    QCOMPARE(manager->tabs()->count(), 0);
    QTRY_VERIFY(!editor);
}

void EditorManagerTest::aFieldWithoutInputIsNotFinished()
{
    FakeEditor* editor = open("P.a");
    editor->field->setText(QStringLiteral("1"));
    editor->field->setFocus();
    QVERIFY(!manager->finishInput());
    QCOMPARE(editor->asked, 0);
    QCOMPARE(manager->untouchedField(), editor->field);
    QTest::keyClicks(editor->field, QStringLiteral("2"));
    QVERIFY(!manager->untouchedField());
    QCOMPARE(manager->finishInput(), static_cast<QWidget*>(editor->field));
    QCOMPARE(editor->asked, 1);
    editor->field->setFocus();
    QVERIFY(!manager->finishInput());
    QCOMPARE(editor->asked, 1);
}

/// A page may have stored what stood there in between, as it does with Return.
void EditorManagerTest::whatIsTypedIsFinishedThoughTheTextIsTheOldOne()
{
    FakeEditor* editor = open("P.a");
    editor->field->setText(QStringLiteral("1"));
    editor->field->setFocus();
    QTest::keyClicks(editor->field, QStringLiteral("2"));
    QTest::keyClick(editor->field, Qt::Key_Return);
    QTest::keyClick(editor->field, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor->field->text(), QStringLiteral("1"));
    QVERIFY(!manager->untouchedField());
    QCOMPARE(manager->finishInput(), static_cast<QWidget*>(editor->field));
    QCOMPARE(editor->asked, 1);
}

void EditorManagerTest::whatIsTypedIsFinishedThoughAnotherWindowCameBetween_data()
{
    QTest::addColumn<bool>("typed");
    QTest::addColumn<bool>("moved");
    QTest::newRow("and gave the focus back") << true << false;
    QTest::newRow("and the focus went to another field first") << true << true;
    QTest::newRow("nothing was typed") << false << false;
    QTest::newRow("nothing was typed, and the focus went to another field first") << false << true;
}

void EditorManagerTest::whatIsTypedIsFinishedThoughAnotherWindowCameBetween()
{
    QFETCH(bool, typed);
    QFETCH(bool, moved);
    FakeEditor* editor = open("P.a");
    auto* other = new QLineEdit(editor->widget());
    other->show();
    editor->field->setFocus();
    if (typed)
        QTest::keyClicks(editor->field, QStringLiteral("1"));
    QDialog dialog(manager->tabs());
    QLineEdit dialogField(&dialog);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTRY_VERIFY(dialogField.hasFocus());
    if (moved)
        other->setFocus();
    dialog.reject();
    manager->tabs()->activateWindow();
    QTRY_VERIFY(moved ? other->hasFocus() : editor->field->hasFocus());
    editor->field->setFocus();
    QTRY_VERIFY(editor->field->hasFocus());
    QCOMPARE(manager->untouchedField(), typed ? nullptr : editor->field);
    QCOMPARE(manager->finishInput(), typed ? editor->field : nullptr);
    QCOMPARE(editor->asked, int(typed));
}

void EditorManagerTest::closingAsks_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<int>("saves");
    QTest::addColumn<int>("reloads");
    QTest::newRow("save") << int(UnsavedAnswer::Save) << true << 1 << 0;
    QTest::newRow("discard reloads") << int(UnsavedAnswer::Discard) << true << 0 << 1;
    QTest::newRow("cancel") << int(UnsavedAnswer::Cancel) << false << 0 << 0;
}

void EditorManagerTest::closingAsks()
{
    QFETCH(int, answer);
    QFETCH(int, saves);
    QFETCH(int, reloads);
    FakeEditor* editor = open("P.a");
    editor->modified = true;
    QStringList asked;
    manager->setAskUnsaved([&](const QStringList& names) {
        asked = names;
        return static_cast<UnsavedAnswer>(answer);
    });
    QTEST(manager->closeAsking({ editor }), "closed");
    QCOMPARE(asked, QStringList(QStringLiteral("a")));
    QCOMPARE(editor->saves, saves);
    QCOMPARE(editor->reloads, reloads);
}

void EditorManagerTest::aSaveThatTheStoreRefusedIsNotToldAsSaved()
{
    TestProject project(QStringLiteral("KM1_M16"), QStringLiteral("P"));
    AxisTable* axis = project.addAxis(QStringLiteral("Feeder"));
    Solution::NodeDescription node;
    node.name = QStringLiteral("P");
    node.properties.insert(QStringLiteral("FileName"), QStringLiteral("P.a"));
    node.properties.insert(QStringLiteral("DataBaseKey"), axis->id());
    QVERIFY(tree->addNode(QString(), node, 0));
    FakeEditor* editor = open("P.a");
    QSignalSpy saved(manager.get(), &IEditorManager::editorSaved);
    axis->modified = true;
    manager->saveEditor(editor, true);
    QCOMPARE(editor->saves, 1);
    QCOMPARE(saved.count(), 0);
    axis->modified = false;
    manager->saveEditor(editor, true);
    QCOMPARE(saved.count(), 1);
}

void EditorManagerTest::anEditorWhoseObjectWasNotStoredStaysOpen()
{
    TestProject project(QStringLiteral("KM1_M16"), QStringLiteral("P"));
    AxisTable* axis = project.addAxis(QStringLiteral("Feeder"));
    axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("7"));
    Solution::NodeDescription node;
    node.name = QStringLiteral("P");
    node.properties.insert(QStringLiteral("FileName"), QStringLiteral("P.a"));
    node.properties.insert(QStringLiteral("DataBaseKey"), axis->id());
    QVERIFY(tree->addNode(QString(), node, 0));
    // The editor answers that it has saved, but its record keeps the mark of what is not stored.
    FakeEditor* editor = open("P.a");
    editor->modified = true;
    manager->setAskUnsaved([](const QStringList&) { return UnsavedAnswer::Save; });
    QVERIFY(!manager->closeAsking({ editor }));
    QCOMPARE(editor->saves, 1);
    QCOMPARE(manager->findEditor(QStringLiteral("P.a"), true), editor);
    axis->modified = false;
    editor->modified = true;
    QVERIFY(manager->closeAsking({ editor }));
    QVERIFY(manager->editors().isEmpty());
}

void EditorManagerTest::anEditorThatObjectsStaysOpen()
{
    FakeEditor* editor = open("P.a");
    editor->mayClose = false;
    QVERIFY(!manager->closeAsking({ editor }));
    QCOMPARE(manager->editors().size(), 1);
}

void EditorManagerTest::withoutAQuestionToAskNothingIsLost()
{
    FakeEditor* editor = open("P.a");
    editor->modified = true;
    QVERIFY(!manager->closeAsking({ editor }));
    QCOMPARE(editor->reloads, 0);
}

void EditorManagerTest::closingAllTakesTheTabsAway()
{
    open("P.a");
    open("P.b");
    manager->closeAllEditors();
    QCOMPARE(manager->tabs()->count(), 0);
    QVERIFY(manager->editors().isEmpty());
}

void EditorManagerTest::theCloseButtonOfATabClosesIt()
{
    open("P.a");
    QTabBar* bar = manager->tabs()->tabBar();
    QWidget* button = bar->tabButton(0, QTabBar::RightSide);
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(manager->tabs()->count(), 0);
}

void EditorManagerTest::theMiddleButtonClosesATab()
{
    open("P.a");
    open("P.b");
    QTabBar* bar = manager->tabs()->tabBar();
    QTest::mouseClick(bar, Qt::MiddleButton, Qt::NoModifier, bar->tabRect(0).center());
    QCOMPARE(manager->editors().size(), 1);
    QCOMPARE(manager->editors().first()->nodePath(), QStringLiteral("P.b"));
}

void EditorManagerTest::titlesDoNotAskTheEditor()
{
    FakeEditor* editor = open("P.a");
    editor->name = QStringLiteral("b&c");
    emit editor->modificationChanged(true);
    manager->updateCurrentEditor();
    QTRY_VERIFY(manager->tabs()->tabText(0).startsWith(QStringLiteral("b&&c")));
    QCOMPARE(manager->title(editor), QStringLiteral("b&c"));
    QCOMPARE(editor->asked, 0);
}

void EditorManagerTest::aNodeThatIsGoneIsSaidInTheTitle()
{
    Solution::NodeDescription node;
    node.name = QStringLiteral("P");
    node.properties.insert(QStringLiteral("FileName"), QStringLiteral("P.a"));
    QVERIFY(tree->addNode(QString(), node, 0));
    FakeEditor* editor = open("P.a");
    QCOMPARE(manager->tabs()->tabText(0), QStringLiteral("a"));
    tree->removeNode(QStringLiteral("P"), true);
    editor->name.clear();
    manager->refreshTitles();
    QTRY_COMPARE(manager->tabs()->tabText(0), QStringLiteral("a (removed)"));
}

void EditorManagerTest::messagesArePassedOn()
{
    FakeEditor* editor = open("P.a");
    QSignalSpy messages(manager.get(), &IEditorManager::editorMessage);
    manager->sendEditorMessage(editor, QStringLiteral("UPDATE_FIND_INDEX"), QStringLiteral("x"));
    QCOMPARE(messages.count(), 1);
    QCOMPARE(messages.first().at(1).toString(), QStringLiteral("UPDATE_FIND_INDEX"));
    QCOMPARE(messages.first().at(2).toString(), QStringLiteral("x"));
}

void EditorManagerTest::noFactoryIsAskedOnceTheyAreForgotten()
{
    manager->forgetFactories();
    QCOMPARE(open("P.a"), nullptr);
    QCOMPARE(factory->created, 0);
}

void EditorManagerTest::theCurrentEditorFollowsTheTabs()
{
    open("P.a");
    FakeEditor* second = open("P.b");
    QSignalSpy current(manager.get(), &IEditorManager::currentEditorChanged);
    QTabBar* bar = manager->tabs()->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(1).center());
    QCOMPARE(current.count(), 1);
    QCOMPARE(manager->currentEditor(), second);
}

QTEST_MAIN(EditorManagerTest)
#include "EditorManagerTest.moc"
