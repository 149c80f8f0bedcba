#include "host/communication/Mailbox.h"

#include <QEventLoop>
#include <QThread>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

class MailboxTest : public QObject {
    Q_OBJECT

private slots:
    void lettersComeInOrderOnItsThread();
    void whatHasComeIsOpenedAtOnce();
    void aLetterThatLeadsToAnotherLeavesTimeForOthers();
    void aLetterThatWaitsHoldsNoOtherBack();
    void aDeadMailboxBringsNothing();
    void aLetterMayDestroyTheMailbox();
};

void MailboxTest::lettersComeInOrderOnItsThread()
{
    constexpr int threads = 4;
    constexpr int letters = 500;
    Mailbox mailbox;
    std::vector<std::vector<int>> come(threads);
    bool onItsThread = true;
    std::vector<std::thread> writers;
    for (int writer = 0; writer < threads; ++writer) {
        writers.emplace_back([&, writer] {
            for (int number = 0; number < letters; ++number) {
                mailbox.post([&, writer, number] {
                    come[writer].push_back(number);
                    onItsThread = onItsThread && QThread::currentThread() == thread();
                });
            }
        });
    }
    for (std::thread& writer : writers)
        writer.join();
    const auto count = [&come] {
        return std::accumulate(come.begin(), come.end(), std::size_t(0),
            [](std::size_t sum, const std::vector<int>& numbers) { return sum + numbers.size(); });
    };
    QTRY_COMPARE(count(), std::size_t(threads * letters));
    QVERIFY(onItsThread);
    for (const std::vector<int>& numbers : come) {
        QCOMPARE(numbers.size(), std::size_t(letters));
        QVERIFY(std::is_sorted(numbers.begin(), numbers.end()));
    }
}

// Whoever looks at events rarely must not fall behind.
void MailboxTest::whatHasComeIsOpenedAtOnce()
{
    Mailbox mailbox;
    int opened = 0;
    for (int i = 0; i < 10; ++i)
        mailbox.post([&opened] { ++opened; });
    QCoreApplication::processEvents();
    QCOMPARE(opened, 10);
}

void MailboxTest::aLetterThatLeadsToAnotherLeavesTimeForOthers()
{
    Mailbox mailbox;
    int opened = 0;
    std::function<void()> next = [&] {
        if (++opened < 1000)
            mailbox.post(next);
    };
    mailbox.post(next);
    QCoreApplication::processEvents();
    QVERIFY2(opened < 10, qPrintable(QString::number(opened)));
    QTRY_COMPARE(opened, 1000);
}

// A dialog is such a letter: what is told behind it must reach those who can close it.
void MailboxTest::aLetterThatWaitsHoldsNoOtherBack()
{
    Mailbox mailbox;
    QStringList come;
    QEventLoop dialog;
    mailbox.post([&] {
        come.append(QStringLiteral("opens"));
        QTimer::singleShot(5000, &dialog, [&dialog] { dialog.exit(1); });
        come.append(dialog.exec() == 0 ? QStringLiteral("closed") : QStringLiteral("given up"));
    });
    mailbox.post([&] {
        come.append(QStringLiteral("closes"));
        dialog.quit();
    });
    mailbox.post([&] { come.append(QStringLiteral("last")); });
    QTRY_COMPARE(come.size(), 4);
    QCOMPARE(come.mid(0, 2), QStringList({ QStringLiteral("opens"), QStringLiteral("closes") }));
    QVERIFY(come.contains(QStringLiteral("closed")));
    QVERIFY(come.contains(QStringLiteral("last")));
}

void MailboxTest::aDeadMailboxBringsNothing()
{
    const auto held = std::make_shared<int>(0);
    auto mailbox = std::make_unique<Mailbox>();
    mailbox->post([held] { ++*held; });
    mailbox->post([held] { ++*held; });
    QCOMPARE(held.use_count(), 3L);
    mailbox.reset();
    QCoreApplication::processEvents();
    QCOMPARE(*held, 0);
    QCOMPARE(held.use_count(), 1L);
}

void MailboxTest::aLetterMayDestroyTheMailbox()
{
    bool second = false;
    auto mailbox = std::make_unique<Mailbox>();
    mailbox->post([&mailbox] { mailbox.reset(); });
    mailbox->post([&second] { second = true; });
    QTRY_VERIFY(!mailbox);
    QCoreApplication::processEvents();
    QVERIFY(!second);
}

QTEST_GUILESS_MAIN(MailboxTest)
#include "MailboxTest.moc"
