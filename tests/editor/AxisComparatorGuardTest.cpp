#include "editor/AxisComparator.h"

#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/SafeProjectModel.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QPointer>
#include <QtTest>

#include <functional>

// Runs before a guard on a project is taken. The linker leads the comparator's calls of the guard's constructor to the
// wrapper, since nothing else shows what the comparator holds at that moment.
static std::function<void(const QString& projectName)> beforeProject;

extern "C" void __real__ZN16SafeProjectModelC1ERK7QString(SafeProjectModel* self, const QString& projectName);
extern "C" Q_DECL_EXPORT void __wrap__ZN16SafeProjectModelC1ERK7QString(
    SafeProjectModel* self, const QString& projectName)
{
    if (beforeProject)
        beforeProject(projectName);
    __real__ZN16SafeProjectModelC1ERK7QString(self, projectName);
}

/// What the comparator holds while it works.
class AxisComparatorGuardTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { beforeProject = nullptr; }

    void onlyOneProjectIsHeldAtATime();
};

void AxisComparatorGuardTest::onlyOneProjectIsHeldAtATime()
{
    const TestHost host;
    TestProject ours(QStringLiteral("NV3T_70Q12"), QStringLiteral("Ours"));
    TestProject theirs(QStringLiteral("NV3T_70Q12"), QStringLiteral("Theirs"));
    const quint32 a = ours.addAxis(QStringLiteral("feed"))->id();
    const quint32 b = theirs.addAxis(QStringLiteral("feed"))->id();
    const CompareItem left{ QStringLiteral("a"), ours.name(), ours.axisPath(a), QStringLiteral("AxisView"), a };
    const CompareItem right{ QStringLiteral("b"), theirs.name(), theirs.axisPath(b), QStringLiteral("AxisView"), b };
    const QPointer<ProjectModel> first = ours.model();
    QStringList taken;
    bool firstIsHeld = true;
    beforeProject = [&](const QString& name) {
        taken.append(name);
        if (name != theirs.name())
            return;
        // A project that something holds outlives its closing.
        ours.close();
        firstIsHeld = first;
    };
    QVERIFY(AxisComparator().compare(left, right));
    QCOMPARE(taken, (QStringList{ QStringLiteral("Ours"), QStringLiteral("Theirs") }));
    QVERIFY(!firstIsHeld);
}

QTEST_MAIN(AxisComparatorGuardTest)
#include "AxisComparatorGuardTest.moc"
