#include "host/projectmodel/ModelRenameCommand.h"

#include "host/projectmodel/ModelCommandReport.h"
#include "host/projectmodel/ModelObject.h"
#include "host/projectmodel/SubModel.h"
#include "sdk/ModelCommandType.h"

ModelRenameCommand::ModelRenameCommand(
    ModelObject* object, SubModel* model, const QString& oldName, const QString& newName)
    : m_object(object), m_model(model), m_oldName(oldName), m_newName(newName)
{
}

ModelRenameCommand::~ModelRenameCommand() = default;

void ModelRenameCommand::undo()
{
    rename(m_newName, m_oldName);
}

void ModelRenameCommand::redo()
{
    if (m_pushed)
        rename(m_oldName, m_newName);
    m_pushed = true;
}

void ModelRenameCommand::rename(const QString& from, const QString& to)
{
    if (m_object && m_model && m_model->renameObject(m_object, to))
        reportModelCommand(ModelCommandType::rename(), *m_model, *m_object, from + ModelCommandType::separator() + to);
}
