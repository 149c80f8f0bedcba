#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// What the services of a TestHost have received, in order and across services. An entry is "service.operation" with
/// the arguments in brackets: "view.addNode(Line.ConfigAndSetup, Axis, 0)".
class CallLog {
public:
    /// Adds an entry, such as add("view.removeNode", { path, "true" }).
    void add(const char* operation, const QStringList& arguments = {});
    void clear();

    QStringList entries() const { return m_entries; }
    /// The entries of those operations only, in their order.
    QStringList entriesOf(const QStringList& operations) const;
    /// How often an operation was called, whatever the arguments.
    int count(const QString& operation) const;

    static QString text(bool value);

    /// Told of each entry as it comes, before the service acts on the call.
    std::function<void(const QString& entry)> heard;

private:
    QStringList m_entries;
};
