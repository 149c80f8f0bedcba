#pragma once

#include "sdk/EditorLocation.h"
#include "sdk/FindResult.h"
#include "sdk/IView.h"

#include <QByteArray>
#include <QVector>

class IEditContext;

/// One open editor of one object of a project. Made by an IEditorFactory, shown and closed by the IEditorManager.
/// Main thread only. Operations that are not pure have a default which most editors keep.
class KESTRUN_SDK_EXPORT IEditor : public IView {
    Q_OBJECT

public:
    explicit IEditor(QObject* parent = nullptr);
    ~IEditor() override;

    /// Binds the editor to a node and builds its contents. False: it could not be bound; what was built stays.
    virtual bool open(const QString& fileName, const QString& mimeType) = 0;
    /// Reads the object anew from the store. The contents on screen do not follow by themselves.
    virtual bool load() = 0;
    virtual bool reload() = 0;
    /// Stores the object durably.
    virtual bool save() = 0;
    virtual bool saveAs() = 0;
    /// Shows the place (page, ".", control) and puts the focus on it. False only for an empty location.
    virtual bool gotoLocation(const QString& location) = 0;
    virtual EditorLocation locationInfo() = 0;
    virtual QString locationText();
    /// Appends the uses of the variable of that path. False: the object could not be read.
    virtual bool findReferences(const QString& path, QVector<FindResult>& results) = 0;
    virtual void setReadOnly(bool readOnly) = 0;
    virtual bool isReadOnly() = 0;
    /// Called by the manager after it has learnt of a modification.
    virtual void modifiedHook();
    /// Asked before closing; false keeps the editor open.
    virtual bool closeCheck();
    /// True when the object holds changes that are not stored. May move the focus to finish a pending edit.
    virtual bool isModified() = 0;
    virtual QString nodePath() = 0;
    virtual QString typeKey() = 0;
    /// Filter for a file dialog; empty for editors of project objects.
    virtual QString fileFilter();
    virtual QByteArray saveState() = 0;
    virtual bool restoreState(const QByteArray& state) = 0;
    /// The editor has become the current one.
    virtual void activated() = 0;
    virtual QObject* contextObject();
    /// Undo and redo of what has the focus in the editor, or null.
    virtual IEditContext* currentContext() = 0;

signals:
    void modificationChanged(bool modified);
};
