#pragma once

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ControllerDescription.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"

#include <QPointer>
#include <QString>
#include <QTemporaryDir>
#include <QtTest>

/// The description of a controller model that the project ships.
inline ControllerDescription shippedController(const QString& model)
{
    ControllerDescription description;
    QString error;
    if (!description.readFile(QStringLiteral(KESTRUN_CONTROLLER_DIR "/") + model + QStringLiteral(".json"), &error))
        qFatal("%s", qPrintable(error));
    return description;
}

/// A project in a folder of its own that goes with this object.
class ProjectFixture {
public:
    explicit ProjectFixture(const QString& model = QStringLiteral("NV3T_70Q12"))
    {
        m_project = manager()->createProject(path(), shippedController(model), &m_error);
        if (!m_project)
            qFatal("%s", qPrintable(m_error));
    }
    ~ProjectFixture() { close(); }

    static ProjectModelManager* manager() { return ProjectModelManager::instance(); }
    QString folder() const { return m_directory.path(); }
    QString path() const { return m_directory.filePath(QStringLiteral("line.kproj")); }
    QString error() const { return m_error; }
    ProjectModel* project() const { return m_project; }
    AxisModel* axes() const { return m_project->axisModel(); }

    AxisTable* axis(quint32 id) const { return axes()->axisTable(id); }
    std::vector<AxisTable*> all() const
    {
        std::vector<AxisTable*> records;
        axes()->allAxisTables(records);
        return records;
    }
    QStringList names() const
    {
        QStringList list;
        for (const AxisTable* each : all())
            list.append(each->name());
        return list;
    }
    QStringList values(const QString& key) const
    {
        QStringList list;
        for (const AxisTable* each : all())
            list.append(each->property(key, QStringLiteral("-")));
        return list;
    }

    bool save() { return m_project->save(&m_error); }
    void close()
    {
        if (m_project)
            manager()->closeProject(m_project);
    }
    /// Closes without saving and opens the file again; null sets the error.
    bool reopen()
    {
        close();
        m_error.clear();
        m_project = manager()->openProject(path(), &m_error);
        return m_project != nullptr;
    }

private:
    QTemporaryDir m_directory;
    QString m_error;
    QPointer<ProjectModel> m_project;
};
