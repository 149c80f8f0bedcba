#include "host/projectmodel/ModelRemoveCommand.h"

ModelRemoveCommand::ModelRemoveCommand(ModelObject* object, SubModel* model) : ModelInsertCommand(object, model) { }

ModelRemoveCommand::~ModelRemoveCommand() = default;

void ModelRemoveCommand::undo()
{
    putBack();
}

void ModelRemoveCommand::redo()
{
    if (!isPush())
        takeOut();
}
