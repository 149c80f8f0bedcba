#pragma once

#include <QCoreApplication>

/// Translates what the files around a connection tell the user of it.
class ConnectionTexts {
    Q_DECLARE_TR_FUNCTIONS(ConnectionTexts)
};
