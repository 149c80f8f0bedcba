#pragma once

#include <QByteArray>

/// One debug request in the form in which a link takes it: the request's number (see sdk/AxisDebugParams.h) and all
/// fields that any request has. Those that a request does not have are 0.
struct AxisRequest {
    int code = 0;
    short axisNo = 0;
    /// Number of status bytes wanted.
    int size = 0;
    /// enter, enable, pressed or ratio.
    short value = 0;
    /// Time in ms that a debug session may stay silent.
    short timeout = 0;
    /// Position, distance or origin offset.
    double position = 0;
    double velocity = 0;
    double acceleration = 0;
    double deceleration = 0;
    double jerk = 0;
};

/// What came back: a result (0: carried out, otherwise a code of protocol/DiagnosisCodes.h) and the bytes of a status
/// request, empty when it failed.
struct AxisReply {
    short result = 0;
    QByteArray data;
};
