#include "editor/AxisFinder.h"

#include "editor/MotionControlAxisEditor.h"
#include "tests/editor/AxisFinderFixture.h"

namespace {

bool isEmptyEnd(const EditorLocation& result)
{
    return result.atEnd && result.text.isEmpty() && result.matchedText.isEmpty() && result.location.isEmpty()
        && result.label.isEmpty() && result.data.isNull();
}

/// An editor that keeps the contract and is no axis editor.
class OtherEditor : public IEditor {
public:
    QWidget* widget() override { return nullptr; }
    QString displayName() override { return QStringLiteral("Other"); }
    bool open(const QString&, const QString&) override { return true; }
    bool load() override { return true; }
    bool reload() override { return true; }
    bool save() override { return true; }
    bool saveAs() override { return true; }
    bool gotoLocation(const QString&) override { return true; }
    EditorLocation locationInfo() override { return {}; }
    bool findReferences(const QString&, QVector<FindResult>&) override { return true; }
    void setReadOnly(bool) override { }
    bool isReadOnly() override { return false; }
    bool isModified() override { return false; }
    QString nodePath() override { return QStringLiteral("Line.Other"); }
    QString typeKey() override { return QStringLiteral("AxisView"); }
    QByteArray saveState() override { return {}; }
    bool restoreState(const QByteArray&) override { return true; }
    void activated() override { }
    IEditContext* currentContext() override { return nullptr; }
};

} // namespace

/// Binding, the order of places, and the search through them.
class AxisFinderTest : public QObject, private AxisFinderFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void newFinderHasNothing();
    void plainAnswers();
    void bindsToANode();
    void bindFailsWithoutAHost();
    void bindFailsWithoutATree();
    void indexHoldsEnabledPinsInOrder_data();
    void indexHoldsEnabledPinsInOrder();
    void flagsTakeEffectWithTheNextStart();
    void indexIsEmptyWithoutARecord_data();
    void indexIsEmptyWithoutARecord();
    void startsAtAGivenPosition();
    void endsAtTheEndPosition();
    void endAtTheCurrentPositionEndsAtOnce();
    void endPositionComparesInAnyCase();
    void endIsReportedAgainAndAgain();
    void endResultIsEmpty();
    void missingRecordStopsTheSearch_data();
    void missingRecordStopsTheSearch();
    void resultTellsThePlace_data();
    void resultTellsThePlace();
    void resultWithoutAPageNameHasABlank();
    void positionInOtherLettersFindsItsPin();
    void positionOutsideTheIndexEndsTheSearch();
    void doubledNamesDoNotHoldTheSearch();
    void aPinWithoutViewInformationEndsTheSearch_data();
    void aPinWithoutViewInformationEndsTheSearch();
    void eachPinIsReportedOnce();
    void matches_data();
    void matches();
    void currentPositionComesFromTheCurrentEditor();
    void anEditorOfAnotherClassHasNoPosition();
};

void AxisFinderTest::newFinderHasNothing()
{
    AxisFinder finder;
    QVERIFY(finder.nodePath().isEmpty());
    QVERIFY(finder.startPosition().isEmpty());
    QVERIFY(finder.endPosition().isEmpty());
    QVERIFY(isEmptyEnd(finder.result()));
    QVERIFY(finder.findNext(QStringLiteral("x")));
    QVERIFY(isEmptyEnd(finder.result()));
}

void AxisFinderTest::plainAnswers()
{
    QCOMPARE(m_finder->typeKey(), QStringLiteral("AxisView"));
    QCOMPARE(m_finder->optionText(), QString());
    QVERIFY(!m_finder->optionCheckA() && !m_finder->optionCheckB() && !m_finder->optionCheckC());
    QVERIFY(!m_finder->optionCheckD() && !m_finder->optionCheckE());
}

void AxisFinderTest::bindsToANode()
{
    QCOMPARE(m_finder->nodePath(), m_project->axisPath(m_axis->id()));
    const QString other = QStringLiteral("Elsewhere.ConfigAndSetup.Axis.AxisView99");
    QVERIFY(m_finder->bindNode(other));
    QCOMPARE(m_finder->nodePath(), other);
    m_finder->setStartPosition(QString());
    QCOMPARE(visited(), QStringList());
}

void AxisFinderTest::bindFailsWithoutAHost()
{
    m_host.reset();
    AxisFinder finder;
    QVERIFY(!finder.bindNode(QStringLiteral("Line.AxisView1")));
    QCOMPARE(finder.nodePath(), QStringLiteral("Line.AxisView1"));
}

void AxisFinderTest::bindFailsWithoutATree()
{
    m_host->withhold(QStringLiteral("Solution.View"));
    QVERIFY(!m_finder->bindNode(m_project->axisPath(m_axis->id())));
}

void AxisFinderTest::indexHoldsEnabledPinsInOrder_data()
{
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<int>("flags");
    QTest::addColumn<QStringList>("order");
    const QStringList all{ QStringLiteral("TRUE"), QStringLiteral("TRUE"), QStringLiteral("TRUE") };
    const QString off = QStringLiteral("FALSE");
    QTest::newRow("forwards: positive, negative, origin") << all << 0 << QStringList{ positive, negative, origin };
    QTest::newRow("backwards: origin, negative, positive") << all << 16 << QStringList{ origin, negative, positive };
    QTest::newRow("other bits do not turn the order")
        << all << (1 | 2 | 4 | 8 | 32) << QStringList{ positive, negative, origin };
    QTest::newRow("origin alone") << QStringList{ off, off, QStringLiteral("TRUE") } << 0 << QStringList{ origin };
    QTest::newRow("words in any case") << QStringList{ QStringLiteral("True"), QStringLiteral("true"), off } << 0
                                       << QStringList{ positive, negative };
    QTest::newRow("another word is off") << QStringList{ QStringLiteral("1"), QString(), QStringLiteral("TRUE ") } << 0
                                         << QStringList();
}

void AxisFinderTest::indexHoldsEnabledPinsInOrder()
{
    QFETCH(QStringList, enabled);
    QFETCH(int, flags);
    QFETCH(QStringList, order);
    set(QStringLiteral("PosLimitEnable"), enabled.at(0));
    set(QStringLiteral("NegsLimitEnable"), enabled.at(1));
    set(QStringLiteral("OrgSignalEnable"), enabled.at(2));
    // The pins are made of one character, so that flag 2 lets the empty text stand as a whole word.
    setPins(QStringLiteral("+"), QStringLiteral("+"), QStringLiteral("+"));
    m_finder->setFindFlags(flags);
    m_finder->setStartPosition(QString());
    QCOMPARE(visited(), order);
    QVERIFY(m_finder->result().atEnd);
}

void AxisFinderTest::flagsTakeEffectWithTheNextStart()
{
    m_finder->setStartPosition(QString());
    m_finder->setFindFlags(FindBackwards);
    QCOMPARE(visited(), (QStringList{ positive, negative, origin }));
    m_finder->setStartPosition(QString());
    QCOMPARE(visited(), (QStringList{ origin, negative, positive }));
}

void AxisFinderTest::indexIsEmptyWithoutARecord_data()
{
    waysToLoseTheRecord();
}

void AxisFinderTest::indexIsEmptyWithoutARecord()
{
    QFETCH(bool, projectClosed);
    m_finder->setStartPosition(QString());
    loseRecord(projectClosed);
    m_finder->setStartPosition(positive);
    QCOMPARE(m_finder->startPosition(), positive);
    QVERIFY(m_finder->findNext(QString()));
    QVERIFY(m_finder->result().atEnd);
}

void AxisFinderTest::startsAtAGivenPosition()
{
    m_finder->setStartPosition(negative);
    QCOMPARE(m_finder->startPosition(), negative);
    QCOMPARE(visited(), (QStringList{ negative, origin }));
}

void AxisFinderTest::endsAtTheEndPosition()
{
    m_finder->setStartPosition(QString());
    m_finder->setEndPosition(negative);
    QCOMPARE(m_finder->endPosition(), negative);
    QCOMPARE(visited(), (QStringList{ positive, negative }));
}

void AxisFinderTest::endAtTheCurrentPositionEndsAtOnce()
{
    m_finder->setStartPosition(QString());
    m_finder->setEndPosition(positive);
    QCOMPARE(m_finder->endPosition(), positive);
    QCOMPARE(visited(), QStringList());
    QVERIFY(m_finder->result().atEnd);
}

void AxisFinderTest::endPositionComparesInAnyCase()
{
    m_finder->setStartPosition(QString());
    m_finder->setEndPosition(positive.toUpper());
    QCOMPARE(visited(), QStringList());
    m_finder->setStartPosition(QString());
    m_finder->setEndPosition(negative.toUpper());
    QCOMPARE(visited(), (QStringList{ positive, negative }));
}

void AxisFinderTest::endIsReportedAgainAndAgain()
{
    enable(false, false, true);
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(QStringLiteral("origin")));
    QVERIFY(!m_finder->result().atEnd);
    for (int call = 0; call < 3; ++call) {
        QVERIFY(m_finder->findNext(QStringLiteral("origin")));
        QVERIFY(m_finder->result().atEnd);
    }
}

void AxisFinderTest::endResultIsEmpty()
{
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(QStringLiteral("posStop")));
    QVERIFY(m_finder->findNext(QStringLiteral("posStop")));
    QVERIFY(isEmptyEnd(m_finder->result()));
}

void AxisFinderTest::missingRecordStopsTheSearch_data()
{
    waysToLoseTheRecord();
}

void AxisFinderTest::missingRecordStopsTheSearch()
{
    QFETCH(bool, projectClosed);
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(QStringLiteral("posStop")));
    const QString before = m_finder->result().location;
    loseRecord(projectClosed);
    QVERIFY(!m_finder->findNext(QStringLiteral("negStop")));
    QCOMPARE(m_finder->result().location, before);
    QVERIFY(!m_finder->result().atEnd);
}

void AxisFinderTest::resultTellsThePlace_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pin");
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("label");
    QTest::newRow("positive limit") << QStringLiteral("posStop") << QStringLiteral("Main.posStop")
                                    << QStringLiteral("HomingPage.posEdit")
                                    << QStringLiteral("Positive limit:Main.posStop");
    QTest::newRow("negative limit") << QStringLiteral("negStop") << QStringLiteral("Main.negStop")
                                    << QStringLiteral("HomingPage.negEdit")
                                    << QStringLiteral("Negative limit:Main.negStop");
    QTest::newRow("origin signal") << QStringLiteral("origin") << QStringLiteral("Main.origin")
                                   << QStringLiteral("HomingPage.orgEdit")
                                   << QStringLiteral("Origin signal:Main.origin");
}

void AxisFinderTest::resultTellsThePlace()
{
    QFETCH(QString, text);
    QFETCH(QString, pin);
    QFETCH(QString, location);
    QFETCH(QString, label);
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(text));
    const EditorLocation result = m_finder->result();
    QCOMPARE(result.text, pin);
    QCOMPARE(result.matchedText, pin);
    QCOMPARE(result.location, location);
    QCOMPARE(result.label, label);
    QVERIFY(result.data.isNull());
    QVERIFY(!result.atEnd);
}

void AxisFinderTest::resultWithoutAPageNameHasABlank()
{
    AxisTable* other = m_project->addAxis(QStringLiteral("Gripper"));
    other->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    other->setViewInfo(QStringLiteral("LineEditPosObjectName"), positive);
    QVERIFY(m_finder->bindNode(m_project->axisPath(other->id())));
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(QStringLiteral("%IX")));
    QCOMPARE(m_finder->result().location, QStringLiteral(" .posEdit"));
}

void AxisFinderTest::positionInOtherLettersFindsItsPin()
{
    m_finder->setStartPosition(origin.toUpper());
    QVERIFY(m_finder->findNext(QStringLiteral("origin")));
    QCOMPARE(m_finder->result().text, QStringLiteral("Main.origin"));
    QCOMPARE(m_finder->result().location, QStringLiteral("HomingPage.ORGEDIT"));
}

void AxisFinderTest::positionOutsideTheIndexEndsTheSearch()
{
    m_finder->setStartPosition(QStringLiteral("elsewhere"));
    QVERIFY(m_finder->findNext(QStringLiteral("Main")));
    QVERIFY(m_finder->result().atEnd);

    enable(false, true, true);
    m_finder->setStartPosition(positive);
    QVERIFY(m_finder->findNext(QStringLiteral("posStop")));
    QCOMPARE(m_finder->result().text, QStringLiteral("Main.posStop"));
    QVERIFY(m_finder->findNext(QStringLiteral("posStop")));
    QVERIFY(m_finder->result().atEnd);
}

void AxisFinderTest::doubledNamesDoNotHoldTheSearch()
{
    m_axis->setViewInfo(QStringLiteral("LineEditNegObjectName"), positive);
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(QStringLiteral("nowhere")));
    QVERIFY(m_finder->result().atEnd);
}

void AxisFinderTest::aPinWithoutViewInformationEndsTheSearch_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("visited");
    const QString none;
    QTest::newRow("no page was ever built") << QStringList{ none, none, none } << QStringList();
    QTest::newRow("the first has no name") << QStringList{ none, negative, origin } << QStringList();
    QTest::newRow("the second has no name") << QStringList{ positive, none, origin } << QStringList{ positive };
    QTest::newRow("the last has no name")
        << QStringList{ positive, negative, none } << QStringList{ positive, negative };
}

void AxisFinderTest::aPinWithoutViewInformationEndsTheSearch()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, visited);
    const char* keys[] = { "LineEditPosObjectName", "LineEditNegObjectName", "LineEditOrgObjectName" };
    AxisTable* axis = m_project->addAxis(QStringLiteral("Gripper"));
    for (int pin = 0; pin < 3; ++pin) {
        if (!names.at(pin).isEmpty())
            axis->setViewInfo(QString::fromLatin1(keys[pin]), names.at(pin));
    }
    for (const char* key : { "PosLimitEnable", "NegsLimitEnable", "OrgSignalEnable" })
        axis->setProperty(QString::fromLatin1(key), QStringLiteral("TRUE"));
    QVERIFY(m_finder->bindNode(m_project->axisPath(axis->id())));
    m_finder->setStartPosition(QString());
    QCOMPARE(this->visited(), visited);
    QVERIFY(isEmptyEnd(m_finder->result()));
    QVERIFY(m_finder->findNext(QStringLiteral("%IX")));
    QVERIFY(isEmptyEnd(m_finder->result()));
}

void AxisFinderTest::eachPinIsReportedOnce()
{
    setPins(QStringLiteral("a.a.a"), QStringLiteral("b"), QStringLiteral("a"));
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(QStringLiteral("a")));
    QCOMPARE(m_finder->result().location, QStringLiteral("HomingPage.posEdit"));
    QVERIFY(m_finder->findNext(QStringLiteral("a")));
    QCOMPARE(m_finder->result().location, QStringLiteral("HomingPage.orgEdit"));
    QVERIFY(m_finder->findNext(QStringLiteral("a")));
    QVERIFY(m_finder->result().atEnd);
}

void AxisFinderTest::matches_data()
{
    QTest::addColumn<QString>("pin");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("found");

    const auto row = [](const char* name, const char* pin, const char* text, int flags, bool found) {
        QTest::newRow(name) << QString::fromUtf8(pin) << QString::fromUtf8(text) << flags << found;
    };
    row("the whole pin", "AB", "AB", 0, true);
    row("a piece at the start", "ABC", "AB", 0, true);
    row("a piece in the middle", "xABx", "AB", 0, true);
    row("a piece at the end", "xAB", "AB", 0, true);
    row("not there", "AB", "C", 0, false);
    row("longer than the pin", "AB", "ABC", 0, false);
    row("other letters without flag 4", "AB", "ab", 0, true);
    row("other letters with flag 4", "AB", "ab", 4, false);
    row("the same letters with flag 4", "xAB", "AB", 4, true);
    row("a whole word", "AB", "AB", 2, true);
    row("a word before an underscore", "AB_1", "AB", 2, false);
    row("a word before a digit", "AB1", "AB", 2, false);
    row("a word before a letter", "ABC", "AB", 2, false);
    row("a word after an underscore", "_AB", "AB", 2, false);
    row("a word after a digit", "1AB", "AB", 2, false);
    row("a word after a letter", "CAB", "AB", 2, false);
    row("a word before a sign", "AB+1", "AB", 2, true);
    row("a word between points", "x.AB.y", "AB", 2, true);
    row("a word before a letter of another script", "ABü", "AB", 2, false);
    row("the second piece is a word", "AB_1+AB", "AB", 2, true);
    row("a whole word in other letters", "x.ab", "AB", 2, true);
    row("a whole word in other letters with flag 4", "x.ab", "AB", 2 | 4, false);
    row("part of a word without flag 2", "AB_1", "AB", 0, true);
    row("other flags are not looked at", "AB_1", "ab", 1 | 8 | 32 | 64, true);
    row("an empty text is found in any pin", "AB", "", 0, true);
    row("an empty text stands as a word between signs", "+AB", "", 2, true);
    row("an empty text stands as a word in no word", "AB", "", 2, false);
    row("an empty pin matches nothing", "", "AB", 0, false);
}

void AxisFinderTest::matches()
{
    QFETCH(QString, pin);
    QFETCH(QString, text);
    QFETCH(int, flags);
    QFETCH(bool, found);
    enable(true, false, false);
    set(QStringLiteral("PosLimitPin"), pin);
    m_finder->setFindFlags(flags);
    m_finder->setStartPosition(QString());
    QVERIFY(m_finder->findNext(text));
    QCOMPARE(!m_finder->result().atEnd, found);
}

void AxisFinderTest::currentPositionComesFromTheCurrentEditor()
{
    QCOMPARE(m_finder->currentPosition(), QString());
    const QString path = m_project->axisPath(m_axis->id());
    auto* editor = new MotionControlAxisEditor;
    QVERIFY(editor->open(path, QStringLiteral("AxisView")));
    m_host->editorManager.adoptEditor(path, editor);
    QCOMPARE(m_finder->currentPosition(), QString());

    auto* pin = editor->widget()->findChild<QWidget*>(QStringLiteral("lineEditNeg"));
    QVERIFY(pin);
    QVERIFY(editor->gotoLocation(QStringLiteral("OriginReturnSetWidget.lineEditNeg")));
    editor->widget()->show();
    QVERIFY(QTest::qWaitForWindowActive(editor->widget()));
    pin->setFocus();
    QTest::mouseClick(pin, Qt::LeftButton);
    QCOMPARE(m_finder->currentPosition(), QStringLiteral("lineEditNeg"));

    m_host->withhold(QStringLiteral("editor"));
    QCOMPARE(m_finder->currentPosition(), QString());
    m_host->restore(QStringLiteral("editor"));
    m_host->editorManager.closeAllEditors();
    QCOMPARE(m_finder->currentPosition(), QString());
}

void AxisFinderTest::anEditorOfAnotherClassHasNoPosition()
{
    const QString path = m_project->axisPath(m_axis->id());
    m_host->editorManager.adoptEditor(path, new OtherEditor);
    QVERIFY(m_host->editorManager.currentEditor());
    QCOMPARE(m_finder->currentPosition(), QString());
}

QTEST_MAIN(AxisFinderTest)
#include "AxisFinderTest.moc"
