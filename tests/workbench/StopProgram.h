#pragma once

#include "host/communication/ControllerLink.h"
#include "host/communication/RpcCmdSend.h"
#include "sdk/AxisDebugParams.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/online/StopButton.h"
#include "workbench/online/StopControl.h"

#include <QLabel>
#include <QSignalSpy>

#include <atomic>
#include <memory>

/// The whole program with its emergency stop in hand.
class StopProgram : public OnlineProgram {
public:
    StopControl& stop() const { return workbench->online().stop(); }
    StopButton& button() const { return workbench->window().stopButton(); }
    QString feedback() const { return workbench->window().stopFeedback().text(); }

    /// Moves the axis for a long time.
    bool move() { return RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0) == 0 && moves(); }

    bool stoppedAndHeld()
    {
        const auto held = [this] { return stop().isHeld() && feedback() == QLatin1String("STOP holds"); };
        return stands(3000) && QTest::qWaitFor(held, 2000);
    }

    /// Stops, and waits for the answer and for the news of it, whichever comes first.
    bool stopsAndHolds()
    {
        QSignalSpy answered(&stop(), &StopControl::answered);
        stop().stop();
        return QTest::qWaitFor([&] { return answered.count() == 1 && feedback() == QLatin1String("STOP holds"); });
    }

    /// Clicks "Reset" and waits until the request is no longer queued.
    bool resetIsOnItsWay()
    {
        const auto out = std::make_shared<std::atomic<bool>>(false);
        const std::shared_ptr<const ControllerLink::Announcer> former = ControllerLink::announcer();
        ControllerLink::setAnnouncer([former, out](const AxisRequest& request) {
            (*former)(request);
            if (request.code == AxisDebugReset)
                *out = true;
        });
        click("resetPushButton");
        const bool done = QTest::qWaitFor([&out] { return out->load(); });
        ControllerLink::setAnnouncer(*former);
        return done;
    }
};
