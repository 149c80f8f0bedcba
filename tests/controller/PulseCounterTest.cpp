#include "controller/PulseCounter.h"

#include <QtTest>

#include <cmath>

class PulseCounterTest : public QObject {
    Q_OBJECT

private slots:
    void countsWholePulses();
    void carriesTheRemainder();
    void losesNothingToAndFro();
    void restartsAtAPlace();
};

void PulseCounterTest::countsWholePulses()
{
    PulseCounter counter(1000);
    QCOMPARE(counter.advance(0.5), std::int64_t(500));
    QCOMPARE(counter.advance(-1), std::int64_t(-1000));
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
    QCOMPARE(counter.advance(0.02), std::int64_t(1));
}

QTEST_APPLESS_MAIN(PulseCounterTest)
#include "PulseCounterTest.moc"
