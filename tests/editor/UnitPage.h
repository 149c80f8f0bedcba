#pragma once

#include "editor/DocumentSetWidget.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <memory>

/// The unit conversion page on one axis of a temporary project, in a host that knows the theme.
class UnitPage {
public:
    explicit UnitPage(
        const QString& axisType = QStringLiteral("Axis_Pulse"), const QString& controller = QStringLiteral("NV3T_70Q8"))
        : project(controller), id(project.addAxis(QStringLiteral("Feed"), axisType)->id())
    {
    }

    void open()
    {
        page.reset();
        page = std::make_unique<DocumentSetWidget>(project.name(), id, nullptr);
    }

    /// Opens it in an active window, so that keys reach its fields.
    void openWindow()
    {
        open();
        page->resize(1000, 900);
        page->show();
        QApplication::setActiveWindow(page.get());
        if (!QTest::qWaitForWindowActive(page.get()))
            qFatal("the window did not become active");
    }

    AxisTable* axis() const { return project.axisModel() ? project.axisModel()->axisTable(id) : nullptr; }
    QString stored(const char* key) const
    {
        return axis()->property(QString::fromLatin1(key), QStringLiteral("(absent)"));
    }
    void store(const char* key, const char* text)
    {
        axis()->setProperty(QString::fromLatin1(key), QString::fromLatin1(text));
    }

    template <typename Widget>
    Widget* find(const char* name) const
    {
        auto* const widget = page->findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            qFatal("the page has no %s", name);
        return widget;
    }
    QLineEdit* edit(const char* name) const { return find<QLineEdit>(name); }
    QLineEdit* pulses() const { return edit("lineEdit_PulseCountPerCicle"); }
    QAbstractButton* button(const char* name) const { return find<QAbstractButton>(name); }
    QAbstractButton* decimalBox() const { return button("checkBox_decimalDisplayPulse"); }

    TestHost host;
    TestProject project;
    quint32 id;
    std::unique_ptr<DocumentSetWidget> page;
};
