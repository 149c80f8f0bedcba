#pragma once

#include "sdk/Export.h"

#include <QObject>

#include <string>

class ILogger;

/// Gives loggers by name. An empty name gives the common one. Main thread only.
class KESTRUN_SDK_EXPORT ILogManager : public QObject {
    Q_OBJECT

public:
    explicit ILogManager(QObject* parent = nullptr);
    ~ILogManager() override;

    virtual ILogger* logger(const std::string& name) = 0;
};
