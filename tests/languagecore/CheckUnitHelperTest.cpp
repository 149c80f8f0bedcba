#include "host/languagecore/CheckUnitHelper.h"
#include "host/languagecore/ACCore.h"

#include <QtTest>

using namespace ac;

/// Which names are still free in a project.
class CheckUnitHelperTest : public QObject {
    Q_OBJECT

private slots:
    void names_data();
    void names();
};

void CheckUnitHelperTest::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isFree");

    QTest::newRow("a new name") << "Axis_0" << true;
    QTest::newRow("a program") << "Main" << false;
    QTest::newRow("a program in other letters") << "MAIN" << false;
    QTest::newRow("a function block") << "Valve" << false;
    QTest::newRow("a function") << "Twice" << false;
    QTest::newRow("a structure") << "Guard" << false;
    QTest::newRow("an enumeration") << "Color" << false;
    QTest::newRow("an alias") << "Length" << false;
    QTest::newRow("a global list") << "Io" << false;
    QTest::newRow("a global variable") << "Ready" << false;
    QTest::newRow("a block of the system library") << "ton" << false;
    QTest::newRow("an enumeration of the system library") << "mc_axis_state" << false;
    QTest::newRow("a variable of a program") << "counter" << true;
    QTest::newRow("a member of a structure") << "open" << true;
    QTest::newRow("the beginning of a name") << "Mai" << true;
    QTest::newRow("a name and more") << "Main_1" << true;
}

void CheckUnitHelperTest::names()
{
    QFETCH(const QString, name);
    ACCore core;
    core.setSources({ { "Io", "VAR_GLOBAL ready : BOOL; END_VAR" },
        { "Main",
            "PROGRAM Main VAR counter : INT; END_VAR END_PROGRAM FUNCTION_BLOCK Valve END_FUNCTION_BLOCK "
            "FUNCTION Twice : INT END_FUNCTION TYPE Guard : STRUCT open : BOOL; END_STRUCT Color : (Red); Length : "
            "REAL; "
            "END_TYPE" } });
    QTEST(core.checkUnitHelper()->checkVarName(name.toStdString()), "isFree");
}

QTEST_GUILESS_MAIN(CheckUnitHelperTest)
#include "CheckUnitHelperTest.moc"
