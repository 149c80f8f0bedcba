#include "host/projectmodel/DeviceDiagnosiInfo.h"

DeviceDiagnosiInfo::DeviceDiagnosiInfo(QObject* parent) : QObject(parent) { }

DeviceDiagnosiInfo::~DeviceDiagnosiInfo() = default;
