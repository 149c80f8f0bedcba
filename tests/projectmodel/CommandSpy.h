#pragma once

#include "tests/support/TestHost.h"

#include <QStringList>

/// A host whose undo service notes what the model commands report, as "type,subModel,path,param".
class CommandSpy {
public:
    CommandSpy()
    {
        QObject::connect(&host.viewHelper, &Solution::ViewHelper::commandExecuted, &host,
            [this](const QString& type, const QString& subModel, const QString& path, const QString& param) {
                reports.append(QStringList{ type, subModel, path, param }.join(QLatin1Char(',')));
            });
    }

    QUndoStack& stack() { return host.viewHelper.stack; }
    QString takeReports()
    {
        const QString all = reports.join(QLatin1Char(' '));
        reports.clear();
        return all;
    }

    TestHost host;
    QStringList reports;
};
