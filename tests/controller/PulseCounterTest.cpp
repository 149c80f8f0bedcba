#include "controller/PulseCounter.h"

#include <QtTest>

#include <cmath>
#include <limits>

class PulseCounterTest : public QObject {
    Q_OBJECT

private slots:
    void countsWholePulses();
    void carriesTheRemainder();
    void losesNothingToAndFro();
    void restartsAtAPlace();
    void keepsThePlaceOfMorePulsesThanCanBeCounted();
};

void PulseCounterTest::countsWholePulses()
{
    PulseCounter counter(1000);
    counter.advance(0.5);
    QCOMPARE(counter.pulses(), std::int64_t(500));
    counter.advance(-1);
    QCOMPARE(counter.pulses(), std::int64_t(-500));
    QCOMPARE(counter.position(), -0.5);
}

void PulseCounterTest::carriesTheRemainder()
{
    // A third of a pulse a step: none of a million steps is a whole one.
    PulseCounter counter(1.0 / 3);
    for (int i = 0; i < 1000000; ++i)
        counter.advance(1);
    QCOMPARE(counter.pulses(), std::int64_t(333333));
}

void PulseCounterTest::losesNothingToAndFro()
{
    PulseCounter counter(7.77);
    for (int i = 0; i < 200000; ++i) {
        counter.advance(0.123);
        counter.advance(-0.123);
    }
    QCOMPARE(counter.pulses(), std::int64_t(0));
}

void PulseCounterTest::restartsAtAPlace()
{
    PulseCounter counter(10);
    counter.advance(0.07);
    counter.restart(2.34);
    QCOMPARE(counter.pulses(), std::int64_t(23));
    // The 0.4 pulses that were left over are not forgotten.
    counter.advance(0.02);
    QCOMPARE(counter.pulses(), std::int64_t(24));
}

void PulseCounterTest::keepsThePlaceOfMorePulsesThanCanBeCounted()
{
    // The finest unit that the fields of a record let a user make.
    PulseCounter counter(4294967295.0 / 0.01 * 4294967295.0);
    for (int i = 0; i < 1000; ++i)
        counter.advance(0.05);
    QVERIFY(std::fabs(counter.position() - 50) < 1e-9);
    QCOMPARE(counter.pulses(), std::numeric_limits<std::int64_t>::max());
    for (int i = 0; i < 2000; ++i)
        counter.advance(-0.05);
    QVERIFY(std::fabs(counter.position() + 50) < 1e-9);
    QCOMPARE(counter.pulses(), std::numeric_limits<std::int64_t>::min());
    counter.restart(0);
    QCOMPARE(counter.pulses(), std::int64_t(0));
}

QTEST_APPLESS_MAIN(PulseCounterTest)
#include "PulseCounterTest.moc"
