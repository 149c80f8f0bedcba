#pragma once

#include "host/projectmodel/AxisTable.h"

#include <QSignalSpy>
#include <QStringList>

/// Collects what is written into a record while it lives. A text that a key has already is no write.
class RecordWrites {
public:
    explicit RecordWrites(AxisTable* axis) : m_axis(axis), m_spy(axis, &ModelObject::dataChanged) { }

    /// The keys written since the last look, in order.
    QStringList takeKeys()
    {
        QStringList keys;
        for (const QList<QVariant>& call : qAsConst(m_spy))
            keys.append(call.at(2).toString());
        m_spy.clear();
        return keys;
    }

    /// The same, each as "key=text" with the text as it stands now.
    QStringList take()
    {
        QStringList writes = takeKeys();
        for (QString& key : writes)
            key += QLatin1Char('=') + m_axis->property(key, QString());
        return writes;
    }

private:
    AxisTable* m_axis;
    QSignalSpy m_spy;
};
