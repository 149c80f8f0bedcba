#pragma once

#include "sdk/Export.h"

#include <QObject>

/// Base of the objects that IApplication::manager hands out by name.
class KESTRUN_SDK_EXPORT IManager : public QObject {
    Q_OBJECT

public:
    explicit IManager(QObject* parent = nullptr);
    ~IManager() override;
};
