#pragma once

#include "sdk/IManager.h"

#include <QString>

class QWidget;

/// The dock panels of the host. Main thread only.
class KESTRUN_SDK_EXPORT IToolWindowManager : public IManager {
    Q_OBJECT

public:
    explicit IToolWindowManager(QObject* parent = nullptr);
    ~IToolWindowManager() override;

    /// Adds a panel under a unique name; the manager becomes the widget's owner.
    virtual void addToolWindow(const QString& name, const QString& title, QWidget* widget) = 0;
    /// Brings the panel of that name to the front.
    virtual void showToolWindow(const QString& name) = 0;
};
