#include "controller/ControllerOptions.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <functional>

namespace {
bool toAxisNumber(const std::string& key, int* number)
{
    if (key == "*") {
        *number = -1;
        return true;
    }
    const char* last = key.data() + key.size();
    const auto parsed = std::from_chars(key.data(), last, *number);
    return parsed.ec == std::errc() && parsed.ptr == last && *number >= 0 && *number <= 255;
}
} // namespace

std::string ControllerOptions::helpText()
{
    return std::string(
               "kestrun-controller runs the axes of a project as a motion controller in software.\n"
               "\n"
               "Usage: kestrun-controller [OPTION...]\n"
               "\n"
               "  --listen HOST:PORT       where to listen, 127.0.0.1:0 unless told; port 0 takes a free one. The\n"
               "                           address is printed as \"listening on HOST:PORT\"\n"
               "  --tls-authority FILE     mutual TLS: certificate of the authority that signs clients\n"
               "  --tls-certificate FILE   the controller's certificate\n"
               "  --tls-key FILE           the key of that certificate\n"
               "  --mechanics FILE         simulated machines, see below\n"
               "  --fault \"LINE\"           misbehave from the start, see below; may be given several times\n"
               "  --end-with-input         end when the standard input ends\n"
               "  --help, -h               this text\n"
               "\n"
               "Without TLS the controller listens on loopback only and reads a token from the first line of its\n"
               "standard input; clients must show it. With TLS the client's certificate stands for the token.\n"
               "scripts/make-certificates makes certificates.\n"
               "\n"
               "Further lines of the standard input are commands: \"fault LINE\", \"statistics\" and \"quit\". A "
               "fault\n"
               "is answered \"done\", one of an axis that is not there yet \"waiting for the axis\". Faults of axes "
               "stay\n"
               "through every download.\n"
               "\n"
               "Faults (METHOD is a request such as MoveAbs, none means all):\n")
        + Faults::help()
        + "\n"
          "The file of simulated machines is a JSON object: the key is an axis number or \"*\" for all axes, the\n"
          "value an object with places in user units and other values:\n"
          "  start, lowest, highest   where the axis stands at first; hard ends of its travel (null: none)\n"
          "  negativeSwitch, positiveSwitch\n"
          "                           the limit switches are pressed up to here, and from here on (null: never)\n"
          "  homeFrom, homeTo         the home switch is pressed between these (null: no such end)\n"
          "  indexOffset, indexPeriod\n"
          "                           places of the index pulse: the offset, and every so many units from it\n"
          "  gain                     of the position loop in 1/s: the axis lags by velocity / gain\n"
          "  enableDelay              seconds until the drive reports on\n"
          "  inertia, friction        torque in 0.1 % per unit of acceleration, and against the motion\n"
          "  positiveOnWhenPressed, negativeOnWhenPressed, homeOnWhenPressed\n"
          "                           wiring of the switches; as the axis's logic expects unless told\n";
}

/// An option either stands alone or takes the argument behind it.
struct ControllerOptions::Known {
    const char* name;
    bool ControllerOptions::*flag;
    std::function<bool(ControllerOptions&, const std::string&, std::string*)> take;
};

const std::vector<ControllerOptions::Known>& ControllerOptions::known()
{
    const auto text = [](std::string ServerOptions::*member) {
        return [member](ControllerOptions& options, const std::string& value, std::string*) {
            options.server.*member = value;
            return true;
        };
    };
    const auto addFault = [](ControllerOptions& options, const std::string& value, std::string*) {
        options.faults.push_back(value);
        return true;
    };
    const auto takeMechanics = [](ControllerOptions& options, const std::string& value, std::string* error) {
        return options.readMechanics(value, error);
    };
    static const std::vector<Known> table{
        { "--listen", nullptr, text(&ServerOptions::address) },
        { "--tls-authority", nullptr, text(&ServerOptions::authorityFile) },
        { "--tls-certificate", nullptr, text(&ServerOptions::certificateFile) },
        { "--tls-key", nullptr, text(&ServerOptions::keyFile) },
        { "--mechanics", nullptr, takeMechanics },
        { "--fault", nullptr, addFault },
        { "--end-with-input", &ControllerOptions::endWithInput, {} },
        { "--help", &ControllerOptions::help, {} },
        { "-h", &ControllerOptions::help, {} },
    };
    return table;
}

std::vector<std::string> ControllerOptions::names()
{
    std::vector<std::string> names;
    for (const Known& option : known())
        names.emplace_back(option.name);
    return names;
}

bool ControllerOptions::read(const std::vector<std::string>& arguments, std::string* error)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        const auto option
            = std::find_if(known().begin(), known().end(), [&name](const Known& each) { return each.name == name; });
        if (option == known().end()) {
            *error = "\"" + name + "\" is not an option; --help lists them.";
            return false;
        }
        if (option->flag) {
            this->*option->flag = true;
            continue;
        }
        if (i + 1 == arguments.size()) {
            *error = name + " needs a value.";
            return false;
        }
        if (!option->take(*this, arguments[++i], error))
            return false;
    }
    return true;
}

bool ControllerOptions::readMechanics(const std::string& path, std::string* error)
{
    std::ifstream file(path);
    if (!file) {
        *error = "Cannot read " + path + ".";
        return false;
    }
    const nlohmann::json object = nlohmann::json::parse(file, nullptr, false);
    if (!object.is_object()) {
        *error = path + ": an object with axis numbers is needed.";
        return false;
    }
    for (const auto& entry : object.items()) {
        int number = 0;
        MechanicsSettings trial;
        std::string reason;
        trial.lowest = -1e12;
        trial.highest = 1e12;
        if (!toAxisNumber(entry.key(), &number))
            reason = "is no axis number";
        else
            trial.read(entry.value().dump(), &reason);
        if (!reason.empty()) {
            error->assign(path).append(": ").append(entry.key()).append(": ").append(reason).append(".");
            return false;
        }
        controller.mechanics[number] = entry.value().dump();
    }
    return true;
}
