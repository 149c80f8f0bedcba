#pragma once

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "sdk/ServiceKeys.h"
#include "workbench/Theme.h"
#include "workbench/Workbench.h"

#include <QAction>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <memory>
#include <vector>

/// The whole program with the real plug-in, its settings and projects in a temporary folder.
class RunningProgram {
public:
    explicit RunningProgram(const QString& pluginDirectory = QStringLiteral(KESTRUN_BUILD_DIR "/bin/plugins"))
    {
        Theme::prepare();
        Settings(settingsFile()).setValue(Solution::ConfigKey::language(), QStringLiteral("en_US"));
        workbench = std::make_unique<Workbench>(WorkbenchPaths{ pluginDirectory, QStringLiteral(KESTRUN_CONTROLLER_DIR),
            settingsFile(), QStringLiteral(KESTRUN_BUILD_DIR "/bin/kestrun-controller") });
        workbench->start();
        workbench->window().activateWindow();
        if (!QTest::qWaitForWindowActive(&workbench->window()))
            qFatal("the window does not come up");
    }

    QString settingsFile() const { return directory.filePath(QStringLiteral("settings.ini")); }
    QString file(const QString& name) const { return directory.filePath(QString(name + QLatin1String(".kproj"))); }
    ProjectModel* project() const { return workbench->workspace().project(); }

    /// Creates and opens a project with those axes, all stored.
    void create(const QString& name, const QStringList& axes) const
    {
        QString error;
        if (!workbench->workspace().create(file(name), controller(), &error))
            qFatal("%s", qPrintable(error));
        addAxes(*project(), axes);
        workbench->workspace().showAnew();
    }

    /// Writes a project file with those axes; the change is made to each of them.
    QString write(
        const QString& path, const QStringList& axes,
        const std::function<void(AxisTable&)>& change = [](AxisTable&) {}) const
    {
        QString error;
        ProjectModel* other = ProjectModelManager::instance()->createProject(path, controller(), &error);
        if (!other)
            qFatal("%s", qPrintable(error));
        addAxes(*other, axes);
        for (AxisTable* table : tables(*other))
            change(*table);
        if (!other->save(&error))
            qFatal("%s", qPrintable(error));
        ProjectModelManager::instance()->closeProject(other);
        return path;
    }

    AxisTable* axis(const QString& name) const
    {
        for (AxisTable* table : tables(*project())) {
            if (table->name() == name)
                return table;
        }
        return nullptr;
    }
    QString axisPath(const QString& name) const
    {
        return workbench->tree().fileNameOf(QStringLiteral("AxisView"), axis(name)->id());
    }
    IEditor* openAxis(const QString& name) const
    {
        IEditor* editor = workbench->editors().openEditor(axisPath(name), QStringLiteral("AxisView"));
        workbench->editors().activateEditor(editor);
        return editor;
    }

    QTemporaryDir directory;
    std::unique_ptr<Workbench> workbench;

private:
    static ControllerDescription controller()
    {
        const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
        return *catalog.find(QStringLiteral("NV3T_70Q12E"));
    }
    static std::vector<AxisTable*> tables(const ProjectModel& project)
    {
        std::vector<AxisTable*> tables;
        project.axisModel()->allAxisTables(tables);
        return tables;
    }
    static void addAxes(ProjectModel& project, const QStringList& axes)
    {
        for (const QString& name : axes)
            project.axisModel()->addAxisTable(name);
        QString error;
        if (!project.save(&error))
            qFatal("%s", qPrintable(error));
    }
};
