#pragma once

#include "host/communication/AxesComparison.h"

class ProjectModel;

/// The axes of a project as they go to a controller: every parameter that compares, and the number by which the
/// controller knows the axis.
QVector<ControllerAxis> controllerAxes(const ProjectModel& project);

/// True when each axis of the project is in the controller under its number, so that a command by number reaches the
/// axis that it is meant for.
bool sameNumbers(const QVector<ControllerAxis>& project, const QVector<ControllerAxis>& controller);

/// The name of the project's axis that has that number on the controller; empty when there is none, or no project.
QString axisNameOf(const ProjectModel* project, int axisNo);
