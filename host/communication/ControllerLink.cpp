#include "host/communication/ControllerLink.h"

#include <mutex>
#include <utility>

namespace {
struct ActiveLink {
    std::mutex mutex;
    std::shared_ptr<ControllerLink> link;
    std::shared_ptr<const ControllerLink::Observer> observer;
    std::shared_ptr<const ControllerLink::Announcer> announcer;
};

ActiveLink& activeLink()
{
    static ActiveLink instance;
    return instance;
}
thread_local short refusalCode = 0;

template <typename Function>
std::shared_ptr<const Function> shared(Function function)
{
    return function ? std::make_shared<const Function>(std::move(function)) : nullptr;
}
} // namespace

ControllerLink::ControllerLink() = default;
ControllerLink::~ControllerLink() = default;

std::shared_ptr<ControllerLink> ControllerLink::active()
{
    ActiveLink& slot = activeLink();
    const std::lock_guard<std::mutex> lock(slot.mutex);
    return slot.link;
}

void ControllerLink::setActive(std::shared_ptr<ControllerLink> link)
{
    ActiveLink& slot = activeLink();
    {
        const std::lock_guard<std::mutex> lock(slot.mutex);
        slot.link.swap(link);
    }
    // The former link goes here, outside the lock: its end may wait for threads that ask for the active one.
}

void ControllerLink::endUse(const std::shared_ptr<ControllerLink>& link)
{
    ActiveLink& slot = activeLink();
    const std::lock_guard<std::mutex> lock(slot.mutex);
    // The caller's own hold on it keeps its end out of the lock.
    if (slot.link == link)
        slot.link.reset();
}

void ControllerLink::setObserver(Observer observer)
{
    std::shared_ptr<const Observer> next = shared(std::move(observer));
    const std::lock_guard<std::mutex> lock(activeLink().mutex);
    activeLink().observer = std::move(next);
}

std::shared_ptr<const ControllerLink::Observer> ControllerLink::observer()
{
    const std::lock_guard<std::mutex> lock(activeLink().mutex);
    return activeLink().observer;
}

void ControllerLink::setAnnouncer(Announcer announcer)
{
    std::shared_ptr<const Announcer> next = shared(std::move(announcer));
    const std::lock_guard<std::mutex> lock(activeLink().mutex);
    activeLink().announcer = std::move(next);
}

std::shared_ptr<const ControllerLink::Announcer> ControllerLink::announcer()
{
    const std::lock_guard<std::mutex> lock(activeLink().mutex);
    return activeLink().announcer;
}

ControllerLink::Refusal::Refusal(short code)
{
    refusalCode = code;
}

ControllerLink::Refusal::~Refusal()
{
    refusalCode = 0;
}

short ControllerLink::Refusal::present()
{
    return refusalCode;
}
