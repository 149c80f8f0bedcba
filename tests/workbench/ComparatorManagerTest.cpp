#include "workbench/ComparatorManager.h"
#include "sdk/IComparator.h"
#include "workbench/Configuration.h"
#include "workbench/ConnectionState.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

class FakeComparator : public IComparator {
public:
    FakeComparator(QString key, int& alive) : m_key(std::move(key)), m_alive(alive) { ++m_alive; }
    ~FakeComparator() override { --m_alive; }

    QString typeKey() override { return m_key; }
    bool compare(const CompareItem&, const CompareItem&) override { return true; }
    bool optionCheck() override { return false; }
    QObject* optionObject() override { return nullptr; }

private:
    QString m_key;
    int& m_alive;
};

} // namespace

class ComparatorManagerTest : public QObject {
    Q_OBJECT

private slots:
    void aComparatorIsTakenAndFound();
    void aSecondOfATypeIsLeftToItsOwner();
    void nullIsNotTaken();
    void clearingDeletesThem();
    void theCookieStandsBeforeTheNews();
    void newsComeOncePerChange();
    void theConnectionTellsOncePerChange();
    void aDirectLoginCountsWhileOnlineOnly();
};

void ComparatorManagerTest::aComparatorIsTakenAndFound()
{
    int alive = 0;
    Cookies cookies;
    ComparatorManager manager(cookies);
    auto* comparator = new FakeComparator(QStringLiteral("AxisView"), alive);
    QVERIFY(manager.addComparator(comparator));
    QCOMPARE(manager.comparator(QStringLiteral("AxisView")), comparator);
    QCOMPARE(manager.comparator(QStringLiteral("Other")), nullptr);
}

void ComparatorManagerTest::aSecondOfATypeIsLeftToItsOwner()
{
    int alive = 0;
    Cookies cookies;
    {
        ComparatorManager manager(cookies);
        FakeComparator second(QStringLiteral("AxisView"), alive);
        QVERIFY(manager.addComparator(new FakeComparator(QStringLiteral("AxisView"), alive)));
        QVERIFY(!manager.addComparator(&second));
        QCOMPARE(alive, 2);
    }
    QCOMPARE(alive, 0);
}

void ComparatorManagerTest::nullIsNotTaken()
{
    Cookies cookies;
    ComparatorManager manager(cookies);
    QVERIFY(!manager.addComparator(nullptr));
}

void ComparatorManagerTest::clearingDeletesThem()
{
    int alive = 0;
    Cookies cookies;
    ComparatorManager manager(cookies);
    manager.addComparator(new FakeComparator(QStringLiteral("AxisView"), alive));
    manager.clear();
    QCOMPARE(alive, 0);
    QCOMPARE(manager.comparator(QStringLiteral("AxisView")), nullptr);
}

void ComparatorManagerTest::theCookieStandsBeforeTheNews()
{
    Cookies cookies;
    ComparatorManager manager(cookies);
    bool seen = false;
    connect(&manager, &IComparatorMan::cmpStateChanged, this, [&](bool comparing) {
        seen = cookies.value(QStringLiteral("IDE/ProjectCompration"), false).toBool();
        QVERIFY(comparing);
    });
    manager.setComparing(true);
    QVERIFY(seen);
    QVERIFY(manager.isComparing());
}

void ComparatorManagerTest::newsComeOncePerChange()
{
    Cookies cookies;
    ComparatorManager manager(cookies);
    QSignalSpy news(&manager, &IComparatorMan::cmpStateChanged);
    manager.setComparing(false);
    QCOMPARE(news.count(), 0);
    manager.setComparing(true);
    manager.setComparing(true);
    QCOMPARE(news.count(), 1);
}

void ComparatorManagerTest::theConnectionTellsOncePerChange()
{
    ConnectionState connection;
    QSignalSpy news(&connection, &Transfer::onlineState);
    QVERIFY(!connection.isOnline());
    connection.setOnline(false, false);
    connection.setOnline(true, false);
    connection.setOnline(true, false);
    QCOMPARE(news.count(), 1);
    QVERIFY(news.first().first().toBool());
    QVERIFY(connection.isOnline());
    connection.setOnline(false, false);
    QCOMPARE(news.count(), 2);
}

void ComparatorManagerTest::aDirectLoginCountsWhileOnlineOnly()
{
    ConnectionState connection;
    connection.setOnline(false, true);
    QVERIFY(!connection.isDirectLogin());
    connection.setOnline(true, true);
    QVERIFY(connection.isDirectLogin());
}

QTEST_MAIN(ComparatorManagerTest)
#include "ComparatorManagerTest.moc"
