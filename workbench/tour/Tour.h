#pragma once

#include <QString>

#include <vector>

class TourDriver;
struct WorkbenchPaths;

/// One step of the tour: what it shows, and how.
struct TourStep {
    QString title;
    void (*act)(TourDriver& driver);
};

/// The steps in their order. What joins the program joins the tour here.
const std::vector<TourStep>& tourSteps();

/// Name of the file, beside the copy that the tour works on, that keeps the project as it was delivered.
QString deliveredProject();

/// Runs the tour on a copy of a project and writes numbered pictures and "summary.md" into the directory. Returns 0
/// when every step saw what it should, 1 otherwise, with a line on the standard error that says where it ended.
int runTour(WorkbenchPaths paths, const QString& sampleProject, const QString& directory);
