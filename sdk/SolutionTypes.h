#pragma once

#include "sdk/Export.h"

#include <QColor>
#include <QIcon>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVariant>

namespace Solution {

/// What the user did on a node of the project tree.
enum NodeEvent {
    NodeSelected = 0,
    NodeActivated = 1,
    /// The parameter holds the global QPoint of the menu.
    NodeContextMenu = 2,
    NodeRename = 8,
    NodeDelete = 9
};

/// What happened to the data that a node shows.
enum DataEvent {
    DataChanged = 0,
    DataSaved = 1,
    /// The project has been given another controller.
    DataControllerChanged = 4
};

/// Level of a node in the project tree. Plug-ins put their nodes below the levels 2, 3 and 5.
enum NodeLevel {
    LevelNone = 0,
    LevelProject = 1,
    LevelConfiguration = 2,
    LevelController = 3,
    LevelProgram = 4,
    LevelDevice = 5,
    LevelObject = 6
};

/// What a plug-in is told of a project that has been opened.
struct ProjectInfo {
    QString name;
    QString filePath;
    QString directory;
    QString title;
    QString author;
    QString company;
    /// "NormalProject" for a project with a configuration of its own.
    QString kind;
    QString controller;
    QString version;
    QString description;
    QString created;
    QString changed;
    bool readOnly = false;
    bool recovered = false;
    /// This project becomes the one that commands work on.
    bool current = false;
};

/// A node to be added to the project tree.
struct NodeDescription {
    /// Callers leave both as they are.
    bool checkable = false;
    bool visible = true;
    /// The node's own segment of its path.
    QString name;
    QString displayText;
    QIcon icon;
    QColor color;
    /// "FileName" and "MimeType" make a node that a double click opens; "NodeType" and "DataBaseKey" find it again.
    QMap<QString, QVariant> properties;
};

} // namespace Solution

Q_DECLARE_METATYPE(Solution::NodeEvent)
Q_DECLARE_METATYPE(Solution::DataEvent)
Q_DECLARE_METATYPE(Solution::NodeLevel)
Q_DECLARE_METATYPE(Solution::ProjectInfo)
