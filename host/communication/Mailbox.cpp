#include "host/communication/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <utility>

Mailbox::Mailbox(QObject* parent) : QObject(parent) { }

Mailbox::~Mailbox() = default;

void Mailbox::post(std::function<void()> work)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_letters.push_back(std::move(work));
    }
    wake();
}

// Each letter has an event of its own, since those that were posted before an event loop began do not wake it.
void Mailbox::wake()
{
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void Mailbox::customEvent(QEvent*)
{
    const QPointer<Mailbox> alive(this);
    std::size_t count = 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        count = m_letters.size();
    }
    // Only what is there now: a letter that leads to another must not keep the thread here for ever.
    for (; alive && count > 0; --count)
        openNext();
}

void Mailbox::openNext()
{
    std::function<void()> letter;
    bool isLast = true;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        // A letter that turns an event loop of its own lets the others be opened there.
        if (m_letters.empty())
            return;
        letter = std::move(m_letters.front());
        m_letters.pop_front();
        isLast = m_letters.empty();
    }
    if (!isLast)
        wake();
    letter();
}
