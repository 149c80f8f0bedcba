#pragma once

#include "host/projectmodel/ControllerDescription.h"

#include <QStringList>
#include <QVector>

/// The controller models that the program knows: the descriptions of a folder, by model name.
class ControllerCatalog {
public:
    /// Reads all descriptions of the folder. What does not read well is left out and named in problems().
    explicit ControllerCatalog(const QString& directory);

    const QVector<ControllerDescription>& controllers() const { return m_controllers; }
    /// The description of a model, or null.
    const ControllerDescription* find(const QString& model) const;
    const QStringList& problems() const { return m_problems; }

private:
    QVector<ControllerDescription> m_controllers;
    QStringList m_problems;
};
