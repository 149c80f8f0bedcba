#pragma once

#include "controller/ControllerServer.h"
#include "controller/MotionController.h"
#include "host/communication/ControllerAddress.h"
#include "host/communication/ControllerAxis.h"
#include "tests/controller/AxisRecords.h"

#include <QString>

#include <string>

/// A controller in this process, in real time, on a free port of loopback.
class ControllerHost {
public:
    explicit ControllerHost(const std::string& machine = "{}") : controller(options(machine))
    {
        controller.start();
        listen();
    }

    ~ControllerHost()
    {
        if (server)
            server->shutdown();
        controller.shutdown();
    }

    void listen(int port = 0)
    {
        ServerOptions serverOptions;
        serverOptions.address = "127.0.0.1:" + std::to_string(port);
        serverOptions.token = "right";
        server = std::make_unique<ControllerServer>(&controller, serverOptions);
        std::string error;
        if (!server->start(&error))
            qFatal("%s", error.c_str());
    }

    void fault(const char* line) const
    {
        std::string error;
        if (!server->setFault(line, &error))
            qFatal("%s", error.c_str());
    }

    ControllerAddress address() const
    {
        ControllerAddress address;
        address.host = QStringLiteral("127.0.0.1");
        address.port = static_cast<quint16>(server->port());
        address.token = "right";
        return address;
    }

    void addAxes(int count, const AxisValues& changes = {})
    {
        std::vector<AxisText> axes;
        axes.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            axes.push_back(makeAxisText(i, changes));
        const DownloadResult result = controller.download(axes);
        if (result.code != 0)
            qFatal("%s %s", result.key.c_str(), result.reason.c_str());
    }

    AxisRef peek(int axisNo)
    {
        AxisRef ref{};
        controller.peek(axisNo, &ref, nullptr);
        return ref;
    }

    MotionController controller;
    std::unique_ptr<ControllerServer> server;

private:
    static MotionController::Options options(const std::string& machine)
    {
        MotionController::Options result;
        result.mechanics[-1] = machine;
        return result;
    }
};

/// The same axis as a project hands it to the connection.
inline ControllerAxis makeControllerAxis(int number, const AxisValues& changes = {})
{
    const AxisText text = makeAxisText(number, changes);
    ControllerAxis axis{ QString::fromStdString(text.name), {} };
    for (const auto& value : text.values)
        axis.values.insert(QString::fromStdString(value.first), QString::fromStdString(value.second));
    return axis;
}
