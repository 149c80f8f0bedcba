#include "host/communication/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

Mailbox::Mailbox(QObject* parent) : QObject(parent) { }

Mailbox::~Mailbox() = default;

void Mailbox::post(std::function<void()> work)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_letters.push_back(std::move(work));
        if (m_letters.size() > 1)
            return;
    }
    bringNext();
}

void Mailbox::bringNext()
{
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void Mailbox::customEvent(QEvent*)
{
    std::function<void()> letter;
    bool isLast = true;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        letter = std::move(m_letters.front());
        m_letters.pop_front();
        isLast = m_letters.empty();
    }
    // Before this one is opened, since it may turn an event loop of its own. Events that were posted earlier would not
    // wake that.
    if (!isLast)
        bringNext();
    letter();
}
