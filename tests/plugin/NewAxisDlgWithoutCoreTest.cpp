#include "host/languagecore/SafeAccore.h"
#include "plugin/NewAxisDlg.h"
#include "tests/plugin/DialogInput.h"
#include "tests/support/TestProject.h"

#include <QPushButton>
#include <QtTest>

// While set, guards on the language core come out empty. The linker leads the dialog's calls of the guard's constructor
// to the wrapper, since an open project always has a core.
static bool coreIsMissing = false;

extern "C" void __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved);
extern "C" Q_DECL_EXPORT void __wrap__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved)
{
    const std::string& name = coreIsMissing ? std::string() : projectName;
    __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(self, name, reserved);
}

/// The dialog on an open project that has no language core to judge names.
class NewAxisDlgWithoutCoreTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { coreIsMissing = false; }
    void nothingIsProposedOrAccepted();
    void coreThatGoesMakesNamesInvalid();

private:
    static bool accepts(const NewAxisDlg& dialog)
    {
        return DialogInput::button(&dialog, QStringLiteral("OK"))->isEnabled();
    }
};

void NewAxisDlgWithoutCoreTest::nothingIsProposedOrAccepted()
{
    const TestProject project(QStringLiteral("NV3T_70Q12"));
    coreIsMissing = true;
    const NewAxisDlg dialog(project.name());
    QCOMPARE(dialog.axisName(), QString());
    DialogInput::type(&dialog, QStringLiteral("lift"));
    QCOMPARE(dialog.axisName(), QStringLiteral("lift"));
    QVERIFY(!accepts(dialog));
}

void NewAxisDlgWithoutCoreTest::coreThatGoesMakesNamesInvalid()
{
    const TestProject project(QStringLiteral("NV3T_70Q12"));
    const NewAxisDlg dialog(project.name());
    QCOMPARE(dialog.axisName(), QStringLiteral("Axis_0"));
    QVERIFY(accepts(dialog));
    coreIsMissing = true;
    DialogInput::type(&dialog, QStringLiteral("lift"));
    QVERIFY(!accepts(dialog));
    coreIsMissing = false;
    DialogInput::type(&dialog, QStringLiteral("turn"));
    QVERIFY(accepts(dialog));
}

QTEST_MAIN(NewAxisDlgWithoutCoreTest)
#include "NewAxisDlgWithoutCoreTest.moc"
