#include "workbench/SourceEditor.h"

#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "host/projectmodel/SafeProjectModel.h"
#include "host/projectmodel/SourceModel.h"
#include "workbench/ProjectTree.h"
#include "workbench/SourceView.h"

SourceEditor::SourceEditor(ProjectTree& tree, QObject* parent)
    : IEditor(parent), m_tree(tree), m_view(std::make_unique<SourceView>())
{
}

SourceEditor::~SourceEditor() = default;

QWidget* SourceEditor::widget()
{
    return m_view.get();
}

QString SourceEditor::displayName()
{
    return m_name;
}

bool SourceEditor::open(const QString& fileName, const QString&)
{
    m_path = fileName;
    return load();
}

bool SourceEditor::load()
{
    const QString name = m_tree.nodeProperty(m_path, QStringLiteral("SourceName"), QString()).toString();
    const SafeProjectModel project(m_path.section(QLatin1Char('.'), 0, 0));
    const auto* sources = project ? qobject_cast<SourceModel*>(project->subModel("SourceModel")) : nullptr;
    if (!sources || !sources->sourceNames().contains(name))
        return false;
    m_name = name;
    m_view->setPlainText(sources->source(name));
    return true;
}

bool SourceEditor::reload()
{
    return load();
}

bool SourceEditor::save()
{
    return true;
}

bool SourceEditor::saveAs()
{
    return true;
}

bool SourceEditor::gotoLocation(const QString& location)
{
    if (location.isEmpty())
        return false;
    const int line = location.section(QLatin1Char(':'), 0, 0).toInt();
    const int column = location.section(QLatin1Char(':'), 1, 1).toInt();
    m_view->goTo(qMax(line, 1), qMax(column, 1));
    return true;
}

EditorLocation SourceEditor::locationInfo()
{
    return {};
}

bool SourceEditor::findReferences(const QString&, QVector<FindResult>&)
{
    return true;
}

void SourceEditor::setReadOnly(bool) { }

bool SourceEditor::isReadOnly()
{
    return true;
}

bool SourceEditor::isModified()
{
    return false;
}

QString SourceEditor::nodePath()
{
    return m_path;
}

QString SourceEditor::typeKey()
{
    return mimeType();
}

QByteArray SourceEditor::saveState()
{
    return {};
}

bool SourceEditor::restoreState(const QByteArray&)
{
    return true;
}

void SourceEditor::activated() { }

IEditContext* SourceEditor::currentContext()
{
    return nullptr;
}

SourceEditorFactory::SourceEditorFactory(ProjectTree& tree, QObject* parent) : IEditorFactory(parent), m_tree(tree) { }

SourceEditorFactory::~SourceEditorFactory() = default;

QStringList SourceEditorFactory::typeKeys()
{
    return { SourceEditor::mimeType() };
}

IEditor* SourceEditorFactory::createEditor(const QString& fileName, const QString& mimeType)
{
    if (!canCreate(mimeType))
        return nullptr;
    auto* editor = new SourceEditor(m_tree, this);
    editor->open(fileName, mimeType);
    return editor;
}

IEditor* SourceEditorFactory::createEditorForPath(const QString& fileName, const QString& mimeType)
{
    return createEditor(fileName, mimeType);
}

QString SourceEditorFactory::typeKey()
{
    return SourceEditor::mimeType();
}

QString SourceEditorFactory::typeName()
{
    return SourceEditor::mimeType();
}

bool SourceEditorFactory::canCreate(const QString& mimeType)
{
    return mimeType == SourceEditor::mimeType();
}
