#pragma once

#include "tests/projectmodel/ProjectFacts.h"

#include "sdk/AxisDefaults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

/// A project whose states can be told apart and checked for being whole: in state n every key of the homing group of
/// every axis reads n, and so does the setting "State".
class StoreScenario {
public:
    static constexpr int axes = 3;

    explicit StoreScenario(const QString& path) : m_path(path) { }
    ~StoreScenario() { close(); }

    /// Makes the file, in state 0.
    bool create()
    {
        m_project = manager()->createProject(m_path, smallController(), &m_error);
        for (int i = 0; m_project && i < axes; ++i)
            m_project->axisModel()->addAxisTable(QStringLiteral("Axis%1").arg(i));
        return m_project && saveProject(0);
    }

    bool open()
    {
        close();
        m_project = manager()->openProject(m_path, &m_error);
        return m_project != nullptr;
    }
    void close()
    {
        if (m_project)
            manager()->closeProject(m_project);
    }

    /// Brings one axis into a state by its own save.
    bool saveAxis(int index, int number)
    {
        AxisTable* axis = recordsOf(m_project->axisModel()).at(static_cast<std::size_t>(index));
        fill(axis, number);
        return axis->save();
    }
    /// Brings all into a state by one save of the project.
    bool saveProject(int number)
    {
        for (AxisTable* each : recordsOf(m_project->axisModel()))
            fill(each, number);
        m_project->setSetting(QStringLiteral("State"), QString::number(number));
        return m_project->save(&m_error);
    }

    /// The state that an axis is in; -1 when its keys differ, that is, when the record is torn.
    int stateOf(int index) const
    {
        const AxisTable* axis = recordsOf(m_project->axisModel()).at(static_cast<std::size_t>(index));
        const QString state = axis->property(AxisHomeDefaults.firstKey(), QString());
        for (auto it = AxisHomeDefaults.begin(); it != AxisHomeDefaults.end(); ++it)
            if (axis->property(it.key(), QString()) != state)
                return -1;
        return state.toInt();
    }
    int settingState() const { return m_project->setting(QStringLiteral("State"), QStringLiteral("-1")).toInt(); }

    ProjectModel* project() const { return m_project; }
    QString path() const { return m_path; }
    QString error() const { return m_error; }

private:
    static ProjectModelManager* manager() { return ProjectModelManager::instance(); }

    /// Without the diagnosis table, which is most of a description and would be read at every opening.
    static ControllerDescription smallController()
    {
        QJsonObject json = QJsonDocument::fromJson(shippedController(QStringLiteral("KM1_M16")).json()).object();
        json.insert(QStringLiteral("diagnosis"), QJsonArray());
        ControllerDescription controller;
        QString error;
        if (!controller.read(QJsonDocument(json).toJson(QJsonDocument::Compact), QStringLiteral("small"), &error))
            qFatal("%s", qPrintable(error));
        return controller;
    }

    static void fill(AxisTable* axis, int number)
    {
        for (auto it = AxisHomeDefaults.begin(); it != AxisHomeDefaults.end(); ++it)
            axis->setProperty(it.key(), QString::number(number));
    }

    QString m_path;
    QString m_error;
    QPointer<ProjectModel> m_project;
};
