#pragma once

#include "tests/pages/ModePage.h"

#include <QMap>

/// Families of controllers by the beginning of their names.
bool isNv2(const QString& model);
bool isNv3(const QString& model);
/// The pair of twelve-axis models.
bool isTwelve(const QString& model);

/// Controls that every load hides and nothing shows again.
QStringList buriedControls();

/// Follows what the mode and parameter page ought to show through a series of axis types.
class ExpectedVisibility {
public:
    /// The page as its form leaves it: all is shown.
    explicit ExpectedVisibility(const ModePage& page);

    /// A load on an axis of the type, on a device of a controller.
    void apply(const QString& type, const QString& model, uint device);
    /// Names of the controls that stand otherwise than expected.
    QStringList differences(const ModePage& page) const;

private:
    void applyCell(const QString& name, char cell, bool rule);

    QMap<QString, bool> m_shown;
};
