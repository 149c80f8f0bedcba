#pragma once

#include "sdk/IObject.h"

class IManager;

/// The host application as plug-ins see it. There is one.
///
/// The host stores its address, cast to IApplication*, as an integer in the dynamic property "IApplication" of the
/// QCoreApplication instance; see ServiceLocator.h for the way back. Main thread only.
class KESTRUN_SDK_EXPORT IApplication : public IObject {
    Q_OBJECT

public:
    explicit IApplication(QObject* parent = nullptr);
    ~IApplication() override;

    /// The manager of that name, or null. "editor" gives the IEditorManager, "option" the IOptionManager.
    /// The application keeps ownership.
    virtual IManager* manager(const QString& name) = 0;

signals:
    /// All plug-ins are initialised and finished.
    void loaded();
    /// The application will end; open editors still stand.
    void aboutToQuit();
    /// Escape was pressed in the main window.
    void key_escape();
    /// The main window was asked to close.
    void aboutToClse();
    /// A file was dropped on the main window.
    void fileDropped(QString fileName);
};
