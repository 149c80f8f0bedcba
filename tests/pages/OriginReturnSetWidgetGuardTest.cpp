#include "host/languagecore/SafeAccore.h"
#include "tests/pages/HomingPageFixture.h"

#include <QPointer>

#include <functional>

// Runs before a guard on the language core is taken. The linker leads the page's calls of the guard's constructor to
// the wrapper, since nothing else shows what the page holds at that moment.
static std::function<void()> beforeCore;

extern "C" void __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved);
extern "C" Q_DECL_EXPORT void __wrap__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved)
{
    if (beforeCore)
        beforeCore();
    __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(self, projectName, reserved);
}

/// What the page holds when it takes the language core, and what it does without one.
class OriginReturnSetWidgetGuardTest : public QObject, private HomingPageFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup()
    {
        beforeCore = nullptr;
        stop();
    }

    void aPinWithoutACoreFallsBackInSilence_data();
    void aPinWithoutACoreFallsBackInSilence();
    void anUpdateHasReleasedTheProject();
    void anUpdateWithoutACoreLeavesThePickers();

private:
    /// Closes the project when the core is next taken; the count tells how often it was, and whether something held
    /// the project then.
    void closeBeforeTheCore();

    int m_taken = 0;
    bool m_held = false;
};

void OriginReturnSetWidgetGuardTest::closeBeforeTheCore()
{
    m_taken = 0;
    m_held = false;
    beforeCore = [this] {
        // A project that something holds outlives its closing.
        const QPointer<ProjectModel> model = m_project->model();
        m_project->close();
        m_held = model;
        ++m_taken;
    };
}

void OriginReturnSetWidgetGuardTest::aPinWithoutACoreFallsBackInSilence_data()
{
    eachSignal();
}

void OriginReturnSetWidgetGuardTest::aPinWithoutACoreFallsBackInSilence()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    enable(signal);
    const QString before = stored(signal.pinKey);
    makePage();
    show();
    control<CLineEdit>(signal.pin)->setEnableComplete(false);
    control(signal.pin)->setFocus();
    control<QLineEdit>(signal.pin)->setText(QStringLiteral("%QX7.3"));
    closeBeforeTheCore();
    QTest::keyClick(control(signal.pin), Qt::Key_Return);
    QCOMPARE(m_taken, 1);
    // The project first, then the core.
    QVERIFY(m_held);
    QCOMPARE(m_boxes->count(), 0);
    QCOMPARE(control<QLineEdit>(signal.pin)->text(), before);
}

void OriginReturnSetWidgetGuardTest::anUpdateHasReleasedTheProject()
{
    makePage();
    closeBeforeTheCore();
    m_page->updateWidget();
    QCOMPARE(m_taken, 1);
    QVERIFY(!m_held);
}

void OriginReturnSetWidgetGuardTest::anUpdateWithoutACoreLeavesThePickers()
{
    makePage();
    m_project->model()->setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
    closeBeforeTheCore();
    m_page->updateWidget();
    QCOMPARE(m_taken, 1);
    for (const SignalRow& row : signalRows)
        QVERIFY(!control(row.button)->isHidden());
}

QTEST_MAIN(OriginReturnSetWidgetGuardTest)
#include "OriginReturnSetWidgetGuardTest.moc"
