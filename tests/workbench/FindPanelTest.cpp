#include "workbench/FindPanel.h"

#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "sdk/IEditorFinder.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/FindProgram.h"
#include "workbench/SourceEditor.h"
#include "workbench/SourceView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTreeWidget>
#include <QtTest>

namespace {

/// What the finders of a test answer, and what they were asked.
struct Script {
    QStringList places;
    QString position;
    bool readable = true;
    bool endless = false;
    QStringList calls;
};

class ScriptedFinder : public IEditorFinder {
public:
    explicit ScriptedFinder(Script& script) : m_script(script) { }

    QString typeKey() override { return QStringLiteral("Scripted"); }
    QString nodePath() override { return m_path; }
    bool bindNode(const QString& path) override
    {
        m_path = path;
        return true;
    }
    void setFindFlags(int flags) override { m_script.calls.append(QStringLiteral("flags %1").arg(flags)); }
    QString currentPosition() override { return m_script.position; }
    QString startPosition() override { return {}; }
    void setStartPosition(const QString& position) override
    {
        m_next = qMax(0, m_script.places.indexOf(position));
        m_script.calls.append(QStringLiteral("start ") + position);
    }
    QString endPosition() override { return {}; }
    void setEndPosition(const QString& position) override
    {
        m_last = position.isEmpty() ? m_script.places.size() : m_script.places.indexOf(position);
        m_script.calls.append(QStringLiteral("end ") + position);
    }
    bool findNext(const QString& text) override
    {
        m_script.calls.append(QStringLiteral("find ") + text);
        m_result = EditorLocation();
        if (!m_script.readable)
            return false;
        if (m_script.endless)
            m_next = 0;
        if (m_next >= m_last)
            return true;
        m_result.text = m_result.matchedText = m_result.label = m_script.places.at(m_next);
        m_result.location = QStringLiteral("page.") + m_script.places.at(m_next++);
        m_result.atEnd = false;
        return true;
    }
    EditorLocation result() override { return m_result; }
    bool optionCheckA() override { return false; }
    bool optionCheckB() override { return false; }
    bool optionCheckC() override { return false; }
    bool findReferences(const QString&, QVector<FindResult>&) override { return m_script.readable; }

private:
    Script& m_script;
    QString m_path;
    int m_next = 0;
    int m_last = 0;
    EditorLocation m_result;
};

class ScriptedFactory : public IEditorFactory {
    Q_OBJECT

public:
    QStringList typeKeys() override { return { typeKey() }; }
    IEditor* createEditor(const QString&, const QString&) override { return nullptr; }
    IEditor* createEditorForPath(const QString&, const QString&) override { return nullptr; }
    QString typeKey() override { return QStringLiteral("Scripted"); }
    QString typeName() override { return typeKey(); }
    bool canCreate(const QString& mimeType) override { return mimeType == typeKey(); }
    IEditorFinder* createFinder() override { return new ScriptedFinder(script); }

    Script script;
};

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

const char* const mainProgram = "PROGRAM Main\n"
                                "VAR\n"
                                "  front : BOOL;\n"
                                "  back, FRONT2 : BOOL;\n"
                                "END_VAR\n"
                                "front := back AND infeedHome;\n"
                                "END_PROGRAM\n"
                                "PROGRAM Aside\n"
                                "VAR\n"
                                "  front : BOOL;\n"
                                "END_VAR\n"
                                "VAR_EXTERNAL\n"
                                "  InfeedHome : BOOL;\n"
                                "END_VAR\n"
                                "front := infeedHome;\n"
                                "END_PROGRAM\n";

const char* const inputs = "VAR_GLOBAL\n"
                           "  infeedHome AT %IX1.0 : BOOL;\n"
                           "END_VAR\n";

} // namespace

class FindPanelTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theKeyOpensThePanel();
    void theWholeProjectIsSearched_data();
    void theWholeProjectIsSearched();
    void thisEditorAloneIsSearched();
    void anEditorWithoutAFinderIsNamedSo();
    void aResultLeadsToItsControl();
    void keysGoFromPlaceToPlace();
    void theFirstStepBackLeadsToTheLastPlace();
    void aNewTextIsSearchedFirst();
    void aNodeThatIsGoneIsNamed();
    void theSearchGoesByTheContract();
    void itBeginsWhereTheUserIs();
    void aSearchForWholeWordsBeginsThereToo();
    void aPlaceThatTheFinderDoesNotKnowIsNotHandedOver();
    void aFinderThatDoesNotEndIsStopped();
    void anObjectThatCannotBeReadIsNamed();
    void referencesOfAnEnteredVariable();
    void referencesOfABareName();
    void usesOfAGlobalWithoutItsListAreFound();
    void referencesFromTheSource_data();
    void referencesFromTheSource();
    void aSelectedMemberIsThatOfItsProgram();
    void usesByWayOfAnExternalAreFound();
    void aNameOnAProgramsFirstLineIsItsOwn();
    void referencesWithoutASourceAskForTheVariable();
    void anUnknownVariableIsNamed();
    void theMenuOfASourceOffersThem();
    void closingTheProjectEmptiesTheList();

private:
    void setPins(const char* axis, const char* positive, const char* negative, const char* origin);
    void search(const QString& what);
    void addScriptedNode();
    SourceView* openSource() const;

    std::unique_ptr<FindProgram> program;
    /// Fields that lose the focus check their pins; none of these is refused.
    std::unique_ptr<MessageBoxWatcher> boxes;
    ScriptedFactory factory;
};

void FindPanelTest::init()
{
    factory.script = Script();
    boxes = std::make_unique<MessageBoxWatcher>();
    program = std::make_unique<FindProgram>();
    program->create(text("Line"), { text("Feed"), text("Turn") });
    program->project()->sourceModel()->setSource(text("Main"), text(mainProgram));
    program->project()->sourceModel()->setSource(text("LineIO"), text(inputs));
    setPins("Feed", "Main.front", "Main.FRONT2", "%IX1.0");
    setPins("Turn", "Aside.front", "Main.back", "Main.front");
    // The homing page leaves the names of its controls with the record when it is built.
    program->openAxis(text("Turn"));
    program->openAxis(text("Feed"));
}

void FindPanelTest::cleanup()
{
    program.reset();
    const QStringList texts = boxes->texts();
    boxes.reset();
    QCOMPARE(texts, QStringList());
}

void FindPanelTest::setPins(const char* axis, const char* positive, const char* negative, const char* origin)
{
    AxisTable* table = program->axis(text(axis));
    for (const char* key : { "PosLimitEnable", "NegsLimitEnable", "OrgSignalEnable" })
        table->setProperty(text(key), text("TRUE"));
    table->setProperty(text("PosLimitPin"), text(positive));
    table->setProperty(text("NegLimitPin"), text(negative));
    table->setProperty(text("OrgSignalPin"), text(origin));
}

void FindPanelTest::search(const QString& what)
{
    program->press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(program->child<QLineEdit>("text"), what);
    QTest::keyClick(program->child<QLineEdit>("text"), Qt::Key_Return);
}

void FindPanelTest::addScriptedNode()
{
    program->editors().addEditorFactory(&factory);
    Solution::NodeDescription node;
    node.name = text("Scripted");
    node.displayText = text("The object");
    node.properties.insert(text("FileName"), text("Line.Scripted"));
    node.properties.insert(text("MimeType"), text("Scripted"));
    QVERIFY(program->workbench->tree().addNode(text("Line"), node, 0));
}

SourceView* FindPanelTest::openSource() const
{
    program->workbench->workspace().showSource(text("Main"), 1, 1);
    IEditor* editor = program->editors().currentEditor();
    return editor ? qobject_cast<SourceView*>(editor->widget()) : nullptr;
}

void FindPanelTest::theKeyOpensThePanel()
{
    program->child<QLineEdit>("text")->setText(text("former"));
    program->press(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(program->child<QLineEdit>("text")->isVisible());
    QTRY_VERIFY(program->child<QLineEdit>("text")->hasFocus());
    QTest::keyClicks(program->child<QLineEdit>("text"), text("new"));
    QCOMPARE(program->child<QLineEdit>("text")->text(), text("new"));
    QVERIFY(program->child<QPushButton>("find")->isEnabled());
    program->child<QLineEdit>("text")->clear();
    QVERIFY(!program->child<QPushButton>("find")->isEnabled());
}

void FindPanelTest::theWholeProjectIsSearched_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QStringList>("found");
    const QString a = text("Feed Positive limit:Main.front");
    const QString b = text("Feed Negative limit:Main.FRONT2");
    const QString c = text("Turn Positive limit:Aside.front");
    const QString d = text("Turn Origin signal:Main.front");
    QTest::newRow("in any case") << text("Front") << QString() << QStringList{ a, b, c, d };
    QTest::newRow("in this case") << text("front") << text("caseSensitive") << QStringList{ a, c, d };
    QTest::newRow("as a whole word") << text("FRONT") << text("wholeWord") << QStringList{ a, c, d };
    QTest::newRow("as a whole word in this case") << text("FRONT") << text("wholeWord caseSensitive") << QStringList();
    QTest::newRow("backwards") << text("front") << text("backwards") << QStringList{ d, c, b, a };
    QTest::newRow("an address") << text("%IX1") << QString() << QStringList{ text("Feed Origin signal:%IX1.0") };
    QTest::newRow("a text that stands nowhere") << text("nowhere") << QString() << QStringList();
}

void FindPanelTest::theWholeProjectIsSearched()
{
    QFETCH(QString, what);
    QFETCH(QString, options);
    QFETCH(QStringList, found);
    for (const char* option : { "wholeWord", "caseSensitive", "backwards" }) {
        if (options.contains(QLatin1String(option)))
            program->child<QCheckBox>(option)->click();
    }
    search(what);
    QCOMPARE(program->results(), found);
    QVERIFY2(program->status().contains(QString::number(found.size())), qPrintable(program->status()));
}

void FindPanelTest::thisEditorAloneIsSearched()
{
    program->openAxis(text("Turn"));
    program->child<QComboBox>("scope")->setCurrentIndex(1);
    search(text("front"));
    QCOMPARE(program->results(),
        (QStringList{ text("Turn Positive limit:Aside.front"), text("Turn Origin signal:Main.front") }));
}

void FindPanelTest::anEditorWithoutAFinderIsNamedSo()
{
    QVERIFY(openSource());
    program->child<QComboBox>("scope")->setCurrentIndex(1);
    search(text("front"));
    QVERIFY(program->results().isEmpty());
    QCOMPARE(program->status(), text("There is nothing here that can be searched."));
}

void FindPanelTest::aResultLeadsToItsControl()
{
    program->editors().closeAllEditors();
    search(text("back"));
    auto* list = program->child<QTreeWidget>("results");
    QCOMPARE(list->topLevelItemCount(), 1);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    IEditor* editor = program->editors().currentEditor();
    QVERIFY(editor);
    QCOMPARE(editor->nodePath(), program->axisPath(text("Turn")));
    QTRY_VERIFY(QApplication::focusWidget());
    QCOMPARE(FindProgram::focus(), text("lineEditNeg"));
    QVERIFY(editor->widget()->isAncestorOf(QApplication::focusWidget()));
}

void FindPanelTest::keysGoFromPlaceToPlace()
{
    search(text("front"));
    const auto axis = [this] { return program->currentAxis(); };
    const auto focus = &FindProgram::focus;
    program->press(Qt::Key_F3);
    QCOMPARE(axis() + focus(), text("FeedlineEditPos"));
    program->press(Qt::Key_F3);
    QCOMPARE(axis() + focus(), text("FeedlineEditNeg"));
    program->press(Qt::Key_F3);
    QCOMPARE(axis() + focus(), text("TurnlineEditPos"));
    program->press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(axis() + focus(), text("FeedlineEditNeg"));
    program->press(Qt::Key_F3, Qt::ShiftModifier);
    program->press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(axis() + focus(), text("TurnlineEditOrg"));
    program->press(Qt::Key_F3);
    QCOMPARE(axis() + focus(), text("FeedlineEditPos"));
}

void FindPanelTest::theFirstStepBackLeadsToTheLastPlace()
{
    search(text("front"));
    program->press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(program->currentAxis(), text("Turn"));
    QCOMPARE(FindProgram::focus(), text("lineEditOrg"));
}

void FindPanelTest::aNewTextIsSearchedFirst()
{
    program->press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(program->child<QLineEdit>("text"), text("%IX"));
    program->press(Qt::Key_F3);
    QCOMPARE(program->results(), QStringList{ text("Feed Origin signal:%IX1.0") });
    QCOMPARE(FindProgram::focus(), text("lineEditOrg"));
    program->child<QLineEdit>("text")->setText(text("nowhere"));
    program->press(Qt::Key_F3);
    QVERIFY(program->results().isEmpty());
}

void FindPanelTest::aNodeThatIsGoneIsNamed()
{
    search(text("back"));
    program->workbench->tree().removeNode(program->axisPath(text("Turn")), true);
    program->press(Qt::Key_F3);
    QCOMPARE(program->status(), text("Turn is not in the project any more."));
}

void FindPanelTest::theSearchGoesByTheContract()
{
    addScriptedNode();
    factory.script.places = QStringList{ text("one"), text("two") };
    program->child<QCheckBox>("wholeWord")->click();
    program->child<QCheckBox>("caseSensitive")->click();
    program->child<QCheckBox>("backwards")->click();
    search(text("x"));
    QCOMPARE(factory.script.calls,
        (QStringList{
            text("flags 22"), text("start "), text("end "), text("find x"), text("find x"), text("find x") }));
    QCOMPARE(program->results(), (QStringList{ text("The object one"), text("The object two") }));
}

void FindPanelTest::itBeginsWhereTheUserIs()
{
    addScriptedNode();
    factory.script.places = QStringList{ text("one"), text("two"), text("three") };
    factory.script.position = text("two");
    const ProjectFind find(program->workbench->tree(), program->editors());
    FindRequest request;
    request.text = text("x");
    QStringList found;
    const FindOutcome outcome = find.findIn(text("Line.Scripted"), request);
    for (const FoundPlace& place : outcome.places)
        found.append(place.text);
    QCOMPARE(found, (QStringList{ text("two"), text("three"), text("one") }));
}

void FindPanelTest::aSearchForWholeWordsBeginsThereToo()
{
    IEditor* editor = program->openAxis(text("Turn"));
    QVERIFY(editor->gotoLocation(text("OriginReturnSetWidget.lineEditOrg")));
    auto* origin = editor->widget()->findChild<QLineEdit*>(text("lineEditOrg"));
    QVERIFY(origin);
    QTest::mouseClick(origin, Qt::LeftButton);
    program->child<QComboBox>("scope")->setCurrentIndex(1);
    program->child<QCheckBox>("wholeWord")->click();
    search(text("front"));
    QCOMPARE(program->results(),
        (QStringList{ text("Turn Origin signal:Main.front"), text("Turn Positive limit:Aside.front") }));
}

void FindPanelTest::aPlaceThatTheFinderDoesNotKnowIsNotHandedOver()
{
    addScriptedNode();
    factory.script.places = QStringList{ text("one"), text("two") };
    factory.script.position = text("elsewhere");
    const ProjectFind find(program->workbench->tree(), program->editors());
    FindRequest request;
    request.text = text("x");
    QCOMPARE(find.findIn(text("Line.Scripted"), request).places.size(), 2);
    QVERIFY(!factory.script.calls.contains(text("start elsewhere")));
}

void FindPanelTest::aFinderThatDoesNotEndIsStopped()
{
    addScriptedNode();
    factory.script.places = QStringList{ text("one") };
    factory.script.endless = true;
    search(text("zz"));
    QCOMPARE(program->results(), QStringList{ text("The object one") });
    QVERIFY2(program->status().contains(text("The search in The object did not come to an end")),
        qPrintable(program->status()));
    QCOMPARE(factory.script.calls.count(text("find zz")), ProjectFind::maximumAnswers);
}

void FindPanelTest::anObjectThatCannotBeReadIsNamed()
{
    addScriptedNode();
    factory.script.readable = false;
    search(text("%IX1"));
    QCOMPARE(program->results().size(), 1);
    QVERIFY2(program->status().contains(text("The object could not be read.")), qPrintable(program->status()));
    QCOMPARE(factory.script.calls.count(text("find %IX1")), 1);
    program->findReferences(text("Main.front"));
    QVERIFY2(program->status().contains(text("The object could not be read.")), qPrintable(program->status()));
    // Once, however many paths the variable has.
    program->findReferences(text("LineIO.infeedHome"));
    QCOMPARE(program->status().count(text("The object could not be read.")), 1);
}

void FindPanelTest::referencesOfAnEnteredVariable()
{
    QVERIFY(!program->child<QPushButton>("references")->isEnabled());
    QTest::keyClicks(program->child<QLineEdit>("variable"), text(" Main.front "));
    QTest::keyClick(program->child<QLineEdit>("variable"), Qt::Key_Return);
    QCOMPARE(program->results(),
        (QStringList{ text("Feed Positive limit:Main.front"), text("Turn Origin signal:Main.front") }));
    QCOMPARE(program->status(), text("Uses of Main.front: 2."));
    program->press(Qt::Key_F3);
    QCOMPARE(FindProgram::focus(), text("lineEditPos"));
    QCOMPARE(program->currentAxis(), text("Feed"));
}

void FindPanelTest::referencesOfABareName()
{
    program->axis(text("Feed"))->setProperty(text("OrgSignalPin"), text("LineIO.infeedHome"));
    program->findReferences(text("INFEEDHOME"));
    QCOMPARE(program->results(), QStringList{ text("Feed Origin signal:LineIO.infeedHome") });
    QCOMPARE(program->status(), text("Uses of LineIO.infeedHome: 1."));
}

void FindPanelTest::usesOfAGlobalWithoutItsListAreFound()
{
    program->project()->sourceModel()->setSource(text("Guards"),
        text("TYPE Guard : STRUCT\n  open : BOOL;\nEND_STRUCT\nEND_TYPE\nVAR_GLOBAL\n  cover : Guard;\nEND_VAR\n"));
    program->axis(text("Feed"))->setProperty(text("OrgSignalPin"), text("cover.open"));
    for (const char* name : { "cover.open", "Guards.cover.open" }) {
        program->findReferences(text(name));
        QCOMPARE(program->results(), QStringList{ text("Feed Origin signal:cover.open") });
        QCOMPARE(program->status(), text("Uses of Guards.cover.open: 1."));
    }
}

void FindPanelTest::referencesFromTheSource_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("variable");
    QTest::newRow("at its declaration") << 3 << 4 << text("Main.front");
    QTest::newRow("at its use") << 6 << 1 << text("Main.front");
    QTest::newRow("behind its last letter") << 6 << 6 << text("Main.front");
    QTest::newRow("another one of the line") << 6 << 11 << text("Main.back");
    QTest::newRow("of the same name in another program") << 10 << 5 << text("Aside.front");
    QTest::newRow("a global one by its bare name") << 6 << 20 << text("LineIO.infeedHome");
    QTest::newRow("a global one in another program") << 15 << 12 << text("LineIO.infeedHome");
    QTest::newRow("one that is declared as external") << 13 << 4 << text("LineIO.infeedHome");
}

void FindPanelTest::referencesFromTheSource()
{
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(QString, variable);
    program->axis(text("Feed"))->setProperty(text("OrgSignalPin"), text("LineIO.infeedHome"));
    SourceView* source = openSource();
    QVERIFY(source);
    source->goTo(line, column);
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QCOMPARE(program->child<QLineEdit>("variable")->text(), variable);
    QVERIFY(program->child<QTreeWidget>("results")->isVisible());
    QVERIFY(!program->results().isEmpty());
    for (const QString& result : program->results())
        QVERIFY2(result.contains(variable), qPrintable(result));
}

void FindPanelTest::aSelectedMemberIsThatOfItsProgram()
{
    program->project()->sourceModel()->setSource(
        text("Main"), QString(text(mainProgram)).replace(text("back AND"), text("Aside.front AND")));
    SourceView* source = openSource();
    QVERIFY(source);
    QTextCursor word = source->document()->find(text("Aside.front"));
    word.setPosition(word.selectionEnd() - 1);
    // A double click selects the word alone.
    QTest::mouseDClick(source->viewport(), Qt::LeftButton, Qt::NoModifier, source->cursorRect(word).center());
    QCOMPARE(source->textCursor().selectedText(), text("front"));
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QCOMPARE(program->results(), QStringList{ text("Turn Positive limit:Aside.front") });
    QCOMPARE(program->status(), text("Uses of Aside.front: 1."));
}

void FindPanelTest::usesByWayOfAnExternalAreFound()
{
    program->axis(text("Feed"))->setProperty(text("OrgSignalPin"), text("Aside.InfeedHome"));
    for (const char* name : { "LineIO.infeedHome", "Aside.InfeedHome", "infeedHome" }) {
        program->findReferences(text(name));
        QCOMPARE(program->results().filter(text("Aside.InfeedHome")).size(), 1);
    }
}

void FindPanelTest::aNameOnAProgramsFirstLineIsItsOwn()
{
    program->project()->sourceModel()->setSource(
        text("Third"), text("PROGRAM Third VAR front : BOOL; END_VAR\nEND_PROGRAM\n"));
    program->workbench->workspace().showSource(text("Third"), 1, 20);
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QCOMPARE(program->child<QLineEdit>("variable")->text(), text("Third.front"));
}

void FindPanelTest::referencesWithoutASourceAskForTheVariable()
{
    program->openAxis(text("Feed"));
    program->press(Qt::Key_F12, Qt::ShiftModifier);
    QTRY_VERIFY(program->child<QLineEdit>("variable")->hasFocus());
    QVERIFY(program->results().isEmpty());
}

void FindPanelTest::anUnknownVariableIsNamed()
{
    for (const char* name : { "Main.unheard", "..", "Main..front", "<b>" }) {
        program->findReferences(text(name));
        QVERIFY(program->results().isEmpty());
        QCOMPARE(program->status(), QString(text("The project has no variable ") + text(name) + QLatin1Char('.')));
    }
    // The last name is markup: label and tool tip show it as it was typed.
    const auto* label = program->child<QLabel>("status");
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QVERIFY2(label->toolTip().contains(text("&lt;b&gt;")), qPrintable(label->toolTip()));
}

void FindPanelTest::theMenuOfASourceOffersThem()
{
    const SourceView* source = openSource();
    QVERIFY(source->actions().contains(program->workbench->action(text("edit.findReferences"))));
}

void FindPanelTest::closingTheProjectEmptiesTheList()
{
    search(text("front"));
    QVERIFY(!program->results().isEmpty());
    program->workbench->workspace().close();
    QVERIFY(program->results().isEmpty());
    QVERIFY(program->status().isEmpty());
    program->press(Qt::Key_F3);
    QVERIFY(!program->workbench->action(text("edit.find"))->isEnabled());
}

QTEST_MAIN(FindPanelTest)
#include "FindPanelTest.moc"
