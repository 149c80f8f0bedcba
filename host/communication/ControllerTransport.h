#pragma once

#include "host/communication/ControllerAddress.h"

#include <grpcpp/grpcpp.h>

#include <memory>
#include <string>

/// The way to one controller. What proves that this client may use it is read from its files once, so that whoever has
/// been let in can have further channels, the emergency stop's above all, whatever becomes of the files. Any thread.
class ControllerTransport {
public:
    /// Null, with a text for the user, when a certificate cannot be read.
    static std::shared_ptr<const ControllerTransport> make(const ControllerAddress& address, QString* error);

    /// The connection that all links share.
    const std::shared_ptr<grpc::Channel>& channel() const { return m_channel; }
    /// Another one, for those that must not wait for it. Each comes back quickly after a loss and notices one soon.
    std::shared_ptr<grpc::Channel> makeChannel() const;

private:
    ControllerTransport(std::string target, std::shared_ptr<grpc::ChannelCredentials> credentials);

    std::string m_target;
    std::shared_ptr<grpc::ChannelCredentials> m_credentials;
    std::shared_ptr<grpc::Channel> m_channel;
};
