#include "workbench/LogManager.h"
#include "workbench/OutputPanel.h"

#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(LogLevel)

class LogManagerTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<LogLevel>(); }
    void aLineIsFormatted();
    void aLoggerIsTheSameForAName();
    void theNameStandsInForAModule();
    void levelsOutOfRangeAreBounded_data();
    void levelsOutOfRangeAreBounded();
    void longTextsAreWhole();
    void linesStandInThePanel();
    void thePanelForgetsTheOldestLines();
};

void LogManagerTest::aLineIsFormatted()
{
    LogManager manager;
    QSignalSpy lines(&manager, &LogManager::lineWritten);
    manager.logger("")->write("Module", LogWarning, "%s: %d 轴", "text", 7);
    QCOMPARE(lines.count(), 1);
    QCOMPARE(lines.first().at(0).value<LogLevel>(), LogWarning);
    QCOMPARE(lines.first().at(1).toString(), QStringLiteral("Module"));
    QCOMPARE(lines.first().at(2).toString(), QStringLiteral("text: 7 轴"));
}

void LogManagerTest::aLoggerIsTheSameForAName()
{
    LogManager manager;
    QCOMPARE(manager.logger("a"), manager.logger("a"));
    QVERIFY(manager.logger("a") != manager.logger("b"));
}

void LogManagerTest::theNameStandsInForAModule()
{
    LogManager manager;
    QSignalSpy lines(&manager, &LogManager::lineWritten);
    manager.logger("motion")->write("", LogInfo, "x");
    QCOMPARE(lines.first().at(1).toString(), QStringLiteral("motion"));
}

void LogManagerTest::levelsOutOfRangeAreBounded_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("bounded");
    QTest::newRow("below") << -5 << int(LogInfo);
    QTest::newRow("within") << int(LogError) << int(LogError);
    QTest::newRow("above") << 99 << int(LogError);
}

void LogManagerTest::levelsOutOfRangeAreBounded()
{
    QFETCH(int, level);
    LogManager manager;
    QSignalSpy lines(&manager, &LogManager::lineWritten);
    manager.logger("")->write("m", level, "x");
    QTEST(int(lines.first().at(0).value<LogLevel>()), "bounded");
}

void LogManagerTest::longTextsAreWhole()
{
    LogManager manager;
    QSignalSpy lines(&manager, &LogManager::lineWritten);
    const std::string text(20000, 'x');
    manager.logger("")->write("m", LogInfo, "%s", text.c_str());
    QCOMPARE(lines.first().at(2).toString().size(), 20000);
}

void LogManagerTest::linesStandInThePanel()
{
    LogManager manager;
    OutputPanel panel;
    connect(&manager, &LogManager::lineWritten, &panel, &OutputPanel::addLine);
    manager.report(LogError, QStringLiteral("one"));
    manager.logger("")->write("m", LogInfo, "two");
    QCOMPARE(panel.lines(), QStringList({ QStringLiteral("one"), QStringLiteral("two") }));
    QCOMPARE(panel.topLevelItem(0)->text(1), QStringLiteral("Workbench"));
    QCOMPARE(panel.topLevelItem(1)->text(1), QStringLiteral("m"));
}

void LogManagerTest::thePanelForgetsTheOldestLines()
{
    OutputPanel panel;
    for (int i = 0; i < 5001; ++i)
        panel.addLine(LogInfo, QString(), QString::number(i));
    QCOMPARE(panel.lines().size(), 5000);
    QCOMPARE(panel.lines().first(), QStringLiteral("1"));
}

QTEST_MAIN(LogManagerTest)
#include "LogManagerTest.moc"
