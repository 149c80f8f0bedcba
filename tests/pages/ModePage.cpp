#include "tests/pages/ModePage.h"

#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QTest>

QStringList allControllers()
{
    const QStringList files
        = QDir(QStringLiteral(KESTRUN_CONTROLLER_DIR)).entryList({ QStringLiteral("*.json") }, QDir::Files, QDir::Name);
    QStringList models;
    for (const QString& file : files)
        models.append(file.chopped(5));
    return models;
}

QStringList allAxisTypes()
{
    return { QStringLiteral("Axis_Pulse"), QStringLiteral("Axis_Encoder"), QStringLiteral("Axis_Virtual"),
        QStringLiteral("Axis_EtherCAT") };
}

QJsonObject withList(QJsonObject description, const QString& group, const QStringList& entries)
{
    QJsonObject lists = description[QStringLiteral("lists")].toObject();
    lists[group] = QJsonArray::fromStringList(entries);
    description[QStringLiteral("lists")] = lists;
    return description;
}

ModePage::ModePage(const QString& axisType, const QString& controller)
    : project(controller), id(project.addAxis(QStringLiteral("Feed"), axisType)->id())
{
}

ModePage::~ModePage() = default;

void ModePage::open()
{
    page.reset();
    page = std::make_unique<ModelAndParamtSetWidget>(project.name(), id, nullptr);
    widgets.clear();
    const QList<QWidget*> all = page->findChildren<QWidget*>();
    for (QWidget* widget : all)
        widgets.insert(widget->objectName(), widget);
}

void ModePage::openWindow()
{
    open();
    page->resize(1100, 900);
    page->show();
    QApplication::setActiveWindow(page.get());
    if (!QTest::qWaitForWindowActive(page.get()))
        qFatal("the window did not become active");
}

void ModePage::changeType(const QString& axisType)
{
    store(QStringLiteral("AxisType"), axisType);
    page->axisTypeChanged();
}

AxisTable* ModePage::axis() const
{
    return project.axisModel() ? project.axisModel()->axisTable(id) : nullptr;
}

QString ModePage::stored(const QString& key) const
{
    return axis()->property(key, QStringLiteral("(absent)"));
}

void ModePage::store(const QString& key, const QString& text)
{
    axis()->setProperty(key, text);
}

QStringList ModePage::list(const QString& group) const
{
    QString name = group;
    return project.axisModel()->getAxisBaseSettingList(name);
}

QStringList ModePage::entries(const char* name) const
{
    const QComboBox* box = combo(name);
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
        texts.append(box->itemText(i));
    return texts;
}

void ModePage::reveal(const char* field) const
{
    for (QWidget* widget = edit(field); widget != page.get(); widget = widget->parentWidget())
        widget->show();
    edit(field)->setEnabled(true);
}

int connectionCount(const QObject* sender, const char* signal)
{
    struct Receivers : QObject {
        using QObject::receivers;
    };
    return (sender->*&Receivers::receivers)(signal);
}
