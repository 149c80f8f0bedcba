#pragma once

#include "host/communication/ControllerConnection.h"

#include <memory>
#include <string>

class ControllerTransport;

/// What the ways beside the main one need to speak in the same session.
class ControllerConnection::Credentials {
public:
    /// Never null.
    std::shared_ptr<const ControllerTransport> transport;
    std::string session;
};
