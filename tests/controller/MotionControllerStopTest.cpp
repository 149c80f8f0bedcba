#include "tests/controller/MotionControllerRig.h"

/// The emergency stop: what it does, who may release it, and what passes it.
class MotionControllerStopTest : public QObject {
    Q_OBJECT

private slots:
    void stopStopsEveryAxisInDebugModeAndHolds();
    void aReleaseThatAStopHasOvertakenIsRefused();
    void aReleaseThatHasNotSeenAnothersStopIsRefused();
    void anothersStopCountsThoughOnesOwnCameBehindIt();
    void theEndOfAJogPassesTheStop();
};

void MotionControllerStopTest::stopStopsEveryAxisInDebugModeAndHolds()
{
    Rig rig;
    rig.bringToJog(alice, 0, 30000);
    rig.bringToJog(bob, 7, 30000);
    rig.controller.stopAll(true);
    QVERIFY(rig.controller.isStopHeld());
    rig.controller.step(1);
    QVERIFY2(rig.ref(0).setVelocity < 50 && rig.ref(7).setVelocity < 50, "the very next cycle brakes");
    QCOMPARE(rig.ref(7).axisState, std::uint16_t(2));
    rig.controller.step(600);
    QCOMPARE(rig.ref(0).setVelocity, 0.0);
    QCOMPARE(rig.ref(7).setVelocity, 0.0);
    QCOMPARE(rig.ref(0).axisState, std::uint16_t(3));
    QCOMPARE(rig.jog(alice, 0), Diagnosis::emergencyStop);
    QCOMPARE(rig.jog(bob, 7), Diagnosis::emergencyStop);
    QCOMPARE(rig.controller.keepAlive(alice, 0), Diagnosis::ok);
    rig.controller.stopAll(false);
    QCOMPARE(rig.jog(alice, 0), Diagnosis::ok);
}

void MotionControllerStopTest::aReleaseThatAStopHasOvertakenIsRefused()
{
    Rig rig;
    rig.bringToJog(alice, 0, 30000);
    QCOMPARE(rig.controller.stopAll(true, { alice, 5 }), Diagnosis::ok);
    QCOMPARE(rig.controller.stopAll(false, { alice, 4 }), Diagnosis::emergencyStop);
    QVERIFY(rig.controller.isStopHeld());
    // Another client's stop in between changes nothing of it.
    QCOMPARE(rig.controller.stopAll(true, { bob, 1 }), Diagnosis::ok);
    QCOMPARE(rig.controller.stopAll(false, { alice, 4 }), Diagnosis::emergencyStop);
    // Numbers of different clients say nothing of their order, nor does none.
    QCOMPARE(rig.controller.stopAll(false, { bob, 2 }), Diagnosis::ok);
    QVERIFY(!rig.controller.isStopHeld());
    QCOMPARE(rig.controller.stopAll(true, { alice, 6 }), Diagnosis::ok);
    QCOMPARE(rig.controller.stopAll(false, { alice, 0 }), Diagnosis::ok);
    // A stop that comes late stops all the same and does not count as the latest.
    QCOMPARE(rig.controller.stopAll(true, { alice, 3 }), Diagnosis::ok);
    QVERIFY(rig.controller.isStopHeld());
    QCOMPARE(rig.controller.stopAll(false, { alice, 5 }), Diagnosis::emergencyStop);
    QCOMPARE(rig.controller.stopAll(false, { alice, 7 }), Diagnosis::ok);
    // With its session a client's numbers are forgotten.
    QCOMPARE(rig.controller.stopAll(true, { alice, 8 }), Diagnosis::ok);
    rig.controller.endSession(alice);
    QCOMPARE(rig.controller.stopAll(false, { alice, 1 }), Diagnosis::ok);
}

void MotionControllerStopTest::aReleaseThatHasNotSeenAnothersStopIsRefused()
{
    Rig rig;
    QCOMPARE(rig.controller.stopAll(true, { alice, 1 }), Diagnosis::ok);
    const std::uint64_t seen = rig.controller.stopRevision();
    QCOMPARE(rig.controller.stopAll(true, { bob, 1 }), Diagnosis::ok);
    QCOMPARE(rig.controller.stopAll(false, { alice, 2, seen }), Diagnosis::emergencyStop);
    QVERIFY(rig.controller.isStopHeld());
    QCOMPARE(rig.controller.stopAll(false, { alice, 3, rig.controller.stopRevision() }), Diagnosis::ok);
    // One's own stop one knows of, told or not, and what has been released is over.
    QCOMPARE(rig.controller.stopAll(true, { alice, 4 }), Diagnosis::ok);
    QCOMPARE(rig.controller.stopAll(false, { alice, 5, seen }), Diagnosis::ok);
    QVERIFY(!rig.controller.isStopHeld());
}

/// Two of alice's stops stand around bob's.
void MotionControllerStopTest::anothersStopCountsThoughOnesOwnCameBehindIt()
{
    Rig rig;
    QCOMPARE(rig.controller.stopAll(true, { alice, 1 }), Diagnosis::ok);
    const std::uint64_t seen = rig.controller.stopRevision();
    QCOMPARE(rig.controller.stopAll(true, { bob, 1 }), Diagnosis::ok);
    const std::uint64_t bobs = rig.controller.stopRevision();
    QCOMPARE(rig.controller.stopAll(true, { alice, 2 }), Diagnosis::ok);
    QCOMPARE(rig.controller.stopAll(true, { alice, 3 }), Diagnosis::ok);
    QCOMPARE(rig.controller.stopAll(false, { alice, 4, seen }), Diagnosis::emergencyStop);
    QVERIFY(rig.controller.isStopHeld());
    QCOMPARE(rig.controller.stopAll(false, { bob, 2, bobs }), Diagnosis::emergencyStop);
    QCOMPARE(rig.controller.stopAll(false, { alice, 5, bobs }), Diagnosis::ok);
    QVERIFY(!rig.controller.isStopHeld());
}

void MotionControllerStopTest::theEndOfAJogPassesTheStop()
{
    Rig rig;
    rig.bringToJog(alice, 0, 30000);
    rig.controller.stopAll(true);
    QCOMPARE(rig.controller.endJog(alice, 0, 1, 10, 0), Diagnosis::ok);
    rig.controller.step(100);
    QCOMPARE(rig.ref(0).setVelocity, 0.0);
}

QTEST_GUILESS_MAIN(MotionControllerStopTest)
#include "MotionControllerStopTest.moc"
