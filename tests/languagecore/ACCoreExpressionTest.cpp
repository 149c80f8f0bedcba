#include "host/languagecore/ACCore.h"

#include <QtTest>

using namespace ac;

namespace {

QString joined(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
        list.append(QString::fromStdString(text));
    return list.join(QLatin1String(" | "));
}

struct Result {
    bool whole = false;
    std::map<int, std::map<int, Language::LogicSymInfo>> symbols;
    std::map<std::string, std::string> types;
    ParseDetails details;

    /// "0.0 Main.flag@1:1, ..."
    QString text() const
    {
        QStringList list;
        for (const auto& statement : symbols) {
            for (const auto& symbol : statement.second)
                list.append(QStringLiteral("%1.%2 %3@%4:%5")
                                .arg(statement.first)
                                .arg(symbol.first)
                                .arg(QString::fromStdString(symbol.second.path))
                                .arg(symbol.second.line)
                                .arg(symbol.second.column));
        }
        return list.join(QLatin1String(", "));
    }
};

Result parsed(const QString& text)
{
    ACCore core;
    core.setSources(
        { { "Main",
              "PROGRAM Main VAR flag, other : BOOL; i : INT; list : ARRAY [0..3] OF BOOL; word : WORD; delay : TON; "
              "ptr : POINTER TO BOOL; END_VAR END_PROGRAM TYPE Color : (Red, Green); END_TYPE" },
            { "F", "FUNCTION Twice : INT END_FUNCTION VAR_GLOBAL g : BOOL; END_VAR" } });
    Result result;
    result.whole
        = core.parserVariables(text.toStdString(), "HiddenAxisVar", 0, result.symbols, result.types, result.details);
    return result;
}

} // namespace

/// The variables that an expression names.
class ACCoreExpressionTest : public QObject {
    Q_OBJECT

private slots:
    void symbols_data();
    void symbols();
    void otherParts_data();
    void otherParts();
    void whatIsNoExpression_data();
    void whatIsNoExpression();
    void typesAndPositions();
    void resultsAreAdded();
};

void ACCoreExpressionTest::symbols_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("symbols");

    QTest::newRow("one variable") << "Main.flag"
                                  << "0.0 Main.flag@1:1";
    QTest::newRow("as the expression writes it") << "MAIN.FLAG"
                                                 << "0.0 MAIN.FLAG@1:1";
    QTest::newRow("a global variable") << "g AND F.g"
                                       << "0.0 g@1:1, 0.1 F.g@1:7";
    QTest::newRow("several in their order") << "Main.other OR NOT Main.flag"
                                            << "0.0 Main.other@1:1, 0.1 Main.flag@1:19";
    QTest::newRow("the same one twice") << "Main.flag = Main.flag"
                                        << "0.0 Main.flag@1:1, 0.1 Main.flag@1:13";
    QTest::newRow("blanks taken out") << "  Main . list [ 1 ]"
                                      << "0.0 Main.list[1]@1:3";
    QTest::newRow("an index with a variable") << "Main.list[Main.i + 1]"
                                              << "0.0 Main.list[Main.i+1]@1:1, 0.1 Main.i@1:11";
    QTest::newRow("a bit") << "Main.word.3"
                           << "0.0 Main.word.3@1:1";
    QTest::newRow("an output of a block") << "Main.delay.Q"
                                          << "0.0 Main.delay.Q@1:1";
    QTest::newRow("brackets") << "(Main.flag)"
                              << "0.0 Main.flag@1:2";
    QTest::newRow("arguments of a function") << "MAX(Main.i, Twice(x := Main.i))"
                                             << "0.0 Main.i@1:5, 0.1 Main.i@1:24";
    QTest::newRow("statements") << "Main.flag;\nMain.i := Main.i + 1;"
                                << "0.0 Main.flag@1:1, 1.0 Main.i@2:1, 1.1 Main.i@2:11";
    QTest::newRow("comments between") << "Main.flag (* Main.i *) // Main.other"
                                      << "0.0 Main.flag@1:1";
    QTest::newRow("an address is none") << "%IX100.0"
                                        << "";
    QTest::newRow("a number is none") << "16#FF + 1.5e3"
                                      << "";
    QTest::newRow("a text is none") << "'Main.flag' = \"Main.i\""
                                    << "";
    QTest::newRow("a value of an enumeration is none") << "Red = Color.Green"
                                                       << "";
    QTest::newRow("a literal with a type is none") << "INT#-5 + T#1h2m + DT#2020-01-31-12:30:00"
                                                   << "";
    QTest::newRow("an unknown name is none") << "Main.flag AND nobody"
                                             << "0.0 Main.flag@1:1";
    QTest::newRow("what was found before a fault") << "Main.flag AND )"
                                                   << "0.0 Main.flag@1:1";
}

void ACCoreExpressionTest::symbols()
{
    QFETCH(const QString, text);
    QTEST(parsed(text).text(), "symbols");
}

void ACCoreExpressionTest::otherParts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("identifiers");
    QTest::addColumn<QString>("literals");
    QTest::addColumn<QString>("addresses");
    QTest::addColumn<QString>("unknown");

    QTest::newRow("an address") << "%ix100.0 OR %MW5 > 3"
                                << ""
                                << "3"
                                << "%ix100.0 | %MW5"
                                << "";
    QTest::newRow("unknown names") << "nobody OR Main.nothing"
                                   << "nobody | Main.nothing"
                                   << ""
                                   << ""
                                   << "nobody | Main.nothing";
    QTest::newRow("literals") << "TRUE AND 'a' = \"b\" AND 2#1 < 1_000.5"
                              << ""
                              << "TRUE | 'a' | \"b\" | 2#1 | 1_000.5"
                              << ""
                              << "";
    QTest::newRow("a value of an enumeration") << "Red"
                                               << "Red"
                                               << "Red"
                                               << ""
                                               << "";
    QTest::newRow("functions are known") << "ABS(1) + INT_TO_REAL(2) + Twice(3)"
                                         << "ABS | INT_TO_REAL | Twice"
                                         << "1 | 2 | 3"
                                         << ""
                                         << "";
    QTest::newRow("a function that nobody knows") << "Thrice(3)"
                                                  << "Thrice"
                                                  << "3"
                                                  << ""
                                                  << "Thrice";
}

void ACCoreExpressionTest::otherParts()
{
    QFETCH(const QString, text);
    const Result result = parsed(text);
    QVERIFY(result.whole);
    QTEST(joined(result.details.identifiers), "identifiers");
    QTEST(joined(result.details.literals), "literals");
    QTEST(joined(result.details.addresses), "addresses");
    QTEST(joined(result.details.unknown), "unknown");
}

void ACCoreExpressionTest::whatIsNoExpression_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");

    QTest::newRow("nothing") << "" << 1 << 1;
    QTest::newRow("blanks") << "  " << 1 << 3;
    QTest::newRow("an operator without a second operand") << "Main.flag AND" << 1 << 14;
    QTest::newRow("an operator without a first operand") << "* 3" << 1 << 1;
    QTest::newRow("two operands side by side") << "Main.flag\nMain.i" << 2 << 1;
    QTest::newRow("a bracket that is not closed") << "(Main.flag" << 1 << 11;
    QTest::newRow("a bracket too many") << "Main.flag)" << 1 << 10;
    QTest::newRow("an empty bracket") << "()" << 1 << 2;
    QTest::newRow("an index that is not closed") << "Main.list[1" << 1 << 12;
    QTest::newRow("an assignment of nothing") << "Main.i :=" << 1 << 10;
    QTest::newRow("a text that is not closed") << "Main.flag = 'abc" << 1 << 13;
    QTest::newRow("a comment that is not closed") << "Main.flag (* abc" << 1 << 11;
    QTest::newRow("a point at the end") << "Main." << 1 << 5;
    QTest::newRow("a keyword") << "IF Main.flag" << 1 << 1;
    QTest::newRow("a character that means nothing") << "Main.flag ?" << 1 << 11;
}

void ACCoreExpressionTest::whatIsNoExpression()
{
    QFETCH(const QString, text);
    const Result result = parsed(text);
    QVERIFY(!result.whole);
    QCOMPARE(result.details.problems.size(), std::size_t(1));
    QCOMPARE(result.details.problems.front().source, std::string("HiddenAxisVar"));
    QVERIFY(!result.details.problems.front().text.empty());
    QTEST(result.details.problems.front().line, "line");
    QTEST(result.details.problems.front().column, "column");
}

void ACCoreExpressionTest::typesAndPositions()
{
    const Result result = parsed(QStringLiteral("Main.i > 3 AND\n  Main.word.3"));
    QVERIFY(result.whole);
    QCOMPARE(result.types.size(), std::size_t(2));
    QCOMPARE(result.types.at("Main.i"), std::string("INT"));
    QCOMPARE(result.types.at("Main.word.3"), std::string("BOOL"));
    QCOMPARE(result.symbols.at(0).at(0).dataType, Int);
    QCOMPARE(result.symbols.at(0).at(1).dataType, Bool);
    QCOMPARE(result.symbols.at(0).at(1).line, 2);
    QCOMPARE(result.symbols.at(0).at(1).column, 3);
    QVERIFY(result.details.problems.empty());
}

void ACCoreExpressionTest::resultsAreAdded()
{
    const ACCore core;
    Result result;
    QVERIFY(core.parserVariables("a", "U", 0, result.symbols, result.types, result.details));
    QVERIFY(core.parserVariables("b", "U", 0, result.symbols, result.types, result.details));
    QCOMPARE(joined(result.details.unknown), QStringLiteral("a | b"));
    QVERIFY(result.symbols.empty());
}

QTEST_GUILESS_MAIN(ACCoreExpressionTest)
#include "ACCoreExpressionTest.moc"
