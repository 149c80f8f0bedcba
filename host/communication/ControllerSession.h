#pragma once

#include "host/communication/GrpcLink.h"

#include <QString>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

/// Logs in, stays while the session is there, and logs in again after a loss, until it is told to end. It does so on a
/// thread of its own, from its making on; while logged in its link is ControllerLink::active().
///
/// All operations may be called from any thread. Whatever is called first of retire(), end() and cut(), from then on no
/// link is put in use any more.
class ControllerSession {
public:
    /// Told on the session's thread.
    struct Events {
        /// Logged in; the name is that of what answers there.
        std::function<void(const std::shared_ptr<GrpcLink>&, QString name)> opened;
        /// Could not log in, and trying again does not mend it: a code of the diagnosis table and a text for the user.
        std::function<void(short, QString)> failed;
        std::function<void(QString reason)> lost;
        std::function<void(GrpcLink::News)> news;
    };
    /// Makes the link for one login, on the session's thread; null, with a text for the user, when there can be none.
    using MakeLink = std::function<std::shared_ptr<GrpcLink>(QString* error)>;

    ControllerSession(MakeLink makeLink, Events events);
    /// Cuts, and waits for the thread.
    ~ControllerSession();
    ControllerSession(const ControllerSession&) = delete;
    ControllerSession& operator=(const ControllerSession&) = delete;

    /// From now on the link is used for nothing but the farewell: calls that are under way end, and those that wait for
    /// them on whatever thread do not begin. Does not block.
    void retire();
    /// Asks the controller to end the session, then ends it here. Blocks for a short time.
    void end();
    /// Ends everything that is under way without asking anybody. Does not block; what is only about to begin, a login
    /// included, does not begin.
    void cut();

    /// The link of the last login, or of the one under way; null before the first.
    std::shared_ptr<GrpcLink> currentLink() const;

private:
    void run();
    bool logInAndStay(bool first);
    void stay(const std::shared_ptr<GrpcLink>& link, const QString& name);
    bool take(const std::shared_ptr<GrpcLink>& link);
    bool putInUse(const std::shared_ptr<GrpcLink>& link);
    /// Gives the link that there was by then.
    std::shared_ptr<GrpcLink> beginEnd();
    void pause();

    MakeLink m_makeLink;
    Events m_events;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    // Changed under the mutex only, so that a link is either seen by whoever ends the session, or sees the end.
    std::atomic<bool> m_ending{ false };
    std::shared_ptr<GrpcLink> m_link;
    std::thread m_thread;
};
