#pragma once

#include "sdk/IActionManager.h"

#include <QHash>

/// The actions of the main window by name ("file.save"). The window owns them.
class ActionManager : public IActionManager {
    Q_OBJECT

public:
    explicit ActionManager(QObject* parent = nullptr);
    ~ActionManager() override;

    QAction* action(const QString& name) override;
    void add(const QString& name, QAction* action);

private:
    QHash<QString, QAction*> m_actions;
};
