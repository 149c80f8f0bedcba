#pragma once

#include "host/communication/AxisRequest.h"
#include "host/communication/Export.h"

#include <chrono>
#include <functional>
#include <memory>

/// What carries debug requests to a controller. The connection makes the real one; a test can put another in its place.
///
/// The active link is shared by all RpcCmdSend of the program. All operations may be called from any thread.
class KESTRUN_COMMUNICATION_EXPORT ControllerLink {
public:
    ControllerLink();
    virtual ~ControllerLink();
    ControllerLink(const ControllerLink&) = delete;
    ControllerLink& operator=(const ControllerLink&) = delete;

    /// Carries the request out and waits for the answer, at most until the deadline. Never throws; a failure is a
    /// result.
    virtual AxisReply request(const AxisRequest& request, std::chrono::milliseconds deadline) = 0;
    /// Ends the requests that are under way with the result "not connected"; further ones are as before.
    virtual void cancelInFlight() = 0;

    /// The link in use, null while there is none.
    static std::shared_ptr<ControllerLink> active();
    /// Puts a link in use, or none. Requests that are under way keep the one that they started with.
    static void setActive(std::shared_ptr<ControllerLink> link);
    /// Takes this link out of use; without effect when another one has taken its place.
    static void endUse(const std::shared_ptr<ControllerLink>& link);

    /// Is told of every request of RpcCmdSend and its answer, on the thread that made the call, after it. An empty
    /// function ends that.
    using Observer = std::function<void(const AxisRequest& request, const AxisReply& reply, std::chrono::microseconds)>;
    static void setObserver(Observer observer);
    /// The observer in use, null while there is none.
    static std::shared_ptr<const Observer> observer();

    /// Is told of every request of RpcCmdSend that is about to go out, on the thread that makes the call. An empty
    /// function ends that.
    using Announcer = std::function<void(const AxisRequest& request)>;
    static void setAnnouncer(Announcer announcer);
    /// The announcer in use, null while there is none.
    static std::shared_ptr<const Announcer> announcer();

    /// While one lives, what RpcCmdSend is asked on this thread does not go out: the code is the answer at once. For
    /// requests that nobody wants any more, but whose answer somebody waits for. What stops an axis, switches it off or
    /// leaves debug mode goes out all the same.
    class KESTRUN_COMMUNICATION_EXPORT Refusal {
    public:
        explicit Refusal(short code);
        ~Refusal();
        Refusal(const Refusal&) = delete;
        Refusal& operator=(const Refusal&) = delete;

        /// The code of this thread's refusal, 0 while there is none.
        static short present();
    };
};
