#pragma once

#include <QString>

class ModelObject;
class SubModel;

/// Tells the tree's owner, through the undo service, what an undo command has done to a model. Silent without a host.
/// The type is one of the texts of sdk/ModelCommandType.h.
void reportModelCommand(
    const QString& type, const SubModel& model, const ModelObject& object, const QString& param = QString());
