#include "tests/plugin/PluginFixture.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "plugin/AxisNodes.h"
#include "sdk/ServiceKeys.h"

#include <vector>

PluginFixture::PluginFixture(const QString& controllerModel)
    : project(controllerModel), plugin(std::make_unique<MotionControlAxisPlugin>())
{
    host.view.addProject(project.name());
    host.cookies.setValue(Solution::ConfigKey::projectName(), project.name());
    if (!plugin->initialize())
        qFatal("the plug-in was not taken into service");
    openProject();
}

PluginFixture::~PluginFixture()
{
    host.editorManager.closeAllEditors();
    plugin.reset();
}

Solution::ProjectInfo PluginFixture::info(bool current)
{
    Solution::ProjectInfo info;
    info.kind = QStringLiteral("NormalProject");
    info.current = current;
    return info;
}

void PluginFixture::openProject()
{
    emit host.view.projectOpened(project.nodePath(), info(), Solution::LevelConfiguration);
    host.calls.clear();
}

AxisTable* PluginFixture::addAxis(const QString& name, const QString& typeWord)
{
    AxisTable* axis = project.addAxis(name, typeWord);
    host.view.addNode(project.unitPath(), AxisNodes::axisNode(*axis, project.unitPath(), true), 0);
    host.calls.clear();
    return axis;
}

QString PluginFixture::pathOf(const AxisTable* axis) const
{
    return project.axisPath(axis->id());
}

QStringList PluginFixture::shownAxes()
{
    QStringList texts;
    const QStringList paths = host.view.childNodes(project.unitPath());
    for (const QString& path : paths)
        texts.append(host.view.node(path)->displayText);
    return texts;
}

QStringList PluginFixture::axisNames() const
{
    std::vector<AxisTable*> tables;
    project.axisModel()->allAxisTables(tables);
    QStringList names;
    for (const AxisTable* table : tables)
        names.append(table->name());
    return names;
}

void PluginFixture::logModel()
{
    QObject::connect(project.axisModel(), &AxisModel::axisAdded, &host,
        [this](quint32 id) { host.calls.add("model.added", { QString::number(id) }); });
    QObject::connect(project.axisModel(), &AxisModel::axisRemoved, &host,
        [this](quint32 id) { host.calls.add("model.removed", { QString::number(id) }); });
}

void PluginFixture::call(const char* slot)
{
    if (!QMetaObject::invokeMethod(plugin.get(), slot))
        qFatal("the plug-in has no slot %s", slot);
}

void PluginFixture::send(const QString& path, Solution::NodeEvent event, const QVariant& param)
{
    emit host.view.nodeEvent(path, event, param);
}
