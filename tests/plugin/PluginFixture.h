#pragma once

#include "plugin/MotionControlAxisPlugin.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QStringList>

#include <memory>

class AxisTable;

/// A host with the plug-in in service and a project in its tree, as after the opening of a project.
class PluginFixture {
public:
    explicit PluginFixture(const QString& controllerModel = QStringLiteral("NV3T_70Q12"));
    ~PluginFixture();

    /// What the host reports of an opened project.
    static Solution::ProjectInfo info(bool current = true);
    /// Reports the project as opened; its axes come into the tree.
    void openProject();
    /// Adds an axis to the project and its node to the tree, as if it had been there at opening.
    AxisTable* addAxis(const QString& name, const QString& typeWord = QStringLiteral("Axis_Virtual"));
    QString pathOf(const AxisTable* axis) const;

    /// Texts of the axis nodes in the tree, in their order.
    QStringList shownAxes();
    /// Names of the records in the model, in their order.
    QStringList axisNames() const;
    /// From now on the log also tells of records that come and go: "model.added(3)", "model.removed(3)".
    void logModel();

    /// Calls a slot of the plug-in by its name.
    void call(const char* slot);
    /// Reports a node event.
    void send(const QString& path, Solution::NodeEvent event, const QVariant& param = QVariant());

    TestProject project;
    TestHost host;
    std::unique_ptr<MotionControlAxisPlugin> plugin;
};
