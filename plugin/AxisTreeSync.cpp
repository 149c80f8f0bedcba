#include "plugin/AxisTreeSync.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "plugin/AxisNodes.h"
#include "sdk/IEditorManager.h"
#include "sdk/ModelCommandType.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/SolutionView.h"

#include <QStringList>

namespace {

void insertNode(const AxisTreeState& state, Solution::View& view, const AxisTable& axis)
{
    const int row = axis.property(QStringLiteral("Row"), QStringLiteral("0")).toInt();
    view.insertNode(state.unitNodePath, row, AxisNodes::restoredAxisNode(axis, state.unitNodePath, state.defaultTheme));
}

void closeEditor(IApplication* application, const QString& fileName)
{
    IEditorManager* editors = Solution::editorManager(application);
    IEditor* editor = editors ? editors->findEditor(fileName, true) : nullptr;
    if (editor)
        editors->closeEditor(editor);
}

void renameNode(const AxisTreeState& state, Solution::View& view, quint32 id, const QString& param)
{
    const QStringList names = param.split(ModelCommandType::separator());
    if (names.size() != 2)
        return;
    const QString nodePath = view.nodePathOfKey(AxisNodes::axisType(), id);
    view.setNodeProperty(nodePath, QStringLiteral("DisplayName"), names.at(1));
    const QString fileName = view.nodeProperty(nodePath, QStringLiteral("FileName"), QString()).toString();
    closeEditor(state.application, fileName);
}

} // namespace

AxisTreeSync::AxisTreeSync(const AxisTreeState& state) : m_state(state) { }

void AxisTreeSync::follow(const QString& type, const QString& subModel, const QString& path, const QString& param) const
{
    if (subModel != QLatin1String(axisSubModelName))
        return;
    const ProjectAxes axes(m_state.projectName);
    auto* view = Solution::serviceAs<Solution::View>(m_state.application, Solution::ServiceKey::view());
    if (!axes || !view)
        return;
    const quint32 id = path.toUInt();
    // A removed record cannot be looked up any more.
    if (type == ModelCommandType::remove()) {
        view->removeNode(view->nodePathOfKey(AxisNodes::axisType(), id), true);
        return;
    }
    const AxisTable* axis = axes->axisTable(id);
    if (!axis)
        return;
    if (type == ModelCommandType::insert())
        insertNode(m_state, *view, *axis);
    else if (type == ModelCommandType::rename())
        renameNode(m_state, *view, id, param);
}
