#pragma once

#include <QJsonObject>
#include <QPointer>
#include <QString>
#include <QTemporaryDir>

class AxisModel;
class AxisTable;
class ProjectModel;

/// An open project in a temporary file. Closed without saving, and its file deleted, at the end of the scope.
class TestProject {
public:
    /// The controller model is one of those in examples/controllers. Two projects that are open together need
    /// different names.
    explicit TestProject(const QString& controllerModel, const QString& name = QStringLiteral("Line"));
    ~TestProject();
    TestProject(const TestProject&) = delete;
    TestProject& operator=(const TestProject&) = delete;

    /// Name of the project, the first segment of its node paths.
    QString name() const;
    QString filePath() const;
    ProjectModel* model() const;
    AxisModel* axisModel() const;

    /// A new axis of the type word, such as "Axis_Pulse".
    AxisTable* addAxis(const QString& name, const QString& typeWord = QStringLiteral("Axis_Virtual"));
    /// A structured-text source; takes effect with the next guard on the language core.
    void addSource(const QString& name, const QString& text);
    /// Gives the project another controller from examples/controllers, in memory; raises no event of the tree.
    void changeController(const QString& controllerModel);
    /// The same with a description of the test's own.
    void changeController(const QJsonObject& description);
    /// The description of a model, to be varied.
    static QJsonObject description(const QString& controllerModel);
    void save();
    /// Closes without saving and opens the file again. Models and records taken before are gone.
    void reopen();
    /// Closes the project; its name finds nothing from now on.
    void close();

    /// Path of the node that carries the configuration: "Line.ConfigAndSetup".
    QString nodePath() const;
    /// Path of the unit node: "Line.ConfigAndSetup.Axis".
    QString unitPath() const;
    /// Path, and file name, of an axis node: "Line.ConfigAndSetup.Axis.AxisView7".
    QString axisPath(quint32 id) const;

private:
    QTemporaryDir m_directory;
    QString m_name;
    QString m_filePath;
    QPointer<ProjectModel> m_model;
};
