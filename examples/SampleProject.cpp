#include "examples/SampleProject.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SourceModel.h"
#include "sdk/AxisDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

bool fail(QString* error, const QString& file, const QString& reason)
{
    *error = file + QStringLiteral(": ") + reason;
    return false;
}

bool readText(const QString& path, QByteArray* text, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, path, file.errorString());
    *text = file.readAll();
    return true;
}

bool isRecordKey(const QString& key)
{
    return AxisBaseDefaults.contains(key) || AxisUnitDefaults.contains(key) || AxisModeDefaults.contains(key)
        || AxisHomeDefaults.contains(key);
}

/// An editor that has shown an axis leaves the names of the controls that find jumps to. Nobody has opened these axes
/// yet, and what stands in their pins is to be found all the same.
void nameControls(AxisTable& record)
{
    record.setViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), QStringLiteral("OriginReturnSetWidget"));
    record.setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("lineEditPos"));
    record.setViewInfo(QStringLiteral("LineEditNegObjectName"), QStringLiteral("lineEditNeg"));
    record.setViewInfo(QStringLiteral("LineEditOrgObjectName"), QStringLiteral("lineEditOrg"));
}

/// The contents of "project.json", on their way into a project.
class SampleDescription {
public:
    bool read(const QString& path, QString* error)
    {
        m_path = path;
        QByteArray text;
        QJsonParseError syntax;
        if (!readText(path, &text, error))
            return false;
        m_root = QJsonDocument::fromJson(text, &syntax).object();
        if (syntax.error != QJsonParseError::NoError)
            return fail(error, path, QStringLiteral("at byte %1: %2").arg(syntax.offset).arg(syntax.errorString()));
        return !controller().isEmpty() || fail(error, path, QStringLiteral("/controller: is missing"));
    }

    QString controller() const { return m_root.value(QStringLiteral("controller")).toString(); }

    bool fill(ProjectModel& project, QString* error) const
    {
        const QJsonObject settings = m_root.value(QStringLiteral("settings")).toObject();
        for (auto it = settings.begin(); it != settings.end(); ++it)
            project.setSetting(it.key(), it.value().toString());
        QString cycleTime = m_root.value(QStringLiteral("cycleTime")).toString();
        project.axisModel()->setMotionTaskCfgCycleTime(cycleTime);
        const QJsonArray axes = m_root.value(QStringLiteral("axes")).toArray();
        for (int row = 0; row < axes.size(); ++row)
            if (!addAxis(*project.axisModel(), axes.at(row).toObject(), row, error))
                return false;
        return true;
    }

private:
    bool addAxis(AxisModel& model, const QJsonObject& axis, int row, QString* error) const
    {
        const QString place = QStringLiteral("/axes/%1").arg(row);
        AxisTable* record = model.addAxisTable(axis.value(QStringLiteral("name")).toString());
        if (!record)
            return fail(error, m_path, place + QStringLiteral("/name: is missing, or another axis has it"));
        record->setProperty(QStringLiteral("Row"), QString::number(row));
        nameControls(*record);
        const QJsonObject properties = axis.value(QStringLiteral("properties")).toObject();
        for (auto it = properties.begin(); it != properties.end(); ++it) {
            if (!isRecordKey(it.key()) || !it.value().isString())
                return fail(error, m_path,
                    place + QStringLiteral("/properties/") + it.key()
                        + QStringLiteral(": is no text of an axis record"));
            record->setProperty(it.key(), it.value().toString());
        }
        return true;
    }

    QString m_path;
    QJsonObject m_root;
};

bool addSources(SourceModel& model, const QDir& folder, QString* error)
{
    const QFileInfoList files = folder.entryInfoList({ QStringLiteral("*.st") }, QDir::Files, QDir::Name);
    for (const QFileInfo& each : files) {
        QByteArray text;
        if (!readText(each.filePath(), &text, error))
            return false;
        model.setSource(each.completeBaseName(), QString::fromUtf8(text));
    }
    return true;
}

bool fillProject(ProjectModel& project, const SampleDescription& description, const QDir& folder, QString* error)
{
    return description.fill(project, error) && addSources(*project.sourceModel(), folder, error) && project.save(error);
}

} // namespace

bool makeSampleProject(
    const QString& folder, const QString& controllerFolder, const QString& projectPath, QString* error)
{
    const QDir sources(folder);
    SampleDescription description;
    ControllerDescription controller;
    if (!description.read(sources.filePath(QStringLiteral("project.json")), error)
        || !controller.readFile(
            QDir(controllerFolder).filePath(description.controller() + QStringLiteral(".json")), error))
        return false;
    QDir().mkpath(QFileInfo(projectPath).path());
    QFile::remove(projectPath);
    ProjectModelManager* manager = ProjectModelManager::instance();
    ProjectModel* project = manager->createProject(projectPath, controller, error);
    if (!project)
        return false;
    const bool isMade = fillProject(*project, description, sources, error);
    manager->closeProject(project);
    if (!isMade)
        QFile::remove(projectPath);
    return isMade;
}
