#pragma once

#include <QString>

/// The texts that Solution::ViewHelper::commandExecuted carries.
namespace ModelCommandType {
/// The object is in its model again. Path: its id in decimal.
inline QString insert()
{
    return QStringLiteral("PROJECT_MODEL_STACK_INSERT");
}
/// The object has left its model. Path: its id in decimal.
inline QString remove()
{
    return QStringLiteral("PROJECT_MODEL_STACK_REMOVE");
}
/// The object has another name. Path: its id in decimal; param: old name, separator(), new name.
inline QString rename()
{
    return QStringLiteral("PROJECT_MODEL_STACK_RENAME");
}
inline QString separator()
{
    return QStringLiteral("[*PROJECT_MODEL_STACK*]");
}
} // namespace ModelCommandType
