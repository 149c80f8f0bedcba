#include "host/communication/ControllerTransport.h"

#include "host/communication/ConnectionTexts.h"

#include <grpc/support/log.h>

#include <QFile>

#include <utility>

namespace {
constexpr int largestMessage = 16 * 1024 * 1024;

bool readPem(const QString& path, std::string* text, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = ConnectionTexts::tr("The file %1 cannot be read.").arg(path);
        return false;
    }
    *text = file.readAll().toStdString();
    if (text->find("-----BEGIN ") != std::string::npos)
        return true;
    *error = ConnectionTexts::tr("The file %1 is no PEM file.").arg(path);
    return false;
}

std::shared_ptr<grpc::ChannelCredentials> makeCredentials(const ControllerAddress& address, QString* error)
{
    if (!address.usesTls())
        return grpc::InsecureChannelCredentials();
    grpc::SslCredentialsOptions options;
    if (!readPem(address.authorityFile, &options.pem_root_certs, error)
        || !readPem(address.certificateFile, &options.pem_cert_chain, error)
        || !readPem(address.keyFile, &options.pem_private_key, error))
        return nullptr;
    return grpc::SslCredentials(options);
}

/// What the transport has to tell comes back as the result of a call; its own lines on the error output help nobody.
void silenceTransport()
{
    static const bool once = [] {
        gpr_set_log_function([](gpr_log_func_args*) {});
        return true;
    }();
    Q_UNUSED(once)
}

grpc::ChannelArguments channelArguments()
{
    grpc::ChannelArguments arguments;
    arguments.SetInt(GRPC_ARG_INITIAL_RECONNECT_BACKOFF_MS, 100);
    arguments.SetInt(GRPC_ARG_MIN_RECONNECT_BACKOFF_MS, 100);
    arguments.SetInt(GRPC_ARG_MAX_RECONNECT_BACKOFF_MS, 200);
    arguments.SetInt(GRPC_ARG_KEEPALIVE_TIME_MS, 1000);
    arguments.SetInt(GRPC_ARG_KEEPALIVE_TIMEOUT_MS, 500);
    arguments.SetInt(GRPC_ARG_KEEPALIVE_PERMIT_WITHOUT_CALLS, 1);
    arguments.SetInt(GRPC_ARG_HTTP2_MAX_PINGS_WITHOUT_DATA, 0);
    // Each ping of the bandwidth probe would put the next of these off by a second, one that nobody answers too.
    arguments.SetInt(GRPC_ARG_HTTP2_BDP_PROBE, 0);
    // The emergency stop's channel must not share the connection of the others.
    arguments.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
    // A controller stands on the machine's own network; a proxy for web pages leads away from it.
    arguments.SetInt(GRPC_ARG_ENABLE_HTTP_PROXY, 0);
    arguments.SetMaxReceiveMessageSize(largestMessage);
    return arguments;
}
} // namespace

ControllerTransport::ControllerTransport(std::string target, std::shared_ptr<grpc::ChannelCredentials> credentials)
    : m_target(std::move(target)), m_credentials(std::move(credentials)), m_channel(makeChannel())
{
}

std::shared_ptr<const ControllerTransport> ControllerTransport::make(const ControllerAddress& address, QString* error)
{
    silenceTransport();
    std::shared_ptr<grpc::ChannelCredentials> credentials = makeCredentials(address, error);
    if (!credentials)
        return nullptr;
    return std::shared_ptr<const ControllerTransport>(
        new ControllerTransport(address.text().toStdString(), std::move(credentials)));
}

std::shared_ptr<grpc::Channel> ControllerTransport::makeChannel() const
{
    return grpc::CreateCustomChannel(m_target, m_credentials, channelArguments());
}
