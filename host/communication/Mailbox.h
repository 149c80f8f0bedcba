#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

/// Brings work from other threads to the thread where the mailbox lives, in order. Standard locks only, so that the
/// thread sanitizer sees what happens here.
class Mailbox : public QObject {
public:
    explicit Mailbox(QObject* parent = nullptr);
    ~Mailbox() override;

    /// Any thread. Runs the work when the mailbox's thread comes to its events; never, when the mailbox dies first.
    void post(std::function<void()> work);

protected:
    void customEvent(QEvent* event) override;

private:
    std::mutex m_mutex;
    std::deque<std::function<void()>> m_letters;
};
