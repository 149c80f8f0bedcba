#include "workbench/online/RequestTap.h"

#include "host/communication/ControllerLink.h"
#include "sdk/AxisDebugParams.h"

RequestTap::RequestTap(QObject* parent) : QObject(parent)
{
    ControllerLink::setAnnouncer([this](const AxisRequest& request) {
        if (isCommand(request.code))
            m_mailbox.post([this, request] { emit started(request); });
    });
    ControllerLink::setObserver(
        [this](const AxisRequest& request, const AxisReply& reply, std::chrono::microseconds time) {
            if (isCommand(request.code))
                m_mailbox.post([this, request, reply, time] { emit answered(request, reply, time.count()); });
        });
}

RequestTap::~RequestTap()
{
    ControllerLink::setAnnouncer({});
    ControllerLink::setObserver({});
}

bool RequestTap::isCommand(int code)
{
    return code != AxisDebugGetAxisRef && code != AxisDebugGetAxesGroupRef && code != AxisDebugKeepAlive;
}
