#include "online/MotionControlDebugInstance.h"

#include "online/MotionControlOnlineTransaction.h"
#include "sdk/AxisDebugParams.h"
#include "tests/support/TestHost.h"

#include <QPointer>
#include <QtTest>

#include <memory>

class MotionControlDebugInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void hasNeitherSignalsNorSlotsOfItsOwn();
    void makesATransactionThatTheCallerOwns();
    void makesOneForEveryCode();
};

void MotionControlDebugInstanceTest::hasNeitherSignalsNorSlotsOfItsOwn()
{
    const QMetaObject& meta = MotionControlDebugInstance::staticMetaObject;
    QCOMPARE(meta.methodOffset(), meta.methodCount());
    QCOMPARE(meta.superClass(), &MotionControlDebug::staticMetaObject);
    QCOMPARE(meta.superClass()->superClass(), &QObject::staticMetaObject);
}

void MotionControlDebugInstanceTest::makesATransactionThatTheCallerOwns()
{
    TestHost host;
    QObject receiver;
    auto instance = std::make_unique<MotionControlDebugInstance>();
    QTest::ignoreMessage(QtWarningMsg,
        QRegularExpression(QStringLiteral("No such slot QObject::axisDebugGetAxesGroupRef\\(QByteArray\\)")));
    const std::unique_ptr<Transaction> transaction(
        instance->createTransaction(AxisDebugGetAxesGroupRef, QVariant(), &receiver));
    QVERIFY(qobject_cast<MotionControlOnlineTransaction*>(transaction.get()));
    QVERIFY(!transaction->parent());
    const QPointer<Transaction> watched(transaction.get());
    instance.reset();
    QVERIFY2(watched, "a transaction outlives the service that made it");
}

void MotionControlDebugInstanceTest::makesOneForEveryCode()
{
    TestHost host;
    host.withhold(QStringLiteral("ISettings"));
    MotionControlDebugInstance instance;
    QObject receiver;
    for (const int code : { -1, 0, 15, 16, 1000 })
        QVERIFY(std::unique_ptr<Transaction>(instance.createTransaction(code, QVariant(), &receiver)));
}

QTEST_MAIN(MotionControlDebugInstanceTest)
#include "MotionControlDebugInstanceTest.moc"
