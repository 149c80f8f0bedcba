#include "workbench/ProjectFlows.h"

#include "tests/workbench/RunningProgram.h"

#include <QMenu>

/// The list of recent projects.
class ProjectFlowsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { program.reset(); }
    void theLastOpenedComesFirstAndOnce();
    void theListEndsAtTen();
    void aRecentProjectOpensFromTheMenu();
    void theListComesBack();

private:
    QString write(const QString& name) const { return program->write(program->file(name), {}); }
    bool open(const QString& file) const { return program->workbench->flows().open(file); }
    QStringList recent() const { return program->workbench->flows().recent(); }
    QMenu* menu() const { return program->workbench->window().findChild<QMenu*>(QStringLiteral("recentMenu")); }

    std::unique_ptr<RunningProgram> program;
};

void ProjectFlowsTest::init()
{
    program = std::make_unique<RunningProgram>();
}

void ProjectFlowsTest::theLastOpenedComesFirstAndOnce()
{
    const QString first = write(QStringLiteral("First"));
    const QString second = write(QStringLiteral("Second"));
    QVERIFY(open(first));
    QVERIFY(open(second));
    QCOMPARE(recent(), QStringList({ second, first }));
    QVERIFY(open(first));
    QCOMPARE(recent(), QStringList({ first, second }));
    QVERIFY(!open(program->file(QStringLiteral("Missing"))));
    QCOMPARE(recent(), QStringList({ first, second }));
}

void ProjectFlowsTest::theListEndsAtTen()
{
    QStringList files;
    for (int i = 0; i < 12; ++i) {
        files.prepend(write(QStringLiteral("P%1").arg(i)));
        QVERIFY(open(files.first()));
    }
    QCOMPARE(recent(), QStringList(files.mid(0, 10)));
    QCOMPARE(menu()->actions().size(), 10);
}

void ProjectFlowsTest::aRecentProjectOpensFromTheMenu()
{
    QVERIFY(!menu()->isEnabled());
    const QString first = write(QStringLiteral("First"));
    const QString second = write(QStringLiteral("Second"));
    QVERIFY(open(first) && open(second));
    QVERIFY(menu()->isEnabled());
    QCOMPARE(menu()->actions().size(), 2);
    menu()->actions().last()->trigger();
    QCOMPARE(program->project()->filePath(), first);
    QCOMPARE(menu()->actions().first()->text(), first);
}

void ProjectFlowsTest::theListComesBack()
{
    const QString first = write(QStringLiteral("First"));
    QVERIFY(open(first));
    program->workbench->shutDown();
    const Settings settings(program->settingsFile());
    QCOMPARE(settings.value(QStringLiteral("Recent/Projects"), QStringList()).toStringList(), QStringList(first));
}

QTEST_MAIN(ProjectFlowsTest)
#include "ProjectFlowsTest.moc"
