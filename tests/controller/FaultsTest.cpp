#include "controller/Faults.h"

#include <QtTest>

class FaultsTest : public QObject {
    Q_OBJECT

private slots:
    void doesNothingUnlessTold();
    void repliesAreLateForWhomTheyShouldBe();
    void lostRepliesAreCounted();
    void refusesWithTheCode();
    void statusAndVersionChange();
    void axisFaultsAreHandedOn();
    void everyRequestCanBeNamed();
    void noneEndsAll();
    void refusesWhatIsNoFault_data();
    void refusesWhatIsNoFault();

private:
    static bool set(Faults& faults, const QByteArray& line, Faults::Action* action = nullptr)
    {
        Faults::Action ignored;
        std::string error;
        const bool fine = faults.set(line.toStdString(), action ? action : &ignored, &error);
        return fine == error.empty() && fine;
    }
};

void FaultsTest::doesNothingUnlessTold()
{
    Faults faults;
    const Faults::Effect effect = faults.take("MoveAbs");
    QCOMPARE(effect.delayMs, 0);
    QVERIFY(!effect.lost);
    QCOMPARE(effect.refusal, std::int16_t(0));
    QCOMPARE(faults.statusLength(), -1);
    QCOMPARE(faults.version(), std::int64_t(-1));
}

void FaultsTest::repliesAreLateForWhomTheyShouldBe()
{
    Faults faults;
    QVERIFY(set(faults, "late-replies 50 MoveAbs"));
    QCOMPARE(faults.take("MoveAbs").delayMs, 50);
    QCOMPARE(faults.take("Reset").delayMs, 0);
    QVERIFY(set(faults, "  late-replies   20  "));
    QCOMPARE(faults.take("Reset").delayMs, 20);
    QCOMPARE(faults.take("MoveAbs").delayMs, 50);
}

void FaultsTest::lostRepliesAreCounted()
{
    Faults faults;
    QVERIFY(set(faults, "lost-replies 2 Reset"));
    QVERIFY(!faults.take("MoveAbs").lost);
    QVERIFY(faults.take("Reset").lost);
    QVERIFY(faults.take("Reset").lost);
    QVERIFY(!faults.take("Reset").lost);
    QVERIFY(set(faults, "lost-replies 0"));
    for (int i = 0; i < 10; ++i)
        QVERIFY(faults.take("Reset").lost);
}

void FaultsTest::refusesWithTheCode()
{
    Faults faults;
    QVERIFY(set(faults, "refuse -7"));
    QVERIFY(set(faults, "refuse 12 Reset"));
    QCOMPARE(faults.take("Reset").refusal, std::int16_t(12));
    QCOMPARE(faults.take("MoveVel").refusal, std::int16_t(-7));
}

void FaultsTest::statusAndVersionChange()
{
    Faults faults;
    QVERIFY(set(faults, "wrong-length 0"));
    QCOMPARE(faults.statusLength(), 0);
    QVERIFY(set(faults, "version 3"));
    QCOMPARE(faults.version(), std::int64_t(3));
}

void FaultsTest::axisFaultsAreHandedOn()
{
    Faults faults;
    Faults::Action action;
    QVERIFY(set(faults, "power-lost 3", &action));
    QCOMPARE(action.kind, Faults::Action::PowerLost);
    QCOMPARE(action.axis, 3);
    QVERIFY(set(faults, "drive-error 77 255", &action));
    QCOMPARE(action.kind, Faults::Action::DriveError);
    QCOMPARE(action.axis, 255);
    QCOMPARE(action.code, std::int16_t(77));
    QVERIFY(set(faults, "blocked 0", &action));
    QCOMPARE(action.kind, Faults::Action::Blocked);
    QVERIFY(set(faults, "drop-link", &action));
    QCOMPARE(action.kind, Faults::Action::DropLink);
}

void FaultsTest::everyRequestCanBeNamed()
{
    QFile file(QStringLiteral(KESTRUN_SOURCE_DIR "/protocol/controller.proto"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QRegularExpression rpc(QStringLiteral("rpc (\\w+)\\("));
    int count = 0;
    for (auto it = rpc.globalMatch(text); it.hasNext(); ++count) {
        Faults faults;
        const QByteArray method = it.next().captured(1).toUtf8();
        QVERIFY2(set(faults, "refuse 7 " + method), method.constData());
        QCOMPARE(faults.take(method.toStdString()).refusal, std::int16_t(7));
    }
    QCOMPARE(count, 24);
}

void FaultsTest::noneEndsAll()
{
    Faults faults;
    Faults::Action action;
    for (const char* line : { "late-replies 5", "lost-replies 0", "refuse 5", "wrong-length 5", "version 5" })
        QVERIFY(set(faults, line));
    QVERIFY(set(faults, "none", &action));
    QCOMPARE(action.kind, Faults::Action::Heal);
    doesNothingUnlessTold();
    const Faults::Effect effect = faults.take("Reset");
    QVERIFY(effect.delayMs == 0 && !effect.lost && effect.refusal == 0);
    QVERIFY(faults.statusLength() == -1 && faults.version() == -1);
}

void FaultsTest::refusesWhatIsNoFault_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char* line :
        { "", "earthquake", "late-replies", "late-replies soon", "late-replies -1", "late-replies 5 MoveAbs now",
            "lost-replies x", "refuse", "refuse 40000", "wrong-length", "wrong-length -1", "wrong-length 5 6",
            "version", "power-lost", "power-lost 256", "power-lost -1", "power-lost x", "late-replies 5 MovAbs",
            "refuse 5 moveabs", "lost-replies 0 -", "drive-error 5", "drive-error 0 1", "blocked 1 2" })
        QTest::newRow(line[0] ? line : "nothing") << QByteArray(line);
}

void FaultsTest::refusesWhatIsNoFault()
{
    QFETCH(QByteArray, line);
    Faults faults;
    Faults::Action action;
    std::string error;
    QVERIFY(!faults.set(line.toStdString(), &action, &error));
    QVERIFY(!error.empty());
    QCOMPARE(faults.statusLength(), -1);
    QCOMPARE(faults.take("Reset").delayMs, 0);
}

QTEST_APPLESS_MAIN(FaultsTest)
#include "FaultsTest.moc"
