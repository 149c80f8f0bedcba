#pragma once

#include <QString>

class ModelObject;
class ProjectTree;

/// The stored object that a node of the project tree shows, found by its "DataBaseKey"; null for a node that shows
/// none and for one whose object has gone.
ModelObject* objectOfNode(ProjectTree& tree, const QString& path);

/// False when the node's object waits for its editor to be built for the first time: editors leave the names of their
/// controls with the record, and without them no search finds its way. True for nodes without a stored object.
bool hasLeftViewInfo(ProjectTree& tree, const QString& path);
/// Gives the node's object the view information that an editor has left with another one of its project: editors of one
/// type name their controls alike, and what its own editor says replaces it when it is opened. In memory only. False
/// when there is none to take.
bool borrowViewInfo(ProjectTree& tree, const QString& path);
/// True when hasLeftViewInfo holds for all objects of a project; costs far less than asking node by node.
bool allHaveLeftViewInfo(const QString& projectName);
