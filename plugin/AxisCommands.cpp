#include "plugin/AxisCommands.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "axisdata/UserMessage.h"
#include "host/components/dlgNodeReName.h"
#include "host/projectmodel/ModelInsertCommand.h"
#include "host/projectmodel/ModelRemoveCommand.h"
#include "host/projectmodel/ModelRenameCommand.h"
#include "plugin/AxisNodes.h"
#include "plugin/MotionControlAxisPlugin.h"
#include "plugin/NewAxisDlg.h"
#include "sdk/IEditorManager.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/SolutionView.h"
#include "sdk/SolutionViewHelper.h"

#include <QMessageBox>

#include <memory>
#include <vector>

namespace {

const QString rowKey = QStringLiteral("Row");
const QString dataBaseKey = QStringLiteral("DataBaseKey");

Solution::View* treeView(IApplication* application)
{
    return Solution::serviceAs<Solution::View>(application, Solution::ServiceKey::view());
}

Solution::ViewHelper* undoStack(IApplication* application)
{
    return Solution::serviceAs<Solution::ViewHelper>(application, Solution::ServiceKey::viewHelper());
}

bool confirmed(const QString& question)
{
    const int yes = 0;
    const int no = 1;
    return QMessageBox::question(nullptr, MotionControlAxisPlugin::tr("Kestrun"), question,
               MotionControlAxisPlugin::tr("Yes"), MotionControlAxisPlugin::tr("No"), QString(), yes, no)
        == yes;
}

void storeRow(AxisTable& axis, Solution::View& view, const QString& nodePath)
{
    axis.setProperty(rowKey, QString::number(view.nodeRow(nodePath)));
}

/// Tells the user when the project is full. Only the number of all axes counts here: a new axis is a virtual one, and
/// the limits of the types are kept where the type is chosen.
bool hasRoom(const AxisModel& model)
{
    std::vector<AxisTable*> axes;
    model.allAxisTables(axes);
    const unsigned limit = model.getMaxAxisNumber().value(QStringLiteral("MaxAxis"), 0);
    if (limit > axes.size())
        return true;
    showInformation(QObject::tr("supports up to %1 axis!").arg(limit));
    return false;
}

/// The command goes onto the stack after the record has left the model; the row that the record last got stays.
void deleteEntry(AxisModel& model, Solution::View& view, Solution::ViewHelper& stack, const QString& nodePath)
{
    AxisTable* axis = model.axisTable(view.nodeProperty(nodePath, dataBaseKey, QVariant()).toUInt());
    if (!axis)
        return;
    auto command = std::make_unique<ModelRemoveCommand>(axis, &model);
    if (model.removeAxisTable(axis)) {
        stack.pushCommand(command.release());
        view.removeNode(nodePath, true);
    } else {
        command.reset();
        showInformation(QObject::tr("delete axis(%1) error!").arg(axis->name()));
    }
}

} // namespace

AxisCommands::AxisCommands(const AxisTreeState& state) : m_state(state) { }

void AxisCommands::addNew()
{
    IApplication* application = Solution::application();
    if (!application)
        return;
    Solution::View* view = treeView(application);
    NewAxisDlg dialog(m_state.projectName);
    if (dialog.exec() != QDialog::Accepted || !m_state.owner)
        return;
    const QString name = dialog.axisName();
    if (!name.isEmpty())
        add(name, application, view);
}

void AxisCommands::add(const QString& name, IApplication* application, Solution::View* view) const
{
    const ProjectAxes axes(m_state.projectName);
    if (!view || !axes || !hasRoom(*axes.model()))
        return;
    if (AxisTable* axis = axes->addAxisTable(name))
        showNew(*axis, *axes.model(), application, *view);
    else
        showInformation(QObject::tr("add axis error!"));
}

void AxisCommands::showNew(AxisTable& axis, AxisModel& model, IApplication* application, Solution::View& view) const
{
    const Solution::NodeDescription node = AxisNodes::axisNode(axis, m_state.unitNodePath, m_state.defaultTheme);
    const QString fileName = AxisNodes::childPath(m_state.unitNodePath, node.name);
    const QString parentPath = m_state.currentNodePath;
    view.addNode(parentPath, node, 0);
    storeRow(axis, view, fileName);
    IEditorManager* editors = Solution::editorManager(application);
    if (!editors)
        return;
    if (IEditor* editor = editors->openEditor(fileName, AxisViewKey))
        editors->activateEditor(editor);
    axis.save();
    if (Solution::ViewHelper* stack = undoStack(application))
        stack->pushCommand(new ModelInsertCommand(&axis, &model));
}

void AxisCommands::deleteCurrent()
{
    if (!confirmed(MotionControlAxisPlugin::tr("Do you want to delete the axis ?")) || !m_state.owner)
        return;
    IApplication* application = Solution::application();
    Solution::View* view = treeView(application);
    if (!view)
        return;
    // A copy: the tree moves its selection while the node goes, and reports another current node meanwhile.
    const QString nodePath = m_state.currentNodePath;
    const int id = view->nodeProperty(nodePath, dataBaseKey, QVariant()).toInt();
    const AxisRecord record(m_state.projectName, static_cast<quint32>(id));
    if (!record)
        return;
    storeRow(*record.table(), *view, nodePath);
    Solution::ViewHelper* stack = undoStack(application);
    if (!stack)
        return;
    stack->pushCommand(new ModelRemoveCommand(record.table(), record.model()));
    record.model()->removeAxisTable(record.table());
    view->removeNode(nodePath, true);
}

void AxisCommands::deleteAll()
{
    if (!confirmed(MotionControlAxisPlugin::tr("Do you want to delete all axis ?")) || !m_state.owner)
        return;
    IApplication* application = Solution::application();
    Solution::View* view = treeView(application);
    const ProjectAxes axes(m_state.projectName);
    Solution::ViewHelper* stack = undoStack(application);
    if (!view || !axes || !stack)
        return;
    stack->beginMacro();
    const QStringList entries = view->childNodes(m_state.currentNodePath);
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        deleteEntry(*axes.model(), *view, *stack, *entry);
    stack->endMacro();
}

void AxisCommands::renameCurrent()
{
    Solution::View* view = treeView(m_state.application);
    if (!view)
        return;
    const int id = view->nodeProperty(m_state.currentNodePath, dataBaseKey, QVariant(-1)).toInt();
    const AxisRecord record(m_state.projectName, static_cast<quint32>(id));
    if (!record)
        return;
    record->save();
    const QString oldName = record->name();
    dlgNodeReName dialog(m_state.projectName, AxisViewKey, nullptr);
    dialog.setCurrentName(oldName, QString());
    if (dialog.exec() != QDialog::Accepted || !m_state.owner)
        return;
    const QString newName = dialog.getRenameName();
    if (!newName.isEmpty())
        rename(*record.table(), *record.model(), *view, oldName, newName);
}

void AxisCommands::rename(
    AxisTable& axis, AxisModel& model, Solution::View& view, const QString& oldName, const QString& newName) const
{
    if (!model.renameAxisTable(axis.id(), newName)) {
        showInformation(QObject::tr("rename axis(%1) error!").arg(axis.name()));
        return;
    }
    const QString nodePath = m_state.currentNodePath;
    view.setNodeProperty(nodePath, QStringLiteral("DisplayName"), newName);
    const QString fileName = view.nodeProperty(nodePath, QStringLiteral("FileName"), QVariant()).toString();
    IEditorManager* editors = Solution::editorManager(m_state.application);
    if (!editors)
        return;
    if (IEditor* editor = editors->findEditor(fileName, true))
        editors->closeEditor(editor);
    if (Solution::ViewHelper* stack = undoStack(m_state.application))
        stack->pushCommand(new ModelRenameCommand(&axis, &model, oldName, newName));
}
