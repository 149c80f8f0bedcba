#pragma once

#include "host/projectmodel/Export.h"

#include <QPointer>
#include <QString>
#include <QUndoCommand>

class ModelObject;
class SubModel;

/// Undo entry of a renamed object. The redo at the push does nothing.
class KESTRUN_PROJECTMODEL_EXPORT ModelRenameCommand : public QUndoCommand {
public:
    ModelRenameCommand(ModelObject* object, SubModel* model, const QString& oldName, const QString& newName);
    ~ModelRenameCommand() override;

    void undo() override;
    void redo() override;

private:
    void rename(const QString& from, const QString& to);

    QPointer<ModelObject> m_object;
    QPointer<SubModel> m_model;
    QString m_oldName;
    QString m_newName;
    bool m_pushed = false;
};
