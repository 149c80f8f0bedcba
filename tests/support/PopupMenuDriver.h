#pragma once

#include "tests/support/ShownWindowFilter.h"

#include <QPoint>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class QMenu;

/// Answers menus that are shown with exec: records their entries and clicks the chosen one, or closes the menu.
class PopupMenuDriver : public ShownWindowFilter {
    Q_OBJECT

public:
    struct Menu {
        QStringList entries;
        QPoint position;
        bool allEnabled = true;
        bool anyShortcut = false;
        bool hasParent = false;
    };

    /// Clicks that entry of the next menu that has no choice yet.
    void choose(const QString& entry);

    QVector<Menu> menus;

protected:
    bool wants(QWidget* window) const override;
    void handle(QWidget* window) override;

private:
    QStringList m_choices;
};
