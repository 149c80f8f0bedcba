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
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void Mailbox::customEvent(QEvent*)
{
    // Only what is there now: a letter that leads to another must not keep the thread here for ever.
    std::deque<std::function<void()>> letters;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        letters.swap(m_letters);
    }
    for (const auto& letter : letters)
        letter();
}
