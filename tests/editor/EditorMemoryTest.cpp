#include "editor/MotionControlAxisFactory.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/EditorOpening.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QtTest>

#include <malloc.h>

// Both are there when the product is built with the address sanitizer.
extern "C" {
__attribute__((weak)) size_t __sanitizer_get_current_allocated_bytes();
__attribute__((weak)) int __lsan_do_recoverable_leak_check();
}

namespace {

/// Bytes that are allocated and not freed. Unlike the size of the process this does not depend on what an allocator
/// keeps back.
qint64 liveBytes()
{
    if (__sanitizer_get_current_allocated_bytes)
        return qint64(__sanitizer_get_current_allocated_bytes());
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
}

/// Qt's caches of glyphs and of drawn parts fill up with the first openings.
constexpr int warmUp = 60;
constexpr int openings = 50;
/// A thousand openings may take a mebibyte.
constexpr qint64 allowed = qint64(1024) * 1024 * openings / 1000;

/// An axis of a project, and tabs to open its editor in.
class Opener {
public:
    explicit Opener(const QString& type)
        : m_path(m_project.axisPath(m_project.addAxis(QStringLiteral("Feed"), type)->id()))
    {
        m_tabs.addTab(new QWidget, QStringLiteral("start"));
        m_tabs.resize(1100, 750);
        m_tabs.show();
        QApplication::processEvents();
    }

    void open(int times)
    {
        for (int i = 0; i < times; ++i) {
            openAndCloseEditor(m_tabs, m_factory, m_path);
            m_host.calls.clear();
        }
    }

private:
    MotionControlAxisFactory m_factory;
    TestHost m_host;
    TestProject m_project{ QStringLiteral("NV3T_70Q12E") };
    QString m_path;
    QTabWidget m_tabs;
};

} // namespace

/// What opening and closing an axis's editor leaves behind in memory.
class EditorMemoryTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void openingsLeaveNothingBehind_data();
    void openingsLeaveNothingBehind();
};

void EditorMemoryTest::initTestCase()
{
    Opener(QStringLiteral("Axis_Pulse")).open(warmUp);
}

void EditorMemoryTest::openingsLeaveNothingBehind_data()
{
    QTest::addColumn<QString>("type");
    for (const char* type : { "Axis_Pulse", "Axis_Encoder", "Axis_Virtual", "Axis_EtherCAT" })
        QTest::newRow(type) << QString::fromLatin1(type);
}

void EditorMemoryTest::openingsLeaveNothingBehind()
{
    QFETCH(QString, type);
    Opener opener(type);
    opener.open(5);
    const qint64 before = liveBytes();
    opener.open(openings);
    const qint64 growth = liveBytes() - before;
    QVERIFY2(growth < allowed, qPrintable(QStringLiteral("%1 bytes in %2 openings").arg(growth).arg(openings)));
    if (__lsan_do_recoverable_leak_check)
        QCOMPARE(__lsan_do_recoverable_leak_check(), 0);
}

int main(int argc, char** argv)
{
    Q_INIT_RESOURCE(axis_resources);
    QApplication application(argc, argv);
    EditorMemoryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "EditorMemoryTest.moc"
