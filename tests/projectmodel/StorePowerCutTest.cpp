#include "tests/projectmodel/FaultVfs.h"
#include "tests/projectmodel/StoreScenario.h"

#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

/// Power cuts, replayed from a log of all that went to the disk.
class StorePowerCutTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void acknowledgedSavesSurviveACut_data();
    void acknowledgedSavesSurviveACut();

private:
    /// After so many steps of the log, these states were acknowledged and those attempted.
    struct Mark {
        int steps;
        QVector<int> acknowledged;
        QVector<int> attempted;
    };
    using Files = QMap<QString, QByteArray>;

    void attempt(StoreScenario& scenario, int number);
    Files filesAtCut(int steps, const QByteArray& what) const;
    const Mark& markAt(int steps) const;

    QTemporaryDir m_folder;
    Files m_start;
    QVector<FaultVfs::Step> m_log;
    QVector<Mark> m_marks;
};

namespace {

void apply(QByteArray& file, const FaultVfs::Step& step)
{
    if (step.operation == FaultVfs::Operation::Truncate) {
        file.truncate(static_cast<int>(step.offset));
        return;
    }
    const int end = static_cast<int>(step.offset) + step.data.size();
    if (file.size() < end)
        file.append(QByteArray(end - file.size(), '\0'));
    file.replace(static_cast<int>(step.offset), step.data.size(), step.data);
}

/// Which of a file's writes since its last sync have reached the disk at the cut.
using Survives = std::function<bool(int index, int count)>;

Survives survival(const QByteArray& what)
{
    if (what == "all")
        return [](int, int) { return true; };
    if (what == "none")
        return [](int, int) { return false; };
    return [](int index, int) { return index % 2 == 1; };
}

} // namespace

void StorePowerCutTest::initTestCase()
{
    FaultVfs::install();
    const QString path = m_folder.filePath(QStringLiteral("cut.kproj"));
    StoreScenario scenario(path);
    QVERIFY2(scenario.create(), qPrintable(scenario.error()));
    scenario.close();
    m_start.insert(path, bytesOf(path));
    const QVector<int> none(StoreScenario::axes + 1, 0);
    m_marks.append({ 0, none, none });

    FaultVfs::startLog();
    int number = 0;
    for (int session = 0; session < 3; ++session) {
        QVERIFY(scenario.open());
        for (int save = 0; save < 30; ++save)
            attempt(scenario, ++number);
        scenario.close();
    }
    m_log = FaultVfs::takeLog();
    QVERIFY2(m_log.size() >= 600, qPrintable(QString::number(m_log.size())));
}

/// One save, every fourth one of the whole project, with a mark before it and one after it.
void StorePowerCutTest::attempt(StoreScenario& scenario, int number)
{
    const bool isWhole = number % 4 == 0;
    const int axis = number % StoreScenario::axes;
    Mark mark = m_marks.last();
    mark.steps = FaultVfs::logSize();
    for (int index = 0; index <= StoreScenario::axes; ++index)
        if (isWhole || index == axis)
            mark.attempted[index] = number;
    m_marks.append(mark);
    QVERIFY(isWhole ? scenario.saveProject(number) : scenario.saveAxis(axis, number));
    mark.steps = FaultVfs::logSize();
    mark.acknowledged = mark.attempted;
    m_marks.append(mark);
}

const StorePowerCutTest::Mark& StorePowerCutTest::markAt(int steps) const
{
    auto mark = std::upper_bound(
        m_marks.begin(), m_marks.end(), steps, [](int at, const Mark& each) { return at < each.steps; });
    return *(mark - 1);
}

StorePowerCutTest::Files StorePowerCutTest::filesAtCut(int steps, const QByteArray& what) const
{
    const Survives survives = survival(what);
    Files synced = m_start;
    QMap<QString, QVector<FaultVfs::Step>> pending;
    for (int i = 0; i < steps; ++i) {
        const FaultVfs::Step& step = m_log.at(i);
        if (step.operation == FaultVfs::Operation::Delete) {
            synced.remove(step.file);
            pending.remove(step.file);
        } else if (step.operation == FaultVfs::Operation::Sync) {
            for (const FaultVfs::Step& each : pending.take(step.file))
                apply(synced[step.file], each);
        } else {
            pending[step.file].append(step);
        }
    }
    for (auto it = pending.begin(); it != pending.end(); ++it)
        for (int i = 0; i < it->size(); ++i)
            if (survives(i, it->size()))
                apply(synced[it.key()], it->at(i));
    return synced;
}

void StorePowerCutTest::acknowledgedSavesSurviveACut_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<int>("every");
    QTest::newRow("all that was written has reached the disk") << QByteArray("all") << 1;
    QTest::newRow("only what was synced has reached the disk") << QByteArray("none") << 5;
    QTest::newRow("of what was not synced every other write has reached the disk") << QByteArray("some") << 5;
}

void StorePowerCutTest::acknowledgedSavesSurviveACut()
{
    QFETCH(QByteArray, what);
    QFETCH(int, every);
    for (int steps = 0; steps <= m_log.size(); steps += every) {
        const QString path = m_start.firstKey();
        QFile::remove(path + QStringLiteral("-wal"));
        const Files files = filesAtCut(steps, what);
        for (auto it = files.begin(); it != files.end(); ++it)
            writeBytes(it.key(), it.value());
        StoreScenario scenario(path);
        QVERIFY2(scenario.open(), qPrintable(QStringLiteral("cut %1: %2").arg(steps).arg(scenario.error())));
        const Mark& mark = markAt(steps);
        for (int index = 0; index <= StoreScenario::axes; ++index) {
            const int found = index < StoreScenario::axes ? scenario.stateOf(index) : scenario.settingState();
            QVERIFY2(found == mark.acknowledged.at(index) || found == mark.attempted.at(index),
                qPrintable(QStringLiteral("cut %1, place %2: found %3, acknowledged %4, attempted %5")
                               .arg(steps)
                               .arg(index)
                               .arg(found)
                               .arg(mark.acknowledged.at(index))
                               .arg(mark.attempted.at(index))));
        }
    }
}

QTEST_GUILESS_MAIN(StorePowerCutTest)
#include "StorePowerCutTest.moc"
