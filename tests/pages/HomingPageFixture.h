#pragma once

#include "host/components/CLineEdit.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "pages/OriginReturnSetWidget.h"
#include "sdk/ServiceKeys.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

#include <memory>

/// The homing page of a pulse axis in a project with a program Main that has the BOOL "flag" and the INT "counter".
/// Base of the page's tests.
class HomingPageFixture {
protected:
    /// The names of one of the three signals.
    struct SignalRow {
        const char* box;
        const char* pin;
        const char* button;
        const char* positive;
        const char* negative;
        const char* group;
        const char* enableKey;
        const char* pinKey;
        const char* logicKey;
        const char* viewKey;
    };
    static constexpr SignalRow signalRows[] = {
        { "checkBox_1", "lineEditPos", "toolButtonPos", "radioButton_1", "radioButton_2", "groupBox", "PosLimitEnable",
            "PosLimitPin", "PosLimitLogic", "LineEditPosObjectName" },
        { "checkBox_2", "lineEditNeg", "toolButtonNeg", "radioButton_3", "radioButton_4", "groupBox_2",
            "NegsLimitEnable", "NegLimitPin", "NegLimitLogic", "LineEditNegObjectName" },
        { "checkBox_3", "lineEditOrg", "toolButtonOrg", "radioButton_5", "radioButton_6", "groupBox_3",
            "OrgSignalEnable", "OrgSignalPin", "OrgSignalLogic", "LineEditOrgObjectName" },
    };
    /// Column "row" with a row for each signal.
    static void eachSignal();
    static QString latin(const char* text) { return QString::fromLatin1(text); }

    /// Around each test.
    void start();
    void stop();

    void makePage();
    /// Shows it in an active window, so that keys reach its fields.
    void show();
    /// Ticks a signal's box in the record.
    void enable(const SignalRow& row) { store(row.enableKey, QStringLiteral("TRUE")); }

    template <typename Widget = QWidget>
    Widget* control(const char* name) const
    {
        auto* found = m_page->findChild<Widget*>(latin(name));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }
    QString stored(const char* key) const { return m_axis->property(latin(key), QString()); }
    void store(const char* key, const QString& text) { m_axis->setProperty(latin(key), text); }
    /// Calls a slot of the page that takes one argument or none.
    template <typename... Argument>
    void call(const char* slot, Argument... arguments)
    {
        if (!QMetaObject::invokeMethod(m_page.get(), slot, arguments...))
            qFatal("no slot %s", slot);
    }
    /// Types over what a field holds and leaves it.
    void enter(const char* name, const QString& text);

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    std::unique_ptr<MessageBoxWatcher> m_boxes;
    AxisTable* m_axis = nullptr;
    std::unique_ptr<OriginReturnSetWidget> m_page;
};
