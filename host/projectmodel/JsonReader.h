#pragma once

#include <QCoreApplication>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>

/// A place in a JSON document that is being checked: the value, its path ("/lists/AxisType/0"), and the error that all
/// places of a document share. Only the first error is kept; after it every reading gives empty values.
class JsonReader {
    Q_DECLARE_TR_FUNCTIONS(JsonReader)

public:
    JsonReader(const QJsonValue& value, const QString& path, QString* error);

    bool isGood() const { return m_error->isEmpty(); }
    QString path() const { return m_path; }

    /// The member of an object; an error if it is missing.
    JsonReader member(const QString& key) const;
    bool has(const QString& key) const;
    /// The keys of an object.
    QStringList keys() const;
    /// The elements of an array.
    QVector<JsonReader> elements() const;

    /// A text that is not empty.
    QString text() const;
    /// The texts of an array, none of them empty, no two alike.
    QStringList texts() const;
    /// A whole number in that range.
    int number(int least, int most) const;

    /// Notes an error at this place. Always false.
    bool fail(const QString& reason) const;

private:
    JsonReader at(const QJsonValue& value, const QString& step) const;

    QJsonValue m_value;
    QString m_path;
    QString* m_error;
};
