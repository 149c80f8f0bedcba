#include "sdk/IActionManager.h"
#include "sdk/IAppIdleTimer.h"
#include "sdk/IApplication.h"
#include "sdk/IBackgroundTransaction.h"
#include "sdk/IComparator.h"
#include "sdk/IComparatorMan.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditContext.h"
#include "sdk/IEditor.h"
#include "sdk/IEditorFactory.h"
#include "sdk/IEditorFinder.h"
#include "sdk/IEditorManager.h"
#include "sdk/ILogManager.h"
#include "sdk/ILogger.h"
#include "sdk/IManager.h"
#include "sdk/IObject.h"
#include "sdk/IOption.h"
#include "sdk/IOptionFactory.h"
#include "sdk/IOptionManager.h"
#include "sdk/IToolWindowManager.h"
#include "sdk/IVarMonitor.h"
#include "sdk/IView.h"
#include "sdk/MotionControlDebug.h"
#include "sdk/PluginInterface.h"
#include "sdk/SolutionView.h"
#include "sdk/SolutionViewHelper.h"
#include "sdk/Transaction.h"
#include "sdk/Transfer.h"

// Constructors and destructors of the contract's classes stand here, so that each class's run-time type information has
// one home that host and plug-ins share: casts across modules rest on it.

IObject::IObject(QObject* parent) : QObject(parent) { }

IObject::~IObject() = default;

IManager::IManager(QObject* parent) : QObject(parent) { }

IManager::~IManager() = default;

IApplication::IApplication(QObject* parent) : IObject(parent) { }

IApplication::~IApplication() = default;

IConfiguration::IConfiguration(QObject* parent) : QObject(parent) { }

IConfiguration::~IConfiguration() = default;

IView::IView(QObject* parent) : IObject(parent) { }

IView::~IView() = default;

IEditor::IEditor(QObject* parent) : IView(parent) { }

IEditor::~IEditor() = default;

IEditorFactory::IEditorFactory(QObject* parent) : QObject(parent) { }

IEditorFactory::~IEditorFactory() = default;

IEditorManager::IEditorManager(QObject* parent) : IManager(parent) { }

IEditorManager::~IEditorManager() = default;

ILogManager::ILogManager(QObject* parent) : QObject(parent) { }

ILogManager::~ILogManager() = default;

Transfer::Transfer(QObject* parent) : QObject(parent) { }

Transfer::~Transfer() = default;

IComparatorMan::IComparatorMan(QObject* parent) : QObject(parent) { }

IComparatorMan::~IComparatorMan() = default;

Transaction::Transaction(QObject* parent) : QObject(parent) { }

Transaction::~Transaction() = default;

IBackgroundTransaction::IBackgroundTransaction(QObject* parent) : QObject(parent) { }

IBackgroundTransaction::~IBackgroundTransaction() = default;

IVarMonitor::IVarMonitor(QObject* parent) : QObject(parent) { }

IVarMonitor::~IVarMonitor() = default;

MotionControlDebug::MotionControlDebug(QObject* parent) : QObject(parent) { }

MotionControlDebug::~MotionControlDebug() = default;

PluginInterface::PluginInterface(QObject* parent) : QObject(parent) { }

PluginInterface::~PluginInterface() = default;

IOptionManager::IOptionManager(QObject* parent) : IManager(parent) { }

IOptionManager::~IOptionManager() = default;

IToolWindowManager::IToolWindowManager(QObject* parent) : IManager(parent) { }

IToolWindowManager::~IToolWindowManager() = default;

IActionManager::IActionManager(QObject* parent) : IManager(parent) { }

IActionManager::~IActionManager() = default;

IAppIdleTimer::IAppIdleTimer(QObject* parent) : QObject(parent) { }

IAppIdleTimer::~IAppIdleTimer() = default;

IEditContext::~IEditContext() = default;

IEditorFinder::~IEditorFinder() = default;

ILogger::~ILogger() = default;

IComparator::~IComparator() = default;

IOption::~IOption() = default;

IOptionFactory::~IOptionFactory() = default;

QIcon IView::icon()
{
    return {};
}

QString IEditor::locationText()
{
    return {};
}

void IEditor::modifiedHook() { }

bool IEditor::closeCheck()
{
    return true;
}

QString IEditor::fileFilter()
{
    return {};
}

QObject* IEditor::contextObject()
{
    return nullptr;
}

QString IEditorFinder::optionText()
{
    return {};
}

bool IEditorFinder::optionCheckD()
{
    return false;
}

bool IEditorFinder::optionCheckE()
{
    return false;
}

IEditorFinder* IEditorFactory::createFinder()
{
    return nullptr;
}

void IEditorManager::saveEditor(IEditor* editor)
{
    saveEditor(editor, true);
}

void IEditorManager::saveEditor()
{
    saveEditor(currentEditor(), true);
}

void IEditorManager::saveEditorAs()
{
    saveEditorAs(currentEditor());
}

void IEditorManager::saveAllEditors()
{
    saveAllEditors(true);
}

void IEditorManager::closeEditor()
{
    closeEditor(currentEditor());
}

void Transaction::execute() { }

namespace Solution {

View::View(QObject* parent) : QObject(parent) { }

View::~View() = default;

ViewHelper::ViewHelper(QObject* parent) : QObject(parent) { }

ViewHelper::~ViewHelper() = default;

} // namespace Solution
