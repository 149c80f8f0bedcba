#pragma once

#include "host/projectmodel/AxisTable.h"
#include "online/OnlineDebugWidget.h"
#include "protocol/AxisRefLayout.h"
#include "sdk/ServiceKeys.h"
#include "tests/online/RecordingDebug.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QLineEdit>
#include <QtTest>

#include <cstring>
#include <memory>

/// A page for one pulse axis with "AxisNo" 3 in a host that is on line.
struct OnlinePageFixture {
    explicit OnlinePageFixture(const QString& typeWord = QStringLiteral("Axis_Pulse"))
        : axis(project.addAxis(QStringLiteral("Feeder"), typeWord))
    {
        axis->setProperty(QStringLiteral("AxisNo"), QStringLiteral("3"));
        host.objectTable.insert(Solution::ServiceKey::motionControlDebug(), &debug);
        host.transfer.setOnline(true);
    }

    OnlineDebugWidget& makePage()
    {
        page = std::make_unique<OnlineDebugWidget>(project.name(), axis->id(), nullptr);
        return *page;
    }

    /// Shows the page in an active window, as a user has it before commanding.
    void show()
    {
        page->show();
        page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(page.get()));
    }

    template <typename Widget = QWidget>
    Widget* control(const char* name) const
    {
        auto* found = page->findChild<Widget*>(QString::fromLatin1(name));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }

    QLineEdit* field(const char* name) const { return control<QLineEdit>(name); }

    static QByteArray reply(const AxisRef& status)
    {
        return QByteArray(reinterpret_cast<const char*>(&status), sizeof status);
    }

    static AxisRef status(quint16 state, bool debugMode = false)
    {
        AxisRef result;
        std::memset(&result, 0, sizeof result);
        result.axisState = state;
        result.debugMode = debugMode ? 1 : 0;
        return result;
    }

    void receive(const AxisRef& status) { page->axisDebugGetAxisRef(reply(status)); }

    TestHost host;
    TestProject project{ QStringLiteral("NV3T_70Q12") };
    AxisTable* axis;
    RecordingDebug debug;
    MessageBoxWatcher boxes;
    std::unique_ptr<OnlineDebugWidget> page;
};
