#pragma once

#include <QString>

class ModelObject;
class ProjectTree;

/// The stored object that a node of the project tree shows, found by its "DataBaseKey"; null for a node that shows
/// none and for one whose object has gone.
ModelObject* objectOfNode(ProjectTree& tree, const QString& path);
