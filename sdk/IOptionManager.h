#pragma once

#include "sdk/IManager.h"

#include <QString>

class IOptionFactory;

/// The options dialog and the news of applied options. Main thread only.
class KESTRUN_SDK_EXPORT IOptionManager : public IManager {
    Q_OBJECT

public:
    explicit IOptionManager(QObject* parent = nullptr);
    ~IOptionManager() override;

    /// Adds a page to the dialog; the manager takes ownership of the factory.
    virtual void addOptionFactory(IOptionFactory* factory) = 0;

signals:
    /// Options have been applied. The host connects it to any plug-in that has a slot onApplyOption(QString).
    void applyOption(QString mimeType);

public slots:
    /// Shows the dialog, on the page of that type if there is one.
    virtual void exec(QString mimeType) = 0;
    virtual void exec(QString mimeType, QString cmd) = 0;
};
