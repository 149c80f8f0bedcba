#include "host/languagecore/SplitPath.h"

#include <QtTest>

using ac::SplitPath;

/// Paths and their beginnings.
class SplitPathTest : public QObject {
    Q_OBJECT

private slots:
    void prefixes_data();
    void prefixes();
    void segments();
};

void SplitPathTest::prefixes_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("begins");

    QTest::newRow("the same path") << "Main.guard.open"
                                   << "Main.guard.open" << true;
    QTest::newRow("the first segment") << "Main"
                                       << "Main.guard.open" << true;
    QTest::newRow("the first two segments") << "Main.guard"
                                            << "Main.guard.open" << true;
    QTest::newRow("other letters") << "MAIN.Guard"
                                   << "main.guard.open" << true;
    QTest::newRow("half a segment") << "Main.gua"
                                    << "Main.guard.open" << false;
    QTest::newRow("half of the only segment") << "Mai"
                                              << "Main" << false;
    QTest::newRow("a longer path") << "Main.guard.open"
                                   << "Main.guard" << false;
    QTest::newRow("another path") << "Main.door"
                                  << "Main.guard" << false;
    QTest::newRow("the end of the path") << "guard.open"
                                         << "Main.guard.open" << false;
    QTest::newRow("nothing begins nothing") << ""
                                            << "" << false;
    QTest::newRow("nothing begins no path") << ""
                                            << "Main" << false;
    QTest::newRow("no path begins nothing") << "Main"
                                            << "" << false;
    QTest::newRow("a point at the end is a segment") << "Main."
                                                     << "Main.guard" << false;
    QTest::newRow("an empty segment begins an empty segment") << "Main."
                                                              << "Main..guard" << true;
    QTest::newRow("an address") << "%IX100"
                                << "%IX100.0" << true;
    QTest::newRow("another address") << "%IX10"
                                     << "%IX100.0" << false;
    QTest::newRow("an index belongs to its segment") << "Main.doors"
                                                     << "Main.doors[1].open" << false;
    QTest::newRow("letters beyond ASCII compare as they are")
        << QString::fromUtf8("Ä") << QString::fromUtf8("ä") << false;
}

void SplitPathTest::prefixes()
{
    QFETCH(const QString, prefix);
    QFETCH(const QString, path);
    QTEST(SplitPath::isPrefixPath(prefix.toStdString(), path.toStdString()), "begins");
}

void SplitPathTest::segments()
{
    QCOMPARE(SplitPath::segments("a.b.c"), (std::vector<std::string>{ "a", "b", "c" }));
    QCOMPARE(SplitPath::segments("a..b."), (std::vector<std::string>{ "a", "", "b", "" }));
    QCOMPARE(SplitPath::segments(""), (std::vector<std::string>{ "" }));
}

QTEST_GUILESS_MAIN(SplitPathTest)
#include "SplitPathTest.moc"
