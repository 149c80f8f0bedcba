#include "tests/pages/HomingPageFixture.h"

/// The rows of the limits and the origin, and what they tell find.
class OriginReturnSetWidgetSignalsTest : public QObject, private HomingPageFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void viewInfoNamesThePinEditors();
    void aReleasedMouseButtonAnywhereUpdatesTheFindIndex();
    void withoutARecordNoClickIsToldOf();
    void theFocusedPinIsNamed();
    void theFocusedPinIsNamedByTheRecord();

    void signalRowsFollowTheirBoxes_data();
    void signalRowsFollowTheirBoxes();
    void aHalfTickedBoxDisablesItsRow_data();
    void aHalfTickedBoxDisablesItsRow();
    void logicIsLoadedAndWritten_data();
    void logicIsLoadedAndWritten();
    void aLogicThatIsSwitchedOffWritesNothing_data();
    void aLogicThatIsSwitchedOffWritesNothing();
    void aDisabledRowKeepsItsText();
};

void OriginReturnSetWidgetSignalsTest::viewInfoNamesThePinEditors()
{
    makePage();
    QCOMPARE(m_axis->getViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), QString()),
        QStringLiteral("OriginReturnSetWidget"));
    for (const SignalRow& row : signalRows)
        QCOMPARE(m_axis->getViewInfo(latin(row.viewKey), QString()), latin(row.pin));
}

void OriginReturnSetWidgetSignalsTest::aReleasedMouseButtonAnywhereUpdatesTheFindIndex()
{
    makePage();
    show();
    QSignalSpy updates(m_page.get(), &OriginReturnSetWidget::updateFindIndex);
    QTest::mouseClick(control("lineEdit_7"), Qt::LeftButton);
    QVERIFY(updates.count() > 0);
    const int count = updates.count();
    QTest::mouseClick(control("lineEdit_7"), Qt::RightButton);
    QVERIFY(updates.count() > count);
    updates.clear();
    QTest::mousePress(m_page.get(), Qt::LeftButton);
    QCOMPARE(updates.count(), 0);
    QTest::mouseRelease(m_page.get(), Qt::LeftButton);
    QCOMPARE(updates.count(), 1);
    QTest::keyClick(control("lineEdit_7"), Qt::Key_A);
    QCOMPARE(updates.count(), 1);
}

void OriginReturnSetWidgetSignalsTest::theFocusedPinIsNamed()
{
    for (const SignalRow& row : signalRows)
        m_axis->setProperty(latin(row.enableKey), QStringLiteral("TRUE"));
    makePage();
    show();
    control("lineEdit_7")->setFocus();
    QCOMPARE(m_page->focusedPinViewInfo(), QString());
    for (const SignalRow& row : signalRows) {
        control(row.pin)->setFocus();
        QCOMPARE(m_page->focusedPinViewInfo(), latin(row.pin));
    }
}

void OriginReturnSetWidgetSignalsTest::signalRowsFollowTheirBoxes_data()
{
    eachSignal();
}

void OriginReturnSetWidgetSignalsTest::signalRowsFollowTheirBoxes()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    m_axis->setProperty(latin(signal.enableKey), QStringLiteral("true"));
    makePage();
    QVERIFY(control<QCheckBox>(signal.box)->isChecked());
    const auto enabled = [&] {
        return QVector<bool>({ control(signal.pin)->isEnabled(), control(signal.button)->isEnabled(),
            control(signal.positive)->isEnabled(), control(signal.negative)->isEnabled() });
    };
    QCOMPARE(enabled(), QVector<bool>(4, true));
    for (int other = 0; other < 3; ++other)
        QCOMPARE(control(signalRows[other].pin)->isEnabled(), other == row);
    QCOMPARE(stored(signal.enableKey), QStringLiteral("TRUE"));
    control<QCheckBox>(signal.box)->click();
    QCOMPARE(enabled(), QVector<bool>(4, false));
    QCOMPARE(stored(signal.enableKey), QStringLiteral("FALSE"));
    control<QCheckBox>(signal.box)->click();
    QCOMPARE(enabled(), QVector<bool>(4, true));
    QCOMPARE(stored(signal.enableKey), QStringLiteral("TRUE"));
}

void OriginReturnSetWidgetSignalsTest::logicIsLoadedAndWritten_data()
{
    eachSignal();
}

void OriginReturnSetWidgetSignalsTest::logicIsLoadedAndWritten()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    m_axis->setProperty(latin(signal.enableKey), QStringLiteral("TRUE"));
    m_axis->setProperty(latin(signal.logicKey), QStringLiteral("tRUE"));
    makePage();
    QVERIFY(control<QRadioButton>(signal.positive)->isChecked());
    m_axis->setProperty(latin(signal.logicKey), QStringLiteral("anything"));
    makePage();
    QVERIFY(control<QRadioButton>(signal.negative)->isChecked());
    QVERIFY(!control<QRadioButton>(signal.positive)->isChecked());
    control<QRadioButton>(signal.positive)->click();
    QCOMPARE(stored(signal.logicKey), QStringLiteral("TRUE"));
    control<QRadioButton>(signal.negative)->click();
    QCOMPARE(stored(signal.logicKey), QStringLiteral("FALSE"));
}

void OriginReturnSetWidgetSignalsTest::aDisabledRowKeepsItsText()
{
    m_axis->setProperty(QStringLiteral("NegsLimitEnable"), QStringLiteral("TRUE"));
    m_axis->setProperty(QStringLiteral("NegLimitPin"), QStringLiteral("no longer valid"));
    makePage();
    control<QCheckBox>("checkBox_2")->click();
    control<QCheckBox>("checkBox_2")->click();
    QCOMPARE(stored("NegLimitPin"), QStringLiteral("no longer valid"));
    QCOMPARE(control<QLineEdit>("lineEditNeg")->text(), QStringLiteral("no longer valid"));
    QCOMPARE(m_boxes->count(), 0);
}

void OriginReturnSetWidgetSignalsTest::aHalfTickedBoxDisablesItsRow_data()
{
    eachSignal();
}

void OriginReturnSetWidgetSignalsTest::aHalfTickedBoxDisablesItsRow()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    enable(signal);
    makePage();
    call(qPrintable(QStringLiteral("on_checkBox_%1_stateChanged").arg(row + 1)), Q_ARG(int, int(Qt::PartiallyChecked)));
    for (const char* name : { signal.pin, signal.button, signal.positive, signal.negative })
        QVERIFY2(!control(name)->isEnabled(), name);
    QCOMPARE(stored(signal.enableKey), QStringLiteral("FALSE"));
}

void OriginReturnSetWidgetSignalsTest::aLogicThatIsSwitchedOffWritesNothing_data()
{
    eachSignal();
}

void OriginReturnSetWidgetSignalsTest::aLogicThatIsSwitchedOffWritesNothing()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    makePage();
    for (int button : { 2 * row + 1, 2 * row + 2 }) {
        const QByteArray slot = QStringLiteral("on_radioButton_%1_toggled").arg(button).toLatin1();
        store(signal.logicKey, QStringLiteral("as it was"));
        call(slot, Q_ARG(bool, false));
        QCOMPARE(stored(signal.logicKey), QStringLiteral("as it was"));
        call(slot, Q_ARG(bool, true));
        QCOMPARE(stored(signal.logicKey), button % 2 ? QStringLiteral("TRUE") : QStringLiteral("FALSE"));
    }
}

void OriginReturnSetWidgetSignalsTest::theFocusedPinIsNamedByTheRecord()
{
    for (const SignalRow& row : signalRows)
        enable(row);
    makePage();
    show();
    for (const SignalRow& row : signalRows) {
        m_axis->setViewInfo(latin(row.viewKey), QStringLiteral("name in the record of ") + latin(row.pin));
        control(row.pin)->setFocus();
        QCOMPARE(m_page->focusedPinViewInfo(), QString(QStringLiteral("name in the record of ") + latin(row.pin)));
    }
}

void OriginReturnSetWidgetSignalsTest::withoutARecordNoClickIsToldOf()
{
    QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    makePage();
    show();
    QSignalSpy updates(m_page.get(), &OriginReturnSetWidget::updateFindIndex);
    QTest::mouseClick(control("lineEdit_7"), Qt::LeftButton);
    QTest::mouseClick(control("checkBox_1"), Qt::LeftButton);
    QTest::mouseClick(m_page.get(), Qt::LeftButton);
    QCOMPARE(updates.count(), 0);
}

QTEST_MAIN(OriginReturnSetWidgetSignalsTest)
#include "OriginReturnSetWidgetSignalsTest.moc"
