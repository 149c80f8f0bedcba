#include "host/projectmodel/ModelInsertCommand.h"

#include "host/projectmodel/ModelCommandReport.h"
#include "host/projectmodel/ModelObject.h"
#include "host/projectmodel/SubModel.h"
#include "sdk/ModelCommandType.h"

ModelInsertCommand::ModelInsertCommand(ModelObject* object, SubModel* model) : m_object(object), m_model(model) { }

ModelInsertCommand::~ModelInsertCommand() = default;

void ModelInsertCommand::undo()
{
    takeOut();
}

void ModelInsertCommand::redo()
{
    if (!isPush())
        putBack();
}

void ModelInsertCommand::putBack()
{
    if (m_object && m_model && m_model->putObjectBack(m_object))
        report(ModelCommandType::insert());
}

void ModelInsertCommand::takeOut()
{
    if (m_object && m_model && m_model->takeObject(m_object))
        report(ModelCommandType::remove());
}

bool ModelInsertCommand::isPush()
{
    const bool first = !m_pushed;
    m_pushed = true;
    return first;
}

void ModelInsertCommand::report(const QString& type) const
{
    reportModelCommand(type, *m_model, *m_object);
}
