#include "host/components/DataVerification.h"
#include "host/projectmodel/ProjectModel.h"
#include "sdk/ServiceKeys.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QtTest>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// One letter for each kind of name that the check finds.
QString kindsOf(const QString& name, const QString& project)
{
    const DataVerification check = DataVerification::getInstance();
    QString kinds;
    const auto add = [&kinds](bool is, char letter) {
        if (is)
            kinds += QLatin1Char(letter);
    };
    add(check.isKeyword(name, project), 'k');
    add(check.isGlobalVarTable(name, project), 'g');
    add(check.isPouOrFBOrFCName(name, project), 'p');
    add(check.isStructOrEnumName(name, project), 's');
    add(check.isAxisName(name, project), 'a');
    add(check.isAxisGroupName(name, project), 'r');
    add(check.isTaskName(name, project), 't');
    return kinds;
}

} // namespace

/// The checks on names, numbers and addresses.
class DataVerificationTest : public QObject {
    Q_OBJECT

private slots:
    void identifiers_data();
    void identifiers();
    void kindsOfNames_data();
    void kindsOfNames();
    void aProjectThatIsNotOpenHasNoNames();
    void numbers_data();
    void numbers();
    void theTextIsNotChanged();
    void addresses_data();
    void addresses();
    void theFlagsOfAddresses();
    void widths_data();
    void widths();
    void styleOfTheCurrentProject();
    void styleWithoutAHostOrProject();
};

void DataVerificationTest::identifiers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valid");

    QTest::newRow("letters") << "Axis" << true;
    QTest::newRow("one letter") << "x" << true;
    QTest::newRow("letters, digits, underscores") << "Axis_0_b2" << true;
    QTest::newRow("an underscore in front") << "_axis" << true;
    QTest::newRow("80 characters") << QString(80, QLatin1Char('a')) << true;
    QTest::newRow("81 characters") << QString(81, QLatin1Char('a')) << false;
    QTest::newRow("nothing") << "" << false;
    QTest::newRow("an underscore alone") << "_" << false;
    QTest::newRow("two underscores") << "Axis__0" << false;
    QTest::newRow("two underscores in front") << "__axis" << false;
    QTest::newRow("an underscore at the end") << "Axis_" << false;
    QTest::newRow("a digit in front") << "0Axis" << false;
    QTest::newRow("a blank in front") << " Axis" << false;
    QTest::newRow("a blank at the end") << "Axis " << false;
    QTest::newRow("a blank inside") << "Axis 0" << false;
    QTest::newRow("a line end") << "Axis\n" << false;
    QTest::newRow("a point") << "Main.Axis" << false;
    QTest::newRow("a hyphen") << "Axis-0" << false;
    QTest::newRow("a letter beyond ASCII") << QString::fromUtf8("Achsä") << false;
    QTest::newRow("digits of another script") << QString::fromUtf8("Axis٣") << false;
    QTest::newRow("Chinese") << QString::fromUtf8("轴") << false;
}

void DataVerificationTest::identifiers()
{
    QFETCH(const QString, name);
    QTEST(DataVerification::getInstance().isValidName(name), "valid");
}

void DataVerificationTest::kindsOfNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kinds");

    QTest::newRow("a free name") << "Axis_0"
                                 << "";
    QTest::newRow("a keyword") << "while"
                               << "k";
    QTest::newRow("an elementary type") << "Dint"
                                        << "k";
    QTest::newRow("a standard function") << "sqrt"
                                         << "k";
    QTest::newRow("a conversion") << "INT_TO_REAL"
                                  << "k";
    QTest::newRow("a global list") << "IO"
                                   << "g";
    QTest::newRow("a program") << "MAIN"
                               << "p";
    QTest::newRow("a function block") << "valve"
                                      << "p";
    QTest::newRow("a function") << "twice"
                                << "p";
    QTest::newRow("a standard block") << "ton"
                                      << "p";
    QTest::newRow("a structure") << "guard"
                                 << "s";
    QTest::newRow("an enumeration") << "color"
                                    << "s";
    QTest::newRow("an alias") << "length"
                              << "s";
    QTest::newRow("an enumeration of the system library") << "mc_axis_error_id"
                                                          << "s";
    QTest::newRow("an axis") << "infeed"
                             << "a";
    QTest::newRow("a group of axes") << "GANTRY"
                                     << "r";
    QTest::newRow("a task") << "motion"
                            << "t";
    QTest::newRow("a variable of a program") << "counter"
                                             << "";
    QTest::newRow("a global variable") << "ready"
                                       << "";
    QTest::newRow("the beginning of an axis' name") << "Infee"
                                                    << "";
    QTest::newRow("nothing") << ""
                             << "";
}

void DataVerificationTest::kindsOfNames()
{
    QFETCH(const QString, name);
    TestProject project(QStringLiteral("NV3T_50Q4"));
    project.addAxis(QStringLiteral("Infeed"));
    project.addSource(
        QStringLiteral("Io"), QStringLiteral("VAR_GLOBAL ready : BOOL; Gantry : AXES_GROUP_REF; END_VAR"));
    project.addSource(QStringLiteral("Main"),
        QStringLiteral("PROGRAM Main VAR counter : INT; END_VAR END_PROGRAM FUNCTION_BLOCK Valve END_FUNCTION_BLOCK "
                       "FUNCTION Twice : INT END_FUNCTION TYPE Guard : STRUCT a : BOOL; END_STRUCT Color : (Red); "
                       "Length : REAL; END_TYPE CONFIGURATION C TASK Motion(PRIORITY := 1); END_CONFIGURATION"));
    QTEST(kindsOf(name, project.name()), "kinds");
}

void DataVerificationTest::aProjectThatIsNotOpenHasNoNames()
{
    QCOMPARE(kindsOf(QStringLiteral("Main"), QStringLiteral("Nobody")), QString());
    QCOMPARE(kindsOf(QStringLiteral("TON"), QString()), QString());
    QCOMPARE(kindsOf(QStringLiteral("IF"), QString()), QStringLiteral("k"));
}

void DataVerificationTest::numbers_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("low");
    QTest::addColumn<QVariant>("high");
    QTest::addColumn<bool>("lowExcluded");
    QTest::addColumn<bool>("highExcluded");
    QTest::addColumn<bool>("valid");

    const auto row = [](const char* name, const QVariant& value, const QVariant& low, const QVariant& high, bool valid,
                         bool lowExcluded = false, bool highExcluded = false) {
        QTest::newRow(name) << value << low << high << lowExcluded << highExcluded << valid;
    };
    row("a real between whole numbers", 5.5, 1, 10, true);
    row("the lower bound belongs to the range", 0.01, 0.01, 9999999, true);
    row("the upper bound belongs to the range", 9999999.0, 0.01, 9999999, true);
    row("just below the lower bound", 0.0099999999, 0.01, 9999999, false);
    row("just above the upper bound", 9999999.0000001, 0.01, 9999999, false);
    row("an excluded lower bound", 5.0, 5.0, 9999999, false, true);
    row("above an excluded lower bound", 5.000001, 5.0, 9999999, true, true);
    row("an excluded upper bound", 5.0, -9999999, 5.0, false, false, true);
    row("below an excluded upper bound", 4.999999, -9999999, 5.0, true, false, true);
    row("both bounds excluded and equal", 5.0, 5, 5, false, true, true);
    row("both bounds equal", 5.0, 5, 5, true);
    row("bounds that cross", 5.0, 10, 1, false);

    row("an unsigned minus one against a whole bound", 4294967295U, 0, 150, false);
    row("the largest unsigned number where it is allowed", 4294967295U, 0, 4294967295.0, true);
    row("an unsigned upper bound beyond the signed ones", 3000000000.0, 0, 4294967295U, true);
    row("an unsigned number at a whole bound", 150U, 0, 150, true);
    row("an unsigned zero against a bound of one", 0U, 1, 2147483647, false);
    row("the largest whole bound", 2147483647U, 1, 2147483647, true);
    row("one more than the largest whole bound", 2147483648U, 1, 2147483647, false);
    row("an unsigned number above a negative bound", 0U, -1, 10, true);
    row("a negative number below an unsigned bound", -1, 0U, 10U, false);
    row("a negative number against an unsigned upper bound", -1, -5, 4294967295U, true);
    row("single precision at a real bound", 65535.0F, 0.0, 65535.0, true);
    row("single precision above a real bound", 65536.0F, 0.0, 65535.0, false);
    row("single precision compares exactly", 0.1F, 0.1, 1.0, true);
    row("single precision above its own decimal", 0.1F, 0.0, 0.1, false);
    row("a large number that a real would round", Q_INT64_C(9007199254740993), 0, 9007199254740992.0, false);
    row("a large number at its real neighbour", Q_INT64_C(9007199254740992), 0, 9007199254740992.0, true);
    row("the largest of all above the largest signed", Q_UINT64_C(18446744073709551615), Q_INT64_C(9223372036854775807),
        Q_UINT64_C(18446744073709551615), true, true);
    row("the smallest signed", std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::min(), 0U, true);
    row("a short number", QVariant::fromValue<short>(-3), -3, 3, true);
    row("negative zero", -0.0, 0, 1, true);

    row("no number", notANumber, -9999999, 9999999, false);
    row("infinity", infinity, 0, infinity, false);
    row("negative infinity", -infinity, -infinity, 0, false);
    row("single precision without a number", std::numeric_limits<float>::quiet_NaN(), 0, 1, false);
    row("a lower bound that is no number", 1.0, notANumber, 5, false);
    row("an upper bound that is no number", 1.0, 0, notANumber, false);
    row("an infinite upper bound bounds nothing", 1e300, 0, infinity, true);
    row("an infinite lower bound bounds nothing", -1e300, -infinity, 0, true);
    row("a text", QStringLiteral("5"), 0, 10, false);
    row("nothing", QVariant(), 0, 10, false);
    row("a truth value", true, 0, 10, false);
    row("a bound that is a text", 5, QStringLiteral("0"), 10, false);
}

void DataVerificationTest::numbers()
{
    QFETCH(const QVariant, value);
    QFETCH(const QVariant, low);
    QFETCH(const QVariant, high);
    QFETCH(const bool, lowExcluded);
    QFETCH(const bool, highExcluded);
    QString text = QStringLiteral("anything");
    QTEST(DataVerification::getInstance().isValidNumber(text, value, low, high, lowExcluded, highExcluded), "valid");
}

void DataVerificationTest::theTextIsNotChanged()
{
    for (const char* typed : { "", "-", " 5 ", "1e3", "abc" }) {
        QString text = QLatin1String(typed);
        QVERIFY(DataVerification::getInstance().isValidNumber(text, 5, 0, 10, false, false));
        QCOMPARE(text, QLatin1String(typed));
        QVERIFY(!DataVerification::getInstance().isValidNumber(text, 11, 0, 10, false, false));
        QCOMPARE(text, QLatin1String(typed));
    }
}

void DataVerificationTest::addresses_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("valid");

    for (const char* address : { "%IX100.0", "%ix0.7", "%QX3.5", "%MX2147483647.7", "%IB0", "%iw5", "%QD10", "%ml8",
             "%IX0001.007", "%IW007", "%MB2147483647" })
        QTest::addRow("%s is one", address) << QString::fromLatin1(address) << true;
    for (const char* address : { "", "%", "%I", "%IX", "%IX100", "%IX100.", "%IX.0", "%IX100.8", "%IX100.10",
             "%IX100.0.1", "%IX1.0.0", "%IW1.0", "%IB1.", "%ZX1.0", "%IY1.0", "IX100.0", "%%IX1.0", " %IX1.0",
             "%IX1.0 ", "%IX 1.0", "%IX1 .0", "%IX1.0\n", "%IX-1.0", "%IX+1.0", "%IX1,0", "%I1.0", "%IX2147483648.0",
             "%IW2147483648", "%IW99999999999999999999999", "%IX1.0x", "%I*", "%IX0x1.0" })
        QTest::addRow("'%s' is none", address) << QString::fromLatin1(address) << false;
    QTest::newRow("digits of another script are none") << QString::fromUtf8("%IX١.٠") << false;
}

void DataVerificationTest::addresses()
{
    QFETCH(const QString, address);
    QString text = address;
    QTEST(DataVerification::getInstance().isValidIecAddress(text, true, true), "valid");
    QCOMPARE(text, address);
}

void DataVerificationTest::theFlagsOfAddresses()
{
    const DataVerification check = DataVerification::getInstance();
    QString bit = QStringLiteral("%IX0.0");
    QString word = QStringLiteral("%IW0");
    QVERIFY(check.isValidIecAddress(bit, true, false));
    QVERIFY(!check.isValidIecAddress(bit, false, true));
    QVERIFY(!check.isValidIecAddress(word, true, false));
    QVERIFY(check.isValidIecAddress(word, false, true));
    QVERIFY(!check.isValidIecAddress(word, false, false));
}

void DataVerificationTest::widths_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("fits");

    QTest::newRow("a bit for BOOL") << "%IX100.0"
                                    << "BOOL" << true;
    QTest::newRow("a bit for bool in other letters") << "%ix100.0"
                                                     << "Bool" << true;
    QTest::newRow("a word for BOOL") << "%IW0"
                                     << "BOOL" << false;
    QTest::newRow("a byte for BOOL") << "%IB0"
                                     << "BOOL" << false;
    QTest::newRow("a byte for USINT") << "%QB0"
                                      << "USINT" << true;
    QTest::newRow("a word for INT") << "%MW0"
                                    << "INT" << true;
    QTest::newRow("a double word for REAL") << "%MD0"
                                            << "REAL" << true;
    QTest::newRow("a double word for TIME") << "%MD0"
                                            << "TIME" << true;
    QTest::newRow("a long word for LREAL") << "%ML0"
                                           << "LREAL" << true;
    QTest::newRow("a bit for INT") << "%MX0.0"
                                   << "INT" << false;
    QTest::newRow("a type without a width") << "%MW0"
                                            << "STRING" << false;
    QTest::newRow("an unknown type") << "%MW0"
                                     << "Guard" << false;
    QTest::newRow("no type") << "%MX0.0"
                             << "" << false;
    QTest::newRow("no address") << "Main.flag"
                                << "BOOL" << false;
    QTest::newRow("no address and no type") << ""
                                            << "" << false;
}

void DataVerificationTest::widths()
{
    QFETCH(const QString, address);
    QFETCH(const QString, type);
    QTEST(DataVerification::getInstance().isValidAddrAndType(address, type), "fits");
}

void DataVerificationTest::styleOfTheCurrentProject()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_50Q4"));
    host.cookies.setValue(Solution::ConfigKey::projectName(), project.name());
    const DataVerification check = DataVerification::getInstance();
    QVERIFY(check.isProgramStyle(ac::SymbolicStyle));
    QVERIFY(!check.isProgramStyle(ac::AddressStyle));
    project.model()->setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
    QVERIFY(check.isProgramStyle(static_cast<ac::ProgramStyle>(1)));
    QVERIFY(!check.isProgramStyle(ac::SymbolicStyle));
}

void DataVerificationTest::styleWithoutAHostOrProject()
{
    const DataVerification check = DataVerification::getInstance();
    QVERIFY(!check.isProgramStyle(ac::SymbolicStyle));
    TestHost host;
    QVERIFY(!check.isProgramStyle(ac::SymbolicStyle));
    host.cookies.setValue(Solution::ConfigKey::projectName(), QStringLiteral("Nobody"));
    QVERIFY(!check.isProgramStyle(ac::SymbolicStyle));
    QVERIFY(!check.isProgramStyle(ac::AddressStyle));
}

QTEST_MAIN(DataVerificationTest)
#include "DataVerificationTest.moc"
