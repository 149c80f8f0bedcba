#include "workbench/online/RequestTap.h"

#include "host/communication/ControllerLink.h"
#include "sdk/AxisDebugParams.h"

RequestTap::RequestTap(QObject* parent) : QObject(parent)
{
    ControllerLink::setAnnouncer([this](const AxisRequest& request) {
        if (isCommand(request.code))
            QMetaObject::invokeMethod(
                this, [this, request] { emit started(request); }, Qt::QueuedConnection);
    });
    ControllerLink::setObserver(
        [this](const AxisRequest& request, const AxisReply& reply, std::chrono::microseconds time) {
            if (!isCommand(request.code))
                return;
            const qint64 count = time.count();
            QMetaObject::invokeMethod(
                this, [this, request, reply, count] { emit answered(request, reply, count); }, Qt::QueuedConnection);
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
