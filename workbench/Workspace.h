#pragma once

#include "host/projectmodel/ProjectModel.h"
#include "workbench/EditorManager.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>

class ControllerDescription;
class Cookies;
class ProjectTree;
class UndoHelper;

/// The project that is open: brings it into the tree and takes it out again, stores it, gives it another controller.
/// It asks the user nothing; whoever calls has done so.
class Workspace : public QObject {
    Q_OBJECT

public:
    Workspace(ProjectTree& tree, UndoHelper& undo, EditorManager& editors, Cookies& cookies, QObject* parent = nullptr);
    ~Workspace() override;

    /// The open project, or null.
    ProjectModel* project() const { return m_project; }
    /// Path of the node that carries the project's configuration; empty without a project.
    QString configurationPath() const;
    QString programsPath() const;

    /// Create and open put the new project in the place of the one that is open; a failure leaves that one as it is.
    bool create(const QString& file, const ControllerDescription& controller, QString* error);
    bool open(const QString& file, QString* error);
    /// Closes without saving.
    void close();

    /// True while editors or the project hold changes that are not stored. Finishes pending input.
    bool isModified();
    bool save(QString* error);
    /// Stores everything, then goes on with a copy in another file.
    bool saveAs(const QString& file, QString* error);
    /// Gives the project another controller and tells the tree. Empties the undo stack: what it holds was made for the
    /// former one. Returns the names of the axes that cannot exist on the new one and were removed.
    QStringList changeController(const ControllerDescription& controller);
    /// Takes the project out of the tree and brings it back, with its editors: for what only shows after that, such
    /// as another language. Editors must hold nothing unsaved.
    void showAnew();
    /// Opens the editor of a source at a place.
    void showSource(const QString& source, int line, int column);
    /// Opens editors by file name and type, and shows one of them. What cannot be opened is left out.
    void openEditors(const QVector<EditorManager::OpenFile>& files, const QString& current);

signals:
    /// A file is about to be opened or written as the project.
    void aboutToUse(const QString& file);
    /// The project is in the tree.
    void opened();
    void aboutToClose();
    void closed();
    void modifiedChanged();
    void controllerChanged();
    void sourcesChanged();
    /// Something could not be stored; the text names file and reason.
    void storeFailed(const QString& text);

private:
    /// What is on screen of a project, with paths that begin behind its name.
    struct Shown {
        QVector<EditorManager::OpenFile> files;
        QString current;
    };

    /// Puts the project that take brings of the file in the place of the present one, which stays when there is none.
    bool exchange(const QString& file, const std::function<ProjectModel*()>& take);
    void attach(ProjectModel* project);
    void detach();
    void follow(ProjectModel* project);
    void addNodes();
    void fillSources();
    Shown takeDown();
    void bringBack(const Shown& shown);

    ProjectTree& m_tree;
    UndoHelper& m_undo;
    EditorManager& m_editors;
    Cookies& m_cookies;
    QPointer<ProjectModel> m_project;
    QString m_name;
};
