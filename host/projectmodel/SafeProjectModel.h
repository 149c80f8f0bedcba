#pragma once

#include "host/projectmodel/Export.h"

#include <QString>

class AbstractProjectModel;

/// Holds an open project for a scope. A project that is closed meanwhile is destroyed when its last guard lets go.
/// Guards nest and live on the stack of the main thread; they lock nothing, since message boxes run inside them.
class KESTRUN_PROJECTMODEL_EXPORT SafeProjectModel {
public:
    /// Null is allowed and holds nothing.
    explicit SafeProjectModel(AbstractProjectModel* model);
    /// Holds the open project of that name, if there is one.
    explicit SafeProjectModel(const QString& projectName);
    ~SafeProjectModel();

    SafeProjectModel(const SafeProjectModel&) = delete;
    SafeProjectModel& operator=(const SafeProjectModel&) = delete;

    AbstractProjectModel* model() const { return m_model; }
    AbstractProjectModel* operator->() const { return m_model; }
    explicit operator bool() const { return m_model != nullptr; }

private:
    AbstractProjectModel* m_model;
};
