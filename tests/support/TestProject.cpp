#include "tests/support/TestProject.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ControllerDescription.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SourceModel.h"

#include <QFile>
#include <QJsonDocument>

namespace {

QByteArray jsonOf(const QString& model)
{
    QFile file(QStringLiteral(KESTRUN_CONTROLLER_DIR "/%1.json").arg(model));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
    return file.readAll();
}

ControllerDescription controllerOf(const QByteArray& json)
{
    ControllerDescription controller;
    QString error;
    if (!controller.read(json, QStringLiteral("controller"), &error))
        qFatal("%s", qPrintable(error));
    return controller;
}

} // namespace

TestProject::TestProject(const QString& controllerModel, const QString& name)
    : m_filePath(m_directory.filePath(name + QStringLiteral(".kestrun")))
{
    QString error;
    m_model = ProjectModelManager::instance()->createProject(m_filePath, controllerOf(jsonOf(controllerModel)), &error);
    if (!m_model)
        qFatal("%s", qPrintable(error));
    m_name = m_model->name();
}

TestProject::~TestProject()
{
    close();
}

QString TestProject::name() const
{
    return m_name;
}

QString TestProject::filePath() const
{
    return m_filePath;
}

ProjectModel* TestProject::model() const
{
    return m_model;
}

AxisModel* TestProject::axisModel() const
{
    return m_model ? m_model->axisModel() : nullptr;
}

AxisTable* TestProject::addAxis(const QString& name, const QString& typeWord)
{
    AxisTable* table = axisModel()->addAxisTable(name);
    if (!table)
        qFatal("%s", qPrintable(QStringLiteral("axis %1 could not be added").arg(name)));
    table->setProperty(QStringLiteral("AxisType"), typeWord);
    return table;
}

void TestProject::addSource(const QString& name, const QString& text)
{
    m_model->sourceModel()->setSource(name, text);
}

void TestProject::changeController(const QString& controllerModel)
{
    m_model->changeController(controllerOf(jsonOf(controllerModel)));
}

void TestProject::changeController(const QJsonObject& description)
{
    m_model->changeController(controllerOf(QJsonDocument(description).toJson()));
}

QJsonObject TestProject::description(const QString& controllerModel)
{
    return QJsonDocument::fromJson(jsonOf(controllerModel)).object();
}

void TestProject::save()
{
    QString error;
    if (!m_model->save(&error))
        qFatal("%s", qPrintable(error));
}

void TestProject::reopen()
{
    close();
    QString error;
    m_model = ProjectModelManager::instance()->openProject(m_filePath, &error);
    if (!m_model)
        qFatal("%s", qPrintable(error));
}

void TestProject::close()
{
    if (m_model)
        ProjectModelManager::instance()->closeProject(m_model);
    m_model.clear();
}

QString TestProject::nodePath() const
{
    return m_name + QStringLiteral(".ConfigAndSetup");
}

QString TestProject::unitPath() const
{
    return nodePath() + QStringLiteral(".Axis");
}

QString TestProject::axisPath(quint32 id) const
{
    return unitPath() + QStringLiteral(".AxisView%1").arg(id);
}
