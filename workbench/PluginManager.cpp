#include "workbench/PluginManager.h"

#include "sdk/IOptionManager.h"
#include "sdk/PluginInterface.h"
#include "workbench/LogManager.h"

#include <QDir>
#include <QJsonObject>
#include <QLibrary>
#include <QMetaMethod>
#include <QPluginLoader>

#include <algorithm>

PluginManager::PluginManager(LogManager& log, IOptionManager& options, QObject* parent)
    : QObject(parent), m_log(log), m_options(options)
{
}

PluginManager::~PluginManager()
{
    shutDown();
}

void PluginManager::addPresent(const QString& name, const QString& version)
{
    m_present.insert(name, version);
}

void PluginManager::load(const QString& directory, const QStringList& switchedOff)
{
    const QDir folder(directory);
    if (!folder.exists()) {
        m_log.report(LogWarning, tr("There is no plug-in folder %1.").arg(QDir::toNativeSeparators(directory)));
        return;
    }
    const QStringList files = folder.entryList(QDir::Files, QDir::Name);
    for (const QString& file : files) {
        if (QLibrary::isLibrary(file))
            loadFile(folder.absoluteFilePath(file), switchedOff);
    }
    initializeAll();
    finishAll();
}

void PluginManager::loadFile(const QString& path, const QStringList& switchedOff)
{
    m_loaders.push_back(std::make_unique<QPluginLoader>(path));
    QPluginLoader& loader = *m_loaders.back();
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    m_entries.push_back({});
    PluginEntry& entry = m_entries.back();
    entry.fileName = path;
    const QString interface = loader.metaData().value(QStringLiteral("IID")).toString();
    if (!interface.isEmpty() && interface != QLatin1String(KESTRUN_PLUGIN_IID))
        return fail(entry, tr("It is a plug-in of another kind (%1).").arg(interface));
    QObject* root = loader.instance();
    if (!root)
        return fail(entry, loader.errorString());
    entry.plugin = qobject_cast<PluginInterface*>(root);
    if (!entry.plugin)
        return fail(entry, tr("Its object is no plug-in of this program."));
    if (!readPackage(entry))
        return;
    entry.state = switchedOff.contains(entry.package.name) && !entry.package.forceLoad ? PluginEntry::SwitchedOff
                                                                                       : PluginEntry::Loaded;
    entry.plugin->enabled = entry.state == PluginEntry::Loaded ? 1 : 0;
}

bool PluginManager::readPackage(PluginEntry& entry)
{
    QString error;
    if (!entry.package.read(entry.plugin->packageText, &error)) {
        fail(entry, error);
        return false;
    }
    const auto sameName
        = [&entry](const PluginEntry& other) { return &other != &entry && other.package.name == entry.package.name; };
    const auto other = std::find_if(m_entries.begin(), m_entries.end(), sameName);
    if (other == m_entries.end())
        return true;
    fail(entry, tr("The package \"%1\" is already there: %2.").arg(entry.package.name, other->fileName));
    return false;
}

void PluginManager::initializeAll()
{
    // Each pass takes those into service whose needs are met by then, in the order of their files.
    for (bool progress = true; progress;) {
        progress = false;
        for (PluginEntry& entry : m_entries) {
            if (entry.state != PluginEntry::Loaded || !dependenciesServed(entry))
                continue;
            initialize(entry);
            progress = true;
        }
    }
    for (PluginEntry& entry : m_entries) {
        if (entry.state == PluginEntry::Loaded)
            fail(entry, missingDependency(entry));
    }
}

bool PluginManager::dependenciesServed(const PluginEntry& entry) const
{
    return missingDependency(entry).isEmpty();
}

QString PluginManager::missingDependency(const PluginEntry& entry) const
{
    const QMap<QString, QString>& needs = entry.package.dependencies;
    for (auto need = needs.begin(); need != needs.end(); ++need) {
        const QString present = m_present.value(need.key());
        if (present.isEmpty())
            return tr("It needs the package \"%1\" %2, which is not in service.").arg(need.key(), *need);
        if (!PluginPackage::serves(present, *need))
            return tr("It needs the package \"%1\" %2; in service is %3.").arg(need.key(), *need, present);
    }
    return {};
}

void PluginManager::initialize(PluginEntry& entry)
{
    if (!entry.plugin->initialize())
        return fail(entry, tr("It declined to start."));
    entry.state = PluginEntry::InService;
    entry.order = ++m_inService;
    entry.plugin->loadOrder = entry.order;
    entry.plugin->state = entry.state;
    m_present.insert(entry.package.name, entry.package.version);
    // Only its name makes the slot of a plug-in one that hears of options.
    if (entry.plugin->metaObject()->indexOfSlot("onApplyOption(QString)") >= 0)
        connect(&m_options, SIGNAL(applyOption(QString)), entry.plugin, SLOT(onApplyOption(QString)));
}

void PluginManager::finishAll()
{
    std::vector<const PluginEntry*> inService;
    for (const PluginEntry& entry : m_entries) {
        if (entry.state == PluginEntry::InService)
            inService.push_back(&entry);
    }
    std::sort(inService.begin(), inService.end(), [](auto* a, auto* b) { return a->order < b->order; });
    for (const PluginEntry* entry : inService) {
        entry->plugin->finish();
        m_log.report(LogInfo, tr("Plug-in %1 %2 is in service.").arg(entry->package.name, entry->package.version));
    }
}

void PluginManager::fail(PluginEntry& entry, const QString& reason)
{
    entry.state = PluginEntry::Failed;
    entry.reason = reason;
    if (entry.plugin)
        entry.plugin->state = entry.state;
    m_log.report(
        LogError, tr("The plug-in %1 is not in service. %2").arg(QDir::toNativeSeparators(entry.fileName), reason));
}

void PluginManager::shutDown()
{
    std::sort(m_entries.begin(), m_entries.end(), [](auto& a, auto& b) { return a.order > b.order; });
    for (PluginEntry& entry : m_entries) {
        delete entry.plugin;
        entry.plugin = nullptr;
    }
    m_entries.clear();
}

QStringList PluginManager::modulePaths() const
{
    QStringList paths;
    for (const PluginEntry& entry : m_entries) {
        const QFileInfo file(entry.fileName);
        paths.append(file.absoluteDir().absoluteFilePath(file.completeBaseName()));
    }
    return paths;
}

void PluginManager::setLanguage(const QString& language)
{
    for (const PluginEntry& entry : m_entries) {
        if (!entry.plugin)
            continue;
        entry.plugin->name = entry.package.name;
        entry.plugin->version = entry.package.version;
        entry.plugin->description = PluginPackage::inLanguage(entry.package.description, language);
        entry.plugin->provider = PluginPackage::inLanguage(entry.package.provider, language);
        entry.plugin->category = PluginPackage::inLanguage(entry.package.category, language);
    }
}
