#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/Symbol.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SourceModel.h"
#include "tests/support/TestProject.h"

#include <QPointer>
#include <QtTest>

/// The scoped guard on a project's core.
class SafeAccoreTest : public QObject {
    Q_OBJECT

private slots:
    void aProjectThatIsNotOpenHasNoCore();
    void anEmptyProjectHasACore();
    void theCoreFollowsTheSources();
    void theCoreStaysWhileNothingChanges();
    void aHeldCoreKeepsItsSymbols();
    void theProjectIsHeldWithTheCore();
    void aClosedProjectHasNoCore();
    void projectsHaveCoresOfTheirOwn();
    void theStyleIsTheProjects();
};

void SafeAccoreTest::aProjectThatIsNotOpenHasNoCore()
{
    const SafeAccore none("Nobody", false);
    QVERIFY(!none);
    QVERIFY(none.core() == nullptr);
    QVERIFY(!SafeAccore("", true));
}

void SafeAccoreTest::anEmptyProjectHasACore()
{
    const TestProject project(QStringLiteral("NV3T_50Q4"));
    const SafeAccore core(project.name().toStdString(), false);
    QVERIFY(bool(core));
    QVERIFY(core->variables().empty());
}

void SafeAccoreTest::theCoreFollowsTheSources()
{
    TestProject project(QStringLiteral("NV3T_50Q4"));
    const std::string name = project.name().toStdString();
    QVERIFY(SafeAccore(name, false)->type("A.x") == nullptr);
    project.addSource(QStringLiteral("A"), QStringLiteral("VAR_GLOBAL x : BOOL; END_VAR"));
    QVERIFY(SafeAccore(name, false)->type("A.x") != nullptr);
    project.addSource(QStringLiteral("A"), QStringLiteral("VAR_GLOBAL y : BOOL; END_VAR"));
    QVERIFY(SafeAccore(name, false)->type("A.x") == nullptr);
    QVERIFY(SafeAccore(name, false)->type("A.y") != nullptr);
    project.model()->sourceModel()->removeSource(QStringLiteral("A"));
    QVERIFY(SafeAccore(name, false)->type("A.y") == nullptr);
}

void SafeAccoreTest::theCoreStaysWhileNothingChanges()
{
    TestProject project(QStringLiteral("NV3T_50Q4"));
    const std::string name = project.name().toStdString();
    const SafeAccore first(name, false);
    const SafeAccore second(name, true);
    QVERIFY(first.core() == second.core());
    project.addSource(QStringLiteral("A"), QStringLiteral("VAR_GLOBAL x : BOOL; END_VAR"));
    QVERIFY(first.core() != SafeAccore(name, false).core());
}

void SafeAccoreTest::aHeldCoreKeepsItsSymbols()
{
    TestProject project(QStringLiteral("NV3T_50Q4"));
    project.addSource(QStringLiteral("A"), QStringLiteral("VAR_GLOBAL x : BOOL; END_VAR"));
    const std::string name = project.name().toStdString();
    const SafeAccore held(name, false);
    const ac::SymbolDataType* type = held->type("A.x");
    project.model()->sourceModel()->removeSource(QStringLiteral("A"));
    QVERIFY(SafeAccore(name, false)->type("A.x") == nullptr);
    QVERIFY(held->type("A.x") == type);
    QCOMPARE(type->typeName(), std::string("BOOL"));
}

void SafeAccoreTest::theProjectIsHeldWithTheCore()
{
    TestProject project(QStringLiteral("NV3T_50Q4"));
    const QPointer<ProjectModel> model = project.model();
    {
        const SafeAccore core(project.name().toStdString(), false);
        ProjectModelManager::instance()->closeProject(project.model());
        QVERIFY(!model.isNull());
        QVERIFY(core->variables().empty());
    }
    QVERIFY(model.isNull());
}

void SafeAccoreTest::aClosedProjectHasNoCore()
{
    TestProject project(QStringLiteral("NV3T_50Q4"));
    const std::string name = project.name().toStdString();
    project.addSource(QStringLiteral("A"), QStringLiteral("VAR_GLOBAL x : BOOL; END_VAR"));
    project.save();
    QVERIFY(SafeAccore(name, false)->type("A.x") != nullptr);
    project.close();
    QVERIFY(!SafeAccore(name, false));
    project.reopen();
    QVERIFY(SafeAccore(name, false)->type("A.x") != nullptr);
}

void SafeAccoreTest::projectsHaveCoresOfTheirOwn()
{
    TestProject one(QStringLiteral("NV3T_50Q4"), QStringLiteral("One"));
    TestProject two(QStringLiteral("NV3T_50Q4"), QStringLiteral("Two"));
    one.addSource(QStringLiteral("A"), QStringLiteral("VAR_GLOBAL x : BOOL; END_VAR"));
    QVERIFY(SafeAccore("One", false)->type("A.x") != nullptr);
    QVERIFY(SafeAccore("Two", false)->type("A.x") == nullptr);
}

void SafeAccoreTest::theStyleIsTheProjects()
{
    TestProject project(QStringLiteral("NV3T_50Q4"));
    const std::string name = project.name().toStdString();
    QCOMPARE(SafeAccore(name, false)->getProgramStyle(), ac::SymbolicStyle);
    project.model()->setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
    QCOMPARE(SafeAccore(name, false)->getProgramStyle(), ac::AddressStyle);
}

QTEST_GUILESS_MAIN(SafeAccoreTest)
#include "SafeAccoreTest.moc"
