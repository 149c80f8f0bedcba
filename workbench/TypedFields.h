#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QLineEdit;

/// Knows which fields of the program show just what they showed when the user came to them. A field stays entered while
/// another window or a list that drops down has the focus, since its page is not told of an input then. Main thread
/// only.
class TypedFields : public QObject {
    Q_OBJECT

public:
    explicit TypedFields(QObject* parent = nullptr);
    ~TypedFields() override;

    /// True as long as the user is in the field and has typed nothing in it, and its text has not changed otherwise.
    /// What is typed and taken back counts, for the page may have stored it in between.
    bool isUntouched(const QLineEdit& field) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void enter(QWidget* widget);

    struct Entry {
        QString text;
        bool typed = false;
    };
    /// The fields that have been entered and not left.
    QHash<const QObject*, Entry> m_entered;
};
