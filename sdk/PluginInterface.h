#pragma once

#include "sdk/Export.h"

#include <QObject>
#include <QString>

/// Interface id of the host's plug-ins, as it stands in their metadata.
#define KESTRUN_PLUGIN_IID "vornhal.Kestrun/1.1"

/// What the host knows of a plug-in. The object is the root component of a shared library in the host's plug-in folder.
///
/// The package text is a JSON object ("name", "version", "descript", "provider", "catgory", "dependencies",
/// "forceLoad"); the host reads it after the object has been made and fills the other members from it for its list of
/// plug-ins.
class KESTRUN_SDK_EXPORT PluginInterface : public QObject {
    Q_OBJECT

public:
    explicit PluginInterface(QObject* parent = nullptr);
    ~PluginInterface() override;

    /// Takes the plug-in into service. Called once, after the host's services are published and the plug-ins that this
    /// one depends on are initialised. False: the plug-in stays out of service.
    virtual bool initialize() = 0;
    /// Called once all plug-ins have been initialised.
    virtual void finish() = 0;

    QString name;
    QString version;
    QString description;
    QString provider;
    QString category;
    /// Host's bookkeeping: position in the load order and state of the plug-in.
    int loadOrder = 0;
    int state = 0;
    /// 1 when the plug-in is to be loaded.
    int enabled = 1;
    QString packageText;
};

Q_DECLARE_INTERFACE(PluginInterface, KESTRUN_PLUGIN_IID)
