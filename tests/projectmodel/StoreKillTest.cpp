#include "tests/projectmodel/StoreScenario.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// A process that is killed while it saves, again and again.
class StoreKillTest : public QObject {
    Q_OBJECT

private slots:
    void theProjectOpensAfterEveryKill();
};

void StoreKillTest::theProjectOpensAfterEveryKill()
{
    QTemporaryDir folder;
    StoreScenario scenario(folder.filePath(QStringLiteral("kill.kproj")));
    QVERIFY2(scenario.create(), qPrintable(scenario.error()));
    scenario.close();
    int longest = 0;
    for (int round = 0; round < 100; ++round) {
        QProcess child;
        child.start(QStringLiteral(KESTRUN_STORE_CHILD), { QStringLiteral("save"), scenario.path() });
        QByteArray output;
        // Killed after another number of saves each round, at whatever point of the next one it has got to.
        while (output.count('\n') < 2 + round % 7) {
            QVERIFY2(child.waitForReadyRead(20000), output.constData());
            output += child.readAll();
        }
        child.kill();
        QVERIFY(child.waitForFinished(20000));
        output += child.readAll();
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);

        const QList<QByteArray> lines = output.left(output.lastIndexOf('\n')).split('\n');
        QCOMPARE(lines.first(), QByteArray("open"));
        const int acknowledged = lines.last().toInt();
        QVERIFY2(scenario.open(), qPrintable(scenario.error()));
        const int found = scenario.stateOf(0);
        QVERIFY2(found == acknowledged || found == acknowledged + 1,
            qPrintable(QStringLiteral("round %1: found %2, acknowledged %3").arg(round).arg(found).arg(acknowledged)));
        for (int index = 1; index < StoreScenario::axes; ++index)
            QCOMPARE(scenario.stateOf(index), 0);
        scenario.close();
        longest = qMax(longest, acknowledged);
    }
    QVERIFY(longest >= 100);
}

QTEST_GUILESS_MAIN(StoreKillTest)
#include "StoreKillTest.moc"
