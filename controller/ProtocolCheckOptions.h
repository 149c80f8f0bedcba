#pragma once

#include <grpcpp/grpcpp.h>

#include <memory>
#include <string>
#include <vector>

/// What the arguments of kestrun-protocol-check say.
struct ProtocolCheckOptions {
    std::string address;
    /// Authority, certificate and key; all empty without TLS.
    std::string files[3];
    bool mayReplace = false;
    bool help = false;

    /// Reads the arguments (without the program's name). False when they are none.
    bool read(const std::vector<std::string>& arguments);
    /// Null, with a line for the user, when a file cannot be read.
    std::shared_ptr<grpc::ChannelCredentials> credentials() const;
    static const char* helpText();
};
