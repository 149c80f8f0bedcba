#pragma once

#include "host/communication/ControllerAxis.h"
#include "host/communication/Export.h"

#include <QVector>

/// One difference between the axes of a project and those in a controller.
struct AxisDifference {
    enum Kind { OnlyInProject, OnlyInController, Parameter };
    Kind kind = Parameter;
    QString axis;
    /// Key and both texts of a parameter that differs; empty for the other kinds.
    QString key;
    QString inProject;
    QString inController;
};

/// Compares two sets of axes by name. "AxisNo" counts, since commands go by number; "Row", "AxisID" and "Version" do
/// not. An empty result means that the controller runs what the project says.
KESTRUN_COMMUNICATION_EXPORT QVector<AxisDifference> compareAxes(
    const QVector<ControllerAxis>& project, const QVector<ControllerAxis>& controller);
