#include "editor/AxisFinder.h"

#include "host/languagecore/SafeAccore.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QPointer>
#include <QtTest>

#include <functional>

// Runs before a guard on the language core is taken. The linker leads the finder's calls of the guard's constructor to
// the wrapper, since nothing else shows what the finder holds at that moment.
static std::function<void()> beforeCore;

extern "C" void __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved);
extern "C" Q_DECL_EXPORT void __wrap__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(
    SafeAccore* self, const std::string& projectName, bool reserved)
{
    if (beforeCore)
        beforeCore();
    __real__ZN10SafeAccoreC1ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEb(self, projectName, reserved);
}

/// What the finder holds while it works, and what it hands out.
class AxisFinderGuardTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { beforeCore = nullptr; }

    void projectIsReleasedBeforeTheCoreIsTaken();
    void referencesNeedTheCore();
    void resultIsACopy();

private:
    static AxisTable* addAxis(TestProject& project);
};

AxisTable* AxisFinderGuardTest::addAxis(TestProject& project)
{
    project.addSource(
        QStringLiteral("Main"), QStringLiteral("PROGRAM Main\nVAR\n stop : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    AxisTable* axis = project.addAxis(QStringLiteral("Feeder"));
    axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    axis->setProperty(QStringLiteral("PosLimitPin"), QStringLiteral("Main.stop"));
    axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("pos"));
    return axis;
}

void AxisFinderGuardTest::projectIsReleasedBeforeTheCoreIsTaken()
{
    const TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    AxisFinder finder;
    QVERIFY(finder.bindNode(project.axisPath(addAxis(project)->id())));
    const QPointer<ProjectModel> model = project.model();
    int taken = 0;
    bool held = true;
    beforeCore = [&] {
        ++taken;
        // A project that something holds outlives its closing.
        project.close();
        held = !model.isNull();
    };
    QVector<FindResult> results;
    finder.findReferences(QStringLiteral("Main.stop"), results);
    QCOMPARE(taken, 1);
    QVERIFY(!held);
}

void AxisFinderGuardTest::referencesNeedTheCore()
{
    const TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    AxisFinder finder;
    QVERIFY(finder.bindNode(project.axisPath(addAxis(project)->id())));
    QVector<FindResult> results;
    QVERIFY(finder.findReferences(QStringLiteral("Main.stop"), results));
    QCOMPARE(results.size(), 1);
    // The record could be read, but there is no core any more.
    beforeCore = [&project] { project.close(); };
    QVERIFY(!finder.findReferences(QStringLiteral("Main.stop"), results));
    QCOMPARE(results.size(), 1);
}

void AxisFinderGuardTest::resultIsACopy()
{
    const TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    AxisFinder finder;
    QVERIFY(finder.bindNode(project.axisPath(addAxis(project)->id())));
    finder.setStartPosition(QString());
    QVERIFY(finder.findNext(QStringLiteral("stop")));
    auto&& first = finder.result();
    first.text = QStringLiteral("changed");
    QCOMPARE(finder.result().text, QStringLiteral("Main.stop"));
    QVERIFY(finder.findNext(QStringLiteral("stop")));
    QVERIFY(finder.result().atEnd);
    QVERIFY(!first.atEnd);
}

QTEST_MAIN(AxisFinderGuardTest)
#include "AxisFinderGuardTest.moc"
