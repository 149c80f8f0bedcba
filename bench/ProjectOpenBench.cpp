#include "bench/Measure.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ControllerDescription.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"

#include <QCoreApplication>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

// What opening a project costs beside reading the same rows, with the same check of the file, into hashes.

namespace {

constexpr int records = 255;
constexpr double bound = 1.5;
constexpr double linearBound = 1.5;

QString makeProject(const QTemporaryDir& folder, int count)
{
    QString error;
    ControllerDescription controller;
    const QString path = folder.filePath(QStringLiteral("bench%1.kproj").arg(count));
    ProjectModelManager* manager = ProjectModelManager::instance();
    ProjectModel* project = nullptr;
    if (controller.readFile(QStringLiteral(KESTRUN_CONTROLLER_DIR "/NV3T_70Q12E.json"), &error))
        project = manager->createProject(path, controller, &error);
    if (!project)
        qFatal("%s", qPrintable(error));
    for (int i = 0; i < count; ++i) {
        AxisTable* axis = project->axisModel()->addAxisTable(QStringLiteral("Axis%1").arg(i));
        axis->setProperty(QStringLiteral("Row"), QString::number(i));
        axis->setProperty(QStringLiteral("MaxVel"), QString::number(i * 1.5, 'd', 6));
        for (const char* key : { "OriginReturnSetWidgetObjectName", "LineEditPosObjectName", "LineEditNegObjectName",
                 "LineEditOrgObjectName" })
            axis->setViewInfo(QLatin1String(key), QStringLiteral("lineEditPos"));
    }
    if (!project->save(&error))
        qFatal("%s", qPrintable(error));
    manager->closeProject(project);
    return path;
}

using Texts = QHash<QString, QString>;

void readRows(QSqlQuery& query, const char* sql, QHash<quint32, Texts>* hashes)
{
    query.exec(QLatin1String(sql));
    while (query.next())
        (*hashes)[query.value(0).toUInt()].insert(query.value(1).toString(), query.value(2).toString());
}

void readRows(QSqlQuery& query, const char* sql, Texts* hash)
{
    query.exec(QLatin1String(sql));
    while (query.next())
        hash->insert(query.value(0).toString(), query.value(1).toString());
}

double readBare(const QString& path)
{
    double time = 0;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bare"));
        QHash<quint32, Texts> properties;
        QHash<quint32, Texts> views;
        Texts rest;
        time = Measure::once([&] {
            database.setDatabaseName(path);
            database.open();
            QSqlQuery query(database);
            query.setForwardOnly(true);
            query.exec(QStringLiteral("PRAGMA locking_mode=EXCLUSIVE"));
            query.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
            query.exec(QStringLiteral("PRAGMA integrity_check"));
            query.next();
            readRows(query, "SELECT axis, key, value FROM axis_property", &properties);
            readRows(query, "SELECT axis, key, value FROM axis_view", &views);
            for (const char* sql : { "SELECT id, name FROM axis", "SELECT key, value FROM setting",
                     "SELECT name, text FROM source", "SELECT role, description FROM controller" })
                readRows(query, sql, &rest);
        });
        database.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("bare"));
    return time;
}

double open(const QString& path)
{
    QString error;
    ProjectModel* project = nullptr;
    const double time = Measure::once([&] { project = ProjectModelManager::instance()->openProject(path, &error); });
    if (!project)
        qFatal("%s", qPrintable(error));
    ProjectModelManager::instance()->closeProject(project);
    return time;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString path = makeProject(folder, records);
    const Measure::Pair pair = Measure::inTurns(
        40, [&] { return readBare(path); }, [&] { return open(path); });
    bool holds = Measure::report("open 255 records / read the rows", pair, bound);

    std::vector<double> times;
    for (const int count : { 16, 64, 256, 1024, 4096 }) {
        const QString file = makeProject(folder, count);
        std::vector<double> rounds;
        for (int i = 0; i < (count > 1000 ? 5 : 15); ++i)
            rounds.push_back(open(file));
        times.push_back(Measure::median(rounds));
        std::printf("open %4d records: %10.1f us, %6.1f us a record\n", count, times.back(), times.back() / count);
    }
    // The constant part of opening a file is spread over few records, so growth is judged between the larger counts.
    holds
        = Measure::report("a record at 4096 / a record at 256", { times.at(2) / 256, times.at(4) / 4096 }, linearBound)
        && holds;
    return holds ? 0 : 1;
}
