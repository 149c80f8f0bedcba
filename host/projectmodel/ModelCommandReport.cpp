#include "host/projectmodel/ModelCommandReport.h"

#include "host/projectmodel/ModelObject.h"
#include "host/projectmodel/SubModel.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/SolutionViewHelper.h"

void reportModelCommand(const QString& type, const SubModel& model, const ModelObject& object, const QString& param)
{
    auto* helper = Solution::serviceAs<Solution::ViewHelper>(Solution::ServiceKey::viewHelper());
    if (helper)
        emit helper->commandExecuted(type, model.subModelName(), QString::number(object.objectId()), param);
}
