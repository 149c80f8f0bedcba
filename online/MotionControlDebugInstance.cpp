#include "online/MotionControlDebugInstance.h"

#include "online/MotionControlOnlineTransaction.h"

#include <new>

MotionControlDebugInstance::MotionControlDebugInstance(QObject* parent) : MotionControlDebug(parent) { }

MotionControlDebugInstance::~MotionControlDebugInstance() = default;

Transaction* MotionControlDebugInstance::createTransaction(int code, QVariant param, QObject* receiver)
{
    return new (std::nothrow) MotionControlOnlineTransaction(code, param, receiver);
}
