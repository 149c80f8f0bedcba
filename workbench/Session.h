#pragma once

#include <QObject>

class IConfiguration;
class EditorManager;
class MainWindow;
class Workspace;

/// Keeps between two runs what was on screen: the window's place and panels, the project, its editors.
class Session : public QObject {
    Q_OBJECT

public:
    Session(IConfiguration& settings, MainWindow& window, Workspace& workspace, EditorManager& editors,
        QObject* parent = nullptr);
    ~Session() override;

    void saveWindow();
    void restoreWindow();
    /// Notes the open project with its editors; without a project none is noted.
    void saveProject();
    /// The project file of the last run, or an empty text.
    QString lastProject() const;
    /// Opens the editors of the last run, if they belong to the project that is open.
    void restoreEditors();

private:
    IConfiguration& m_settings;
    MainWindow& m_window;
    Workspace& m_workspace;
    EditorManager& m_editors;
};
