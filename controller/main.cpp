#include "controller/ControllerOptions.h"
#include "controller/ControllerServer.h"
#include "controller/MotionController.h"

#include <google/protobuf/stubs/logging.h>
#include <grpc/support/log.h>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <string>

namespace {
constexpr int exitUsage = 2;

/// The lines of the standard input, read without waiting for more than there is.
class InputLines {
public:
    /// False at the end of the input.
    bool read()
    {
        char buffer[4096];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count > 0)
            m_text.append(buffer, static_cast<std::size_t>(count));
        return count > 0;
    }

    bool take(std::string* line)
    {
        const std::size_t end = m_text.find('\n');
        if (end == std::string::npos)
            return false;
        *line = m_text.substr(0, end);
        if (!line->empty() && line->back() == '\r')
            line->pop_back();
        m_text.erase(0, end + 1);
        return true;
    }

    enum class Wait { Line, EndOfInput, Signal };
    /// Waits for one whole line, at most until the input ends or a signal comes through that file.
    Wait wait(std::string* line, int signals)
    {
        pollfd files[] = { { signals, POLLIN, 0 }, { STDIN_FILENO, POLLIN, 0 } };
        while (!take(line)) {
            if (poll(files, 2, -1) < 0)
                continue;
            if (files[0].revents != 0)
                return Wait::Signal;
            if (!read())
                return Wait::EndOfInput;
        }
        return Wait::Line;
    }

private:
    std::string m_text;
};

/// Signals that end the program come through a file instead of interrupting it.
int openSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

class Program {
public:
    explicit Program(ControllerOptions options) : m_options(std::move(options)), m_controller(m_options.controller) { }

    int run()
    {
        // Strangers that speak no protocol are no news; what matters to the user is said below.
        gpr_set_log_function([](gpr_log_func_args*) {});
        google::protobuf::SetLogHandler(nullptr);
        const int signals = openSignals();
        if (!m_options.server.usesTls()) {
            const InputLines::Wait end = m_lines.wait(&m_options.server.token, signals);
            if (end == InputLines::Wait::Signal)
                return EXIT_SUCCESS;
            if (end == InputLines::Wait::EndOfInput)
                m_options.server.token.clear();
        }
        ControllerServer server(&m_controller, m_options.server);
        if (!start(server))
            return EXIT_FAILURE;
        std::cout << "listening on " << server.address() << std::endl;
        serve(server, signals);
        server.shutdown();
        m_controller.shutdown();
        return EXIT_SUCCESS;
    }

private:
    bool start(ControllerServer& server)
    {
        std::string error;
        bool fine = true;
        for (const std::string& line : m_options.faults)
            fine = fine && server.setFault(line, &error);
        if (!fine || !server.start(&error)) {
            std::cerr << "kestrun-controller: " << error << std::endl;
            return false;
        }
        m_controller.start();
        return true;
    }

    void serve(ControllerServer& server, int signals)
    {
        pollfd files[] = { { signals, POLLIN, 0 }, { STDIN_FILENO, POLLIN, 0 } };
        nfds_t watched = 2;
        while (true) {
            std::string line;
            while (m_lines.take(&line)) {
                if (!carryOut(server, line))
                    return;
            }
            if (poll(files, watched, -1) < 0)
                continue;
            if (files[0].revents != 0)
                return;
            if (watched == 2 && files[1].revents != 0 && !m_lines.read()) {
                if (m_options.endWithInput)
                    return;
                watched = 1;
            }
        }
    }

    bool carryOut(ControllerServer& server, const std::string& line)
    {
        std::string error;
        if (line == "quit")
            return false;
        if (line == "statistics") {
            const CycleStatistics statistics = m_controller.statistics();
            std::cout << "cycles " << statistics.cycles << " late " << statistics.late << std::endl;
        } else if (line.compare(0, 6, "fault ") == 0) {
            bool waits = false;
            if (server.setFault(line.substr(6), &error, &waits))
                std::cout << (waits ? "waiting for the axis: " : "done ") << line << std::endl;
        } else if (!line.empty()) {
            error = "\"" + line + "\" is no command";
        }
        if (!error.empty())
            std::cerr << "kestrun-controller: " << error << std::endl;
        return true;
    }

    ControllerOptions m_options;
    InputLines m_lines;
    MotionController m_controller;
};
} // namespace

int main(int argc, char** argv)
{
    ControllerOptions options;
    std::string error;
    if (!options.read(std::vector<std::string>(argv + 1, argv + argc), &error)) {
        std::cerr << "kestrun-controller: " << error << std::endl;
        return exitUsage;
    }
    if (options.help) {
        std::cout << ControllerOptions::helpText();
        return EXIT_SUCCESS;
    }
    return Program(std::move(options)).run();
}
