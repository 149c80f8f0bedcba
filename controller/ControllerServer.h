#pragma once

#include "controller/Faults.h"
#include "controller/MotionController.h"

#include <memory>
#include <string>

/// Where the controller listens and how clients prove that they may use it.
struct ServerOptions {
    /// "HOST:PORT"; port 0 takes a free one.
    std::string address = "127.0.0.1:0";
    /// What clients on loopback without TLS must show.
    std::string token;
    /// PEM files of mutual TLS: authority, certificate, key. All or none.
    std::string authorityFile;
    std::string certificateFile;
    std::string keyFile;

    bool usesTls() const { return !authorityFile.empty() || !certificateFile.empty() || !keyFile.empty(); }
};

/// The controller's face to the network.
class ControllerServer {
public:
    /// The controller is not owned and must outlive the server.
    ControllerServer(MotionController* controller, ServerOptions options);
    ~ControllerServer();

    /// Begins to listen. False, with a text that says why and what to do about it, when it cannot.
    bool start(std::string* error);
    void shutdown();

    /// The port it listens on.
    int port() const;
    /// "HOST:PORT".
    std::string address() const;

    /// Carries a line of Faults out. False with a text when it is none, or cannot be carried out. Waits (which may be
    /// null) is set when the fault is one of an axis that the controller does not have yet, and holds once it does.
    bool setFault(const std::string& line, std::string* error, bool* waits = nullptr);

    /// True for addresses that never leave the machine.
    static bool isLoopback(const std::string& host);
    /// Splits "HOST:PORT" or "[ADDRESS]:PORT". False when it is no such thing.
    static bool splitAddress(const std::string& address, std::string* host, int* port);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
