#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"
#include "tests/support/FuzzRounds.h"

#include <QCheckBox>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <cmath>
#include <limits>
#include <optional>
#include <random>

/// Replies of any bytes and any length, from fixed seeds: the page shows what their bytes say or nothing, opens no box,
/// and polls on.
class OnlineDebugReplyFuzzTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { Q_INIT_RESOURCE(axis_resources); }
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void anyBytesAreShownAsTheyAre();
    void oddNumbersAreShown();
    void anyLengthIsSurvived();
    void anyOrderOfEventsIsSurvived();

private:
    using Random = std::mt19937;

    static QByteArray randomBytes(Random& random, int size)
    {
        QByteArray bytes(size, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        return bytes;
    }
    QString cell(const char* table, int row, int column) const
    {
        return m->control<QTableView>(table)->model()->index(row, column).data().toString();
    }
    void compare(const AxisRef& status) const;

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugReplyFuzzTest::compare(const AxisRef& status) const
{
    const bool debugging = status.debugMode != 0;
    QCOMPARE(m->control("basicTabWidget")->isEnabled(), debugging);
    QCOMPARE(m->control("stopPushButton")->isEnabled(), debugging && status.axisState > 1);
    QCOMPARE(m->field("comLineEdit")->text(), status.communication ? QStringLiteral("ON") : QStringLiteral("OFF"));
    QCOMPARE(m->field("servoErrorLineEdit")->text(),
        status.servoError ? QStringLiteral("Error") : QStringLiteral("No error"));
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet().isEmpty(), status.axisError == 0);
    const quint8 flags[] = { status.positiveHardLimit, status.negativeHardLimit, status.homeSwitch,
        status.positiveSoftLimit, status.negativeSoftLimit };
    for (int i = 0; i < 5; ++i)
        QCOMPARE(cell("runStatusView", 0, 2 + i), flags[i] ? QStringLiteral("ON") : QStringLiteral("OFF"));
    const double values[] = { status.setPosition, status.actualTorque };
    const QString shown[] = { cell("varTableView", 0, 1), cell("varTableView", 3, 2) };
    for (int i = 0; i < 2; ++i) {
        bool isNumber = false;
        const double number = shown[i].toDouble(&isNumber);
        QVERIFY(isNumber && std::isfinite(number));
        if (std::abs(values[i]) < 1e12)
            QVERIFY(std::abs(number - values[i]) <= 0.01 && std::abs(number) <= std::abs(values[i]) + 1e-3);
    }
}

void OnlineDebugReplyFuzzTest::anyBytesAreShownAsTheyAre()
{
    Random random(20261121);
    m->makePage();
    m->show();
    {
        const QSignalBlocker blocker(m->control("speedMultiplierCheckBox"));
        m->control<QCheckBox>("speedMultiplierCheckBox")->setChecked(true);
    }
    m->field("speedMultiplierLineEdit")->setEnabled(false);
    for (int i = 0; i < fuzzRounds(1500); ++i) {
        const QByteArray bytes = randomBytes(random, axisRefSize);
        m->page->axisDebugGetAxisRef(bytes);
        AxisRef status;
        std::memcpy(&status, bytes.constData(), sizeof status);
        compare(status);
        if (QTest::currentTestFailed())
            QFAIL(bytes.toHex().constData());
        if (i % 100 == 0)
            QCoreApplication::processEvents();
    }
    QCOMPARE(m->boxes.count(), 0);
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugReplyFuzzTest::oddNumbersAreShown()
{
    Random random(7);
    const double odd[] = { 0, -0.0, 0.999, -0.001, 1e-320, 1e15, 9.3e16, -9.3e16, 1e300, -1e308,
        std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), std::nan(""),
        std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min() };
    const auto any = [&] { return odd[random() % std::size(odd)]; };
    m->makePage();
    for (int i = 0; i < fuzzRounds(1000); ++i) {
        AxisRef status = OnlinePageFixture::status(static_cast<quint16>(random()), random() % 2);
        status.setPosition = any();
        status.setVelocity = any();
        status.actualAcceleration = any();
        status.actualTorque = any();
        status.speedRatio = any();
        m->receive(status);
        compare(status);
        if (QTest::currentTestFailed())
            return;
    }
}

void OnlineDebugReplyFuzzTest::anyLengthIsSurvived()
{
    Random random(11);
    m->makePage();
    m->receive(OnlinePageFixture::status(3, true));
    const QString before = cell("varTableView", 0, 1);
    for (int i = 0; i < fuzzRounds(600); ++i) {
        int size = static_cast<int>(random() % 600);
        size += size == axisRefSize ? 1 : 0;
        m->page->axisDebugGetAxisRef(randomBytes(random, size));
    }
    QCOMPARE(cell("varTableView", 0, 1), before);
    QVERIFY(m->control("stopPushButton")->isEnabled());
}

void OnlineDebugReplyFuzzTest::anyOrderOfEventsIsSurvived()
{
    Random random(23);
    m->makePage();
    m->show();
    auto* timer = m->page->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    for (int i = 0; i < fuzzRounds(2000); ++i) {
        switch (random() % 7) {
        case 0:
            m->page->onlineStatechanged(random() % 4 != 0);
            timer->stop();
            break;
        case 1:
            m->page->axisDebugGetAxisRef(randomBytes(random, random() % 4 ? axisRefSize : 247));
            break;
        case 2:
            m->page->setVisible(random() % 2);
            break;
        case 3:
            m->host.transfer.setOnline(random() % 4 != 0);
            break;
        default:
            QMetaObject::invokeMethod(m->page.get(), "onlineQTimerSlot");
            break;
        }
        for (const RecordingDebug::Request& request : qAsConst(m->debug.requests))
            QVERIFY(request.code == AxisDebugGetAxisRef || request.code == AxisDebugKeepAlive);
        m->debug.requests.clear();
    }
    // Back on line it polls as on the first day.
    m->host.transfer.setOnline(true);
    m->page->setVisible(true);
    m->page->onlineStatechanged(true);
    timer->stop();
    QMetaObject::invokeMethod(m->page.get(), "onlineQTimerSlot");
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    QCOMPARE(m->boxes.count(), 0);
}

QTEST_MAIN(OnlineDebugReplyFuzzTest)
#include "OnlineDebugReplyFuzzTest.moc"
