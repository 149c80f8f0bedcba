#pragma once

#include "sdk/IManager.h"

#include <QString>

class QAction;

/// The actions of the host's menus. Main thread only.
class KESTRUN_SDK_EXPORT IActionManager : public IManager {
    Q_OBJECT

public:
    explicit IActionManager(QObject* parent = nullptr);
    ~IActionManager() override;

    /// The action of that name, or null. The host keeps ownership.
    virtual QAction* action(const QString& name) = 0;
};
