#include "host/communication/ControllerConnection.h"

#include "host/communication/ControllerCredentials.h"
#include "tests/communication/RecordingController.h"

#include <QSignalSpy>
#include <QtTest>

/// News that a session has left behind when another one, or none, has taken its place.
class ControllerConnectionNewsTest : public QObject {
    Q_OBJECT

private slots:
    void aClosedSessionTellsNothingMore();
    void aReplacedSessionTellsNothingMore();
    void aConnectionIsTheSameClientAtOneControllerOnly();
};

void ControllerConnectionNewsTest::aClosedSessionTellsNothingMore()
{
    RecordingController controller;
    ControllerConnection connection;
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    QSignalSpy closed(&connection, &ControllerConnection::closed);
    connection.open(controller.address());
    // The session has left word of its login before it attends; nobody has read that yet.
    QVERIFY(controller.waitForAttendance());
    connection.close();
    QTRY_COMPARE(closed.count(), 1);
    QCOMPARE(opened.count(), 0);
    QCOMPARE(connection.state(), ControllerConnection::Closed);
    QVERIFY(!connection.credentials());
}

void ControllerConnectionNewsTest::aReplacedSessionTellsNothingMore()
{
    RecordingController former("the former clien");
    RecordingController next("the next client.");
    ControllerConnection connection;
    QSignalSpy opened(&connection, &ControllerConnection::opened);
    QSignalSpy lost(&connection, &ControllerConnection::lost);
    connection.open(former.address());
    QVERIFY(former.waitForAttendance());
    connection.open(next.address());
    QVERIFY(opened.wait(5000));
    QCOMPARE(connection.credentials()->session, next.session());
    QCOMPARE(connection.address().port, next.address().port);
    QVERIFY(next.waitForAttendance());
    QCoreApplication::processEvents();
    QCOMPARE(opened.count(), 1);
    QCOMPARE(lost.count(), 0);
}

void ControllerConnectionNewsTest::aConnectionIsTheSameClientAtOneControllerOnly()
{
    RecordingController one;
    RecordingController two;
    ControllerConnection connection;
    ControllerConnection other;
    const auto clientAt = [](ControllerConnection& from, const RecordingController& at) {
        QSignalSpy opened(&from, &ControllerConnection::opened);
        from.open(at.address());
        return opened.wait(5000) ? at.login().client() : std::string();
    };
    const std::string client = clientAt(connection, one);
    QCOMPARE(client.size(), std::size_t(protocolSessionLength));
    QVERIFY(clientAt(other, one) != client);
    QVERIFY(clientAt(connection, one) == client);
    connection.close();
    QVERIFY(clientAt(connection, one) == client);
    QVERIFY(clientAt(connection, two) != client);
}

QTEST_GUILESS_MAIN(ControllerConnectionNewsTest)
#include "ControllerConnectionNewsTest.moc"
