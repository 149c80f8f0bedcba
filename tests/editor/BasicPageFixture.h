#pragma once

#include "editor/BasicSetWidget.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/TestProject.h"

#include <QCheckBox>
#include <QComboBox>
#include <QJsonObject>
#include <QtTest>

#include <initializer_list>
#include <memory>

/// A basic page on an axis of a project whose controller offers all four types, with short device lists. Base of the
/// page's tests.
class BasicPageFixture {
protected:
    inline static const QString virtualType = QStringLiteral("Axis_Virtual");
    inline static const QString pulseType = QStringLiteral("Axis_Pulse");
    inline static const QString encoderType = QStringLiteral("Axis_Encoder");
    inline static const QString etherCatType = QStringLiteral("Axis_EtherCAT");
    inline static const QString typeKey = QStringLiteral("AxisType");
    inline static const QString inputKey = QStringLiteral("InputDevice");
    inline static const QString outputKey = QStringLiteral("OutputDevice");
    inline static const QString virtualKey = QStringLiteral("VirtualAxis");

    /// Around each test.
    void start();
    void stop();

    /// Gives the controller another list or limit.
    void setList(const char* name, std::initializer_list<const char*> entries);
    void setLimit(const char* type, int limit);

    AxisTable* addAxis(const QString& type, const QString& input, const QString& output);
    /// The page of the axis, with all tabs of an editor around it.
    void makePage(AxisTable* axis);
    bool showPage();

    template <typename Control>
    Control* control(const char* name) const
    {
        return m_page->findChild<Control*>(QString::fromLatin1(name));
    }
    QComboBox* types() const { return control<QComboBox>("comboBoxAxisType"); }
    QComboBox* inputs() const { return control<QComboBox>("comboBoxInputDev"); }
    QComboBox* outputs() const { return control<QComboBox>("comboBoxOutputDev"); }
    QCheckBox* virtualBox() const { return control<QCheckBox>("checkBoxAxisVritual"); }
    static QStringList entriesOf(const QComboBox* box);

    /// The stored text of a key of the page's axis.
    QString text(const QString& key) const { return m_axis->property(key, QString()); }
    /// Visibility of the unit, homing and online tabs.
    QList<bool> tabs() const;
    void setTabs(bool visible);

    std::unique_ptr<TestProject> m_project;
    std::unique_ptr<PropertyEditorView> m_view;
    BasicSetWidget* m_page = nullptr;
    AxisTable* m_axis = nullptr;

private:
    void putList(const char* name, std::initializer_list<const char*> entries);

    QJsonObject m_controller;
    int m_axes = 0;
};
