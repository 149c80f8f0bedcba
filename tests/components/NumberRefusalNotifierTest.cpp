#include "host/components/NumberRefusalNotifier.h"
#include "host/components/DataVerification.h"

#include <QtTest>

#include <limits>

namespace {

/// What the notifier has said while it lives.
class Listener : public QObject {
public:
    Listener()
    {
        connect(NumberRefusalNotifier::instance(), &NumberRefusalNotifier::numberRefused, this,
            [this](const NumberRefusal& refusal) { heard.append(refusal); });
    }

    QVector<NumberRefusal> heard;
};

} // namespace

/// What a user is told of refused numbers.
class NumberRefusalNotifierTest : public QObject {
    Q_OBJECT

private slots:
    void ranges_data();
    void ranges();
    void aRefusalIsTold();
    void anAcceptedNumberIsNot();
};

void NumberRefusalNotifierTest::ranges_data()
{
    QTest::addColumn<QVariant>("low");
    QTest::addColumn<QVariant>("high");
    QTest::addColumn<bool>("lowExcluded");
    QTest::addColumn<bool>("highExcluded");
    QTest::addColumn<QString>("range");

    QTest::newRow("whole numbers") << QVariant(1) << QVariant(2147483647) << false << false << "1 to 2147483647";
    QTest::newRow("a real and a whole number")
        << QVariant(0.01) << QVariant(9999999) << false << false << "0.01 to 9999999";
    QTest::newRow("a million as a real") << QVariant(-1000000.0) << QVariant(1000000.0) << false << false
                                         << "-1000000 to 1000000";
    QTest::newRow("single precision") << QVariant(0.1F) << QVariant(65535.0F) << false << false << "0.1 to 65535";
    QTest::newRow("above the lower bound") << QVariant(5.0) << QVariant(10) << true << false << "above 5, at most 10";
    QTest::newRow("below the upper bound")
        << QVariant(5) << QVariant(10.5) << false << true << "at least 5, below 10.5";
    QTest::newRow("between the bounds") << QVariant(5) << QVariant(10) << true << true << "above 5, below 10";
}

void NumberRefusalNotifierTest::ranges()
{
    NumberRefusal refusal;
    QFETCH(const QVariant, low);
    QFETCH(const QVariant, high);
    QFETCH(const bool, lowExcluded);
    QFETCH(const bool, highExcluded);
    refusal.low = low;
    refusal.high = high;
    refusal.lowExcluded = lowExcluded;
    refusal.highExcluded = highExcluded;
    QTEST(refusal.range(), "range");
}

void NumberRefusalNotifierTest::aRefusalIsTold()
{
    const Listener listener;
    QString text = QStringLiteral("20.5 ");
    QVERIFY(!DataVerification::getInstance().isValidNumber(text, 20.5, 1, 10.0, true, false));
    QCOMPARE(listener.heard.size(), 1);
    QCOMPARE(listener.heard[0].text, QStringLiteral("20.5 "));
    QCOMPARE(listener.heard[0].value, QVariant(20.5));
    QCOMPARE(listener.heard[0].range(), QStringLiteral("above 1, at most 10"));
    QCOMPARE(text, QStringLiteral("20.5 "));
}

void NumberRefusalNotifierTest::anAcceptedNumberIsNot()
{
    const Listener listener;
    QString text = QStringLiteral("5");
    QVERIFY(DataVerification::getInstance().isValidNumber(text, 5.0, 1, 10, false, false));
    QVERIFY(listener.heard.isEmpty());
}

QTEST_GUILESS_MAIN(NumberRefusalNotifierTest)
#include "NumberRefusalNotifierTest.moc"
