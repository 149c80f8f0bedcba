#pragma once

#include "controller/MotionController.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/controller/ControllerRig.h"

#include <QtTest>

/// Two clients.
inline constexpr SessionId alice = 1;
inline constexpr SessionId bob = 2;

/// A controller on a simulated clock with three axes.
class Rig {
public:
    Rig() : controller(MotionController::Options())
    {
        const DownloadResult result
            = controller.download({ makeAxisText(0), makeAxisText(1), makeAxisText(7, { { "AxisErrorDec", "100" } }) });
        if (result.code != 0)
            qFatal("%s", result.reason.c_str());
    }

    AxisRef ref(int axisNo)
    {
        AxisRef status{};
        controller.peek(axisNo, &status, nullptr);
        return status;
    }

    std::int16_t enter(SessionId session, int axisNo, int timeout = 1000)
    {
        return controller.enterDebugMode(session, axisNo, 1, timeout);
    }

    std::int16_t jog(SessionId session, int axisNo)
    {
        return controller.command(session, axisNo, MotionController::Kind::Motion,
            [](Axis& axis) { return axis.startJog(1, numbers(50, 1000, 1000)); });
    }

    std::int16_t enable(SessionId session, int axisNo)
    {
        const std::int16_t code = controller.command(
            session, axisNo, MotionController::Kind::Plain, [](Axis& axis) { return axis.setEnable(true); });
        controller.step(50);
        return code;
    }

    /// The axis jogs at full speed in debug mode of the session.
    void bringToJog(SessionId session, int axisNo, int timeout = 1000)
    {
        QCOMPARE(enter(session, axisNo, timeout), Diagnosis::ok);
        QCOMPARE(enable(session, axisNo), Diagnosis::ok);
        QCOMPARE(jog(session, axisNo), Diagnosis::ok);
        controller.step(200);
        QCOMPARE(ref(axisNo).setVelocity, 50.0);
    }

    MotionController controller;
};
