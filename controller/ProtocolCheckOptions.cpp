#include "controller/ProtocolCheckOptions.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace {
bool readFile(const std::string& path, std::string* text)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    if (!file || !(content << file.rdbuf())) {
        std::cerr << "Cannot read " << path << ".\n";
        return false;
    }
    *text = content.str();
    return true;
}
} // namespace

const char* ProtocolCheckOptions::helpText()
{
    return "kestrun-protocol-check checks whether a controller speaks the protocol of the workbench.\n"
           "\n"
           "Usage: kestrun-protocol-check HOST:PORT [OPTION...]\n"
           "\n"
           "  --tls-authority FILE     mutual TLS: certificate of the authority\n"
           "  --tls-certificate FILE   the client's certificate\n"
           "  --tls-key FILE           the key of that certificate\n"
           "  --yes                    the axes in the controller may be replaced and moved\n"
           "\n"
           "Without TLS the token is read from the first line of the standard input.\n"
           "Every check is a line \"fine\" or \"FAILED\"; the exit code is 0 only if none has failed.\n"
           "The check replaces the controller's axes by a virtual one and moves it; it asks for --yes before it "
           "does.\n";
}

bool ProtocolCheckOptions::read(const std::vector<std::string>& arguments)
{
    static const char* const names[] = { "--tls-authority", "--tls-certificate", "--tls-key" };
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        int file = -1;
        for (int k = 0; k < 3; ++k)
            file = word == names[k] ? k : file;
        if (word == "--help")
            help = true;
        else if (word == "--yes")
            mayReplace = true;
        else if (file >= 0 && i + 1 < arguments.size())
            files[file] = arguments[++i];
        else if (address.empty() && word.compare(0, 2, "--") != 0)
            address = word;
        else
            return false;
    }
    const auto given
        = std::count_if(std::begin(files), std::end(files), [](const std::string& path) { return !path.empty(); });
    return help || (!address.empty() && (given == 0 || given == 3));
}

std::shared_ptr<grpc::ChannelCredentials> ProtocolCheckOptions::credentials() const
{
    if (files[0].empty())
        return grpc::InsecureChannelCredentials();
    grpc::SslCredentialsOptions ssl;
    if (!readFile(files[0], &ssl.pem_root_certs) || !readFile(files[1], &ssl.pem_cert_chain)
        || !readFile(files[2], &ssl.pem_private_key))
        return nullptr;
    return grpc::SslCredentials(ssl);
}
