#include "workbench/online/CommandLog.h"
#include "sdk/AxisDebugParams.h"
#include "workbench/online/CommandLogPanel.h"
#include "workbench/online/RequestTap.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>

namespace {

AxisRequest makeRequest(int code, short value = 0)
{
    AxisRequest request;
    request.code = code;
    request.axisNo = 3;
    request.value = value;
    request.timeout = 5000;
    request.position = 1.5;
    request.velocity = 2;
    request.acceleration = 3;
    request.deceleration = 4;
    request.jerk = 0.25;
    return request;
}

} // namespace

class CommandLogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void everyCommandIsNamedWithItsArguments_data();
    void everyCommandIsNamedWithItsArguments();
    void answersAreNamed_data();
    void answersAreNamed();
    void theAxisIsNamed();
    void theTimesAreShown();
    void onlyCommandsCount();
    void theOldestGoBeyondTheCapacity();
    void chosenLinesAreCopied();
    void allLinesAreCopiedWhenNoneIsChosen();
    void theLogIsCleared();
    void theNewestStaysInSight();

private:
    QString cell(int row, CommandLog::Column column) const { return log->index(row, column).data().toString(); }

    std::unique_ptr<CommandLog> log;
};

void CommandLogTest::init()
{
    log = std::make_unique<CommandLog>(
        CommandLog::Names{ [](int axisNo) { return axisNo == 3 ? QStringLiteral("Feeder") : QString(); },
            [](short code) { return QStringLiteral("Name of %1").arg(code); } });
}

void CommandLogTest::everyCommandIsNamedWithItsArguments_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("arguments");
    const auto add = [](const char* name, int code, int value, const char* command, const char* arguments) {
        QTest::newRow(name) << code << value << QString::fromLatin1(command) << QString::fromLatin1(arguments);
    };
    const char* const motion = "velocity 2, acceleration 3, deceleration 4, jerk 0.25";
    const QByteArray move = QByteArray("position 1.5, ") + motion;
    const QByteArray start = QByteArray("start, ") + motion;
    const QByteArray end = QByteArray("end, ") + motion;
    add("entering debug mode", AxisDebugEnterDebugMode, 1, "Debug mode", "enter, time-out 5000 ms");
    add("leaving debug mode", AxisDebugEnterDebugMode, 0, "Debug mode", "leave, time-out 5000 ms");
    add("enabling", AxisDebugSetEnable, 1, "Enable", "on");
    add("disabling", AxisDebugSetEnable, 0, "Enable", "off");
    add("preset position", AxisDebugSetPosition, 0, "Preset position", "position 1.5");
    add("origin offset", AxisDebugSetHomeOffset, 0, "Origin offset", "position 1.5");
    add("speed multiplier", AxisDebugSetVelRatio, 40, "Speed multiplier", "40 %");
    add("home", AxisDebugSetHome, 0, "Home", "");
    add("stop", AxisDebugSetStop, 0, "Stop", "deceleration 4, jerk 0.25");
    add("absolute", AxisDebugMoveAbs, 0, "Absolute move", move);
    add("relative", AxisDebugMoveRel, 0, "Relative move", move);
    add("continuous", AxisDebugMoveVel, 0, "Continuous move", motion);
    add("start of a jog forwards", AxisDebugJopPos, 1, "Jog forwards", start);
    add("end of a jog backwards", AxisDebugJopNeg, 0, "Jog backwards", end);
    add("reset", AxisDebugReset, 0, "Reset", "");
}

void CommandLogTest::everyCommandIsNamedWithItsArguments()
{
    QFETCH(int, code);
    QFETCH(int, value);
    QFETCH(QString, command);
    QFETCH(QString, arguments);
    log->add(makeRequest(code, static_cast<short>(value)), {}, 0);
    QCOMPARE(cell(0, CommandLog::CommandColumn), command);
    QCOMPARE(cell(0, CommandLog::ArgumentsColumn), arguments);
}

void CommandLogTest::answersAreNamed_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("text");
    QTest::newRow("carried out") << 0 << QStringLiteral("done");
    QTest::newRow("refused") << 4 << QStringLiteral("4: Name of 4");
    QTest::newRow("no answer") << 28674 << QStringLiteral("28674: Name of 28674");
}

void CommandLogTest::answersAreNamed()
{
    QFETCH(int, result);
    QFETCH(QString, text);
    log->add(makeRequest(AxisDebugReset), { static_cast<short>(result), {} }, 0);
    QCOMPARE(cell(0, CommandLog::AnswerColumn), text);
}

void CommandLogTest::theAxisIsNamed()
{
    AxisRequest request = makeRequest(AxisDebugReset);
    log->add(request, {}, 0);
    request.axisNo = 12;
    log->add(request, {}, 0);
    log->addStop(false, 0, 0);
    QCOMPARE(cell(0, CommandLog::AxisColumn), QStringLiteral("Feeder"));
    QCOMPARE(cell(1, CommandLog::AxisColumn), QStringLiteral("12"));
    QCOMPARE(cell(2, CommandLog::AxisColumn), QStringLiteral("all"));
    QCOMPARE(cell(2, CommandLog::ArgumentsColumn), QStringLiteral("release"));
}

void CommandLogTest::theTimesAreShown()
{
    const QTime before = QTime::currentTime();
    log->add(makeRequest(AxisDebugReset), {}, 1234);
    QCOMPARE(cell(0, CommandLog::DurationColumn), QStringLiteral("1.2"));
    const QTime time = QTime::fromString(cell(0, CommandLog::TimeColumn), QStringLiteral("HH:mm:ss.zzz"));
    QVERIFY(time.isValid());
    QVERIFY(qAbs(before.msecsTo(time)) < 2000);
}

void CommandLogTest::onlyCommandsCount()
{
    for (int code = 0; code <= 15; ++code)
        QCOMPARE(RequestTap::isCommand(code), code != 0 && code != 1 && code != 3);
}

void CommandLogTest::theOldestGoBeyondTheCapacity()
{
    for (int i = 0; i < CommandLog::capacity + 5; ++i)
        log->add(makeRequest(AxisDebugReset), {}, i * 1000);
    QCOMPARE(log->rowCount(), int(CommandLog::capacity));
    QCOMPARE(cell(0, CommandLog::DurationColumn), QStringLiteral("5.0"));
}

void CommandLogTest::chosenLinesAreCopied()
{
    CommandLogPanel panel(*log);
    for (const short value : { 1, 0, 1 })
        log->add(makeRequest(AxisDebugSetEnable, value), {}, 1000);
    auto* view = panel.findChild<QTreeView*>();
    view->selectionModel()->select(log->index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    const QStringList cells = QGuiApplication::clipboard()->text().split(QLatin1Char('\t'));
    QCOMPARE(cells.mid(1),
        QStringList({ QStringLiteral("Feeder"), QStringLiteral("Enable"), QStringLiteral("off"), QStringLiteral("done"),
            QStringLiteral("1.0") }));
}

void CommandLogTest::allLinesAreCopiedWhenNoneIsChosen()
{
    CommandLogPanel panel(*log);
    for (int i = 0; i < 3; ++i)
        log->add(makeRequest(AxisDebugReset), {}, 0);
    QTest::mouseClick(panel.findChild<QToolButton*>(QStringLiteral("copyCommands")), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
}

void CommandLogTest::theLogIsCleared()
{
    CommandLogPanel panel(*log);
    log->add(makeRequest(AxisDebugReset), {}, 0);
    QTest::mouseClick(panel.findChild<QToolButton*>(QStringLiteral("clearCommands")), Qt::LeftButton);
    QCOMPARE(log->rowCount(), 0);
}

void CommandLogTest::theNewestStaysInSight()
{
    CommandLogPanel panel(*log);
    panel.resize(600, 120);
    panel.show();
    auto* view = panel.findChild<QTreeView*>();
    const auto isInSight
        = [&](int row) { return view->viewport()->rect().intersects(view->visualRect(log->index(row, 0))); };
    for (int i = 0; i < 50; ++i)
        log->add(makeRequest(AxisDebugReset), {}, 0);
    QTRY_VERIFY(isInSight(49));
    // A reader who has scrolled back is left where he is.
    view->scrollToTop();
    log->add(makeRequest(AxisDebugReset), {}, 0);
    QCoreApplication::processEvents();
    QVERIFY(isInSight(0) && !isInSight(50));
}

QTEST_MAIN(CommandLogTest)
#include "CommandLogTest.moc"
