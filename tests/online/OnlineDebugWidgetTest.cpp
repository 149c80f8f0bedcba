#include "axisdata/DoubleValidator.h"
#include "axisdata/RegExpValidator.h"
#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

#include <limits>
#include <optional>

/// The session of the online page: poll, keep-alive, debug mode, monitor.
class OnlineDebugWidgetTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void aProjectThatIsNotOpenGivesAPageWithoutTimer();
    void goingOnLineStartsThePoll_data();
    void goingOnLineStartsThePoll();
    void withoutSettingsNothingStarts();
    void goingOnLineTellsTheVariableMonitor();
    void anEncoderAxisIsNotMonitored();
    void aVisiblePagePollsOnceUntilTheReply();
    void aHiddenPageKeepsAliveOnEveryTwelfthTick();
    void becomingVisibleResetsTheTicks();
    void noTickSendsAnything_data();
    void noTickSendsAnything();
    void aVanishedAxisEndsThePoll();
    void aVanishedAxisOnlySkipsAKeepAlive();
    void aPollThatFindsNoAxisLeavesTheTicks();
    void everyRequestReadsTheNumberOfTheAxisAnew();
    void theNumberOfTheAxisIsReadAsADecimal_data();
    void theNumberOfTheAxisIsReadAsADecimal();
    void aNegativeNumberIsNotAskedFor();
    void requestsEndSilently_data();
    void requestsEndSilently();
    void enteringDebugModeCarriesTheTimeout_data();
    void enteringDebugModeCarriesTheTimeout();
    void theSameButtonLeavesDebugMode();
    void directLoginIsRefused();
    void directLoginIsRefusedWhateverElseIsMissing_data();
    void directLoginIsRefusedWhateverElseIsMissing();
    void withoutTransferEnteringIsRefused();
    void aRefusedEntryIsShown_data();
    void aRefusedEntryIsShown();
    void withoutDiagnosisTheMessageIsShownAllTheSame();
    void closingSendsNothing();
    void closingInDebugModeReleasesTheMonitor();

private:
    void tick() { QMetaObject::invokeMethod(m->page.get(), "onlineQTimerSlot"); }
    QTimer* timer() const { return m->page->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly); }

    const QString directLoginText = QStringLiteral("Direct login mode does not support axis online debugging.");
    std::optional<OnlinePageFixture> m;
};

void OnlineDebugWidgetTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void OnlineDebugWidgetTest::aProjectThatIsNotOpenGivesAPageWithoutTimer()
{
    m->page = std::make_unique<OnlineDebugWidget>(QStringLiteral("Nowhere"), 1, nullptr);
    QVERIFY(!timer());
    m->page->onlineStatechanged(true);
    m->page->onlineStatechanged(false);
    tick();
    // It has looked for no service, and so knows of no connection that could be debugged on.
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->boxes.texts(), QStringList({ directLoginText }));
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::goingOnLineStartsThePoll_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::addColumn<int>("period");
    QTest::newRow("a usual period") << QVariant(250) << 250;
    QTest::newRow("missing") << QVariant() << 100;
    QTest::newRow("nought") << QVariant(0) << 100;
    QTest::newRow("negative") << QVariant(-5) << 100;
    QTest::newRow("negative in its low 16 bits") << QVariant(40000) << 100;
    QTest::newRow("low 16 bits alone count") << QVariant(65536 + 30) << 30;
    QTest::newRow("a text") << QVariant(QStringLiteral("70")) << 70;
    QTest::newRow("the highest of 32 bits") << QVariant(2147483647) << 100;
    QTest::newRow("the lowest of 32 bits") << QVariant(std::numeric_limits<int>::min()) << 100;
    QTest::newRow("low 16 bits alone count in a text beyond 32 bits") << QVariant(QStringLiteral("4294967356")) << 60;
    QTest::newRow("a text beyond 64 bits") << QVariant(QStringLiteral("99999999999999999999")) << 100;
    QTest::newRow("a number beyond 32 bits, negative in its low 16") << QVariant(Q_INT64_C(4295007296)) << 100;
    QTest::newRow("a text that is no number") << QVariant(QStringLiteral("soon")) << 100;
    QTest::newRow("a text with a unit") << QVariant(QStringLiteral("70 ms")) << 100;
    QTest::newRow("an empty text") << QVariant(QString()) << 100;
    QTest::newRow("something that is no number at all") << QVariant(QVariantList{ 70 }) << 100;
}

void OnlineDebugWidgetTest::goingOnLineStartsThePoll()
{
    QFETCH(QVariant, setting);
    QFETCH(int, period);
    if (setting.isValid())
        m->host.settings.setValue(Solution::ConfigKey::monitorTime(), setting);
    m->makePage();
    QVERIFY(!timer()->isActive());
    m->page->onlineStatechanged(true);
    QVERIFY(timer()->isActive());
    QCOMPARE(timer()->interval(), period);
    QVERIFY(!m->host.settings.lastFallback(Solution::ConfigKey::monitorTime()).isValid());
}

void OnlineDebugWidgetTest::withoutSettingsNothingStarts()
{
    m->makePage();
    m->host.withhold(Solution::ServiceKey::settings());
    m->page->onlineStatechanged(true);
    QVERIFY(!timer()->isActive());
    m->control<QPushButton>("enterDebugButton")->click();
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugWidgetTest::goingOnLineTellsTheVariableMonitor()
{
    m->makePage();
    m->host.calls.clear();
    m->page->onlineStatechanged(true);
    QCOMPARE(
        m->host.calls.entriesOf({ QStringLiteral("varMonitor.addAxis"), QStringLiteral("varMonitor.releaseAxis") }),
        QStringList({ QStringLiteral("varMonitor.addAxis(3)"), QStringLiteral("varMonitor.releaseAxis(3, false)") }));
}

void OnlineDebugWidgetTest::anEncoderAxisIsNotMonitored()
{
    m.reset();
    m.emplace(QStringLiteral("Axis_Encoder"));
    m->makePage();
    m->receive(OnlinePageFixture::status(3));
    m->page->onlineStatechanged(true);
    QVERIFY(!timer()->isActive());
    m->page->onlineStatechanged(false);
    QVERIFY(!m->field("comLineEdit")->text().isEmpty());
}

void OnlineDebugWidgetTest::aVisiblePagePollsOnceUntilTheReply()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    const auto param = m->debug.requests.first().as<GetAxisRefParam>();
    QCOMPARE(param.axisNo, short(3));
    const int size = param.size;
    QCOMPARE(size, 248);
    QCOMPARE(m->debug.requests.first().receiver, m->page.get());
    QCOMPARE(m->host.background.submitted, 1);
    QVERIFY(m->host.background.allReported);
    m->page->axisDebugGetAxisRef(QByteArray());
    tick();
    QCOMPARE(m->debug.requests.size(), 2);
}

void OnlineDebugWidgetTest::aHiddenPageKeepsAliveOnEveryTwelfthTick()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    timer()->stop();
    for (int i = 0; i < 11; ++i)
        tick();
    QVERIFY(m->debug.requests.isEmpty());
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugKeepAlive }));
    QCOMPARE(m->debug.requests.first().as<KeepAliveParam>().axisNo, short(3));
    for (int i = 0; i < 12; ++i)
        tick();
    QCOMPARE(m->debug.requests.size(), 2);
}

void OnlineDebugWidgetTest::becomingVisibleResetsTheTicks()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    timer()->stop();
    for (int i = 0; i < 11; ++i)
        tick();
    m->show();
    tick();
    m->page->axisDebugGetAxisRef(QByteArray());
    m->page->hide();
    for (int i = 0; i < 11; ++i)
        tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef, AxisDebugKeepAlive }));
}

void OnlineDebugWidgetTest::noTickSendsAnything_data()
{
    QTest::addColumn<QString>("what");
    QTest::newRow("before the page went on line") << "offline page";
    QTest::newRow("while the connection is down") << "offline transfer";
    QTest::newRow("without a background service") << Solution::ServiceKey::backgroundTransaction();
    QTest::newRow("without a connection service") << Solution::ServiceKey::transfer();
}

void OnlineDebugWidgetTest::noTickSendsAnything()
{
    QFETCH(QString, what);
    if (m->host.keys().contains(what))
        m->host.withhold(what);
    m->makePage();
    m->show();
    if (what != QLatin1String("offline page"))
        m->page->onlineStatechanged(true);
    if (what == QLatin1String("offline transfer"))
        m->host.transfer.setOnline(false);
    if (timer())
        timer()->stop();
    for (int i = 0; i < 13; ++i)
        tick();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::aVanishedAxisEndsThePoll()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    tick();
    QVERIFY(m->debug.requests.isEmpty());
    // The request counts as under way: neither polls nor keep-alives follow.
    m->project.axisModel()->putObjectBack(m->axis);
    tick();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::aVanishedAxisOnlySkipsAKeepAlive()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    timer()->stop();
    QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    for (int i = 0; i < 12; ++i)
        tick();
    QVERIFY(m->debug.requests.isEmpty());
    QVERIFY(m->project.axisModel()->putObjectBack(m->axis));
    // The turn that was skipped counts as taken.
    for (int i = 0; i < 11; ++i)
        tick();
    QVERIFY(m->debug.requests.isEmpty());
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugKeepAlive }));
}

void OnlineDebugWidgetTest::aPollThatFindsNoAxisLeavesTheTicks()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    timer()->stop();
    for (int i = 0; i < 5; ++i)
        tick();
    QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    m->show();
    tick();
    m->page->hide();
    QVERIFY(m->project.axisModel()->putObjectBack(m->axis));
    m->page->axisDebugGetAxisRef(QByteArray());
    for (int i = 0; i < 6; ++i)
        tick();
    QVERIFY(m->debug.requests.isEmpty());
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugKeepAlive }));
}

void OnlineDebugWidgetTest::everyRequestReadsTheNumberOfTheAxisAnew()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("8"));
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    QCOMPARE(m->debug.requests.last().as<GetAxisRefParam>().axisNo, short(8));
    m->page->axisDebugGetAxisRef(QByteArray());
    m->page->hide();
    m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("5"));
    for (int i = 0; i < 12; ++i)
        tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef, AxisDebugKeepAlive }));
    QCOMPARE(m->debug.requests.last().as<KeepAliveParam>().axisNo, short(5));
}

void OnlineDebugWidgetTest::theNumberOfTheAxisIsReadAsADecimal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("a nought in front") << "010" << 10;
    QTest::newRow("no decimal") << "0x10" << 0;
    QTest::newRow("nothing") << "" << 0;
}

void OnlineDebugWidgetTest::theNumberOfTheAxisIsReadAsADecimal()
{
    QFETCH(QString, text);
    QFETCH(int, number);
    m->axis->setProperty(QStringLiteral("AxisNo"), text);
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    QCOMPARE(m->host.calls.entriesOf({ QStringLiteral("varMonitor.addAxis") }),
        QStringList({ QStringLiteral("varMonitor.addAxis(%1)").arg(number) }));
    tick();
    QCOMPARE(int(m->debug.requests.last().as<GetAxisRefParam>().axisNo), number);
    m->receive(OnlinePageFixture::status(0, true));
    m->control<QPushButton>("resetPushButton")->click();
    QCOMPARE(m->debug.codes().last(), int(AxisDebugReset));
    QCOMPARE(int(m->debug.requests.last().as<ResetParam>().axisNo), number);
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(int(m->debug.requests.last().as<EnterDebugModelParam>().axisNo), number);
}

void OnlineDebugWidgetTest::aNegativeNumberIsNotAskedFor()
{
    m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("-4"));
    m->makePage();
    m->page->onlineStatechanged(true);
    timer()->stop();
    for (int i = 0; i < 12; ++i)
        tick();
    m->show();
    tick();
    QVERIFY(m->debug.requests.isEmpty());
    // The request counts as under way.
    m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("4"));
    tick();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::requestsEndSilently_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("without a background service") << Solution::ServiceKey::backgroundTransaction();
    QTest::newRow("without a debug service") << Solution::ServiceKey::motionControlDebug();
    QTest::newRow("off line") << QString();
}

void OnlineDebugWidgetTest::requestsEndSilently()
{
    QFETCH(QString, missing);
    if (missing == Solution::ServiceKey::motionControlDebug())
        m->host.objectTable.remove(missing);
    else if (missing.isEmpty())
        m->host.transfer.setOnline(false);
    else
        m->host.withhold(missing);
    m->makePage();
    for (const char* name : { "enterDebugButton", "enablePushButton", "presetPositionPushButton", "resetPushButton" }) {
        m->control("basicTabWidget")->setEnabled(true);
        m->control<QPushButton>(name)->click();
    }
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->host.background.submitted, 0);
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugWidgetTest::enteringDebugModeCarriesTheTimeout_data()
{
    QTest::addColumn<QVariant>("setting");
    QTest::addColumn<int>("timeout");
    QTest::newRow("a usual time-out") << QVariant(3000) << 3000;
    QTest::newRow("missing") << QVariant() << 5000;
    QTest::newRow("nought") << QVariant(0) << 5000;
    QTest::newRow("negative") << QVariant(-1) << 5000;
    QTest::newRow("negative in its low 16 bits") << QVariant(50000) << 5000;
    QTest::newRow("low 16 bits alone count") << QVariant(65536 + 3000) << 3000;
    QTest::newRow("the highest of 32 bits") << QVariant(2147483647) << 5000;
    QTest::newRow("low 16 bits alone count in a text beyond 32 bits") << QVariant(QStringLiteral("4294970296")) << 3000;
    QTest::newRow("a text beyond 64 bits") << QVariant(QStringLiteral("99999999999999999999")) << 5000;
    QTest::newRow("a number beyond 32 bits, negative in its low 16") << QVariant(Q_INT64_C(4295017296)) << 5000;
    QTest::newRow("a text that is no number") << QVariant(QStringLiteral("for ever")) << 5000;
    QTest::newRow("an empty text") << QVariant(QString()) << 5000;
}

void OnlineDebugWidgetTest::enteringDebugModeCarriesTheTimeout()
{
    QFETCH(QVariant, setting);
    QFETCH(int, timeout);
    m->makePage();
    if (setting.isValid())
        m->host.settings.setValue(Solution::ConfigKey::communicationTimeout(), setting);
    QTest::mouseClick(m->control("enterDebugButton"), Qt::LeftButton);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugEnterDebugMode }));
    const auto param = m->debug.requests.first().as<EnterDebugModelParam>();
    QCOMPARE(param.axisNo, short(3));
    QCOMPARE(param.enter, short(1));
    QCOMPARE(int(param.timeout), timeout);
    QCOMPARE(m->control("enterDebugButton")->styleSheet(), QString());
}

void OnlineDebugWidgetTest::theSameButtonLeavesDebugMode()
{
    m->makePage();
    m->receive(OnlinePageFixture::status(0, true));
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->debug.requests.last().as<EnterDebugModelParam>().enter, short(0));
    m->page->axisDebugEnterDebugMode(0);
    QCOMPARE(m->boxes.count(), 0);
    QVERIFY(m->control("basicTabWidget")->isEnabled());
}

void OnlineDebugWidgetTest::directLoginIsRefused()
{
    m->host.transfer.setDirectLogin(true);
    m->makePage();
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->boxes.count(), 1);
    const MessageBoxWatcher::Box box = m->boxes.boxes.first();
    QCOMPARE(box.text, directLoginText);
    QCOMPARE(box.title, QStringLiteral("Kestrun"));
    QCOMPARE(box.buttons, QStringList({ QStringLiteral("OK") }));
    QCOMPARE(box.icon, QMessageBox::Information);
    QVERIFY(!box.hasParent);
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::directLoginIsRefusedWhateverElseIsMissing_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("without settings") << Solution::ServiceKey::settings();
    QTest::newRow("without a background service") << Solution::ServiceKey::backgroundTransaction();
    QTest::newRow("off line") << "connection";
    QTest::newRow("without the axis") << "axis";
}

void OnlineDebugWidgetTest::directLoginIsRefusedWhateverElseIsMissing()
{
    QFETCH(QString, missing);
    m->host.transfer.setDirectLogin(true);
    if (missing == QLatin1String("connection"))
        m->host.transfer.setOnline(false);
    else if (missing != QLatin1String("axis"))
        m->host.withhold(missing);
    m->makePage();
    if (missing == QLatin1String("axis"))
        QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->boxes.texts(), QStringList({ directLoginText }));
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::withoutTransferEnteringIsRefused()
{
    m->host.withhold(Solution::ServiceKey::transfer());
    m->makePage();
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->boxes.texts(), QStringList({ directLoginText }));
}

void OnlineDebugWidgetTest::aRefusedEntryIsShown_data()
{
    QTest::addColumn<bool>("debugMode");
    QTest::addColumn<QString>("text");
    QTest::newRow("on entering") << false << "Failed to enter Debug menu!,text 77";
    QTest::newRow("on leaving") << true << "Failed to exit Debug menu!,text 77";
}

void OnlineDebugWidgetTest::aRefusedEntryIsShown()
{
    QFETCH(bool, debugMode);
    QFETCH(QString, text);
    m->makePage();
    m->receive(OnlinePageFixture::status(0, debugMode));
    m->page->axisDebugEnterDebugMode(77);
    QCOMPARE(m->boxes.texts(), QStringList({ text }));
    QCOMPARE(m->control("basicTabWidget")->isEnabled(), debugMode);
}

void OnlineDebugWidgetTest::withoutDiagnosisTheMessageIsShownAllTheSame()
{
    m->host.withhold(Solution::ServiceKey::diagnosisInfo());
    m->makePage();
    m->page->axisDebugEnterDebugMode(-1);
    QCOMPARE(m->boxes.texts(), QStringList({ QStringLiteral("Failed to enter Debug menu!,") }));
}

void OnlineDebugWidgetTest::closingSendsNothing()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    m->receive(OnlinePageFixture::status(4, true));
    m->page.reset();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugWidgetTest::closingInDebugModeReleasesTheMonitor()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    m->receive(OnlinePageFixture::status(3, true));
    m->host.calls.clear();
    m->page.reset();
    QCOMPARE(m->host.calls.entriesOf({ QStringLiteral("varMonitor.releaseAxis") }),
        QStringList({ QStringLiteral("varMonitor.releaseAxis(3, true)") }));
    m->makePage();
    m->page->onlineStatechanged(true);
    m->host.calls.clear();
    m->page.reset();
    QCOMPARE(m->host.calls.count(QStringLiteral("varMonitor.releaseAxis")), 0);
}

QTEST_MAIN(OnlineDebugWidgetTest)
#include "OnlineDebugWidgetTest.moc"
