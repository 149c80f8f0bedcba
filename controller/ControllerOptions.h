#pragma once

#include "controller/ControllerServer.h"
#include "controller/MotionController.h"

#include <string>
#include <vector>

/// What the program's arguments say.
struct ControllerOptions {
    ServerOptions server;
    MotionController::Options controller;
    /// Lines of Faults that hold from the start.
    std::vector<std::string> faults;
    bool help = false;
    /// The end of the standard input ends the program.
    bool endWithInput = false;

    /// Reads the arguments (without the program's name). False with a text for the user.
    bool read(const std::vector<std::string>& arguments, std::string* error);
    static std::string helpText();
    /// All options.
    static std::vector<std::string> names();

private:
    struct Known;
    static const std::vector<Known>& known();

    bool readMechanics(const std::string& path, std::string* error);
};
