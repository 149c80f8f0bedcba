#include "host/projectmodel/AbstractProjectModel.h"

AbstractProjectModel::AbstractProjectModel(QObject* parent) : QObject(parent) { }

AbstractProjectModel::~AbstractProjectModel() = default;
