#pragma once

#include "host/components/PropertyEditorView.h"
#include "sdk/IEditor.h"
#include "tests/communication/ControllerHost.h"
#include "tests/workbench/RunningProgram.h"
#include "workbench/OutputPanel.h"
#include "workbench/online/AxesDifferenceDialog.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabBar>
#include <QWindow>

#include <cmath>
#include <utility>

/// The whole program on a controller in this process, whose axes can be looked at and which misbehaves on command.
class OnlineProgram : public RunningProgram {
public:
    explicit OnlineProgram(const QStringList& axes = { QStringLiteral("Alpha"), QStringLiteral("Beta") })
    {
        create(QStringLiteral("Line"), axes);
    }

    OnlineSession& session() const { return workbench->online().session(); }

    /// Connects to the controller in this process, on this port or its own, and has it take the project's axes over.
    bool connectHere(int port = 0)
    {
        ControllerAddress address = host.address();
        if (port != 0)
            address.port = static_cast<quint16>(port);
        session().connectTo(address, false);
        return waitUntilOnline();
    }

    /// Answers the offer to take axes over, if one comes.
    bool waitUntilOnline() const
    {
        return QTest::qWaitFor([this] { return isOnlineOrAsked(); }, 5000) && acceptOffer();
    }

    /// The same to one that the workbench starts.
    bool connectBuiltIn() const
    {
        workbench->action(QStringLiteral("online.connect"))->trigger();
        return QTest::qWaitFor([this] { return session().state() == OnlineSession::Online; }, 10000);
    }

    /// Opens an axis with its online page in front.
    bool openPage(const QString& axis)
    {
        IEditor* editor = openAxis(axis);
        view = editor ? editor->widget() : nullptr;
        auto* bar = view ? view->findChild<QTabBar*>() : nullptr;
        if (!bar || bar->count() == 0)
            return false;
        bar->setCurrentIndex(bar->count() - 1);
        return QTest::qWaitFor([this] { return find("enterDebugButton")->isVisible(); });
    }

    template <typename Widget = QWidget>
    Widget* find(const char* name) const
    {
        return view->findChild<Widget*>(QLatin1String(name));
    }

    /// Brings a control into sight and gives its centre in the window.
    QPoint placeOf(const char* name) const
    {
        QWidget* control = find(name);
        for (QWidget* parent = control->parentWidget(); parent; parent = parent->parentWidget()) {
            if (auto* area = qobject_cast<QScrollArea*>(parent))
                area->ensureWidgetVisible(control);
        }
        QCoreApplication::processEvents();
        return control->mapTo(&workbench->window(), control->rect().center());
    }

    /// As the boxes of the pages are: every other window is shut off from mouse and keyboard.
    static void showModal(QWidget& box)
    {
        box.setWindowModality(Qt::ApplicationModal);
        box.show();
    }

    QWindow* window() const { return workbench->window().windowHandle(); }
    // Events go to the window, as from a real mouse, so that the program's idea of the buttons follows.
    void press(const char* name, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mousePress(window(), button, {}, placeOf(name));
    }
    void release(const char* name, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseRelease(window(), button, {}, placeOf(name));
    }
    void click(const char* name) const
    {
        press(name);
        release(name);
    }

    bool enterDebugMode() const
    {
        click("enterDebugButton");
        return QTest::qWaitFor([this] { return find("basicTabWidget")->isEnabled(); }, 5000);
    }
    bool enable() const
    {
        click("enablePushButton");
        return QTest::qWaitFor([this] { return find("posJogPushButton")->isEnabled(); }, 5000);
    }
    /// Everything up to an axis that obeys.
    bool makeReady(const QString& axis = QStringLiteral("Alpha"))
    {
        return connectHere() && openPage(axis) && enterDebugMode() && enable();
    }

    bool isMoving(int axisNo = 0) { return host.peek(axisNo).setVelocity != 0; }
    bool moves(int axisNo = 0)
    {
        return QTest::qWaitFor([this, axisNo] { return isMoving(axisNo); }, 3000);
    }
    /// The speed that the axis has reached and keeps; 0 when it keeps none.
    double constantSpeed(int axisNo = 0)
    {
        double speed = 0;
        const bool constant = QTest::qWaitFor([&] {
            const double before = std::exchange(speed, std::fabs(host.peek(axisNo).setVelocity));
            QTest::qSleep(5);
            return speed > 0 && speed == before;
        });
        return constant ? speed : 0;
    }
    bool stands(int milliseconds, int axisNo = 0)
    {
        return QTest::qWaitFor([this, axisNo] { return !isMoving(axisNo); }, milliseconds);
    }

    QString outputText() const { return workbench->window().output().lines().join(QLatin1Char('\n')); }

    ControllerHost host;
    QWidget* view = nullptr;

private:
    bool isOnlineOrAsked() const
    {
        return session().state() == OnlineSession::Online || workbench->online().takeover().offer();
    }
    bool acceptOffer() const
    {
        if (AxesDifferenceDialog* offer = workbench->online().takeover().offer())
            offer->accept();
        // Off the screen nobody else gives the focus back.
        workbench->window().activateWindow();
        return QTest::qWaitForWindowActive(&workbench->window())
            && QTest::qWaitFor([this] { return session().state() == OnlineSession::Online; }, 5000);
    }
};
