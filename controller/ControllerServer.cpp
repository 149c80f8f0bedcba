#include "controller/ControllerServer.h"

#include "controller/ControllerService.h"

#include <grpcpp/grpcpp.h>
#include <grpcpp/resource_quota.h>

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstring>
#include <fstream>
#include <sstream>

namespace {
bool readFile(const std::string& path, std::string* text, std::string* error)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    if (!file || !(content << file.rdbuf())) {
        *error = path.empty() ? "Mutual TLS needs an authority, a certificate and a key; one of them is not given."
                              : "Cannot read " + path + ".";
        return false;
    }
    *text = content.str();
    if (text->find("-----BEGIN ") != std::string::npos)
        return true;
    *error = path + " is no PEM file.";
    return false;
}

/// Why nobody can listen there, in the words of the system.
std::string listenObjection(const std::string& host, int port)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE;
    addrinfo* found = nullptr;
    const int code = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found);
    if (code != 0)
        return gai_strerror(code);
    const int handle = socket(found->ai_family, SOCK_STREAM, 0);
    const bool bound = handle >= 0 && bind(handle, found->ai_addr, found->ai_addrlen) == 0;
    std::string reason = bound ? "the certificate or its key is not usable" : std::strerror(errno);
    if (handle >= 0)
        close(handle);
    freeaddrinfo(found);
    return reason;
}

/// A peer that has vanished without a word is noticed within two seconds.
void watchPeers(grpc::ServerBuilder& builder)
{
    builder.AddChannelArgument(GRPC_ARG_KEEPALIVE_TIME_MS, 1000);
    builder.AddChannelArgument(GRPC_ARG_KEEPALIVE_TIMEOUT_MS, 500);
    builder.AddChannelArgument(GRPC_ARG_KEEPALIVE_PERMIT_WITHOUT_CALLS, 1);
    builder.AddChannelArgument(GRPC_ARG_HTTP2_MAX_PINGS_WITHOUT_DATA, 0);
    // Each ping of the bandwidth probe would put the next of these off by a second, one that nobody answers too.
    builder.AddChannelArgument(GRPC_ARG_HTTP2_BDP_PROBE, 0);
    builder.AddChannelArgument(GRPC_ARG_HTTP2_MIN_RECV_PING_INTERVAL_WITHOUT_DATA_MS, 300);
    builder.AddChannelArgument(GRPC_ARG_HTTP2_MAX_PING_STRIKES, 0);
    // Two controllers on one port would share its clients by chance.
    builder.AddChannelArgument(GRPC_ARG_ALLOW_REUSEPORT, 0);
}
} // namespace

struct ControllerServer::Private {
    MotionController* controller;
    ServerOptions options;
    Faults faults;
    std::string host;
    int port = 0;
    std::shared_ptr<grpc::ServerCredentials> credentials;
    std::unique_ptr<ControllerService> service;
    std::unique_ptr<grpc::Server> server;

    bool makeCredentials(std::string* error);
    bool checkAddress(std::string* error);
    bool listen(std::string* error);
    void stopListening();
    bool actOn(const Faults::Action& action, bool* waits, std::string* error);
};

ControllerServer::ControllerServer(MotionController* controller, ServerOptions options) : d(new Private)
{
    d->controller = controller;
    d->options = std::move(options);
}

ControllerServer::~ControllerServer()
{
    shutdown();
}

bool ControllerServer::splitAddress(const std::string& address, std::string* host, int* port)
{
    const std::size_t colon = address.rfind(':');
    if (colon == std::string::npos || colon == 0)
        return false;
    std::string name = address.substr(0, colon);
    const bool bracketed = name.size() > 2 && name.front() == '[' && name.back() == ']';
    if (bracketed)
        name = name.substr(1, name.size() - 2);
    else if (name.find(':') != std::string::npos)
        return false;
    const char* last = address.data() + address.size();
    const auto parsed = std::from_chars(address.data() + colon + 1, last, *port);
    *host = name;
    return parsed.ec == std::errc() && parsed.ptr == last && *port >= 0 && *port <= 65535;
}

bool ControllerServer::isLoopback(const std::string& host)
{
    in_addr v4{};
    if (inet_pton(AF_INET, host.c_str(), &v4) == 1)
        return (ntohl(v4.s_addr) >> 24) == 127;
    return host == "localhost" || host == "::1";
}

bool ControllerServer::Private::checkAddress(std::string* error)
{
    if (!splitAddress(options.address, &host, &port)) {
        *error = "\"" + options.address + "\" is no address; HOST:PORT is needed.";
        return false;
    }
    if (options.usesTls())
        return true;
    if (!isLoopback(host)) {
        *error = "Without TLS the controller listens on loopback only, and " + host
            + " is not. Make certificates with scripts/make-certificates and give them with --tls-authority, "
              "--tls-certificate and --tls-key.";
        return false;
    }
    if (options.token.empty()) {
        *error = "Without TLS clients must show a token. Give it as the first line of the standard input.";
        return false;
    }
    return true;
}

bool ControllerServer::Private::makeCredentials(std::string* error)
{
    if (!options.usesTls()) {
        credentials = grpc::InsecureServerCredentials();
        return true;
    }
    grpc::SslServerCredentialsOptions ssl(GRPC_SSL_REQUEST_AND_REQUIRE_CLIENT_CERTIFICATE_AND_VERIFY);
    grpc::SslServerCredentialsOptions::PemKeyCertPair pair;
    if (!readFile(options.authorityFile, &ssl.pem_root_certs, error)
        || !readFile(options.certificateFile, &pair.cert_chain, error)
        || !readFile(options.keyFile, &pair.private_key, error))
        return false;
    ssl.pem_key_cert_pairs.push_back(pair);
    credentials = grpc::SslServerCredentials(ssl);
    return true;
}

bool ControllerServer::Private::listen(std::string* error)
{
    // The certificate stands for the token.
    service
        = std::make_unique<ControllerService>(controller, &faults, options.usesTls() ? std::string() : options.token);
    const std::string name = host.find(':') == std::string::npos ? host : "[" + host + "]";
    grpc::ServerBuilder builder;
    watchPeers(builder);
    grpc::ResourceQuota quota;
    quota.SetMaxThreads(100);
    builder.SetResourceQuota(quota);
    int bound = 0;
    builder.AddListeningPort(name + ":" + std::to_string(port), credentials, &bound);
    builder.RegisterService(service.get());
    server = builder.BuildAndStart();
    if (server && bound != 0) {
        port = bound;
        return true;
    }
    server.reset();
    *error = "Cannot listen on " + name + ":" + std::to_string(port) + ": " + listenObjection(host, port) + ".";
    return false;
}

void ControllerServer::Private::stopListening()
{
    if (!server)
        return;
    service->endStreams();
    server->Shutdown(std::chrono::system_clock::now() + std::chrono::milliseconds(100));
    server->Wait();
    server.reset();
    service.reset();
}

bool ControllerServer::start(std::string* error)
{
    return d->checkAddress(error) && d->makeCredentials(error) && d->listen(error);
}

void ControllerServer::shutdown()
{
    d->stopListening();
}

int ControllerServer::port() const
{
    return d->port;
}

std::string ControllerServer::address() const
{
    const bool bracketed = d->host.find(':') != std::string::npos;
    return (bracketed ? "[" + d->host + "]" : d->host) + ":" + std::to_string(d->port);
}

bool ControllerServer::Private::actOn(const Faults::Action& action, bool* waits, std::string* error)
{
    const auto breakMachine = [&](const std::function<void(MachineFaults&)>& how) {
        *waits = !controller->breakMachine(action.axis, how);
        return true;
    };
    switch (action.kind) {
    case Faults::Action::PowerLost:
        return breakMachine([](MachineFaults& faults) { faults.powerLost = true; });
    case Faults::Action::DriveError:
        return breakMachine([&action](MachineFaults& faults) { faults.driveError = action.code; });
    case Faults::Action::Blocked:
        return breakMachine([](MachineFaults& faults) { faults.blocked = true; });
    case Faults::Action::Heal:
        controller->healMachines();
        return true;
    case Faults::Action::DropLink:
        if (!server)
            return true;
        stopListening();
        return listen(error);
    case Faults::Action::None:
        break;
    }
    return true;
}

bool ControllerServer::setFault(const std::string& line, std::string* error, bool* waits)
{
    Faults::Action action;
    bool ignored = false;
    return d->faults.set(line, &action, error) && d->actOn(action, waits ? waits : &ignored, error);
}
