#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/Symbol.h"
#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"
#include "tests/support/NumberTyping.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <limits>
#include <optional>

/// What the language core of the project tells of its symbols, when a test sets it.
static std::optional<std::vector<ac::Symbol*>> toldSymbols;
/// While set, guards on the language core come out empty: an open project always has a core.
static bool coreIsMissing = false;

// The linker puts these in the place of the language core's operations, as seen from the page.
extern "C" {
void __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved);
Q_DECL_EXPORT void __wrap__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved)
{
    const std::string& name = coreIsMissing ? std::string() : projectName;
    __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(self, name, reserved);
}

void __real__ZNK2ac6ACCore10allSymbolsEiRSt6vectorIPNS_6SymbolESaIS3_EE(
    const ac::ACCore* core, int kind, std::vector<ac::Symbol*>& out);
Q_DECL_EXPORT void __wrap__ZNK2ac6ACCore10allSymbolsEiRSt6vectorIPNS_6SymbolESaIS3_EE(
    const ac::ACCore* core, int kind, std::vector<ac::Symbol*>& out)
{
    if (toldSymbols)
        out = *toldSymbols;
    else
        __real__ZNK2ac6ACCore10allSymbolsEiRSt6vectorIPNS_6SymbolESaIS3_EE(core, kind, out);
}
}

/// The session of the online page where something is missing, comes twice, or changes between request and answer.
class OnlineDebugSessionTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m.emplace(); }
    void cleanup();

    void theDiagnosisIsAskedForClassAndUnsignedCode();
    void theDiagnosisIsFetchedOnceAndKept();
    void withoutAHostTheTextOfACodeIsEmpty();
    void goingOffLineEmptiesBothTables();
    void noTickFollowsGoingOffLine();
    void goingOnLineAgainEndsTheWaitForAReplyThatNeverCame();
    void withoutAHostThePageStands();
    void withoutALanguageCoreErrorsAreNumbers_data();
    void withoutALanguageCoreErrorsAreNumbers();
    void errorNamesComeFromTheirEnumeration();
    void noErrorIsNamedAsWell();
    void oddSymbolsAreSkipped();
    void theScanOfSymbolsEndsWithBothEnumerations();
    void withoutAVariableMonitorTheSessionGoesOn();
    void theMonitoredNumberIsTheOneOfGoingOnLine();
    void anEncoderPageGoesWithoutTouchingTheMonitor();
    void withoutARecordThePageStaysAsItIs_data();
    void withoutARecordThePageStaysAsItIs();
    void withoutARecordNoPollStarts_data();
    void withoutARecordNoPollStarts();
    void withoutARecordTheWaitForAReplyStaysAsItIs();
    void aHiddenPageWithAnOpenRequestKeepsQuiet();
    void anotherPeriodCountsFromTheNextConnection();
    void theTimeoutIsReadAtEachClick();
    void aTickAndAReplyUnderABoxAreServed();
    void aFailureIsNamedByTheStateOfItsAnswer();
    void withoutATransferNothingIsSent();
    void withoutATransactionNothingIsSubmitted();
    void twoClicksSendTwoRequests();
    void fieldsOutliveAReconnection();

private:
    void tick() const { QMetaObject::invokeMethod(m->page.get(), "onlineQTimerSlot"); }
    QTimer* timer() const { return m->page->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly); }
    QString errorShown(int id)
    {
        AxisRef status = OnlinePageFixture::status(1);
        status.axisError = static_cast<quint16>(id);
        m->receive(status);
        return m->field("axisErrorLineEdit")->text();
    }
    /// The fields of a move, in the order in which it sends them.
    QLineEdit* motionField(int place) const
    {
        const char* names[] = { "positionLineEdit", "velocityLineEdit", "accLineEdit", "decLineEdit", "jerkLineEdit" };
        return m->field(names[place]);
    }
    void goOnLine(const QString& key, const QVariant& value)
    {
        m->host.settings.setValue(key, value);
        m->page->onlineStatechanged(true);
    }

    /// Takes the record from under the page: the axis alone, or the whole project.
    void loseRecord(bool withProject)
    {
        if (withProject)
            m->project.close();
        else
            QVERIFY(m->project.axisModel()->removeAxisTable(m->axis));
    }
    QStringList monitorCalls() const
    {
        return m->host.calls.entriesOf(
            { QStringLiteral("varMonitor.addAxis"), QStringLiteral("varMonitor.releaseAxis") });
    }

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugSessionTest::cleanup()
{
    m.reset();
    toldSymbols.reset();
    coreIsMissing = false;
}

void OnlineDebugSessionTest::theDiagnosisIsAskedForClassAndUnsignedCode()
{
    m->makePage();
    m->page->axisDebugReset(-2);
    QCOMPARE(m->host.calls.entriesOf({ QStringLiteral("diagnosis.errorInfo") }),
        QStringList({ QStringLiteral("diagnosis.errorInfo(11, 65534)") }));
    QCOMPARE(m->boxes.texts(), QStringList({ QStringLiteral("Reset failed!,text 65534") }));
}

void OnlineDebugSessionTest::theDiagnosisIsFetchedOnceAndKept()
{
    m->makePage();
    m->page->axisDebugReset(5);
    m->host.withhold(Solution::ServiceKey::diagnosisInfo());
    m->page->axisDebugReset(6);
    QCOMPARE(m->boxes.texts(),
        QStringList({ QStringLiteral("Reset failed!,text 5"), QStringLiteral("Reset failed!,text 6") }));
}

void OnlineDebugSessionTest::withoutAHostTheTextOfACodeIsEmpty()
{
    m->makePage();
    const QVariant host = qApp->property("IApplication");
    qApp->setProperty("IApplication", QVariant());
    m->page->axisDebugReset(5);
    qApp->setProperty("IApplication", host);
    m->page->axisDebugReset(6);
    QCOMPARE(
        m->boxes.texts(), QStringList({ QStringLiteral("Reset failed!,"), QStringLiteral("Reset failed!,text 6") }));
}

void OnlineDebugSessionTest::goingOffLineEmptiesBothTables()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    AxisRef status = OnlinePageFixture::status(4, true);
    status.actualPosition = 12.5;
    m->receive(status);
    const QAbstractItemModel& variables = *m->control<QTableView>("varTableView")->model();
    const QAbstractItemModel& states = *m->control<QTableView>("runStatusView")->model();
    QVERIFY(!variables.index(0, 2).data().toString().isEmpty());
    m->page->onlineStatechanged(false);
    for (int row = 0; row < variables.rowCount(); ++row) {
        QVERIFY(!variables.index(row, 0).data().toString().isEmpty());
        for (int column = 1; column <= 2; ++column)
            QCOMPARE(variables.index(row, column).data().toString(), QString());
    }
    QCOMPARE(states.index(0, 1).data().toString(), QString());
}

void OnlineDebugSessionTest::noTickFollowsGoingOffLine()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    m->page->onlineStatechanged(false);
    // The connection still says on line, as between the lines of a reconnection: the page itself has to hold still.
    tick();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugSessionTest::goingOnLineAgainEndsTheWaitForAReplyThatNeverCame()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    tick();
    QCOMPARE(m->debug.requests.size(), 1);
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    QCOMPARE(m->debug.requests.size(), 2);
}

void OnlineDebugSessionTest::withoutAHostThePageStands()
{
    const QVariant host = qApp->property("IApplication");
    qApp->setProperty("IApplication", QVariant());
    m->makePage();
    qApp->setProperty("IApplication", host);
    QVERIFY(timer());
    QCOMPARE(errorShown(1), QStringLiteral("1"));
    // The services were looked for when the page was made: it has none now either.
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->control("basicTabWidget")->setEnabled(true);
    m->control<QPushButton>("resetPushButton")->click();
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugSessionTest::withoutALanguageCoreErrorsAreNumbers_data()
{
    QTest::addColumn<bool>("core");
    QTest::newRow("no core") << false;
    QTest::newRow("a core that knows no symbol") << true;
}

void OnlineDebugSessionTest::withoutALanguageCoreErrorsAreNumbers()
{
    QFETCH(bool, core);
    coreIsMissing = !core;
    if (core)
        toldSymbols.emplace();
    m->makePage();
    QCOMPARE(errorShown(0), QStringLiteral("0"));
    QCOMPARE(errorShown(1), QStringLiteral("1"));
    m->page->onlineStatechanged(true);
    QVERIFY(timer()->isActive());
}

void OnlineDebugSessionTest::errorNamesComeFromTheirEnumeration()
{
    ac::SymbolEnumType errors("MC_AXIS_ERROR_ID",
        { { "first", 7 }, { "later", 7 }, { "negative", -3 }, { "wrapped", 65536 + 9 }, { "high", 40000 } });
    ac::SymbolEnumType states("MC_AXIS_STATE", { { "notAnError", 11 } });
    ac::SymbolEnumType other("SOMETHING", { { "else", 12 } });
    toldSymbols = std::vector<ac::Symbol*>{ &other, &states, &errors };
    m->makePage();
    QCOMPARE(errorShown(7), QStringLiteral("later"));
    QCOMPARE(errorShown(0x10000 - 3), QStringLiteral("negative"));
    QCOMPARE(errorShown(9), QStringLiteral("wrapped"));
    QCOMPARE(errorShown(40000), QStringLiteral("high"));
    QCOMPARE(errorShown(11), QStringLiteral("11"));
    QCOMPARE(errorShown(12), QStringLiteral("12"));
    QCOMPARE(errorShown(0), QStringLiteral("0"));
}

void OnlineDebugSessionTest::noErrorIsNamedAsWell()
{
    ac::SymbolEnumType errors("MC_AXIS_ERROR_ID", { { "allIsWell", 0 } });
    toldSymbols = std::vector<ac::Symbol*>{ &errors };
    m->makePage();
    QCOMPARE(errorShown(0), QStringLiteral("allIsWell"));
    QCOMPARE(m->field("axisErrorLineEdit")->styleSheet(), QString());
}

void OnlineDebugSessionTest::oddSymbolsAreSkipped()
{
    ac::Symbol noEnumeration("MC_AXIS_ERROR_ID", ac::StructSymbols);
    ac::SymbolEnumType errors("MC_AXIS_ERROR_ID", { { "found", 7 } });
    toldSymbols = std::vector<ac::Symbol*>{ nullptr, &noEnumeration, nullptr, &errors };
    m->makePage();
    QCOMPARE(errorShown(7), QStringLiteral("found"));
}

void OnlineDebugSessionTest::theScanOfSymbolsEndsWithBothEnumerations()
{
    ac::SymbolEnumType errors("MC_AXIS_ERROR_ID", { { "first", 7 } });
    ac::SymbolEnumType states("MC_AXIS_STATE", {});
    ac::SymbolEnumType late("MC_AXIS_ERROR_ID", { { "late", 7 } });
    toldSymbols = std::vector<ac::Symbol*>{ &errors, &states, &late };
    m->makePage();
    QCOMPARE(errorShown(7), QStringLiteral("first"));
    toldSymbols = std::vector<ac::Symbol*>{ &errors, &late, &states };
    m->makePage();
    QCOMPARE(errorShown(7), QStringLiteral("late"));
}

void OnlineDebugSessionTest::withoutAVariableMonitorTheSessionGoesOn()
{
    m->host.withhold(Solution::ServiceKey::variableMonitor());
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    QVERIFY(timer()->isActive());
    timer()->stop();
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    m->receive(OnlinePageFixture::status(3, true));
    m->page.reset();
    QCOMPARE(m->host.calls.count(QStringLiteral("varMonitor.releaseAxis")), 0);
}

void OnlineDebugSessionTest::theMonitoredNumberIsTheOneOfGoingOnLine()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    m->receive(OnlinePageFixture::status(3, true));
    m->axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("8"));
    m->axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Encoder"));
    m->host.calls.clear();
    m->page.reset();
    QCOMPARE(m->host.calls.entriesOf({ QStringLiteral("varMonitor.releaseAxis") }),
        QStringList({ QStringLiteral("varMonitor.releaseAxis(3, true)") }));
}

void OnlineDebugSessionTest::anEncoderPageGoesWithoutTouchingTheMonitor()
{
    m.reset();
    m.emplace(QStringLiteral("Axis_Encoder"));
    m->makePage();
    m->page->onlineStatechanged(true);
    m->page.reset();
    QCOMPARE(
        m->host.calls.entriesOf({ QStringLiteral("varMonitor.addAxis"), QStringLiteral("varMonitor.releaseAxis") }),
        QStringList());
}

void OnlineDebugSessionTest::withoutARecordThePageStaysAsItIs_data()
{
    QTest::addColumn<bool>("withProject");
    QTest::addColumn<bool>("state");
    QTest::newRow("without the axis, going on line") << false << true;
    QTest::newRow("without the axis, going off line") << false << false;
    QTest::newRow("without the project, going on line") << true << true;
    QTest::newRow("without the project, going off line") << true << false;
}

void OnlineDebugSessionTest::withoutARecordThePageStaysAsItIs()
{
    QFETCH(bool, withProject);
    QFETCH(bool, state);
    const QString key = QStringLiteral("Communication/monitortime");
    m->makePage();
    goOnLine(key, 30000);
    AxisRef status = OnlinePageFixture::status(4, true);
    status.axisError = 9;
    status.homeSwitch = 1;
    status.actualPosition = 12.5;
    m->receive(status);
    // A failure that has been shown: a page that forgets it shows the next one too.
    m->page->axisDebugJopPos(5);
    m->page->axisDebugJopNeg(5);
    QCOMPARE(m->boxes.count(), 2);
    const QImage before = m->page->grab().toImage();
    loseRecord(withProject);
    m->host.settings.setValue(key, 20000);
    m->host.calls.clear();
    m->page->onlineStatechanged(state);
    QVERIFY(timer()->isActive());
    QCOMPARE(timer()->interval(), 30000);
    QCOMPARE(monitorCalls(), QStringList());
    QVERIFY(m->control("basicTabWidget")->isEnabled());
    QVERIFY(m->control("stopPushButton")->isEnabled());
    QCOMPARE(m->page->grab().toImage(), before);
    m->page->axisDebugJopPos(5);
    m->page->axisDebugJopNeg(5);
    QCOMPARE(m->boxes.count(), 2);
}

void OnlineDebugSessionTest::withoutARecordNoPollStarts_data()
{
    QTest::addColumn<bool>("withProject");
    QTest::newRow("without the axis") << false;
    QTest::newRow("without the project") << true;
}

void OnlineDebugSessionTest::withoutARecordNoPollStarts()
{
    QFETCH(bool, withProject);
    m->makePage();
    loseRecord(withProject);
    m->host.calls.clear();
    m->page->onlineStatechanged(true);
    QVERIFY(!timer()->isActive());
    QCOMPARE(monitorCalls(), QStringList());
}

void OnlineDebugSessionTest::withoutARecordTheWaitForAReplyStaysAsItIs()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    loseRecord(false);
    m->page->onlineStatechanged(false);
    QVERIFY(m->project.axisModel()->putObjectBack(m->axis));
    // Nothing was under way, and the page may still ask.
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    loseRecord(false);
    m->page->onlineStatechanged(true);
    QVERIFY(m->project.axisModel()->putObjectBack(m->axis));
    // A request is under way, and the page still waits for its reply.
    tick();
    QCOMPARE(m->debug.requests.size(), 1);
}

void OnlineDebugSessionTest::aHiddenPageWithAnOpenRequestKeepsQuiet()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->page->hide();
    for (int i = 0; i < 30; ++i)
        tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    m->page->axisDebugGetAxisRef(QByteArray());
    for (int i = 0; i < 12; ++i)
        tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef, AxisDebugKeepAlive }));
}

void OnlineDebugSessionTest::anotherPeriodCountsFromTheNextConnection()
{
    const QString key = QStringLiteral("Communication/monitortime");
    m->makePage();
    goOnLine(key, 250);
    QCOMPARE(timer()->interval(), 250);
    m->host.settings.setValue(key, 400);
    QCOMPARE(timer()->interval(), 250);
    m->page->onlineStatechanged(false);
    m->page->onlineStatechanged(true);
    QCOMPARE(timer()->interval(), 400);
    for (const QVariant& odd : { QVariant(QStringLiteral("fast")), QVariant(4294967296LL), QVariant(1e300),
             QVariant(std::numeric_limits<double>::quiet_NaN()), QVariant(QByteArray()), QVariant(65536) }) {
        goOnLine(key, odd);
        QCOMPARE(timer()->interval(), 100);
    }
    goOnLine(key, 65536 + 30);
    QCOMPARE(timer()->interval(), 30);
}

void OnlineDebugSessionTest::theTimeoutIsReadAtEachClick()
{
    const QString key = QStringLiteral("Communication/commtimeout");
    m->makePage();
    m->page->onlineStatechanged(true);
    auto* button = m->control<QPushButton>("enterDebugButton");
    const std::pair<QVariant, short> rows[] = { { 700, 700 }, { 900, 900 }, { QStringLiteral("long"), 5000 },
        { 4294967296LL, 5000 }, { 65536 + 12, 12 }, { QVariant(), 5000 } };
    for (const auto& [value, timeout] : rows) {
        m->host.settings.setValue(key, value);
        button->click();
        QCOMPARE(m->debug.requests.last().as<EnterDebugModelParam>().timeout, timeout);
    }
}

void OnlineDebugSessionTest::aTickAndAReplyUnderABoxAreServed()
{
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    m->boxes.meanwhile([this] {
        tick();
        m->receive(OnlinePageFixture::status(3, true));
        tick();
    });
    m->page->axisDebugSetStop(5);
    QCOMPARE(m->boxes.count(), 1);
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef, AxisDebugGetAxisRef }));
    QVERIFY(m->control("basicTabWidget")->isEnabled());
}

void OnlineDebugSessionTest::aFailureIsNamedByTheStateOfItsAnswer()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    auto* enter = m->control<QPushButton>("enterDebugButton");
    enter->click();
    // Another client's entry is reported before the answer to this one.
    m->receive(OnlinePageFixture::status(0, true));
    m->page->axisDebugEnterDebugMode(5);
    m->receive(OnlinePageFixture::status(3, true));
    m->page->axisDebugSetEnable(5);
    QCOMPARE(m->boxes.texts(),
        QStringList(
            { QStringLiteral("Failed to exit Debug menu!,text 5"), QStringLiteral("Cancel Enable Failed!,text 5") }));
}

void OnlineDebugSessionTest::withoutATransferNothingIsSent()
{
    m->host.withhold(Solution::ServiceKey::transfer());
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    m->control("basicTabWidget")->setEnabled(true);
    m->control<QPushButton>("resetPushButton")->click();
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugSessionTest::withoutATransactionNothingIsSubmitted()
{
    m->debug.failing = true;
    m->makePage();
    m->show();
    m->page->onlineStatechanged(true);
    timer()->stop();
    tick();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugGetAxisRef }));
    QCOMPARE(m->host.background.submitted, 0);
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugSessionTest::twoClicksSendTwoRequests()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    auto* button = m->control<QPushButton>("enterDebugButton");
    button->click();
    button->click();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugEnterDebugMode, AxisDebugEnterDebugMode }));
    for (const RecordingDebug::Request& request : m->debug.requests)
        QCOMPARE(request.as<EnterDebugModelParam>().enter, short(1));
}

void OnlineDebugSessionTest::fieldsOutliveAReconnection()
{
    m->makePage();
    m->page->onlineStatechanged(true);
    m->receive(OnlinePageFixture::status(3, true));
    m->show();
    m->control<QComboBox>("motionTypeComboBox")->setCurrentText(QStringLiteral("Relative positioning"));
    m->control<QComboBox>("curveTypeComboBox")->setCurrentText(QStringLiteral("S_type"));
    const QStringList numbers{ QStringLiteral("42"), QStringLiteral("43"), QStringLiteral("44"), QStringLiteral("45"),
        QStringLiteral("46") };
    QStringList shown;
    for (int i = 0; i < numbers.size(); ++i) {
        QLineEdit* field = motionField(i);
        NumberTyping::replace(field, numbers.at(i));
        QTest::keyClick(field, Qt::Key_Tab);
        shown.append(field->text());
    }
    auto* box = m->control<QCheckBox>("speedMultiplierCheckBox");
    {
        const QSignalBlocker blocker(box);
        box->setChecked(true);
    }
    m->page->onlineStatechanged(false);
    m->page->onlineStatechanged(true);
    timer()->stop();
    m->receive(OnlinePageFixture::status(3, true));
    for (int i = 0; i < numbers.size(); ++i)
        QCOMPARE(motionField(i)->text(), shown.at(i));
    QVERIFY(box->isChecked());
    QTest::mouseClick(m->control("motionPushButton"), Qt::LeftButton);
    // What is sent is what is shown.
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugMoveRel }));
    const auto sent = m->debug.requests.last().as<MoveRelParam>();
    const double values[] = { sent.position, sent.velocity, sent.acceleration, sent.deceleration, sent.jerk };
    for (int i = 0; i < numbers.size(); ++i)
        QCOMPARE(values[i], numbers.at(i).toDouble());
}

QTEST_MAIN(OnlineDebugSessionTest)
#include "OnlineDebugSessionTest.moc"
