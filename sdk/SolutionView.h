#pragma once

#include "sdk/SolutionTypes.h"

#include <QObject>
#include <QStringList>

namespace Solution {

/// The project tree. A node is named by its path: segments joined by a point, the first one the project's name.
/// Paths that name no node are survived: writers do nothing and return false, readers give the fallback, an empty text
/// or -1. Main thread only.
class KESTRUN_SDK_EXPORT View : public QObject {
    Q_OBJECT

public:
    explicit View(QObject* parent = nullptr);
    ~View() override;

    /// Appends a child. Callers pass 0 for the flags.
    virtual bool addNode(const QString& parentPath, const NodeDescription& node, int flags) = 0;
    /// Inserts a child at a row; a row past the end appends.
    virtual bool insertNode(const QString& parentPath, int row, const NodeDescription& node) = 0;
    /// Removes a node with its children. The flag also drops its properties from the view's indexes.
    virtual bool removeNode(const QString& path, bool withIndex) = 0;
    /// Sets a property; "DisplayName" changes the text and "Icon" the image.
    virtual void setNodeProperty(const QString& path, const QString& key, const QVariant& value) = 0;
    virtual QVariant nodeProperty(const QString& path, const QString& key, const QVariant& fallback) = 0;
    /// Full paths of the children in their order.
    virtual QStringList childNodes(const QString& path) = 0;
    /// Row of the node below its parent, or -1.
    virtual int nodeRow(const QString& path) = 0;
    /// The "FileName" of the node with that "MimeType" and "DataBaseKey".
    virtual QString fileNameOf(const QString& mimeType, unsigned id) = 0;
    /// The path of the node with that "FileName". The flag prefers the current project when two are open.
    virtual QString nodePathOfFile(const QString& fileName, bool currentProjectFirst) = 0;
    /// The path of the node with that "NodeType" and "DataBaseKey".
    virtual QString nodePathOfKey(const QString& nodeType, unsigned id) = 0;

signals:
    void nodeEvent(QString path, Solution::NodeEvent event, QVariant param);
    void displayEvent(QString path, Solution::DataEvent event, QVariant param);
    /// A project has been opened; the name is the path of the node that carries its configuration.
    void projectOpened(QString projectName, Solution::ProjectInfo info, Solution::NodeLevel lev);
    void projectClosed();
    bool compileResult();
    void aboutToBeDestroyed();
};

} // namespace Solution
