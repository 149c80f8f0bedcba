#include "host/projectmodel/ModelObject.h"

ModelObject::ModelObject(QObject* parent) : QObject(parent) { }

ModelObject::~ModelObject() = default;
