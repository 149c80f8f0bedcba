#include "editor/AxisFinder.h"

#include "editor/MotionControlAxisEditor.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QtTest>

#include <memory>

namespace {

const QString positive = QStringLiteral("posEdit");
const QString negative = QStringLiteral("negEdit");
const QString origin = QStringLiteral("orgEdit");

bool isEmptyEnd(const EditorLocation& result)
{
    return result.atEnd && result.text.isEmpty() && result.matchedText.isEmpty() && result.location.isEmpty()
        && result.label.isEmpty() && result.data.isNull();
}

} // namespace

class AxisFinderTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

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
    void eachPinIsReportedOnce();

    void matches_data();
    void matches();

    void currentPositionComesFromTheCurrentEditor();
    void findsReferences_data();
    void findsReferences();
    void referencesTellThePlace();
    void referencesWithoutViewInformationHaveBlanks();
    void referencesNeedProjectAndRecord_data();
    void referencesNeedProjectAndRecord();

private:
    void set(const QString& key, const QString& text) { m_axis->setProperty(key, text); }
    void enable(bool positiveLimit, bool negativeLimit, bool originSignal);
    void setPins(const QString& positivePin, const QString& negativePin, const QString& originPin);
    static void waysToLoseTheRecord();
    void loseRecord(bool projectClosed);
    /// The positions that a search for an empty text visits.
    QStringList visited();
    static QString word(bool on) { return on ? QStringLiteral("TRUE") : QStringLiteral("FALSE"); }

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    AxisTable* m_axis = nullptr;
    std::unique_ptr<AxisFinder> m_finder;
};

void AxisFinderTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"));
    m_axis->setViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), QStringLiteral("HomingPage"));
    m_axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), positive);
    m_axis->setViewInfo(QStringLiteral("LineEditNegObjectName"), negative);
    m_axis->setViewInfo(QStringLiteral("LineEditOrgObjectName"), origin);
    setPins(QStringLiteral("Main.posStop"), QStringLiteral("Main.negStop"), QStringLiteral("Main.origin"));
    enable(true, true, true);
    m_finder = std::make_unique<AxisFinder>();
    QVERIFY(m_finder->bindNode(m_project->axisPath(m_axis->id())));
}

void AxisFinderTest::cleanup()
{
    m_finder.reset();
    m_project.reset();
    m_host.reset();
}

void AxisFinderTest::enable(bool positiveLimit, bool negativeLimit, bool originSignal)
{
    set(QStringLiteral("PosLimitEnable"), word(positiveLimit));
    set(QStringLiteral("NegsLimitEnable"), word(negativeLimit));
    set(QStringLiteral("OrgSignalEnable"), word(originSignal));
}

void AxisFinderTest::setPins(const QString& positivePin, const QString& negativePin, const QString& originPin)
{
    set(QStringLiteral("PosLimitPin"), positivePin);
    set(QStringLiteral("NegLimitPin"), negativePin);
    set(QStringLiteral("OrgSignalPin"), originPin);
}

void AxisFinderTest::waysToLoseTheRecord()
{
    QTest::addColumn<bool>("projectClosed");
    QTest::newRow("the project is closed") << true;
    QTest::newRow("the axis is gone") << false;
}

void AxisFinderTest::loseRecord(bool projectClosed)
{
    if (projectClosed)
        m_project->close();
    else
        QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
}

QStringList AxisFinderTest::visited()
{
    QStringList places;
    while (m_finder->findNext(QString()) && !m_finder->result().atEnd && places.size() < 10)
        places.append(m_finder->result().location.section(QLatin1Char('.'), 1));
    return places;
}

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

void AxisFinderTest::findsReferences_data()
{
    QTest::addColumn<QStringList>("pins");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("labels");

    const auto pins = [](const char* positivePin, const char* negativePin, const char* originPin) {
        return QStringList{ QString::fromLatin1(positivePin), QString::fromLatin1(negativePin),
            QString::fromLatin1(originPin) };
    };
    const auto labels = [](std::initializer_list<const char*> texts) {
        QStringList list;
        for (const char* text : texts)
            list.append(QString::fromLatin1(text));
        return list;
    };
    QTest::newRow("the same variable three times, negative first")
        << pins("Main.stop", "Main.stop", "Main.stop") << QStringLiteral("Main.stop")
        << labels({ "Negative limit:Main.stop", "Positive limit:Main.stop", "Origin signal:Main.stop" });
    QTest::newRow("only the pin that names it")
        << pins("Main.stop", "Main.other", "Main.door.open") << QStringLiteral("Main.other")
        << labels({ "Negative limit:Main.other" });
    QTest::newRow("names compare in any case") << pins("main.STOP", "Main.other", "Main.door.open")
                                               << QStringLiteral("Main.stop") << labels({ "Positive limit:main.STOP" });
    QTest::newRow("a symbol that begins the path counts") << pins("Main.door", "Main.other",
        "Main.other") << QStringLiteral("Main.door.open") << labels({ "Positive limit:Main.door" });
    QTest::newRow("a symbol below the path does not count")
        << pins("Main.door.open", "Main.other", "Main.other") << QStringLiteral("Main.door") << QStringList();
    QTest::newRow("half a segment does not count")
        << pins("Main.st", "Main.other", "Main.other") << QStringLiteral("Main.stop") << QStringList();
    QTest::newRow("one result a symbol that matches")
        << pins("Main.stop AND Main.stop", "Main.other", "Main.other") << QStringLiteral("Main.stop")
        << labels({ "Positive limit:Main.stop AND Main.stop", "Positive limit:Main.stop AND Main.stop" });
    QTest::newRow("an address names no variable")
        << pins("%IX100.0", "Main.other", "Main.other") << QStringLiteral("Main.stop") << QStringList();
    QTest::newRow("an empty pin names nothing") << pins("", "", "") << QStringLiteral("Main.stop") << QStringList();
}

void AxisFinderTest::findsReferences()
{
    QFETCH(QStringList, pins);
    QFETCH(QString, path);
    QFETCH(QStringList, labels);
    m_project->addSource(QStringLiteral("Main"),
        QStringLiteral(
            "TYPE Door : STRUCT open : BOOL; END_STRUCT; END_TYPE\n"
            "PROGRAM Main\nVAR\n stop : BOOL; st : BOOL; other : BOOL; door : Door;\nEND_VAR\nEND_PROGRAM\n"));
    setPins(pins.at(0), pins.at(1), pins.at(2));
    QVector<FindResult> results;
    QVERIFY(m_finder->findReferences(path, results));
    QStringList found;
    for (const FindResult& result : results)
        found.append(result.label);
    QCOMPARE(found, labels);

    // Disabled pins are left out even where they name the variable.
    enable(false, false, false);
    QVERIFY(m_finder->findReferences(path, results));
    QCOMPARE(results.size(), labels.size());
}

void AxisFinderTest::referencesTellThePlace()
{
    m_project->addSource(
        QStringLiteral("Main"), QStringLiteral("PROGRAM Main\nVAR\n stop : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    const QString pin = QStringLiteral("Main.stop");
    setPins(pin, pin, pin);
    QVector<FindResult> results;
    QVERIFY(m_finder->findReferences(pin, results));
    QCOMPARE(results.size(), 3);
    const QStringList locations{ QStringLiteral("HomingPage.negEdit"), QStringLiteral("HomingPage.posEdit"),
        QStringLiteral("HomingPage.orgEdit") };
    for (int row = 0; row < 3; ++row) {
        const FindResult& result = results.at(row);
        QCOMPARE(result.typeKey, QStringLiteral("AxisView"));
        QCOMPARE(result.nodePath, m_project->axisPath(m_axis->id()));
        QCOMPARE(result.objectName, QStringLiteral("Feeder"));
        QCOMPARE(result.text, pin);
        QCOMPARE(result.matchedText, pin);
        QCOMPARE(result.dataType, QStringLiteral("BOOL"));
        QVERIFY(result.section.isEmpty());
        QVERIFY(result.access.isEmpty());
        QCOMPARE(result.location, locations.at(row));
        QCOMPARE(result.kind, 1);
    }
}

void AxisFinderTest::referencesWithoutViewInformationHaveBlanks()
{
    m_project->addSource(
        QStringLiteral("Main"), QStringLiteral("PROGRAM Main\nVAR\n stop : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    AxisTable* other = m_project->addAxis(QStringLiteral("Gripper"));
    other->setProperty(QStringLiteral("OrgSignalEnable"), QStringLiteral("true"));
    other->setProperty(QStringLiteral("OrgSignalPin"), QStringLiteral("Main.stop"));
    QVERIFY(m_finder->bindNode(m_project->axisPath(other->id())));
    QVector<FindResult> results;
    QVERIFY(m_finder->findReferences(QStringLiteral("Main.stop"), results));
    QCOMPARE(results.size(), 1);
    QCOMPARE(results.first().location, QStringLiteral(" . "));
}

void AxisFinderTest::referencesNeedProjectAndRecord_data()
{
    waysToLoseTheRecord();
}

void AxisFinderTest::referencesNeedProjectAndRecord()
{
    QFETCH(bool, projectClosed);
    loseRecord(projectClosed);
    QVector<FindResult> results;
    QVERIFY(!m_finder->findReferences(QStringLiteral("Main.posStop"), results));
    QVERIFY(results.isEmpty());
}

QTEST_MAIN(AxisFinderTest)
#include "AxisFinderTest.moc"
