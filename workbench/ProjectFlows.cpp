#include "workbench/ProjectFlows.h"

#include "host/projectmodel/ModelObject.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/ProjectModelManager.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditor.h"
#include "workbench/ControllerCatalog.h"
#include "workbench/ControllerDialog.h"
#include "workbench/LogManager.h"
#include "workbench/MainWindow.h"
#include "workbench/MessageBar.h"
#include "workbench/NewProjectDialog.h"
#include "workbench/Workspace.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

constexpr int maximumRecent = 10;

QString recentKey()
{
    return QStringLiteral("Recent/Projects");
}

QString filter()
{
    return ProjectFlows::tr("Kestrun projects (*%1)").arg(NewProjectDialog::fileEnding());
}

QString native(const QString& file)
{
    return QDir::toNativeSeparators(file);
}

/// How many axes could be rescued from a file that does not open; -1 for one that is no damaged project.
int wholeAxes(const QString& file)
{
    const QTemporaryDir scratch;
    QString ignored;
    const QString target = scratch.filePath(QString(QLatin1String("rescued") + NewProjectDialog::fileEnding()));
    return QFileInfo(file).isFile() ? ProjectModelManager::instance()->salvageProject(file, target, &ignored) : -1;
}

} // namespace

ProjectFlows::ProjectFlows(Workspace& workspace, EditorManager& editors, MainWindow& window,
    const ControllerCatalog& catalog, IConfiguration& settings, LogManager& log, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_editors(editors), m_window(window), m_catalog(catalog),
      m_settings(settings), m_log(log)
{
    connect(&window.messageBar(), &MessageBar::offerTaken, this, &ProjectFlows::rescue);
    connect(&workspace, &Workspace::storeFailed, this, [this](const QString& text) { report(text); });
    connect(&workspace, &Workspace::opened, &window.messageBar(), &QWidget::hide);
}

ProjectFlows::~ProjectFlows() = default;

QString ProjectFlows::folder() const
{
    const QStringList files = recent();
    return files.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                           : QFileInfo(files.first()).absolutePath();
}

void ProjectFlows::newProject()
{
    NewProjectDialog dialog(m_catalog, folder(), &m_window);
    if (dialog.exec() != QDialog::Accepted || !dialog.controller() || !mayLeave())
        return;
    QString error;
    const QString file = dialog.filePath();
    if (!m_workspace.create(file, *dialog.controller(), &error))
        return report(error);
    remember(file);
    m_log.report(LogInfo, tr("Created %1.").arg(native(file)));
}

void ProjectFlows::chooseAndOpen()
{
    const QString file = QFileDialog::getOpenFileName(&m_window, tr("Open project"), folder(), filter());
    if (!file.isEmpty())
        open(file);
}

bool ProjectFlows::open(const QString& file)
{
    if (!mayLeave())
        return false;
    QString error;
    if (!m_workspace.open(QFileInfo(file).absoluteFilePath(), &error)) {
        report(error, file);
        return false;
    }
    remember(m_workspace.project()->filePath());
    m_log.report(LogInfo, tr("Opened %1.").arg(native(m_workspace.project()->filePath())));
    if (m_workspace.project()->isReadOnly())
        m_log.report(LogWarning, tr("%1 can only be read; changes cannot be saved.").arg(native(file)));
    return true;
}

void ProjectFlows::save()
{
    IEditor* editor = m_editors.currentEditor();
    if (editor && m_editors.isStoredModified(editor))
        m_editors.saveEditor(editor, true);
    else
        saveAll();
}

bool ProjectFlows::saveAll()
{
    QString error;
    if (m_workspace.save(&error))
        return true;
    report(error);
    return false;
}

QString ProjectFlows::chooseTarget(const QString& title, const QString& suggestion) const
{
    QFileDialog dialog(&m_window, title, QFileInfo(suggestion).absolutePath(), filter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // With the ending known to the dialog, its question about an existing file is about the right one.
    dialog.setDefaultSuffix(NewProjectDialog::fileEnding().mid(1));
    dialog.selectFile(QFileInfo(suggestion).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void ProjectFlows::saveAs()
{
    if (!m_workspace.project())
        return;
    const QString file = chooseTarget(tr("Save project as"), m_workspace.project()->filePath());
    if (file.isEmpty())
        return;
    QString error;
    if (!m_workspace.saveAs(file, &error))
        return report(error);
    remember(file);
    m_log.report(LogInfo, tr("Going on with %1.").arg(native(file)));
}

void ProjectFlows::closeProject()
{
    if (mayLeave())
        m_workspace.close();
}

void ProjectFlows::closeEditor()
{
    if (IEditor* editor = m_editors.currentEditor())
        m_editors.closeAsking({ editor });
}

void ProjectFlows::changeController()
{
    if (!m_workspace.project())
        return;
    ControllerDialog dialog(m_catalog, m_workspace.project()->controller().model(), &m_window);
    if (dialog.exec() != QDialog::Accepted || !dialog.controller())
        return;
    const QStringList removed = m_workspace.changeController(*dialog.controller());
    m_log.report(LogInfo, tr("The project has the controller %1 now.").arg(dialog.controller()->model()));
    if (!removed.isEmpty())
        m_log.report(
            LogWarning, tr("Removed, because they cannot exist on it: %1.").arg(removed.join(QLatin1String(", "))));
}

bool ProjectFlows::mayLeave()
{
    if (!m_workspace.project() || !m_workspace.isModified())
        return true;
    switch (askUnsaved({ m_workspace.project()->name() })) {
    case UnsavedAnswer::Save:
        return saveAll();
    case UnsavedAnswer::Discard:
        return true;
    case UnsavedAnswer::Cancel:
        break;
    }
    return false;
}

UnsavedAnswer ProjectFlows::askUnsaved(const QStringList& names) const
{
    QMessageBox box(QMessageBox::Question, tr("Kestrun"),
        tr("There are unsaved changes in %1. Save them?").arg(names.join(QLatin1String(", "))), QMessageBox::NoButton,
        &m_window);
    box.setTextFormat(Qt::PlainText);
    QPushButton* save = box.addButton(tr("Save"), QMessageBox::AcceptRole);
    save->setProperty("styleType", QStringLiteral("sureButton"));
    const QPushButton* discard = box.addButton(tr("Discard"), QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(tr("Cancel"), QMessageBox::RejectRole));
    box.setDefaultButton(save);
    box.exec();
    if (box.clickedButton() == save)
        return UnsavedAnswer::Save;
    return box.clickedButton() == discard ? UnsavedAnswer::Discard : UnsavedAnswer::Cancel;
}

QStringList ProjectFlows::recent() const
{
    return m_settings.value(recentKey(), QStringList()).toStringList();
}

void ProjectFlows::remember(const QString& file)
{
    QStringList files = recent();
    const QString path = QFileInfo(file).absoluteFilePath();
    files.removeAll(path);
    files.prepend(path);
    m_settings.setValue(recentKey(), QStringList(files.mid(0, maximumRecent)));
    m_window.setRecent(recent());
}

void ProjectFlows::report(const QString& text, const QString& damagedFile)
{
    m_log.report(LogError, text);
    const int axes = damagedFile.isEmpty() ? -1 : wholeAxes(damagedFile);
    m_damagedFile = axes > 0 ? damagedFile : QString();
    m_window.messageBar().showMessage(text, axes > 0 ? tr("Rescue what is whole (axes: %1)…").arg(axes) : QString());
}

void ProjectFlows::rescue()
{
    const QFileInfo damaged(m_damagedFile);
    const QString suggestion = damaged.absoluteDir().absoluteFilePath(
        QString(damaged.completeBaseName() + tr("-rescued") + NewProjectDialog::fileEnding()));
    const QString target = chooseTarget(tr("Rescue into a new project"), suggestion);
    if (target.isEmpty())
        return;
    QString error;
    const int axes = ProjectModelManager::instance()->salvageProject(damaged.absoluteFilePath(), target, &error);
    if (axes < 0)
        return report(error);
    m_log.report(LogInfo, tr("Rescued into %1; axes: %2.").arg(native(target)).arg(axes));
    open(target);
}
