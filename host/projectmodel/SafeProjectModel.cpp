#include "host/projectmodel/SafeProjectModel.h"

#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"

#include <QCoreApplication>
#include <QThread>

SafeProjectModel::SafeProjectModel(AbstractProjectModel* model) : m_model(model)
{
    Q_ASSERT(!qApp || QThread::currentThread() == qApp->thread());
    if (m_model)
        ProjectModelManager::instance()->hold(m_model);
}

SafeProjectModel::SafeProjectModel(const QString& projectName)
    : SafeProjectModel(ProjectModelManager::instance()->projectModel(projectName.toStdString(), false))
{
}

SafeProjectModel::~SafeProjectModel()
{
    if (m_model)
        ProjectModelManager::instance()->release(m_model);
}
