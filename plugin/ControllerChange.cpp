#include "plugin/ControllerChange.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "editor/MotionControlAxisEditor.h"
#include "plugin/AxisRevalidation.h"
#include "sdk/IEditorManager.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/SolutionView.h"

#include <vector>

namespace {

void refreshEditor(IEditorManager& editors, const QString& fileName)
{
    if (auto* editor = qobject_cast<MotionControlAxisEditor*>(editors.findEditor(fileName, true)))
        editor->refreshPages();
}

} // namespace

ControllerChange::ControllerChange(const AxisTreeState& state) : m_state(state) { }

void ControllerChange::apply() const
{
    const ProjectAxes axes(m_state.projectName);
    IEditorManager* editors = Solution::editorManager(m_state.application);
    auto* view = Solution::serviceAs<Solution::View>(m_state.application, Solution::ServiceKey::view());
    if (!axes || !editors || !view)
        return;
    std::vector<AxisTable*> tables;
    axes->allAxisTables(tables);
    axes->updateDeviceAxisInfo();
    AxisRevalidation revalidation(*axes.model());
    for (AxisTable* table : tables) {
        if (!table)
            continue;
        const QString fileName = view->fileNameOf(AxisViewKey, table->id());
        const QString nodePath = view->nodePathOfFile(fileName, true);
        if (revalidation.revise(*table)) {
            refreshEditor(*editors, fileName);
        } else {
            axes->removeAxisTable(table);
            view->removeNode(nodePath, true);
        }
    }
}
