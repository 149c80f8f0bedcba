#include "workbench/online/AxesTakeover.h"
#include "host/communication/RpcCmdSend.h"
#include "protocol/DiagnosisCodes.h"
#include "tests/communication/QuietRelay.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/MessageBar.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>

// What a controller holds is compared with the project before anything is commanded by number.
class AxesTakeoverTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m_program = std::make_unique<OnlineProgram>(); }
    void cleanup() { m_program.reset(); }

    void whatDiffersIsShown();
    void takingOverPutsTheProjectsAxesThere();
    void notNowKeepsTheControllersAxes_data();
    void notNowKeepsTheControllersAxes();
    void equalAxesAskNothing();
    void theBuiltInControllerTakesThemWithoutAQuestion();
    void aDirectLoginComparesNothing();
    void aRefusalNamesAxisAndParameter();
    void theOfferGoesWithTheConnection();
    void theOfferCanBeMadeAgain();
    void aComparisonThatFailsLeavesTheWorkOn();
    void whatIsEditedOnTheWayIsComparedAgain();
    void aControllerThatComesBackEmptyIsOfferedThemAgain();
    void aLinkThatComesBackIsNotInItsOwnWay_data();
    void aLinkThatComesBackIsNotInItsOwnWay();
    void whoStillWorksThereIsNotOvercome();
    void axesThatAnotherReplacesAreComparedAgain_data();
    void axesThatAnotherReplacesAreComparedAgain();
    void anOpenOfferFollowsTheController();
    void anAnswerToAnOldOfferIsNotCarriedOutAfterAll();
    void axesThatComeToAgreeBringDebuggingBack();
    void whileOnlineTheAxesStayAsTheyAre();
    void aSecondComparisonWaitsForTheFirst();
    void aTakeoverCutShortIsNotWaitedFor();
    void requestsUnderWayDoNotHoldTheEndUp_data();
    void requestsUnderWayDoNotHoldTheEndUp();

private:
    static constexpr SessionId otherClient = 4711;

    AxesTakeover& takeover() const { return m_program->workbench->online().takeover(); }
    void connectAndWaitForTheOffer()
    {
        m_program->session().connectTo(m_program->host.address(), false);
        QTRY_VERIFY_WITH_TIMEOUT(takeover().offer(), 5000);
    }
    /// Axes to take over, while another client debugs the first one.
    bool isOfferedWhileAnotherWorks()
    {
        if (!m_program->connectHere())
            return false;
        m_program->session().disconnectNow();
        if (m_program->host.controller.enterDebugMode(otherClient, 0, 1, 30000) != Diagnosis::ok)
            return false;
        m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
        connectAndWaitForTheOffer();
        return takeover().offer();
    }
    void press(const char* button)
    {
        auto* found = takeover().offer()->findChild<QPushButton*>(QLatin1String(button));
        QVERIFY(found);
        QTest::mouseClick(found, Qt::LeftButton);
    }
    bool isOnlineSoon() const
    {
        return QTest::qWaitFor([this] { return m_program->session().state() == OnlineSession::Online; }, 5000);
    }
    QMap<QString, AxisValues> inController() const
    {
        QMap<QString, AxisValues> axes;
        for (const AxisText& axis : m_program->host.controller.axes())
            axes.insert(QString::fromStdString(axis.name), axis.values);
        return axes;
    }

    /// Another client puts the controller's axes in once more, Beta with another value, unless there is no key.
    void replaceOne(const QByteArray& key, const QByteArray& value, SessionId client = otherClient) const
    {
        std::vector<AxisText> axes = m_program->host.controller.axes();
        for (AxisText& axis : axes) {
            if (axis.name == "Beta" && !key.isEmpty())
                axis.values[key.toStdString()] = value.toStdString();
        }
        QCOMPARE(m_program->host.controller.download(axes, client).code, Diagnosis::ok);
    }

    std::unique_ptr<OnlineProgram> m_program;
};

void AxesTakeoverTest::whatDiffersIsShown()
{
    m_program->connectHere();
    m_program->session().disconnectNow();
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    m_program->project()->axisModel()->addAxisTable(QStringLiteral("Gamma"));
    connectAndWaitForTheOffer();
    QCOMPARE(m_program->session().state(), OnlineSession::Checking);
    QVERIFY2(!m_program->workbench->connection().isOnline(), "nothing may be commanded before the answer");
    auto* table = takeover().offer()->findChild<QTableWidget*>();
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column)
            cells.append(table->item(row, column)->text());
        rows.append(cells.join(QLatin1Char('|')));
    }
    const QString stored = QString::fromStdString(inController().value(QStringLiteral("Beta")).at("MaxVel"));
    QCOMPARE(rows,
        QStringList(
            { QStringLiteral("Beta|MaxVel|77|") + stored, QStringLiteral("Gamma|whole axis|present|missing") }));
    press("notNow");
}

void AxesTakeoverTest::takingOverPutsTheProjectsAxesThere()
{
    connectAndWaitForTheOffer();
    press("takeOver");
    QVERIFY(isOnlineSoon());
    QVERIFY(!m_program->session().isDirectLogin());
    QCOMPARE(inController().keys(), QStringList({ QStringLiteral("Alpha"), QStringLiteral("Beta") }));
    QVERIFY(m_program->outputText().contains(QStringLiteral("has taken the axes over")));
    QVERIFY(!takeover().offer());
}

void AxesTakeoverTest::notNowKeepsTheControllersAxes_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("debugging");
    QTest::newRow("another speed leaves debugging on") << QStringLiteral("MaxVel") << QStringLiteral("77") << true;
    QTest::newRow("another number takes debugging away") << QStringLiteral("AxisNo") << QStringLiteral("9") << false;
}

void AxesTakeoverTest::notNowKeepsTheControllersAxes()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, debugging);
    m_program->connectHere();
    m_program->session().disconnectNow();
    const QMap<QString, AxisValues> before = inController();
    m_program->axis(QStringLiteral("Beta"))->setProperty(key, value);
    connectAndWaitForTheOffer();
    press("notNow");
    QVERIFY(isOnlineSoon());
    QCOMPARE(m_program->session().isDirectLogin(), !debugging);
    QVERIFY(inController() == before);
}

void AxesTakeoverTest::equalAxesAskNothing()
{
    QVERIFY(m_program->connectHere());
    m_program->session().disconnectNow();
    m_program->session().connectTo(m_program->host.address(), false);
    QVERIFY(isOnlineSoon());
    QVERIFY(!takeover().offer());
    QVERIFY(!m_program->session().isDirectLogin());
}

void AxesTakeoverTest::theBuiltInControllerTakesThemWithoutAQuestion()
{
    QVERIFY(m_program->connectBuiltIn());
    QVERIFY(!takeover().offer());
    QVERIFY(!m_program->session().isDirectLogin());
    QVERIFY(m_program->outputText().contains(QStringLiteral("has taken the axes over")));
}

void AxesTakeoverTest::aDirectLoginComparesNothing()
{
    m_program->session().connectTo(m_program->host.address(), true);
    QVERIFY(isOnlineSoon());
    QVERIFY(m_program->session().isDirectLogin());
    QVERIFY(!takeover().offer());
    QVERIFY(!m_program->workbench->action(QStringLiteral("online.takeOver"))->isEnabled());
    takeover().compareNow();
    QVERIFY(!QTest::qWaitFor([this] { return takeover().offer() != nullptr; }, 300));
}

void AxesTakeoverTest::aRefusalNamesAxisAndParameter()
{
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("fast"));
    connectAndWaitForTheOffer();
    press("takeOver");
    QVERIFY(isOnlineSoon());
    QVERIFY(m_program->session().isDirectLogin());
    const QString text = m_program->workbench->window().messageBar().text();
    QVERIFY2(text.contains(QStringLiteral("Beta")) && text.contains(QStringLiteral("MaxVel"))
            && text.contains(m_program->session().target()),
        qPrintable(text));
    QVERIFY(inController().isEmpty());
}

void AxesTakeoverTest::theOfferGoesWithTheConnection()
{
    connectAndWaitForTheOffer();
    m_program->host.server->shutdown();
    QTRY_VERIFY_WITH_TIMEOUT(!takeover().offer(), 3000);
    QCOMPARE(m_program->session().state(), OnlineSession::Lost);
    m_program->workbench->workspace().close();
    QCOMPARE(m_program->session().state(), OnlineSession::Offline);
}

void AxesTakeoverTest::theOfferCanBeMadeAgain()
{
    connectAndWaitForTheOffer();
    press("notNow");
    QVERIFY(isOnlineSoon());
    QVERIFY(m_program->session().isDirectLogin());
    m_program->workbench->action(QStringLiteral("online.takeOver"))->trigger();
    QTRY_VERIFY(takeover().offer());
    press("takeOver");
    QTRY_VERIFY(!m_program->session().isDirectLogin());
    m_program->workbench->action(QStringLiteral("online.takeOver"))->trigger();
    QTRY_VERIFY(m_program->outputText().contains(QStringLiteral("The controller has the axes of the project.")));
    QVERIFY(!takeover().offer());
}

void AxesTakeoverTest::aComparisonThatFailsLeavesTheWorkOn()
{
    QVERIFY(m_program->connectHere());
    QVERIFY(!m_program->session().isDirectLogin());
    m_program->host.fault("refuse 1 ReadAxes");
    m_program->workbench->action(QStringLiteral("online.takeOver"))->trigger();
    QTRY_VERIFY(m_program->outputText().contains(QStringLiteral("cannot be read: ")));
    QCOMPARE(m_program->session().state(), OnlineSession::Online);
    QVERIFY(!m_program->session().isDirectLogin());
}

void AxesTakeoverTest::whatIsEditedOnTheWayIsComparedAgain()
{
    connectAndWaitForTheOffer();
    m_program->host.fault("late-replies 400 DownloadAxes");
    press("takeOver");
    m_program->axis(QStringLiteral("Alpha"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("12"));
    QTRY_VERIFY_WITH_TIMEOUT(takeover().offer(), 5000);
    QVERIFY(m_program->session().state() != OnlineSession::Online);
    press("takeOver");
    QVERIFY(isOnlineSoon());
}

void AxesTakeoverTest::aControllerThatComesBackEmptyIsOfferedThemAgain()
{
    QVERIFY(m_program->connectHere());
    const int port = m_program->host.server->port();
    m_program->host.server->shutdown();
    QTRY_COMPARE_WITH_TIMEOUT(m_program->session().state(), OnlineSession::Lost, 3000);
    m_program->host.controller.download({});
    m_program->host.listen(port);
    QTRY_VERIFY_WITH_TIMEOUT(takeover().offer(), 5000);
    press("takeOver");
    QVERIFY(isOnlineSoon());
    QCOMPARE(inController().size(), 2);
}

void AxesTakeoverTest::aLinkThatComesBackIsNotInItsOwnWay_data()
{
    QTest::addColumn<bool>("jogging");
    QTest::addColumn<bool>("othersGo");
    QTest::newRow("with an axis in debug mode") << false << false;
    QTest::newRow("with an axis that brakes for two seconds") << true << false;
    QTest::newRow("and another's session that ends meanwhile") << false << true;
}

void AxesTakeoverTest::aLinkThatComesBackIsNotInItsOwnWay()
{
    QFETCH(bool, jogging);
    QFETCH(bool, othersGo);
    MotionController& controller = m_program->host.controller;
    m_program->axis(QStringLiteral("Alpha"))->setProperty(QStringLiteral("AxisErrorDec"), QStringLiteral("5"));
    QuietRelay relay(m_program->host.server->port());
    // The page comes first: while it is built the relay passes nothing on, and the link might be lost.
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")) && m_program->connectHere(relay.port()));
    QTRY_VERIFY(m_program->find("enterDebugButton")->isEnabled());
    QVERIFY(m_program->enterDebugMode());
    if (jogging) {
        QVERIFY(m_program->enable());
        m_program->press("posJogPushButton");
        QTRY_COMPARE(m_program->host.peek(0).setVelocity, 10.0);
    }
    if (othersGo)
        QCOMPARE(controller.enterDebugMode(otherClient, 1, 1, 1500), Diagnosis::ok);
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    relay.hangUp();
    QTRY_VERIFY_WITH_TIMEOUT(takeover().offer(), 3000);
    QVERIFY(m_program->isMoving() == jogging);
    press("takeOver");
    QVERIFY(isOnlineSoon());
    QVERIFY2(!m_program->session().isDirectLogin(), qPrintable(m_program->outputText()));
    QCOMPARE(inController().value(QStringLiteral("Beta")).at("MaxVel"), std::string("77"));
    QVERIFY(!m_program->outputText().contains(QStringLiteral("has not taken")));
    QVERIFY(!m_program->isMoving());
    QTest::mouseRelease(m_program->window(), Qt::LeftButton, {}, QPoint(2, 2));
}

void AxesTakeoverTest::whoStillWorksThereIsNotOvercome()
{
    QVERIFY(isOfferedWhileAnotherWorks());
    press("takeOver");
    QVERIFY(isOnlineSoon());
    const QString lines = m_program->outputText();
    QVERIFY2(lines.contains(QStringLiteral("has not taken the axes over: axis Alpha: Another client has the axis")),
        qPrintable(lines));
    QCOMPARE(m_program->host.controller.keepAlive(otherClient, 0), Diagnosis::ok);
    QVERIFY(inController().value(QStringLiteral("Beta")).at("MaxVel") != "77");
}

void AxesTakeoverTest::axesThatAnotherReplacesAreComparedAgain_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("asks");
    QTest::addColumn<bool>("debugging");
    QTest::newRow("by the same once more") << QByteArray() << QByteArray() << false << true;
    QTest::newRow("by one that is faster") << QByteArray("MaxVel") << QByteArray("77") << true << true;
    QTest::newRow("by one with another number") << QByteArray("AxisNo") << QByteArray("9") << true << false;
}

void AxesTakeoverTest::axesThatAnotherReplacesAreComparedAgain()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, value);
    QFETCH(bool, asks);
    QFETCH(bool, debugging);
    // The pages settle what an axis that was never open leaves open, so the axes go to the controller after that.
    QVERIFY(m_program->openPage(QStringLiteral("Alpha")) && m_program->connectHere());
    QTRY_VERIFY(m_program->find("enterDebugButton")->isEnabled());
    QSignalSpy online(&m_program->workbench->connection(), &Transfer::onlineState);
    replaceOne(key, value);
    QTRY_VERIFY_WITH_TIMEOUT(!online.isEmpty(), 5000);
    // Nothing may be commanded by number until it is known whose number it is.
    QCOMPARE(online.at(0).at(0).toBool(), false);
    QVERIFY(m_program->outputText().contains(QStringLiteral("have been replaced")));
    if (asks) {
        QTRY_VERIFY(takeover().offer());
        QVERIFY(!m_program->workbench->connection().isOnline());
        QVERIFY(!m_program->find("enterDebugButton")->isEnabled());
        QCOMPARE(m_program->session().state(), OnlineSession::Checking);
        press("notNow");
    }
    QVERIFY(isOnlineSoon());
    QTRY_VERIFY(!takeover().offer());
    QCOMPARE(m_program->session().isDirectLogin(), !debugging);
    QCOMPARE(online.count(), 2);
    QTRY_VERIFY(m_program->find("enterDebugButton")->isEnabled());
}

void AxesTakeoverTest::anOpenOfferFollowsTheController()
{
    connectAndWaitForTheOffer();
    press("takeOver");
    QVERIFY(isOnlineSoon());
    replaceOne("MaxVel", "77");
    QTRY_VERIFY(takeover().offer());
    const QPointer<AxesDifferenceDialog> former = takeover().offer();
    replaceOne("MaxVel", "78");
    QTRY_VERIFY(!former);
    QTRY_VERIFY(takeover().offer());
    auto* table = takeover().offer()->findChild<QTableWidget*>();
    QCOMPARE(table->rowCount(), 1);
    QCOMPARE(table->item(0, 3)->text(), QStringLiteral("78"));
    press("notNow");
    QVERIFY(isOnlineSoon());
}

void AxesTakeoverTest::anAnswerToAnOldOfferIsNotCarriedOutAfterAll()
{
    QVERIFY(isOfferedWhileAnotherWorks());
    // The answer is refused and kept for another try, when the other client puts in what it wants and goes.
    QSignalSpy answered(&m_program->session().connection(), &ControllerConnection::axesDownloaded);
    press("takeOver");
    QTRY_COMPARE(answered.count(), 1);
    replaceOne("MaxVel", "78");
    QTRY_VERIFY_WITH_TIMEOUT(takeover().offer(), 5000);
    QCOMPARE(m_program->session().state(), OnlineSession::Checking);
    QVERIFY(
        !QTest::qWaitFor([this] { return inController().value(QStringLiteral("Beta")).at("MaxVel") != "78"; }, 500));
    press("notNow");
    QVERIFY(isOnlineSoon());
}

void AxesTakeoverTest::axesThatComeToAgreeBringDebuggingBack()
{
    QVERIFY(m_program->connectHere());
    replaceOne("AxisNo", "9");
    QTRY_VERIFY(takeover().offer());
    press("notNow");
    QVERIFY(isOnlineSoon());
    QVERIFY(m_program->session().isDirectLogin());
    replaceOne("AxisNo", "1");
    QTRY_VERIFY_WITH_TIMEOUT(!m_program->session().isDirectLogin(), 2000);
    QVERIFY(isOnlineSoon());
    QVERIFY(!takeover().offer());
}

void AxesTakeoverTest::whileOnlineTheAxesStayAsTheyAre()
{
    Workbench& workbench = *m_program->workbench;
    // Something that could be undone.
    workbench.undo().stack()->push(new QUndoCommand(QStringLiteral("step")));
    QVERIFY(workbench.action(QStringLiteral("edit.undo"))->isEnabled());
    QVERIFY(workbench.action(QStringLiteral("project.controller"))->isEnabled());
    QVERIFY(m_program->connectHere());
    QVERIFY(!workbench.action(QStringLiteral("edit.undo"))->isEnabled());
    QVERIFY(!workbench.action(QStringLiteral("project.controller"))->isEnabled());
    QVERIFY(!workbench.action(QStringLiteral("online.connect"))->isEnabled());
    workbench.action(QStringLiteral("online.disconnect"))->trigger();
    QVERIFY(workbench.action(QStringLiteral("edit.undo"))->isEnabled());
    QVERIFY(workbench.action(QStringLiteral("project.controller"))->isEnabled());
    QVERIFY(workbench.action(QStringLiteral("online.connect"))->isEnabled());
    workbench.workspace().close();
    QVERIFY(!workbench.action(QStringLiteral("online.connect"))->isEnabled());
}

void AxesTakeoverTest::aSecondComparisonWaitsForTheFirst()
{
    QVERIFY(m_program->connectHere());
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    QAction* action = m_program->workbench->action(QStringLiteral("online.takeOver"));
    action->trigger();
    QTRY_VERIFY(takeover().offer());
    m_program->host.fault("late-replies 400 DownloadAxes");
    press("takeOver");
    QTRY_VERIFY(!takeover().offer());
    QSignalSpy read(&m_program->session().connection(), &ControllerConnection::axesRead);
    QSignalSpy downloaded(&m_program->session().connection(), &ControllerConnection::axesDownloaded);
    action->trigger();
    action->trigger();
    QVERIFY(downloaded.wait(5000));
    QVERIFY(!read.wait(200));
    QCOMPARE(read.count() + downloaded.count(), 1);
    // After that it can be asked for again.
    action->trigger();
    QTRY_COMPARE(read.count(), 1);
    QTRY_VERIFY(m_program->outputText().contains(QStringLiteral("The controller has the axes of the project.")));
}

void AxesTakeoverTest::aTakeoverCutShortIsNotWaitedFor()
{
    QVERIFY(m_program->connectHere());
    QAction* action = m_program->workbench->action(QStringLiteral("online.takeOver"));
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("78"));
    action->trigger();
    QTRY_VERIFY(takeover().offer());
    m_program->host.fault("late-replies 5000 DownloadAxes");
    press("takeOver");
    // It comes back by itself, so that the loss need not be seen in the state.
    QSignalSpy lost(&m_program->session(), &OnlineSession::lost);
    m_program->host.fault("drop-link");
    QTRY_COMPARE(lost.count(), 1);
    m_program->host.fault("none");
    QVERIFY(QTest::qWaitFor([this] { return m_program->waitUntilOnline(); }, 8000));
    QSignalSpy read(&m_program->session().connection(), &ControllerConnection::axesRead);
    action->trigger();
    QTRY_COMPARE(read.count(), 1);
    // By hand nobody is told of what was under way.
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("79"));
    action->trigger();
    QTRY_VERIFY(takeover().offer());
    m_program->host.fault("refuse 49 DownloadAxes");
    m_program->host.fault("late-replies 5000 DownloadAxes");
    press("takeOver");
    QTRY_VERIFY(!takeover().offer());
    m_program->session().disconnectNow();
    m_program->host.fault("none");
    connectAndWaitForTheOffer();
    press("notNow");
    QVERIFY(isOnlineSoon());
    QTRY_VERIFY(!takeover().offer());
    action->trigger();
    QTRY_VERIFY(takeover().offer());
}

void AxesTakeoverTest::requestsUnderWayDoNotHoldTheEndUp_data()
{
    QTest::addColumn<bool>("quit");
    QTest::newRow("disconnected") << false;
    QTest::newRow("the workbench quit") << true;
}

void AxesTakeoverTest::requestsUnderWayDoNotHoldTheEndUp()
{
    QFETCH(bool, quit);
    QVERIFY(m_program->makeReady());
    m_program->axis(QStringLiteral("Beta"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    QCOMPARE(RpcCmdSend().rpc_AxisDebug_MoveVel(0, 5, 100, 100, 0), Diagnosis::ok);
    QVERIFY(m_program->moves());
    m_program->workbench->action(QStringLiteral("online.takeOver"))->trigger();
    QTRY_VERIFY(takeover().offer());
    m_program->host.fault("late-replies 20000 DownloadAxes");
    m_program->host.fault("late-replies 20000 ReadAxes");
    press("takeOver");
    QTRY_VERIFY(!takeover().offer());
    m_program->workbench->action(QStringLiteral("online.takeOver"))->trigger();
    // Whoever asks: what waits behind the answer is not to begin any more.
    m_program->session().connection().readAxes();
    QVERIFY(!QTest::qWaitFor([this] { return !m_program->isMoving(); }, 100));
    QElapsedTimer timer;
    timer.start();
    if (quit)
        m_program->workbench.reset();
    else
        m_program->workbench->action(QStringLiteral("online.disconnect"))->trigger();
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(m_program->stands(5000));
    QTRY_COMPARE_WITH_TIMEOUT(int(m_program->host.peek(0).debugMode), 0, 5000);
}

QTEST_MAIN(AxesTakeoverTest)
#include "AxesTakeoverTest.moc"
