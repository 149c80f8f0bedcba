#pragma once

#include "workbench/PluginPackage.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class IOptionManager;
class LogManager;
class PluginInterface;
class QPluginLoader;

/// A library of the plug-in folder and what became of it.
struct PluginEntry {
    enum State {
        /// Could not be loaded or refused its service; the reason tells why.
        Failed = -1,
        /// Taken out of service by the user.
        SwitchedOff = 0,
        Loaded = 1,
        InService = 2
    };

    QString fileName;
    PluginPackage package;
    PluginInterface* plugin = nullptr;
    State state = Failed;
    QString reason;
    /// Position in the order in which plug-ins came into service, from 1; 0 for none.
    int order = 0;
};

/// Loads the libraries of the plug-in folder and takes them into service in the order of their dependencies. A
/// library that fails is named with the reason; the rest goes on. Modules are never unloaded: their code may still be
/// on the stack, and what they registered with Qt stays.
class PluginManager : public QObject {
    Q_OBJECT

public:
    PluginManager(LogManager& log, IOptionManager& options, QObject* parent = nullptr);
    ~PluginManager() override;

    /// Names a package that the program itself brings.
    void addPresent(const QString& name, const QString& version);
    /// Loads and initialises all libraries of the folder, then finishes them. The names are packages that the user
    /// has switched off; one that is to be loaded by force does not heed it.
    void load(const QString& directory, const QStringList& switchedOff);
    /// Deletes the plug-in objects, the last that came into service first.
    void shutDown();

    const std::vector<PluginEntry>& entries() const { return m_entries; }
    /// Folders of the loaded libraries with their base names, for translation files that lie beside them.
    QStringList modulePaths() const;
    /// Fills the texts of the plug-in objects anew in that language.
    void setLanguage(const QString& language);

private:
    void loadFile(const QString& path, const QStringList& switchedOff);
    bool readPackage(PluginEntry& entry);
    void initializeAll();
    bool dependenciesServed(const PluginEntry& entry) const;
    QString missingDependency(const PluginEntry& entry) const;
    void initialize(PluginEntry& entry);
    void finishAll();
    void fail(PluginEntry& entry, const QString& reason);

    LogManager& m_log;
    IOptionManager& m_options;
    QMap<QString, QString> m_present;
    std::vector<std::unique_ptr<QPluginLoader>> m_loaders;
    std::vector<PluginEntry> m_entries;
    int m_inService = 0;
};
