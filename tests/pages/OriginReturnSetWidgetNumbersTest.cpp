#include "tests/pages/HomingPageFixture.h"
#include "tests/support/NumberTyping.h"

/// The four numeric fields, typed into.
class OriginReturnSetWidgetNumbersTest : public QObject, private HomingPageFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void fieldsCommitOnLeaving_data();
    void fieldsCommitOnLeaving();
    void edgesOfTheRanges_data();
    void edgesOfTheRanges();
    void rubbishHoldsTheBounds_data();
    void rubbishHoldsTheBounds();
    void returnStoresNothing();
    void aStoredConflictStaysUntilItIsEdited();
};

void OriginReturnSetWidgetNumbersTest::fieldsCommitOnLeaving_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const QByteArray speed("lineEdit_7");
    const QByteArray close("lineEdit_9");
    QTest::newRow("a speed") << speed << QByteArray("HomeSpeed") << "12.5"
                             << "12.500000";
    QTest::newRow("a speed equal to the close speed") << speed << QByteArray("HomeSpeed") << "1"
                                                      << "1.000000";
    QTest::newRow("a speed below the close speed") << speed << QByteArray("HomeSpeed") << "0.5"
                                                   << "10";
    QTest::newRow("a speed above the limit") << speed << QByteArray("HomeSpeed") << "9999999.5"
                                             << "10";
    QTest::newRow("an empty speed") << speed << QByteArray("HomeSpeed") << ""
                                    << "10";
    QTest::newRow("an acceleration") << QByteArray("lineEdit_8") << QByteArray("HomeAcc") << "0.01"
                                     << "0.010000";
    QTest::newRow("no acceleration") << QByteArray("lineEdit_8") << QByteArray("HomeAcc") << "0"
                                     << "100";
    QTest::newRow("a close speed above the speed") << close << QByteArray("HomeCloseSpeed") << "20"
                                                   << "1";
    QTest::newRow("a close speed equal to the speed") << close << QByteArray("HomeCloseSpeed") << "10"
                                                      << "10.000000";
    QTest::newRow("a close speed too low") << close << QByteArray("HomeCloseSpeed") << "0.001"
                                           << "1";
    QTest::newRow("a time-out as typed") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "0100"
                                         << "0100";
    QTest::newRow("a time-out of nought") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "0"
                                          << "50000";
    QTest::newRow("a negative time-out") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "-5"
                                         << "50000";
    QTest::newRow("the largest time-out") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "2147483647"
                                          << "2147483647";
    QTest::newRow("a time-out beyond it") << QByteArray("lineEdit_10") << QByteArray("HomeTimeOut") << "2147483648"
                                          << "50000";
}

void OriginReturnSetWidgetNumbersTest::fieldsCommitOnLeaving()
{
    QFETCH(QByteArray, field);
    QFETCH(QByteArray, key);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    makePage();
    show();
    enter(field.constData(), typed);
    QCOMPARE(control<QLineEdit>(field.constData())->text(), shown);
    QCOMPARE(stored(key.constData()), shown);
    QCOMPARE(m_boxes->count(), 0);
    QVERIFY(!control(field.constData())->hasFocus());
}

void OriginReturnSetWidgetNumbersTest::returnStoresNothing()
{
    makePage();
    show();
    auto* field = control<QLineEdit>("lineEdit_8");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("55"));
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(stored("HomeAcc"), QStringLiteral("100"));
    QTest::keyClick(field, Qt::Key_Tab);
    QCOMPARE(stored("HomeAcc"), QStringLiteral("55.000000"));
}

void OriginReturnSetWidgetNumbersTest::edgesOfTheRanges_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    const auto row = [](const char* name, const char* field, const char* key, const char* typed, bool accepted) {
        QTest::newRow(name) << QByteArray(field) << QByteArray(key) << latin(typed) << accepted;
    };
    row("a speed at its low bound", "lineEdit_7", "HomeSpeed", "2.5", true);
    row("a speed below it", "lineEdit_7", "HomeSpeed", "2.499999", false);
    row("a speed at its high bound", "lineEdit_7", "HomeSpeed", "9999999", true);
    row("a speed above it", "lineEdit_7", "HomeSpeed", "9999999.000001", false);
    row("an acceleration at its low bound", "lineEdit_8", "HomeAcc", "0.01", true);
    row("an acceleration below it", "lineEdit_8", "HomeAcc", "0.009999", false);
    row("an acceleration at its high bound", "lineEdit_8", "HomeAcc", "9999999", true);
    row("an acceleration above it", "lineEdit_8", "HomeAcc", "9999999.000001", false);
    row("a close speed at its low bound", "lineEdit_9", "HomeCloseSpeed", "0.01", true);
    row("a close speed below it", "lineEdit_9", "HomeCloseSpeed", "0.009999", false);
    row("a close speed at its high bound", "lineEdit_9", "HomeCloseSpeed", "7.5", true);
    row("a close speed above it", "lineEdit_9", "HomeCloseSpeed", "7.500001", false);
    row("a time-out at its low bound", "lineEdit_10", "HomeTimeOut", "1", true);
    row("a time-out below it", "lineEdit_10", "HomeTimeOut", "0", false);
    row("a time-out at its high bound", "lineEdit_10", "HomeTimeOut", "2147483647", true);
    row("a time-out above it", "lineEdit_10", "HomeTimeOut", "2147483648", false);
}

void OriginReturnSetWidgetNumbersTest::edgesOfTheRanges()
{
    QFETCH(QByteArray, field);
    QFETCH(QByteArray, key);
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    store("HomeSpeed", QStringLiteral("7.5"));
    store("HomeCloseSpeed", QStringLiteral("2.5"));
    store("HomeAcc", QStringLiteral("0040"));
    store("HomeTimeOut", QStringLiteral("0040"));
    const QString before = stored(key);
    makePage();
    show();
    enter(field, typed);
    const bool isReal = key != "HomeTimeOut";
    const QString taken = isReal ? QString::number(typed.toDouble(), 'f', 6) : typed;
    QCOMPARE(stored(key), accepted ? taken : before);
    QCOMPARE(control<QLineEdit>(field)->text(), accepted ? taken : before);
}

void OriginReturnSetWidgetNumbersTest::rubbishHoldsTheBounds_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<bool>("real");
    // Speed and close speed bound each other.
    QTest::newRow("HomeSpeed") << QByteArray("lineEdit_7") << 2.5 << 9999999.0 << true;
    QTest::newRow("HomeAcc") << QByteArray("lineEdit_8") << 0.01 << 9999999.0 << true;
    QTest::newRow("HomeCloseSpeed") << QByteArray("lineEdit_9") << 0.01 << 1300.0 << true;
    QTest::newRow("HomeTimeOut") << QByteArray("lineEdit_10") << 1.0 << 2147483647.0 << false;
}

void OriginReturnSetWidgetNumbersTest::rubbishHoldsTheBounds()
{
    QFETCH(QByteArray, field);
    QFETCH(double, low);
    QFETCH(double, high);
    QFETCH(bool, real);
    store("HomeSpeed", QStringLiteral("1300"));
    store("HomeCloseSpeed", QStringLiteral("2.5"));
    makePage();
    show();
    const QString former = QStringLiteral("0040"); // in no normal form
    auto* const edit = control<QLineEdit>(field);
    for (const NumberTyping::Attempt& attempt : NumberTyping::attempts()) {
        store(QTest::currentDataTag(), former);
        edit->setText(former);
        const NumberTyping::Taken taken = NumberTyping::enterAndTab(edit, attempt);
        const double number = real ? taken.left.toDouble() : taken.left.toUInt();
        const bool accepted = taken.finished && number >= low && number <= high;
        const QString normal = real ? QString::number(number, 'f', 6) : taken.left;
        const QString kept = taken.finished ? former : taken.left;
        QVERIFY2(stored(QTest::currentDataTag()) == (accepted ? normal : former), attempt.name());
        QVERIFY2(edit->text() == (accepted ? normal : kept), attempt.name());
    }
}

void OriginReturnSetWidgetNumbersTest::aStoredConflictStaysUntilItIsEdited()
{
    store("HomeSpeed", QStringLiteral("5"));
    store("HomeCloseSpeed", QStringLiteral("50"));
    makePage();
    show();
    m_page->updateWidget();
    enter("lineEdit_8", QStringLiteral("33"));
    // Passing through the fields is no edit that could be taken.
    for (const char* field : { "lineEdit_7", "lineEdit_9", "lineEdit_7" }) {
        control(field)->setFocus();
        QTest::keyClick(control(field), Qt::Key_Tab);
    }
    QCOMPARE(stored("HomeSpeed"), QStringLiteral("5"));
    QCOMPARE(stored("HomeCloseSpeed"), QStringLiteral("50"));
    enter("lineEdit_7", QStringLiteral("60"));
    QCOMPARE(stored("HomeSpeed"), QStringLiteral("60.000000"));
    QCOMPARE(stored("HomeCloseSpeed"), QStringLiteral("50"));
}

QTEST_MAIN(OriginReturnSetWidgetNumbersTest)
#include "OriginReturnSetWidgetNumbersTest.moc"
