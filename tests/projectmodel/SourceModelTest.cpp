#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "host/projectmodel/SourceModel.h"

#include <QSignalSpy>
#include <QtTest>

class SourceModelTest : public QObject {
    Q_OBJECT

private slots:
    void sourcesAreReadByName();
    void sourcesAreStoredWithTheProject();
    void removedSourcesAreGoneAfterTheSave();
    void onlyRealChangesAreAnnounced();
};

void SourceModelTest::sourcesAreReadByName()
{
    TestProject project(QStringLiteral("KM1_M16"));
    SourceModel* sources = project.model()->sourceModel();
    QVERIFY(sources->sourceNames().isEmpty());
    sources->setSource(QStringLiteral("Main"), QStringLiteral("PROGRAM Main END_PROGRAM"));
    sources->setSource(QStringLiteral("Data"), QString());
    QCOMPARE(sources->sourceNames().join(QLatin1Char(' ')), QStringLiteral("Data Main"));
    QCOMPARE(sources->source(QStringLiteral("Main")), QStringLiteral("PROGRAM Main END_PROGRAM"));
    QVERIFY(sources->source(QStringLiteral("NoSuchSource")).isNull());
    QCOMPARE(sources->subModelName(), QStringLiteral("SourceModel"));
}

void SourceModelTest::sourcesAreStoredWithTheProject()
{
    TestProject project(QStringLiteral("KM1_M16"));
    const QString text = QStringLiteral("(* \u8bf4\u660e *)\r\nPROGRAM Main\nEND_PROGRAM\n");
    project.addSource(QStringLiteral("Main"), text);
    project.addSource(QStringLiteral("Empty"), QString());
    project.save();
    project.addSource(QStringLiteral("Lost"), text);
    project.reopen();
    const SourceModel* sources = project.model()->sourceModel();
    QCOMPARE(sources->sourceNames().join(QLatin1Char(' ')), QStringLiteral("Empty Main"));
    QCOMPARE(sources->source(QStringLiteral("Main")), text);
}

void SourceModelTest::removedSourcesAreGoneAfterTheSave()
{
    TestProject project(QStringLiteral("KM1_M16"));
    project.addSource(QStringLiteral("A"), QStringLiteral("a"));
    project.addSource(QStringLiteral("B"), QStringLiteral("b"));
    project.save();
    QVERIFY(!project.model()->sourceModel()->removeSource(QStringLiteral("C")));
    QVERIFY(project.model()->sourceModel()->removeSource(QStringLiteral("A")));
    project.save();
    project.reopen();
    QCOMPARE(project.model()->sourceModel()->sourceNames(), QStringList{ QStringLiteral("B") });
}

void SourceModelTest::onlyRealChangesAreAnnounced()
{
    TestProject project(QStringLiteral("KM1_M16"));
    SourceModel* sources = project.model()->sourceModel();
    QSignalSpy spy(sources, &SourceModel::sourcesChanged);
    sources->setSource(QStringLiteral("A"), QStringLiteral("a"));
    sources->setSource(QStringLiteral("A"), QStringLiteral("a"));
    QCOMPARE(spy.size(), 1);
    sources->removeSource(QStringLiteral("B"));
    QCOMPARE(spy.size(), 1);
    sources->removeSource(QStringLiteral("A"));
    QCOMPARE(spy.size(), 2);
}

QTEST_GUILESS_MAIN(SourceModelTest)
#include "SourceModelTest.moc"
