#pragma once

#include "host/projectmodel/Export.h"

#include <QPointer>
#include <QUndoCommand>

class ModelObject;
class SubModel;

/// Undo entry of an object that has been put into a model. What it stands for has been done by the caller, before or
/// after the push: the redo that the stack makes at the push does nothing. Later undo and redo change the model and
/// report through Solution::ViewHelper::commandExecuted. The object stays owned by its model.
class KESTRUN_PROJECTMODEL_EXPORT ModelInsertCommand : public QUndoCommand {
public:
    ModelInsertCommand(ModelObject* object, SubModel* model);
    ~ModelInsertCommand() override;

    void undo() override;
    void redo() override;

protected:
    void putBack();
    void takeOut();
    /// True once, for the redo of the push.
    bool isPush();

private:
    void report(const QString& type) const;

    QPointer<ModelObject> m_object;
    QPointer<SubModel> m_model;
    bool m_pushed = false;
};
