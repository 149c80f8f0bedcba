#include "host/languagecore/ACCore.h"
#include "host/languagecore/Symbol.h"
#include "tests/support/FuzzRounds.h"

#include <QDir>
#include <QtTest>

#include <random>

using namespace ac;

namespace {

/// Sources that people write, and pieces that the grammar knows, are what mutations do most harm with.
const std::vector<std::string>& pieces()
{
    static const std::vector<std::string> all{ "PROGRAM ", "END_PROGRAM", "VAR ", "END_VAR", "VAR_GLOBAL ", "TYPE ",
        "END_TYPE", "STRUCT ", "END_STRUCT", "ARRAY [", "..", "] OF ", ":", ";", ":=", "(", ")", "(*", "*)", "//", "{",
        "}", "'", "\"", "$", "%IX0.0", "16#", "9999999999999999999", "POINTER TO ", "EXTENDS ", "FUNCTION_BLOCK ",
        "TASK ", "CONFIGURATION ", ".", ",", "\n", "\r", std::string(1, '\0'), "\xff", "\xc3\xa4", "BOOL", "x", "S",
        "-", "AT " };
    return all;
}

std::vector<std::string> goodSources()
{
    std::vector<std::string> sources{
        "TYPE S : STRUCT a, b : BOOL; t : T; END_STRUCT; T : ARRAY [0..2] OF INT; E : (A, B := 3) INT := A; END_TYPE",
        "VAR_GLOBAL CONSTANT N : INT := 3; END_VAR VAR_GLOBAL list : ARRAY [1..N] OF S; ready AT %IX1.0 : BOOL; "
        "END_VAR",
        "CONFIGURATION C RESOURCE R ON P TASK T(INTERVAL := T#1ms); PROGRAM I WITH T : Main; END_RESOURCE "
        "END_CONFIGURATION",
    };
    const QDir directory(QStringLiteral(KESTRUN_SOURCE_DIR "/examples/packaging-line"));
    for (const QString& name : directory.entryList({ QStringLiteral("*.st") })) {
        QFile file(directory.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            sources.push_back(file.readAll().toStdString());
    }
    return sources;
}

class Mutator {
public:
    explicit Mutator(unsigned seed) : m_random(seed) { }

    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : m_random() % bound; }

    void mutate(std::string& text)
    {
        const std::size_t at = below(text.size() + 1);
        switch (below(5)) {
        case 0:
            text.erase(at, below(20));
            break;
        case 1:
            text.insert(at, pieces()[below(pieces().size())]);
            break;
        case 2:
            if (at < text.size())
                text[at] = static_cast<char>(m_random());
            break;
        case 3:
            text.insert(at, text.substr(below(text.size() + 1), below(80)));
            break;
        default:
            text.resize(at);
        }
    }

private:
    std::mt19937 m_random;
};

} // namespace

/// Sources that were damaged at random, the same ones in each run.
class ACCoreFuzzTest : public QObject {
    Q_OBJECT

private slots:
    void damagedSources_data();
    void damagedSources();
    void damagedPathsAndExpressions();
};

void ACCoreFuzzTest::damagedSources_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= fuzzRounds(20); ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void ACCoreFuzzTest::damagedSources()
{
    QFETCH(const int, seed);
    static const std::vector<std::string> good = goodSources();
    Mutator mutator(static_cast<unsigned>(seed));
    for (int round = 0; round < 12; ++round) {
        std::map<std::string, std::string> sources;
        for (std::size_t i = 0; i < good.size(); ++i) {
            std::string text = good[i];
            for (std::size_t n = mutator.below(6); n > 0; --n)
                mutator.mutate(text);
            sources["S" + std::to_string(i)] = text;
        }
        sources["Sound"] = "PROGRAM Sound_1 VAR sound : BOOL; END_VAR END_PROGRAM";
        ACCore core;
        core.setSources(sources);
        QVERIFY(core.type("Sound_1.sound") != nullptr);
        for (const SourceProblem& problem : core.problems()) {
            QVERIFY(sources.count(problem.source) == 1);
            QVERIFY(problem.line >= 1 && problem.column >= 1 && !problem.text.empty());
        }
        for (const VariableInfo& variable : core.variables())
            QVERIFY2(core.type(variable.path) == variable.type, variable.path.c_str());
    }
}

void ACCoreFuzzTest::damagedPathsAndExpressions()
{
    ACCore core;
    core.setSources({ { "M",
        "PROGRAM Main VAR s : ARRAY [0..3, 1..2] OF S; w : WORD; END_VAR END_PROGRAM "
        "TYPE S : STRUCT a : BOOL; END_STRUCT END_TYPE" } });
    Mutator mutator(7);
    for (int round = 0; round < fuzzRounds(5000); ++round) {
        std::string text = round % 2 == 0 ? "Main.s[1,2].a" : "(Main.w.3 AND NOT Main.s[0, 1].a) OR %IX0.0 = f(x := 3)";
        for (std::size_t n = mutator.below(5); n > 0; --n)
            mutator.mutate(text);
        core.type(text);
        std::map<int, std::map<int, Language::LogicSymInfo>> symbols;
        std::map<std::string, std::string> types;
        ParseDetails details;
        const bool whole = core.parserVariables(text, "U", 0, symbols, types, details);
        QCOMPARE(details.problems.empty(), whole);
    }
}

QTEST_GUILESS_MAIN(ACCoreFuzzTest)
#include "ACCoreFuzzTest.moc"
