#include "host/languagecore/ACCore.h"
#include "host/languagecore/Symbol.h"

#include <QtTest>

using namespace ac;

namespace {

QString typeText(const ACCore& core, const char* path)
{
    const SymbolDataType* type = core.type(path);
    return type == nullptr ? QStringLiteral("none") : QString::fromStdString(type->typeName());
}

} // namespace

/// What the declarations of a project mean together.
class ACCoreTest : public QObject {
    Q_OBJECT

private slots:
    void pathsResolve_data();
    void pathsResolve();
};

void ACCoreTest::pathsResolve_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("type");

    QTest::newRow("a global variable by its name") << "ready"
                                                   << "BOOL";
    QTest::newRow("a global variable by list and name") << "Io.ready"
                                                        << "BOOL";
    QTest::newRow("a variable of a program") << "Main.counter"
                                             << "INT";
    QTest::newRow("a member of a structure") << "Main.guard.open"
                                             << "BOOL";
    QTest::newRow("an element of an array") << "Main.doors[2].open"
                                            << "BOOL";
    QTest::newRow("a bit of a word") << "Main.flags.15"
                                     << "BOOL";
    QTest::newRow("an output of a standard block") << "Main.delay.Q"
                                                   << "BOOL";
    QTest::newRow("names in other letters") << "MAIN.Guard.OPEN"
                                            << "BOOL";
    QTest::newRow("an array as a whole") << "Main.doors"
                                         << "ARRAY [0..3] OF Guard";
    QTest::newRow("a bit beyond the word") << "Main.flags.16"
                                           << "none";
    QTest::newRow("an element beyond the array") << "Main.doors[4]"
                                                 << "none";
}

void ACCoreTest::pathsResolve()
{
    QFETCH(const QString, path);
    ACCore core;
    core.setSources({ { "Io", "VAR_GLOBAL ready AT %IX0.0 : BOOL; END_VAR" },
        { "Types", "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE" },
        { "Main",
            "PROGRAM Main VAR counter : INT := 5; guard : Guard; doors : ARRAY [0..3] OF Guard; flags : WORD; "
            "delay : TON; END_VAR counter := counter + 1; END_PROGRAM" } });
    for (const auto& problem : core.problems())
        qWarning("%s:%d:%d %s", problem.source.c_str(), problem.line, problem.column, problem.text.c_str());
    QVERIFY(core.problems().empty());
    QTEST(typeText(core, path.toUtf8().constData()), "type");
}

QTEST_GUILESS_MAIN(ACCoreTest)
#include "ACCoreTest.moc"
