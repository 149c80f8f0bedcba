#pragma once

#include "sdk/IApplication.h"

#include <QHash>

/// The host application as plug-ins see it: the table of services and the managers by name. It owns neither.
///
/// It publishes itself for its life, so that services are found from the moment it exists until it goes.
class Application : public IApplication {
    Q_OBJECT

public:
    explicit Application(QObject* parent = nullptr);
    ~Application() override;

    IManager* manager(const QString& name) override;
    void addManager(const QString& name, IManager* manager);

    /// Puts a service under its key. A key that is taken keeps its entry.
    void publish(const QString& key, QObject* service);
    /// Empties the table and forgets the managers.
    void withdrawAll();

private:
    QHash<QString, IManager*> m_managers;
};
