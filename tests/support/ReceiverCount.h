#pragma once

#include <QObject>

/// How many slots and spies hear a signal, given as SIGNAL(...). A disconnect tells less: it takes away all equal
/// connections at once.
inline int receiverCount(const QObject& sender, const char* signal)
{
    class Access : public QObject {
    public:
        using QObject::receivers;
    };
    return (sender.*(&Access::receivers))(signal);
}
