#include "workbench/OptionManager.h"

#include "sdk/IOptionFactory.h"
#include "workbench/OptionsDialog.h"

OptionManager::OptionManager(QObject* parent) : IOptionManager(parent) { }

OptionManager::~OptionManager() = default;

void OptionManager::addOptionFactory(IOptionFactory* factory)
{
    if (factory)
        m_factories.emplace_back(factory);
}

void OptionManager::exec(QString mimeType)
{
    OptionsDialog dialog(m_window);
    for (const auto& factory : m_factories)
        dialog.addPage(*factory);
    dialog.showPage(mimeType);
    connect(&dialog, &OptionsDialog::applied, this, &IOptionManager::applyOption);
    dialog.exec();
}

void OptionManager::exec(QString mimeType, QString)
{
    exec(mimeType);
}

void OptionManager::clear()
{
    m_factories.clear();
}
