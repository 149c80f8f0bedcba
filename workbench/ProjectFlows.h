#pragma once

#include "workbench/EditorManager.h"

#include <QObject>
#include <QStringList>

class ControllerCatalog;
class IConfiguration;
class LogManager;
class MainWindow;
class Workspace;

/// What a user does with projects: new, open, save, save as, close, rescue, another controller. Asks where something
/// could be lost and tells of failures in the message bar and the output panel, with file and reason.
class ProjectFlows : public QObject {
    Q_OBJECT

public:
    ProjectFlows(Workspace& workspace, EditorManager& editors, MainWindow& window, const ControllerCatalog& catalog,
        IConfiguration& settings, LogManager& log, QObject* parent = nullptr);
    ~ProjectFlows() override;

    void newProject();
    void chooseAndOpen();
    /// True when the project is open afterwards.
    bool open(const QString& file);
    /// Saves what the user looks at: the current editor's object, or everything when that has no changes.
    void save();
    bool saveAll();
    void saveAs();
    void closeProject();
    void closeEditor();
    void changeController();
    /// Asks about unsaved changes. True when the project may be closed now.
    bool mayLeave();

    UnsavedAnswer askUnsaved(const QStringList& names) const;
    QStringList recent() const;

private:
    QString folder() const;
    void remember(const QString& file);
    void report(const QString& text, const QString& damagedFile = QString());
    void rescue();
    QString chooseTarget(const QString& title, const QString& suggestion) const;

    Workspace& m_workspace;
    EditorManager& m_editors;
    MainWindow& m_window;
    const ControllerCatalog& m_catalog;
    IConfiguration& m_settings;
    LogManager& m_log;
    QString m_damagedFile;
};
