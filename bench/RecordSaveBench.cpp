#include "bench/Measure.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ControllerDescription.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "sdk/AxisDefaults.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sqlite3.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

// What a durable save of one record costs beside writing the same rows, as durably, through the database's C interface.

namespace {

constexpr double bound = 1.3;
constexpr int rounds = 400;

void must(bool done)
{
    if (!done)
        qFatal("the database refuses");
}

/// Writes the rows of one axis into a copy of the project.
class BareWriter {
public:
    explicit BareWriter(const QString& path)
    {
        must(sqlite3_open(QFile::encodeName(path).constData(), &m_database) == SQLITE_OK);
        run("PRAGMA locking_mode=EXCLUSIVE");
        run("PRAGMA journal_mode=WAL");
        run("PRAGMA synchronous=FULL");
        sqlite3_prepare_v2(m_database, "REPLACE INTO axis VALUES(1, 'Feeder', ?)", -1, &m_axis, nullptr);
        sqlite3_prepare_v2(m_database, "REPLACE INTO axis_property VALUES(1, ?, ?)", -1, &m_property, nullptr);
    }
    ~BareWriter()
    {
        sqlite3_finalize(m_axis);
        sqlite3_finalize(m_property);
        sqlite3_close(m_database);
    }
    BareWriter(const BareWriter&) = delete;
    BareWriter& operator=(const BareWriter&) = delete;

    double write(const std::vector<std::pair<std::string, std::string>>& rows)
    {
        return Measure::once([&] {
            run("BEGIN IMMEDIATE");
            sqlite3_bind_int64(m_axis, 1, ++m_sum);
            step(m_axis);
            for (const auto& row : rows) {
                sqlite3_bind_text(m_property, 1, row.first.data(), static_cast<int>(row.first.size()), SQLITE_STATIC);
                sqlite3_bind_text(m_property, 2, row.second.data(), static_cast<int>(row.second.size()), SQLITE_STATIC);
                step(m_property);
            }
            run("COMMIT");
        });
    }

private:
    void run(const char* sql) { must(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) == SQLITE_OK); }
    static void step(sqlite3_stmt* statement)
    {
        must(sqlite3_step(statement) == SQLITE_DONE);
        sqlite3_reset(statement);
    }

    sqlite3* m_database = nullptr;
    sqlite3_stmt* m_axis = nullptr;
    sqlite3_stmt* m_property = nullptr;
    sqlite3_int64 m_sum = 0;
};

/// The keys that a round changes, each time to another text of the same length.
class Changes {
public:
    explicit Changes(int count)
    {
        for (const AxisDefaultGroup* group :
            { &AxisBaseDefaults, &AxisUnitDefaults, &AxisModeDefaults, &AxisHomeDefaults })
            for (auto it = group->begin(); it != group->end() && m_keys.size() < count; ++it)
                m_keys.append(it.key());
    }

    QString next()
    {
        ++m_round;
        return QString::number(100000 + m_round);
    }
    const QStringList& keys() const { return m_keys; }

private:
    QStringList m_keys;
    int m_round = 0;
};

double saveRecord(AxisTable* axis, Changes& changes)
{
    const QString value = changes.next();
    for (const QString& key : changes.keys())
        axis->setProperty(key, value);
    return Measure::once([axis] { must(axis->save()); });
}

double writeRows(BareWriter& writer, Changes& changes)
{
    std::vector<std::pair<std::string, std::string>> rows;
    const std::string value = changes.next().toStdString();
    for (const QString& key : changes.keys())
        rows.emplace_back(key.toStdString(), value);
    return writer.write(rows);
}

double append(int file)
{
    static const std::string text(4096, 'x');
    return Measure::once([file] {
        must(::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) && ::fsync(file) == 0);
    });
}

bool compare(const char* what, AxisTable* axis, BareWriter& writer, int keys)
{
    Changes ours(keys);
    Changes bare(keys);
    return Measure::report(what,
        Measure::inTurns(
            rounds, [&] { return writeRows(writer, bare); }, [&] { return saveRecord(axis, ours); }),
        bound);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    // Beside the program, since the usual place for temporary files may lie in memory.
    const QTemporaryDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/save-XXXXXX"));
    const QString path = folder.filePath(QStringLiteral("bench.kproj"));
    const QString barePath = folder.filePath(QStringLiteral("bare.kproj"));
    QString error;
    ControllerDescription controller;
    ProjectModelManager* manager = ProjectModelManager::instance();
    ProjectModel* project = nullptr;
    if (controller.readFile(QStringLiteral(KESTRUN_CONTROLLER_DIR "/NV3T_70Q12E.json"), &error))
        project = manager->createProject(path, controller, &error);
    if (!project)
        qFatal("%s", qPrintable(error));
    AxisTable* axis = project->axisModel()->addAxisTable(QStringLiteral("Feeder"));
    must(project->save(&error));
    manager->closeProject(project);
    must(QFile::copy(path, barePath));
    project = manager->openProject(path, &error);
    axis = project->axisModel()->axisTable(1);

    BareWriter writer(barePath);
    const int file = ::open(
        QFile::encodeName(folder.filePath(QStringLiteral("append"))).constData(), O_CREAT | O_WRONLY | O_APPEND, 0600);
    std::vector<double> appends;
    for (int i = 0; i < rounds; ++i)
        appends.push_back(append(file));
    ::close(file);
    std::printf("one append of a page with fsync: %.1f us\n", Measure::median(appends));
    const bool whole = compare("save a record, 63 keys changed / the rows", axis, writer, 63);
    const bool single = compare("save a record, one key changed / the rows", axis, writer, 1);
    manager->closeProject(project);
    return whole && single ? 0 : 1;
}
