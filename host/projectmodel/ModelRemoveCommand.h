#pragma once

#include "host/projectmodel/ModelInsertCommand.h"

/// Undo entry of an object that has been, or is about to be, taken out of a model.
class KESTRUN_PROJECTMODEL_EXPORT ModelRemoveCommand : public ModelInsertCommand {
public:
    ModelRemoveCommand(ModelObject* object, SubModel* model);
    ~ModelRemoveCommand() override;

    void undo() override;
    void redo() override;
};
