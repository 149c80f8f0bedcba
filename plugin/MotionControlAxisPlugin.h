#pragma once

#include "editor/MotionControlAxisFactory.h"
#include "plugin/AxisTreeState.h"
#include "sdk/PluginInterface.h"
#include "sdk/SolutionTypes.h"

#include <QString>
#include <QVariant>

class AxisModel;
class IApplication;
class MotionControlDebugInstance;
class QPoint;

namespace Solution {
class View;
}

/// The object through which the host takes the axes in: registers what the plug-in offers, puts the axes of an opened
/// project into the tree, and passes the tree's events on to the commands. Has no window of its own; everything starts
/// from the host's signals. Main thread.
///
/// Nothing is taken back from the host when the object goes: the host forgets factory, comparator and table entry
/// before it deletes the object.
class MotionControlAxisPlugin : public PluginInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KESTRUN_PLUGIN_IID)
    Q_INTERFACES(PluginInterface)

public:
    /// Reads the package text from the bundled manifest; without one it stays empty.
    MotionControlAxisPlugin();
    ~MotionControlAxisPlugin() override;

    /// False, with nothing connected, when the host, its editor manager or its tree is missing.
    bool initialize() override;
    void finish() override;

    /// Writes a line into the host's log; the level is a LogLevel. Nothing happens without a log.
    static void writeLog(int level, const QString& text);

public slots:
    /// The name is the path of the node below which the project's axes go.
    void projectOpened(const QString& projectName, const Solution::ProjectInfo& info, Solution::NodeLevel lev);
    void nodeEvent(const QString& path, Solution::NodeEvent event, const QVariant& param);
    void onlineStatechanged(bool state);
    /// Follows the host's theme: gives the unit node its icon, and those that are added from now on.
    void onApplyOption(const QString& mimeType);
    void displayEvent(const QString& path, Solution::DataEvent event, const QVariant& param);
    void onCommandExecuted(const QString& type, const QString& subModel, const QString& path, const QString& param);

private slots:
    void motionControlTaskCfg();
    void addNewAxis();
    void deleteAxis();
    void deleteAllAxis();
    void renameAxis();

private:
    void connectView(Solution::View* view);
    void connectViewHelper();
    void publishDebugInstance();
    void offerComparator();
    void addProjectNodes(Solution::View& view, AxisModel* axes, const QString& parentPath);
    void showMenu(const QString& nodeType, const QPoint& position);
    AxisTreeState treeState() const;

    MotionControlAxisFactory factory;
    QString currentNodePath;
    QString unitNodePath;
    QString projectName;
    bool online = false;
    IApplication* application = nullptr;
    bool defaultTheme = true;
    MotionControlDebugInstance* debugInstance = nullptr;
};
