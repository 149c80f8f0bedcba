#pragma once

#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/SafeProjectModel.h"

#include <QString>
#include <QStringList>

/// Scoped access to the axes of a project: a guard on the project and its AxisModel. Tests false when the project or
/// the sub-model is missing; the operation then ends silently. Main thread, on the stack.
class ProjectAxes {
public:
    explicit ProjectAxes(const QString& projectName);

    explicit operator bool() const { return m_model != nullptr; }
    AxisModel* operator->() const { return m_model; }
    AxisModel* model() const { return m_model; }
    /// The open project, or null.
    AbstractProjectModel* project() const { return m_guard.model(); }
    /// The option list of that name.
    QStringList list(const QString& group) const;

private:
    SafeProjectModel m_guard;
    AxisModel* m_model;
};

/// Scoped access to one axis. Tests false when any step of the walk (project, AxisModel, record) is missing.
/// No pointer taken out of it may outlive it.
class AxisRecord {
public:
    AxisRecord(const QString& projectName, quint32 axisId);

    explicit operator bool() const { return m_table != nullptr; }
    AxisTable* operator->() const { return m_table; }
    AxisTable* table() const { return m_table; }
    const ProjectAxes& axes() const { return m_axes; }
    AxisModel* model() const { return m_axes.model(); }
    QStringList list(const QString& group) const { return m_axes.list(group); }

    /// The stored text of a key, empty when it is absent.
    QString text(const QString& key) const;
    /// Upper-cased text equals "TRUE"; an absent key reads as not true.
    bool isTrue(const QString& key) const;
    /// Upper-cased text equals "FALSE"; an absent key reads as not false.
    bool isFalse(const QString& key) const;
    /// The text as an unsigned number in base 10, 0 when it is none.
    uint number(const QString& key) const;
    void set(const QString& key, const QString& text) const;
    /// Writes "TRUE" or "FALSE".
    void setFlag(const QString& key, bool on) const;
    /// The position that the key holds in a list of that size; one at or past the end is put back to 0, in the record
    /// too.
    int position(const QString& key, int listSize) const;

private:
    ProjectAxes m_axes;
    AxisTable* m_table;
};
