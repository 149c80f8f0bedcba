#include "host/projectmodel/SubModel.h"

#include "host/projectmodel/AbstractProjectModel.h"

SubModel::SubModel(AbstractProjectModel* project) : QObject(project), m_project(project) { }

SubModel::~SubModel() = default;

AbstractProjectModel* SubModel::project() const
{
    return m_project;
}
