#include "axisdata/AutoConnectionSilence.h"

#include <QStringList>
#include <QtTest>

#include <thread>

namespace {

QStringList& heard()
{
    static QStringList messages;
    return messages;
}

void hear(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    heard().append(text);
}

void complain(const char* slot)
{
    qWarning("QMetaObject::connectSlotsByName: No matching signal for %s", slot);
}

QString complaint(const char* slot)
{
    return QStringLiteral("QMetaObject::connectSlotsByName: No matching signal for ") + QLatin1String(slot);
}

} // namespace

class AutoConnectionSilenceTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void onlyTheNamedSlotsAreQuiet();
    void otherMessagesAreHeard();
    void itEndsWithItsScope();
    void nestedScopesKeepTheirOwnNames();
    void otherThreadsAreHeard();

private:
    QtMessageHandler m_former = nullptr;
};

void AutoConnectionSilenceTest::init()
{
    heard().clear();
    m_former = qInstallMessageHandler(hear);
}

void AutoConnectionSilenceTest::cleanup()
{
    const QtMessageHandler last = qInstallMessageHandler(m_former);
    QVERIFY(last == hear);
}

void AutoConnectionSilenceTest::onlyTheNamedSlotsAreQuiet()
{
    const AutoConnectionSilence silence({ "on_a_b()", "on_c_d(QString)" });
    complain("on_a_b()");
    complain("on_c_d(QString)");
    complain("on_c_d()");
    QCOMPARE(heard(), QStringList(complaint("on_c_d()")));
}

void AutoConnectionSilenceTest::otherMessagesAreHeard()
{
    const AutoConnectionSilence silence({ "on_a_b()" });
    qWarning("on_a_b()");
    qInfo("QMetaObject::connectSlotsByName: No matching signal for on_a_b()");
    QCOMPARE(heard(), QStringList({ QStringLiteral("on_a_b()"), complaint("on_a_b()") }));
}

void AutoConnectionSilenceTest::itEndsWithItsScope()
{
    {
        const AutoConnectionSilence silence({ "on_a_b()" });
        complain("on_a_b()");
    }
    QVERIFY(heard().isEmpty());
    complain("on_a_b()");
    QCOMPARE(heard(), QStringList(complaint("on_a_b()")));
}

void AutoConnectionSilenceTest::nestedScopesKeepTheirOwnNames()
{
    const AutoConnectionSilence outer({ "on_a_b()" });
    {
        const AutoConnectionSilence inner({ "on_c_d()" });
        complain("on_c_d()");
        QVERIFY(heard().isEmpty());
        complain("on_a_b()");
    }
    complain("on_a_b()");
    complain("on_c_d()");
    QCOMPARE(heard(), QStringList({ complaint("on_a_b()"), complaint("on_c_d()") }));
}

void AutoConnectionSilenceTest::otherThreadsAreHeard()
{
    const AutoConnectionSilence silence({ "on_a_b()" });
    std::thread other([] { complain("on_a_b()"); });
    other.join();
    QCOMPARE(heard(), QStringList(complaint("on_a_b()")));
}

QTEST_APPLESS_MAIN(AutoConnectionSilenceTest)
#include "AutoConnectionSilenceTest.moc"
