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

#include <optional>

namespace {

/// Counts an event of a page and all that stands on it.
class EventCounter : public QObject {
public:
    EventCounter(QWidget& page, QEvent::Type type) : m_type(type)
    {
        page.installEventFilter(this);
        const QList<QWidget*> widgets = page.findChildren<QWidget*>();
        for (QWidget* widget : widgets)
            widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        count += event->type() == m_type ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;

private:
    QEvent::Type m_type;
};

} // namespace

/// What a status reply shows, and what becomes of replies that come wrong, late, twice or not at all.
class OnlineDebugWidgetRefreshTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void goingOffLineBlanksThePage();
    void repliesOfAnotherLengthChangeNothing_data();
    void repliesOfAnotherLengthChangeNothing();
    void aReplyFillsTheFields_data();
    void aReplyFillsTheFields();
    void errorsAreNamedFromTheLanguageCore();
    void whatIsEnabledFollowsTheReply_data();
    void whatIsEnabledFollowsTheReply();
    void theRatioInForceIsShown();
    void aReplyThatComesTwiceIsShownTwice();
    void aReplyThatComesTwiceStartsOnePoll();
    void aLostReplyStopsThePollUntilTheLinkIsBack_data();
    void aLostReplyStopsThePollUntilTheLinkIsBack();
    void aReplyAfterTheLinkHasGoneIsShown();
    void aReplyFromBeforeALossCountsForThePollBehindIt();
    void aFailureAfterTheLinkHasGoneIsShown();
    void aReplyWhileABoxIsOpenIsShown();
    void aReplyAfterThePageHasGoneIsDropped();
    void whileHiddenNothingIsDrawn();
    void anUnchangedStateIsNotStyledAnew();

private:
    void tick() { QMetaObject::invokeMethod(m->page.get(), "onlineQTimerSlot"); }
    QTimer* timer() const { return m->page->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly); }

    QString position() const { return m->control<QTableView>("varTableView")->model()->index(0, 1).data().toString(); }

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugWidgetRefreshTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void OnlineDebugWidgetRefreshTest::goingOffLineBlanksThePage()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    AxisRef status = OnlinePageFixture::status(4, true);
    status.axisError = 9;
    status.homeSwitch = 1;
    m->receive(status);
    m->page->onlineStatechanged(false);
    QVERIFY(!timer()->isActive());
    for (const char* name : { "statueLineEdit", "comLineEdit", "axisErrorLineEdit", "servoErrorLineEdit" })
        QCOMPARE(m->field(name)->text(), QString());
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QString());
    QVERIFY(!m->control("basicTabWidget")->isEnabled());
    QVERIFY(!m->control("stopPushButton")->isEnabledTo(m->control("tab")));
    QCOMPARE(m->control("enterDebugButton")->styleSheet(), QString());
    QCOMPARE(m->control("enablePushButton")->styleSheet(), QString());
    const QAbstractItemModel& states = *m->control<QTableView>("runStatusView")->model();
    QCOMPARE(states.index(0, 4).data().toString(), QString());
    QVERIFY(!states.index(0, 4).data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugWidgetRefreshTest::repliesOfAnotherLengthChangeNothing_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("nothing") << 0;
    QTest::newRow("one byte short") << 247;
    QTest::newRow("one byte long") << 249;
    QTest::newRow("a million bytes") << 1000000;
}

void OnlineDebugWidgetRefreshTest::repliesOfAnotherLengthChangeNothing()
{
    QFETCH(int, size);
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->receive(OnlinePageFixture::status(3, true));
    tick();
    const QImage before = m->page->grab().toImage();
    m->page->axisDebugGetAxisRef(QByteArray(size, '\1'));
    QCOMPARE(m->page->grab().toImage(), before);
    tick();
    QCOMPARE(m->debug.requests.size(), 3);
}

void OnlineDebugWidgetRefreshTest::aReplyFillsTheFields_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("communication");
    QTest::addColumn<int>("servoError");
    QTest::addColumn<QString>("communicationText");
    QTest::addColumn<QString>("servoText");
    QTest::addColumn<bool>("moving");
    QTest::newRow("disabled") << 0 << 0 << 0 << "OFF"
                              << "No error" << false;
    QTest::newRow("in error") << 1 << 1 << 5 << "ON"
                              << "Error" << false;
    QTest::newRow("stopping") << 2 << 255 << -1 << "ON"
                              << "Error" << true;
    QTest::newRow("standing still") << 3 << 1 << 0 << "ON"
                                    << "No error" << false;
    QTest::newRow("moving") << 4 << 1 << 0 << "ON"
                            << "No error" << true;
    QTest::newRow("moving without an end") << 5 << 1 << 0 << "ON"
                                           << "No error" << true;
    QTest::newRow("following another axis") << 6 << 1 << 0 << "ON"
                                            << "No error" << true;
    QTest::newRow("homing") << 7 << 1 << 0 << "ON"
                            << "No error" << true;
    QTest::newRow("a state without a text") << 900 << 1 << 0 << "ON"
                                            << "No error" << true;
}

void OnlineDebugWidgetRefreshTest::aReplyFillsTheFields()
{
    QFETCH(int, state);
    QFETCH(int, communication);
    QFETCH(int, servoError);
    QFETCH(QString, communicationText);
    QFETCH(QString, servoText);
    QFETCH(bool, moving);
    m->makePage();
    AxisRef status = OnlinePageFixture::status(static_cast<quint16>(state));
    status.communication = static_cast<quint8>(communication);
    status.servoError = static_cast<qint16>(servoError);
    status.actualPosition = 1.239;
    m->receive(status);
    QCOMPARE(m->field("statueLineEdit")->text(),
        m->project.axisModel()->getAxisStateMap().value(static_cast<AxisModel::AxisState>(state)));
    QCOMPARE(m->field("statueLineEdit")->text().isEmpty(), state == 900);
    QCOMPARE(m->field("comLineEdit")->text(), communicationText);
    QCOMPARE(m->field("servoErrorLineEdit")->text(), servoText);
    QCOMPARE(m->field("servoErrorLineEdit")->styleSheet(), QString());
    QCOMPARE(m->control<QTableView>("varTableView")->model()->index(0, 2).data().toString(), QStringLiteral("1.23"));
    QCOMPARE(m->control<QTableView>("runStatusView")->model()->index(0, 1).data().toString(),
        moving ? QStringLiteral("ON") : QStringLiteral("OFF"));
}

void OnlineDebugWidgetRefreshTest::errorsAreNamedFromTheLanguageCore()
{
    m->makePage();
    AxisRef status = OnlinePageFixture::status(1);
    status.axisError = 1;
    m->receive(status);
    QVERIFY(!m->field("axisErrorLineEdit")->text().isEmpty());
    QVERIFY(m->field("axisErrorLineEdit")->text() != QStringLiteral("1"));
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QStringLiteral("border: 1px solid rgb(255,75,75)"));
    status.axisError = 60000;
    m->receive(status);
    QCOMPARE(m->field("axisErrorLineEdit")->text(), QStringLiteral("60000"));
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QStringLiteral("border: 1px solid rgb(255,75,75)"));
    status.axisError = 0;
    m->receive(status);
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QString());
}

void OnlineDebugWidgetRefreshTest::whatIsEnabledFollowsTheReply_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("debugMode");
    QTest::addColumn<bool>("tab");
    QTest::addColumn<bool>("commands");
    QTest::newRow("on line only") << 3 << false << false << false;
    QTest::newRow("debug mode, disabled") << 0 << true << true << false;
    QTest::newRow("debug mode, in error") << 1 << true << true << false;
    QTest::newRow("debug mode, stopping") << 2 << true << true << true;
    QTest::newRow("debug mode, standing still") << 3 << true << true << true;
    QTest::newRow("an unsigned comparison") << 0xffff << true << true << true;
}

void OnlineDebugWidgetRefreshTest::whatIsEnabledFollowsTheReply()
{
    QFETCH(int, state);
    QFETCH(bool, debugMode);
    QFETCH(bool, tab);
    QFETCH(bool, commands);
    m->makePage();
    m->receive(OnlinePageFixture::status(static_cast<quint16>(state), debugMode));
    QCOMPARE(m->control("basicTabWidget")->isEnabled(), tab);
    const QString blue = QStringLiteral("background-color: rgb(90,149,253)");
    QCOMPARE(m->control("enterDebugButton")->styleSheet(), tab ? blue : QString());
    QCOMPARE(m->control("enablePushButton")->styleSheet(), commands ? blue : QString());
    for (const char* name :
        { "posJogPushButton", "negJogPushButton", "motionPushButton", "stopPushButton", "homePushButton" })
        QCOMPARE(m->control(name)->isEnabled(), commands);
    for (const char* name : { "enablePushButton", "presetPositionPushButton", "resetPushButton" })
        QCOMPARE(m->control(name)->isEnabled(), tab);
    QCOMPARE(m->control<QPushButton>("enterDebugButton")->text(), QStringLiteral("Enter debugging"));
}

void OnlineDebugWidgetRefreshTest::theRatioInForceIsShown()
{
    m->makePage();
    AxisRef status = OnlinePageFixture::status(3, true);
    status.speedRatio = 0.557;
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("100"));
    {
        const QSignalBlocker blocker(m->control("speedMultiplierCheckBox"));
        m->control<QCheckBox>("speedMultiplierCheckBox")->setChecked(true);
    }
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("100"));
    m->field("speedMultiplierLineEdit")->setEnabled(false);
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("55"));
    status.debugMode = 0;
    status.speedRatio = 0.2;
    m->receive(status);
    QCOMPARE(m->field("speedMultiplierLineEdit")->text(), QStringLiteral("55"));
}

void OnlineDebugWidgetRefreshTest::aReplyThatComesTwiceIsShownTwice()
{
    m->makePage();
    AxisRef status = OnlinePageFixture::status(3, true);
    status.setPosition = 5;
    m->receive(status);
    m->receive(status);
    QCOMPARE(position(), QStringLiteral("5.00"));
    QVERIFY(m->control("stopPushButton")->isEnabled());
    // An older one that overtakes counts as well: what came last is what is shown.
    status.setPosition = 4;
    status.axisState = 0;
    m->receive(status);
    QCOMPARE(position(), QStringLiteral("4.00"));
    QVERIFY(!m->control("stopPushButton")->isEnabled());
}

void OnlineDebugWidgetRefreshTest::aReplyThatComesTwiceStartsOnePoll()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->receive(OnlinePageFixture::status(3));
    m->receive(OnlinePageFixture::status(3));
    QCOMPARE(m->debug.requests.size(), 1);
    tick();
    tick();
    QCOMPARE(m->debug.requests.size(), 2);
}

void OnlineDebugWidgetRefreshTest::aLostReplyStopsThePollUntilTheLinkIsBack_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("while shown") << true;
    QTest::newRow("hidden afterwards") << false;
}

void OnlineDebugWidgetRefreshTest::aLostReplyStopsThePollUntilTheLinkIsBack()
{
    QFETCH(bool, shown);
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    QCOMPARE(m->debug.requests.size(), 1);
    m->page->setVisible(shown);
    for (int i = 0; i < 50; ++i)
        tick();
    QCOMPARE(m->debug.requests.size(), 1);
    // Commands go out all the same.
    m->control<QPushButton>("enterDebugButton")->click();
    QCOMPARE(m->debug.requests.size(), 2);
    m->page->onlineStatechanged(false);
    m->page->onlineStatechanged(true);
    timer()->stop();
    for (int i = 0; i < 12; ++i)
        tick();
    QCOMPARE(m->debug.requests.size(), 3);
    QCOMPARE(m->debug.codes().last(), shown ? int(AxisDebugGetAxisRef) : int(AxisDebugKeepAlive));
}

void OnlineDebugWidgetRefreshTest::aReplyAfterTheLinkHasGoneIsShown()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->host.transfer.setOnline(false);
    m->page->onlineStatechanged(false);
    QCOMPARE(position(), QString());
    AxisRef status = OnlinePageFixture::status(3, true);
    status.setPosition = 7;
    m->receive(status);
    QCOMPARE(position(), QStringLiteral("7.00"));
    QCOMPARE(m->field("comLineEdit")->text(), QStringLiteral("OFF"));
    tick();
    QCOMPARE(m->debug.requests.size(), 1);
}

void OnlineDebugWidgetRefreshTest::aReplyFromBeforeALossCountsForThePollBehindIt()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->page->onlineStatechanged(false);
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    QCOMPARE(m->debug.requests.size(), 2);
    m->receive(OnlinePageFixture::status(3));
    tick();
    QCOMPARE(m->debug.requests.size(), 3);
}

void OnlineDebugWidgetRefreshTest::aFailureAfterTheLinkHasGoneIsShown()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    m->page->onlineStatechanged(false);
    m->page->axisDebugEnterDebugMode(77);
    QCOMPARE(m->boxes.texts(), QStringList({ QStringLiteral("Failed to enter Debug menu!,text 77") }));
}

void OnlineDebugWidgetRefreshTest::aReplyWhileABoxIsOpenIsShown()
{
    m->makePage();
    AxisRef status = OnlinePageFixture::status(3, true);
    status.setPosition = 9;
    QString shown;
    QTimer::singleShot(0, &*m->page, [&] {
        m->receive(status);
        shown = position();
    });
    QTimer::singleShot(0, &*m->page, [this] { m->page->axisDebugEnterDebugMode(77); });
    QTRY_COMPARE(m->boxes.count(), 1);
    QTRY_COMPARE(shown, QStringLiteral("9.00"));
}

void OnlineDebugWidgetRefreshTest::aReplyAfterThePageHasGoneIsDropped()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    QMetaObject::invokeMethod(m->page.get(), "axisDebugGetAxisRef", Qt::QueuedConnection,
        Q_ARG(QByteArray, OnlinePageFixture::reply(OnlinePageFixture::status(3))));
    m->page.reset();
    QCoreApplication::processEvents();
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugWidgetRefreshTest::whileHiddenNothingIsDrawn()
{
    m->makePage();
    m->show();
    m->receive(OnlinePageFixture::status(3, true));
    QCoreApplication::processEvents();
    EventCounter counter(*m->page, QEvent::Paint);
    AxisRef status = OnlinePageFixture::status(4, true);
    status.setPosition = 1;
    m->receive(status);
    QTRY_VERIFY(counter.count > 0);
    m->page->hide();
    QCoreApplication::processEvents();
    counter.count = 0;
    for (int i = 0; i < 20; ++i) {
        status.setPosition = i;
        status.homeSwitch = static_cast<quint8>(i % 2);
        status.axisState = static_cast<quint16>(i % 8);
        status.axisError = static_cast<quint16>(i % 3);
        m->receive(status);
        QCoreApplication::processEvents();
    }
    QCOMPARE(counter.count, 0);
    QCOMPARE(position(), QStringLiteral("19.00"));
}

void OnlineDebugWidgetRefreshTest::anUnchangedStateIsNotStyledAnew()
{
    m->makePage();
    m->show();
    AxisRef status = OnlinePageFixture::status(3, true);
    status.axisError = 1;
    m->receive(status);
    EventCounter counter(*m->page, QEvent::StyleChange);
    for (int i = 0; i < 5; ++i)
        m->receive(status);
    QCOMPARE(counter.count, 0);
    status.axisState = 0;
    m->receive(status);
    QCOMPARE(counter.count, 1);
}

QTEST_MAIN(OnlineDebugWidgetRefreshTest)
#include "OnlineDebugWidgetRefreshTest.moc"
