#pragma once

#include "host/communication/ControllerConnection.h"

#include <string>

/// What the ways beside the main one need to speak in the same session.
class ControllerConnection::Credentials {
public:
    ControllerAddress address;
    std::string session;
};
