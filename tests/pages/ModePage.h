#pragma once

#include "pages/ModelAndParamtSetWidget.h"
#include "tests/support/TestProject.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"

#include <QComboBox>
#include <QHash>
#include <QJsonObject>
#include <QLineEdit>
#include <QStringList>

#include <memory>

/// The thirteen controllers of the house: both families, and one that belongs to none.
QStringList allControllers();
/// The four type words.
QStringList allAxisTypes();

/// The description of a controller with one of its lists replaced.
QJsonObject withList(QJsonObject description, const QString& group, const QStringList& entries);

/// One axis of a temporary project and the mode and parameter page on it.
class ModePage {
public:
    explicit ModePage(const QString& axisType, const QString& controller = QStringLiteral("NV3T_70Q8"));
    ~ModePage();

    /// Builds the page from the record, anew if there is one.
    void open();
    /// Opens it and shows it in an active window, so that keys reach its fields.
    void openWindow();
    /// Gives the axis another type as the basic page does, and tells the page.
    void changeType(const QString& axisType);

    /// Null once the record has been removed.
    AxisTable* axis() const;
    QString stored(const QString& key) const;
    void store(const QString& key, const QString& text);
    QStringList list(const QString& group) const;

    template <typename Widget>
    Widget* find(const char* name) const
    {
        auto* const widget = qobject_cast<Widget*>(widgets.value(QString::fromLatin1(name)));
        if (!widget)
            qFatal("the page has no %s", name);
        return widget;
    }
    QLineEdit* edit(const char* name) const { return find<QLineEdit>(name); }
    QComboBox* combo(const char* name) const { return find<QComboBox>(name); }
    QStringList entries(const char* combo) const;
    /// Makes a field that every load hides usable, as if its row were shown again.
    void reveal(const char* field) const;

    TestProject project;
    quint32 id = 0;
    std::unique_ptr<ModelAndParamtSetWidget> page;
    /// The controls of the page by their object names.
    QHash<QString, QWidget*> widgets;
};

/// How often a signal of an object is connected, such as SIGNAL(currentIndexChanged(int)).
int connectionCount(const QObject* sender, const char* signal);
