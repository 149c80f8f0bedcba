#include "tests/editor/AxisFinderFixture.h"

/// Who uses a variable.
class AxisFinderReferencesTest : public QObject, private AxisFinderFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void findsReferences_data();
    void findsReferences();
    void referencesTellThePlace();
    void referencesWithoutViewInformationHaveBlanks();
    void referencesNeedProjectAndRecord_data();
    void referencesNeedProjectAndRecord();
};

void AxisFinderReferencesTest::findsReferences_data()
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

void AxisFinderReferencesTest::findsReferences()
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

void AxisFinderReferencesTest::referencesTellThePlace()
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

void AxisFinderReferencesTest::referencesWithoutViewInformationHaveBlanks()
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

void AxisFinderReferencesTest::referencesNeedProjectAndRecord_data()
{
    waysToLoseTheRecord();
}

void AxisFinderReferencesTest::referencesNeedProjectAndRecord()
{
    QFETCH(bool, projectClosed);
    loseRecord(projectClosed);
    QVector<FindResult> results;
    QVERIFY(!m_finder->findReferences(QStringLiteral("Main.posStop"), results));
    QVERIFY(results.isEmpty());
}

QTEST_MAIN(AxisFinderReferencesTest)
#include "AxisFinderReferencesTest.moc"
