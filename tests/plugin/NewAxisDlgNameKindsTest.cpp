#include "host/languagecore/CheckUnitHelper.h"
#include "plugin/NewAxisDlg.h"
#include "tests/plugin/DialogInput.h"
#include "tests/plugin/ProjectNames.h"
#include "tests/support/TestProject.h"

#include <QPushButton>
#include <QtTest>

#include <string>

// The language core finds every name free. The linker leads the dialog's calls of CheckUnitHelper::checkVarName to the
// wrapper, since that check refuses most of the kinds by itself, and would hide a kind that is not asked for.
extern "C" Q_DECL_EXPORT bool
__wrap__ZNK2ac15CheckUnitHelper12checkVarNameERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
    const ac::CheckUnitHelper*, const std::string&)
{
    return true;
}

/// The kinds of names that the dialog asks for one by one, whatever the language core says of the name.
class NewAxisDlgNameKindsTest : public QObject {
    Q_OBJECT

private slots:
    void kindIsRefused_data();
    void kindIsRefused();
    void namesOfNoKindAreLeftToTheCore_data();
    void namesOfNoKindAreLeftToTheCore();

private:
    static bool accepts(const QString& name);
};

bool NewAxisDlgNameKindsTest::accepts(const QString& name)
{
    TestProject project(QStringLiteral("NV3T_70Q12"));
    project.addSource(QStringLiteral("Globals"), QString::fromLatin1(sourceWithNamesOfEveryKind));
    project.addAxis(QStringLiteral("feed"));
    const NewAxisDlg dialog(project.name());
    DialogInput::type(&dialog, name);
    return dialog.axisName() == name && DialogInput::button(&dialog, QStringLiteral("OK"))->isEnabled();
}

void NewAxisDlgNameKindsTest::kindIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("keyword") << "while";
    QTest::newRow("global variable table") << "Globals";
    QTest::newRow("program") << "Main";
    QTest::newRow("function block") << "Pusher";
    QTest::newRow("function") << "Mean";
    QTest::newRow("structure") << "Box";
    QTest::newRow("enumeration") << "Colour";
    QTest::newRow("axis") << "feed";
    QTest::newRow("axis group") << "gantry";
    QTest::newRow("task") << "Fast";
}

void NewAxisDlgNameKindsTest::kindIsRefused()
{
    QFETCH(QString, name);
    QVERIFY(!accepts(name));
}

void NewAxisDlgNameKindsTest::namesOfNoKindAreLeftToTheCore_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("free name") << "lift";
    QTest::newRow("global variable") << "lineSpeed";
}

void NewAxisDlgNameKindsTest::namesOfNoKindAreLeftToTheCore()
{
    QFETCH(QString, name);
    QVERIFY(accepts(name));
}

QTEST_MAIN(NewAxisDlgNameKindsTest)
#include "NewAxisDlgNameKindsTest.moc"
