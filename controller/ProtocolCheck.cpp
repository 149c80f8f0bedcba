#include "controller/ProtocolCheckOptions.h"
#include "controller/ProtocolClient.h"
#include "protocol/AxisRefLayout.h"
#include "protocol/DiagnosisCodes.h"
#include "protocol/ProtocolVersion.h"
#include "protocol/controller.grpc.pb.h"

#include <grpc/support/log.h>
#include <grpcpp/grpcpp.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <functional>
#include <future>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace proto = kestrun::protocol;

// Checks whether a controller speaks the protocol as a workbench expects it. It talks to the service directly, so that
// what it says does not depend on any client of ours.
namespace {
/// A connection that pings as a workbench does when nothing else comes.
std::shared_ptr<grpc::Channel> pingingChannel(
    const std::string& address, const std::shared_ptr<grpc::ChannelCredentials>& credentials)
{
    grpc::ChannelArguments arguments;
    arguments.SetInt(GRPC_ARG_KEEPALIVE_TIME_MS, 1000);
    arguments.SetInt(GRPC_ARG_KEEPALIVE_TIMEOUT_MS, 500);
    arguments.SetInt(GRPC_ARG_KEEPALIVE_PERMIT_WITHOUT_CALLS, 1);
    arguments.SetInt(GRPC_ARG_HTTP2_MAX_PINGS_WITHOUT_DATA, 0);
    arguments.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
    return grpc::CreateCustomChannel(address, credentials, arguments);
}

/// A virtual axis as small as a record may be.
void fillAxis(proto::AxisRecord* record, const std::string& velocity)
{
    record->set_name("ProtocolCheck");
    const std::pair<const char*, const char*> values[] = { { "Version", "3" }, { "AxisNo", "0" },
        { "AxisType", "Axis_Virtual" }, { "PulseCountPerCircle", "10000" }, { "UseGearEnable", "FALSE" },
        { "UnUseGearValue", "1" }, { "UseGearValue", "1" }, { "GearRatioMolecule", "1" }, { "GearRatioParent", "1" },
        { "ReverseEnable", "FALSE" }, { "ModeSet", "FALSE" }, { "SoftLimitEnable", "TRUE" }, { "SoftLimitNeg", "-100" },
        { "SoftLimitPos", "100" }, { "RotationPeriod", "360" }, { "LimitDec", "1000" }, { "AxisErrorDec", "10000" },
        { "FollowErrorThreshold", "0" }, { "MaxAcc", "500000" }, { "JogMaxVel", "50" }, { "PosTorqueMaxValue", "0" },
        { "NegTorqueMaxValue", "0" }, { "ErrorStopEnable", "TRUE" }, { "HomeSpeed", "10" }, { "HomeAcc", "100" },
        { "HomeCloseSpeed", "1" }, { "HomeTimeOut", "50000" }, { "HomeMode", "Homing_35" } };
    for (const auto& value : values)
        (*record->mutable_values())[value.first] = value.second;
    (*record->mutable_values())["MaxVel"] = velocity;
}

class Check : private ProtocolClient {
public:
    Check(const ProtocolCheckOptions& options, const std::shared_ptr<grpc::ChannelCredentials>& credentials,
        const std::string& token)
        : ProtocolClient(grpc::CreateChannel(options.address, credentials)),
          m_pinging(pingingChannel(options.address, credentials)), m_token(token), m_mayReplace(options.mayReplace)
    {
    }

    int run()
    {
        if (!checkHandshake() || !checkLogin())
            return report();
        checkSessions();
        checkComingBack();
        checkWhoIsNotBack();
        checkUnknownAxis();
        if (m_mayReplace) {
            beginPings();
            checkDownload();
            checkStatus();
            checkDebugMode();
            checkMotion();
            checkStopAll();
            checkStopOfAnother();
            checkDeadman();
            checkLostClient();
            checkAxesOfTheFormer();
            checkPings();
        } else {
            std::cout << "left out: everything that replaces or moves axes (give --yes)\n";
        }
        return report();
    }

private:
    bool say(bool fine, const std::string& what)
    {
        std::cout << (fine ? "fine    " : "FAILED  ") << what << std::endl;
        m_failed += fine ? 0 : 1;
        return fine;
    }

    int report() const
    {
        std::cout << (m_failed == 0 ? "The controller speaks the protocol.\n"
                                    : std::to_string(m_failed) + " checks have failed.\n");
        return m_failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    }

    bool checkHandshake()
    {
        proto::HandshakeRequest request;
        proto::HandshakeReply reply;
        request.set_version(protocolVersion);
        if (!say(call(&Stub::Handshake, request, &reply), "the handshake is answered"))
            return false;
        m_tokenNeeded = reply.token_needed();
        return say(reply.version() == protocolVersion, "the version is " + std::to_string(protocolVersion));
    }

    bool checkLogin()
    {
        int code = 0;
        if (m_tokenNeeded) {
            say(login(m_token + "x", {}, &code) && code == Diagnosis::refused && session().empty(),
                "a wrong token is refused with 0x7003");
        }
        say(login(m_token, {}, &code, protocolVersion + 1) && code == Diagnosis::versionDiffers,
            "another version is refused with 0x7004");
        const bool fine = login(m_token, {}, &code) && code == 0;
        return say(fine && session().size() == protocolSessionLength, "the login gives a session of 16 bytes");
    }

    void beginPings()
    {
        m_pinging.login(m_token);
        m_pings = std::async(std::launch::async, [this] {
            // Who forbids pings puts up with the first few. Nothing else goes over that connection meanwhile.
            const auto until = std::chrono::system_clock::now() + std::chrono::milliseconds(5000);
            return !m_pinging.channel()->WaitForStateChange(GRPC_CHANNEL_READY, until);
        });
    }

    void checkPings()
    {
        say(m_pings.get() && m_pinging.isLoggedIn(), "a ping a second is answered, and allowed");
        m_pinging.logout();
    }

    void checkSessions()
    {
        proto::AxisOnlyRequest request;
        proto::Result reply;
        request.set_session(std::string(protocolSessionLength, 'x'));
        say(call(&Stub::KeepAlive, request, &reply) && reply.result() == Diagnosis::refused,
            "a request of no session is refused with 0x7003");
        attend();
        say(waitFor([this] { return events() > 0; }), "the session's stream begins with an event");
    }

    void checkComingBack()
    {
        const std::string mine(protocolSessionLength, 'a');
        ProtocolClient former(channel()), next(channel()), bystander(channel());
        former.login(m_token, mine);
        bystander.login(m_token, std::string(protocolSessionLength, 'b'));
        say(former.isLoggedIn() && bystander.isLoggedIn() && isLoggedIn(), "several clients are logged in at once");
        next.login(m_token, mine);
        say(next.isLoggedIn() && !former.isLoggedIn(), "a client that logs in again ends its former session");
        say(bystander.isLoggedIn() && isLoggedIn(), "and nobody else's");
        next.logout();
        bystander.logout();
        say(!next.isLoggedIn() && isLoggedIn(), "a logout ends a session");
    }

    void checkWhoIsNotBack()
    {
        const std::string mine(protocolSessionLength, 'c');
        ProtocolClient former(channel()), refused(channel());
        former.login(m_token, mine);
        refused.login(m_token, mine, nullptr, protocolVersion + 1);
        if (m_tokenNeeded)
            refused.login(m_token + "x", mine);
        say(former.isLoggedIn(), "a login that is refused ends no session");
        former.logout();
        for (const int length : { 0, protocolSessionLength - 1, protocolSessionLength + 1 }) {
            ProtocolClient one(channel()), two(channel());
            one.login(m_token, std::string(static_cast<std::size_t>(length), 'c'));
            two.login(m_token, std::string(static_cast<std::size_t>(length), 'c'));
            say(one.isLoggedIn() && two.isLoggedIn(), std::to_string(length) + " bytes tell no client");
            one.logout();
            two.logout();
        }
    }

    void checkUnknownAxis()
    {
        proto::AxisOnlyRequest request;
        request.set_axis(254);
        say(result(&Stub::Reset, request) == Diagnosis::unknownAxis, "an unknown axis is refused with 5");
    }

    void checkDownload()
    {
        proto::DownloadRequest request;
        proto::DownloadReply reply;
        request.set_session(session());
        fillAxis(request.add_axes(), "fast");
        say(call(&Stub::DownloadAxes, request, &reply) && reply.result() != 0 && reply.axis() == "ProtocolCheck"
                && reply.key() == "MaxVel",
            "an axis with a number that is none is refused, and named with its parameter");
        checkRefusedAxes();
        request.clear_axes();
        fillAxis(request.add_axes(), "50");
        fillAxis(request.add_axes(), "50");
        say(call(&Stub::DownloadAxes, request, &reply) && reply.result() == Diagnosis::axisNumberDoubled,
            "a doubled axis number is refused with 50");
        request.mutable_axes()->RemoveLast();
        reply.Clear();
        say(call(&Stub::DownloadAxes, request, &reply) && reply.result() == 0, "a sound axis is taken over");
        proto::SessionRequest read;
        proto::AxisList list;
        read.set_session(session());
        const bool fine = call(&Stub::ReadAxes, read, &list) && list.axes_size() == 1;
        say(fine && list.axes(0).name() == "ProtocolCheck"
                && list.axes(0).values_size() == request.axes(0).values_size(),
            "the axis comes back as it was");
        say(reply.axes_revision() > 0 && list.axes_revision() == reply.axes_revision()
                && waitFor([this, &reply] { return axesRevision() == reply.axes_revision(); }),
            "the session's stream tells the revision of the axes");
    }

    /// How an axis is refused that is sound but for one change, and which parameter is named.
    void checkRefusal(const char* key, const char* value, int code, const std::string& what)
    {
        proto::DownloadRequest request;
        proto::DownloadReply reply;
        request.set_session(session());
        proto::AxisRecord* record = request.add_axes();
        fillAxis(record, "50");
        // Only axes with an output have units.
        (*record->mutable_values())["AxisType"] = "Axis_Pulse";
        if (value)
            (*record->mutable_values())[key] = value;
        else
            record->mutable_values()->erase(key);
        say(call(&Stub::DownloadAxes, request, &reply) && reply.result() == code && reply.axis() == "ProtocolCheck"
                && reply.key() == key,
            what + " is refused with " + std::to_string(code) + ", and named");
    }

    void checkRefusedAxes()
    {
        checkRefusal("LimitDec", nullptr, Diagnosis::parameterInvalid, "a missing parameter");
        checkRefusal("LimitDec", "-1", Diagnosis::parameterInvalid, "a parameter below its range");
        checkRefusal("SoftLimitPos", "-101", Diagnosis::limitsCross, "an upper limit below the lower one");
        checkRefusal("PulseCountPerCircle", "0", Diagnosis::unitRatioInvalid, "a unit without pulses");
        proto::DownloadRequest request;
        proto::DownloadReply reply;
        request.set_session(session());
        for (int i = 0; i <= 256; ++i)
            fillAxis(request.add_axes(), "50");
        const bool answered = call(&Stub::DownloadAxes, request, &reply);
        // They cannot all have numbers of their own, and either may be noticed first.
        say(answered && (reply.result() == Diagnosis::tooManyAxes || reply.result() == Diagnosis::axisNumberDoubled),
            "257 axes are refused with 52 or 50");
    }

    void checkStatus()
    {
        bool fine = false;
        const AxisRef ref = status(&fine);
        say(fine, "the status has 248 bytes");
        say(ref.axisState == 0 && ref.debugMode == 0 && ref.speedRatio == 1, "an axis begins Disabled, at full speed");
        proto::StatusRequest request;
        proto::StatusReply reply;
        request.set_session(session());
        request.set_size(10);
        say(call(&Stub::GetAxisRef, request, &reply) && reply.data().size() == 10,
            "a shorter status is as long as asked");
        proto::CurvesRequest curves;
        proto::CurvesReply values;
        curves.set_session(session());
        curves.add_axes(0);
        curves.add_axes(254);
        say(call(&Stub::ReadCurves, curves, &values) && values.status_size() == 2
                && values.status(0).size() == sizeof(AxisRef) && values.status(1).empty(),
            "curves give a status an axis, and nothing for one that there is not");
    }

    void checkDebugMode()
    {
        say(enable(1) == Diagnosis::notInDebugMode, "commands outside debug mode are refused with 3");
        bool refused = true;
        for (const int timeout : { 0, -1, 32768 })
            refused = enterDebugMode(1, timeout) == Diagnosis::argumentInvalid && refused;
        say(refused && status().debugMode == 0, "a time-out outside 1 to 32767 ms is refused with 32");
        say(enterDebugMode(1, 30000) == 0 && status().debugMode != 0, "debug mode is entered");
        say(enterDebugMode(1, 32767) == 0, "entering again renews");
        checkOtherClient();
        say(result(&Stub::MoveVel, motion(0, 5)) == Diagnosis::notEnabled, "a motion without power is refused with 2");
        say(enable(1) == 0 && becomes([](const AxisRef& ref) { return ref.axisState == 3; }),
            "enabling leads to StandStill");
        say(takeOverFrom(*this) == Diagnosis::axisEnabled, "axes are refused with 48 while one is enabled");
    }

    static int takeOverFrom(ProtocolClient& client)
    {
        proto::DownloadRequest request;
        proto::DownloadReply reply;
        request.set_session(client.session());
        fillAxis(request.add_axes(), "50");
        return client.call(&Stub::DownloadAxes, request, &reply) ? reply.result() : -1;
    }

    static std::vector<std::pair<const char*, int>> commandFrom(ProtocolClient& client)
    {
        proto::MotionRequest pressed = motion(0, 5);
        pressed.set_pressed(1);
        proto::FlagRequest percent;
        percent.set_value(50);
        const proto::PositionRequest place;
        const proto::AxisOnlyRequest axis;
        return { { "EnterDebugMode", client.enterDebugMode(1, 30000) },
            { "leaving it", client.enterDebugMode(0, 30000) }, { "KeepAlive", client.result(&Stub::KeepAlive, axis) },
            { "SetEnable", client.enable(1) }, { "SetPosition", client.result(&Stub::SetPosition, place) },
            { "SetHomeOffset", client.result(&Stub::SetHomeOffset, place) },
            { "SetVelRatio", client.result(&Stub::SetVelRatio, percent) },
            { "SetHome", client.result(&Stub::SetHome, axis) }, { "SetStop", client.result(&Stub::SetStop, pressed) },
            { "MoveAbs", client.result(&Stub::MoveAbs, pressed) },
            { "MoveRel", client.result(&Stub::MoveRel, pressed) },
            { "MoveVel", client.result(&Stub::MoveVel, pressed) }, { "JopPos", client.result(&Stub::JopPos, pressed) },
            { "JopNeg", client.result(&Stub::JopNeg, pressed) }, { "Reset", client.result(&Stub::Reset, axis) } };
    }

    /// While this one has the axis in debug mode, Disabled.
    void checkOtherClient()
    {
        ProtocolClient other(channel());
        other.login(m_token);
        for (const auto& [command, code] : commandFrom(other))
            say(code == Diagnosis::ownedByOther, std::string("another client is refused with 4: ") + command);
        say(takeOverFrom(other) == Diagnosis::ownedByOther,
            "axes of another client are refused with 4 while one is in debug mode");
        bool fine = false;
        const AxisRef ref = other.status(&fine);
        say(fine && ref.debugMode != 0 && ref.axisState == 0 && ref.speedRatio == 1,
            "another client may look, and has changed nothing");
        other.logout();
    }

    void checkMotion()
    {
        proto::PositionRequest place;
        place.set_position(12.5);
        say(result(&Stub::SetPosition, place) == 0 && status().setPosition == 12.5, "the position can be set");
        say(result(&Stub::MoveAbs, motion(20, 20)) == 0 && becomes([](const AxisRef& ref) {
            return ref.axisState == 3 && std::fabs(ref.setPosition - 20) < 1e-9;
        }),
            "an absolute move arrives");
        say(result(&Stub::MoveRel, motion(-5, 20)) == 0 && becomes([](const AxisRef& ref) {
            return ref.axisState == 3 && std::fabs(ref.setPosition - 15) < 1e-9;
        }),
            "a relative move arrives");
        say(result(&Stub::MoveRel, motion(-2, -20)) == 0 && becomes([](const AxisRef& ref) {
            return ref.axisState == 3 && std::fabs(ref.setPosition - 13) < 1e-9;
        }),
            "of a velocity's sign a move takes no notice");
        say(result(&Stub::MoveAbs, motion(101, 20)) == Diagnosis::targetBeyondSoftLimit,
            "a target beyond the soft limit is refused with 6");
        say(result(&Stub::MoveAbs, motion(1, 0)) == Diagnosis::velocityInvalid, "no velocity is refused with 13");
        say(result(&Stub::MoveAbs, motion(1, 51)) == Diagnosis::velocityTooHigh,
            "a velocity over the maximum is refused with 11");
        proto::FlagRequest ratio;
        ratio.set_value(50);
        say(result(&Stub::SetVelRatio, ratio) == 0 && static_cast<int>(status().speedRatio * 100) == 50,
            "the speed ratio is taken and shown");
        say(result(&Stub::MoveVel, motion(0, -10)) == 0
                && becomes([](const AxisRef& ref) { return ref.axisState == 5 && ref.setVelocity == -5; }),
            "a continuous motion runs at its velocity times the ratio");
        say(result(&Stub::SetStop, motion(0, 0, 0)) == 0
                && becomes([](const AxisRef& ref) { return ref.axisState == 3; }),
            "a stop without a deceleration stops all the same");
        ratio.set_value(100);
        result(&Stub::SetVelRatio, ratio);
        say(result(&Stub::MoveVel, motion(0, 20)) == 0
                && becomes([](const AxisRef& ref) { return ref.setVelocity == 20; })
                && result(&Stub::SetStop, motion(0, 0, 100)) == 0 && result(&Stub::SetStop, motion(0, 0, 1)) == 0
                && becomes([](const AxisRef& ref) { return ref.axisState == 3; }, 1000),
            "a weaker stop does not replace one under way");
        say(jog(0) == 0, "the end of a jog that never was is answered 0");
        say(jog(1) == 0 && becomes([](const AxisRef& ref) { return ref.setVelocity == 5; }), "a jog runs");
        say(jog(0) == 0 && becomes([](const AxisRef& ref) { return ref.axisState == 3; }), "its end stops the axis");
        place.set_position(-3);
        say(result(&Stub::SetHomeOffset, place) == 0 && result(&Stub::SetHome, proto::AxisOnlyRequest()) == 0
                && becomes(
                    [](const AxisRef& ref) { return ref.axisState == 3 && std::fabs(ref.setPosition + 3) < 1e-6; }),
            "homing by method 35 shows the home offset");
    }

    void checkStopAll()
    {
        jog(1);
        proto::StopAllRequest request;
        request.set_hold(true);
        request.set_number(8);
        say(result(&Stub::StopAll, request) == 0
                && becomes([](const AxisRef& ref) { return ref.setVelocity == 0; }, 1000),
            "the emergency stop stops a jog");
        say(jog(1) == Diagnosis::emergencyStop, "while it holds motion is refused with 26");
        say(waitFor([this] { return stopHeld(); }), "the session's stream tells it");
        const std::uint64_t told = stopRevision();
        proto::Result answer;
        request.set_session(session());
        say(call(&Stub::StopAll, request, &answer) && answer.result() == 0
                && waitFor([this, told] { return stopRevision() == told + 1; }),
            "a stop while it holds is told too, as one more");
        say(answer.stop_revision() == stopRevision(), "the answer to a stop tells the same revision");
        request.set_hold(false);
        request.set_number(7);
        say(result(&Stub::StopAll, request) == Diagnosis::emergencyStop && jog(1) == Diagnosis::emergencyStop,
            "a release that is older than the stop is refused with 26");
        request.set_number(9);
        say(result(&Stub::StopAll, request) == 0 && jog(1) == 0, "after the release motion is taken again");
        jog(0);
    }

    /// While this one has the axis in debug mode, enabled.
    void checkStopOfAnother()
    {
        ProtocolClient other(channel());
        other.login(m_token);
        const std::uint64_t before = stopRevision();
        jog(1);
        proto::StopAllRequest request;
        request.set_hold(true);
        request.set_number(1);
        say(other.result(&Stub::StopAll, request) == 0
                && becomes([](const AxisRef& ref) { return ref.setVelocity == 0; }, 1000),
            "another client may stop everything");
        const bool told = waitFor([this, before] { return stopHeld() && stopRevision() > before; });
        say(told, "the session's stream tells another client's stop");
        request.set_hold(false);
        request.set_number(10);
        request.set_seen(before);
        say(result(&Stub::StopAll, request) == Diagnosis::emergencyStop && jog(1) == Diagnosis::emergencyStop,
            "a release that has not seen another client's stop is refused with 26");
        request.set_number(11);
        request.set_seen(stopRevision());
        say(result(&Stub::StopAll, request) == 0 && jog(1) == 0, "one that has seen it is taken");
        jog(0);
        other.logout();
    }

    void checkDeadman()
    {
        say(enterDebugMode(1, 300) == 0 && jog(1) == 0, "a jog with a time-out of 300 ms");
        proto::CurvesRequest curves;
        curves.set_session(session());
        curves.add_axes(0);
        AxisRef ref{};
        ref.debugMode = 1;
        for (int i = 0; i < 20 && ref.debugMode != 0; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            proto::CurvesReply values;
            if (call(&Stub::ReadCurves, curves, &values) && values.status_size() == 1
                && values.status(0).size() == sizeof ref)
                std::memcpy(&ref, values.status(0).data(), sizeof ref);
        }
        say(ref.debugMode == 0 && ref.setVelocity == 0, "silence ends it, though curves are read");
        say(ref.axisError == Diagnosis::debugTimeout, "the axis shows 31 as its error");
    }

    void checkLostClient()
    {
        enterDebugMode(1, 30000);
        enable(1);
        becomes([](const AxisRef& ref) { return ref.axisState == 3; });
        say(jog(1) == 0, "a jog with a long time-out");
        endStream();
        int code = 0;
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        login(m_token, {}, &code);
        say(becomes([](const AxisRef& ref) { return ref.setVelocity == 0 && ref.debugMode == 0; }, 2000),
            "the axis stops when its client is lost");
    }

    void checkAxesOfTheFormer()
    {
        const auto stands = [](const AxisRef& ref) { return ref.setVelocity == 0 && ref.debugMode == 0; };
        const std::string mine(protocolSessionLength, 'd');
        ProtocolClient former(channel()), next(channel());
        former.login(m_token, mine);
        former.attend();
        former.enterDebugMode(1, 30000);
        former.enable(1);
        former.becomes([](const AxisRef& ref) { return ref.axisState == 3; });
        say(former.jog(1) == 0 && former.becomes([](const AxisRef& ref) { return ref.setVelocity == 5; }),
            "a jog of a client that will come back");
        // Its stream is still there, as behind a cut that the controller has not noticed.
        next.login(m_token, mine);
        say(next.becomes(stands, 1000), "the axes of its former session stop when a client comes back");
        say(next.enterDebugMode(1, 30000) == 0, "it can have them again");
        next.logout();
        say(becomes(stands, 1000), "a logout ends debug mode");
    }

    ProtocolClient m_pinging;
    std::future<bool> m_pings;
    std::string m_token;
    bool m_mayReplace = false;
    bool m_tokenNeeded = false;
    int m_failed = 0;
};
} // namespace

int main(int argc, char** argv)
{
    gpr_set_log_function([](gpr_log_func_args*) {});
    ProtocolCheckOptions options;
    if (!options.read(std::vector<std::string>(argv + 1, argv + argc))) {
        std::cerr << ProtocolCheckOptions::helpText();
        return 2;
    }
    if (options.help) {
        std::cout << ProtocolCheckOptions::helpText();
        return EXIT_SUCCESS;
    }
    const auto credentials = options.credentials();
    if (!credentials)
        return 2;
    std::string token;
    if (options.files[0].empty())
        std::getline(std::cin, token);
    return Check(options, credentials, token).run();
}
