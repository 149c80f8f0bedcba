#pragma once

#include <QString>
#include <QtGlobal>

/// What the tree path of an axis node says: "P.ConfigAndSetup.Axis.AxisView7" is axis 7 of project "P".
struct AxisNodePath {
    QString projectName;
    /// 0 when the last segment holds no number.
    quint32 axisId = 0;

    /// The prefix stands before the id in the last segment; every occurrence of it is left out.
    static AxisNodePath parse(const QString& path, const QString& prefix)
    {
        const int lastPoint = path.lastIndexOf(QLatin1Char('.'));
        QString id = path.mid(lastPoint + 1);
        id.remove(prefix);
        return { path.left(path.indexOf(QLatin1Char('.'))), id.toUInt() };
    }
};
