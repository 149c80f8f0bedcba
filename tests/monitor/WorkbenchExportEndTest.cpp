#include "tests/monitor/Readings.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/OnlineProgram.h"
#include "workbench/ToolWindowManager.h"
#include "workbench/monitor/CurvePanel.h"
#include "workbench/monitor/VariableMonitor.h"

#include <QDockWidget>
#include <QtTest>

#include <algorithm>
#include <optional>

/// The end of the whole program, or of its project, while curves are being written to a file.
class WorkbenchExportEndTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void closingTheWindowGivesTheFileUp_data();
    void closingTheWindowGivesTheFileUp();
    void closingTheProjectLeavesTheWholeFile();

private:
    static constexpr int axes = 64;
    static constexpr int seconds = 120;
    static constexpr int lines = seconds * 1000 / CurveStore::periodMs;

    VariableMonitor& monitor() const { return m->workbench->monitor(); }
    CurvePanel& panel() const
    {
        QDockWidget* dock = m->workbench->window().toolWindows().panel(QStringLiteral("curves"));
        return *static_cast<CurvePanel*>(dock->widget());
    }
    QString path() const { return m_folder->filePath(QStringLiteral("curves.csv")); }
    QStringList files() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QByteArray written() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QStringList entries(const char* of)
    {
        return QDir(QString(QLatin1String("/proc/self/") + QLatin1String(of)))
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }
    /// The threads that bear the name of the program. Those of the transport, which come and go, have names of their
    /// own.
    static QStringList ownThreads()
    {
        QStringList threads = entries("task");
        const auto isOthers = [](const QString& thread) {
            return nameIn(QStringLiteral("/proc/self/task/%1/comm").arg(thread))
                != nameIn(QStringLiteral("/proc/self/comm"));
        };
        threads.erase(std::remove_if(threads.begin(), threads.end(), isOthers), threads.end());
        return threads;
    }
    static QByteArray nameIn(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The program has a file in the folder open, with or without a name there.
    bool isWriting() const;
    /// The export is under way and has come to its file.
    bool startExport()
    {
        return panel().exportTo(path()) && QTest::qWaitFor([this] { return isWriting(); });
    }

    MessageBoxWatcher m_boxes;
    std::optional<OnlineProgram> m;
    std::optional<QTemporaryDir> m_folder;
};

/// A program with so much recorded that writing it takes long.
void WorkbenchExportEndTest::init()
{
    m_folder.emplace();
    m.emplace();
    QVector<int> numbers;
    for (int axisNo = 0; axisNo < axes; ++axisNo) {
        numbers.append(axisNo);
        monitor().addAxis(axisNo);
        monitor().releaseAxis(axisNo, false);
    }
    for (int i = 0; i < lines; ++i)
        monitor().addSamples(Readings::runningAll(numbers, i * 0.01));
    QCOMPARE(monitor().curves().axes().size(), axes);
}

void WorkbenchExportEndTest::cleanup()
{
    m.reset();
    m_folder.reset();
}

bool WorkbenchExportEndTest::isWriting() const
{
    const QStringList descriptors = entries("fd");
    return std::any_of(descriptors.begin(), descriptors.end(), [this](const QString& each) {
        return QFile::symLinkTarget(QString(QLatin1String("/proc/self/fd/") + each)).startsWith(m_folder->path());
    });
}

void WorkbenchExportEndTest::closingTheWindowGivesTheFileUp_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("online");
    QTest::newRow("of a file that was not there") << QByteArray() << false;
    QTest::newRow("of a file that was there") << QByteArray("whole") << false;
    QTest::newRow("of a file that was there, while online") << QByteArray("whole") << true;
}

void WorkbenchExportEndTest::closingTheWindowGivesTheFileUp()
{
    QFETCH(QByteArray, before);
    QFETCH(bool, online);
    if (!before.isEmpty()) {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(before) == before.size());
    }
    const QStringList filesBefore = files();
    QVERIFY(!online || (m->connectHere() && m->openPage(QStringLiteral("Alpha"))));
    const QStringList threadsBefore = ownThreads();
    QVERIFY(startExport());
    QStringList added;
    const auto isOneAdded = [&added, &threadsBefore] {
        added = ownThreads();
        for (const QString& thread : threadsBefore)
            added.removeAll(thread);
        return added.size() == 1;
    };
    // A thread of the transport has its name a moment after its start.
    QTRY_VERIFY2(isOneAdded(), qPrintable(added.join(QLatin1Char(' '))));
    QElapsedTimer timer;
    timer.start();
    // As a user ends it, and then as main() does.
    QVERIFY(m->workbench->window().close());
    QVERIFY(!m->project());
    m->workbench->shutDown();
    QVERIFY(panel().isExporting());
    m->workbench.reset();
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!entries("task").contains(added.first()));
    QVERIFY(!isWriting());
    // Nothing half written, under whatever name, and the old file as it was.
    QCOMPARE(files(), filesBefore);
    QCOMPARE(written(), before);
    QCoreApplication::processEvents();
    QCOMPARE(files(), filesBefore);
}

void WorkbenchExportEndTest::closingTheProjectLeavesTheWholeFile()
{
    QVERIFY(startExport());
    m->workbench->workspace().close();
    QVERIFY(!m->project());
    QVERIFY(monitor().curves().isEmpty());
    QVERIFY(panel().isExporting());
    QTRY_VERIFY_WITH_TIMEOUT(!panel().isExporting(), 60000);
    // The file holds what was recorded when the export began.
    QCOMPARE(files(), QStringList({ QStringLiteral("curves.csv") }));
    const QByteArrayList table = written().split('\n');
    QCOMPARE(table.size(), lines + 2);
    for (const QByteArray& line : table.mid(0, lines + 1))
        QCOMPARE(line.count(','), 4 * axes);
    QVERIFY2(m->outputText().contains(QStringLiteral("The curves are saved in")), qPrintable(m->outputText()));
}

QTEST_MAIN(WorkbenchExportEndTest)
#include "WorkbenchExportEndTest.moc"
