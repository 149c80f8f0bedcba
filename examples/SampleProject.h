#pragma once

#include <QString>

/// Turns a folder of readable sources into a project file, replacing one that is there.
///
/// The folder holds "project.json" (controller, settings, cycle time, axes with their properties) and the
/// structured-text sources, each named after its file without ".st". The controller's description comes from the other
/// folder. False sets the error, which names file and place; then no file has been made.
bool makeSampleProject(
    const QString& folder, const QString& controllerFolder, const QString& projectPath, QString* error);
