#include "online/JogPushButton.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

namespace {

/// Notes the presses and releases of the mouse that reach a widget.
class MouseEvents : public QObject {
public:
    explicit MouseEvents(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease)
            types.append(event->type());
        return QObject::eventFilter(watched, event);
    }

    QVector<QEvent::Type> types;
};

} // namespace

class JogPushButtonTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void signalsStandInTheirOrder();
    void theTimerRunsOnceForTwoHundredMilliseconds();
    void aHeldPressBeginsOnceAndEndsAtTheRelease();
    void aTapOnlyEnds();
    void aPressThatLosesTheFocusOnlyEnds();
    void aReleaseAwayFromTheButtonEnds();
    void otherButtonsDoNothing_data();
    void otherButtonsDoNothing();
    void theSpaceBarMovesNothing();
    void aDisabledButtonTakesNoPress();
    void aDoublePressBeginsAgainOnlyWithItsSecondPress_data();
    void aDoublePressBeginsAgainOnlyWithItsSecondPress();
    void thePressIsThatOfAnyButton();
    void theEndIsReportedWhileTheButtonIsDown();
    void everyClickIsOneClick();
    void pressesOfOtherButtonsGoOnToTheWindow_data();
    void pressesOfOtherButtonsGoOnToTheWindow();
    void theRightButtonLeavesAHoldAlone();

private:
    static void otherButtons();
    /// Events of the window, as from a real mouse, so that each tells of all buttons that are held.
    void pressInWindow(Qt::MouseButton button) const
    {
        QTest::mousePress(m_window->windowHandle(), button, Qt::NoModifier, place());
    }
    void releaseInWindow(Qt::MouseButton button) const
    {
        QTest::mouseRelease(m_window->windowHandle(), button, Qt::NoModifier, place());
    }
    QPoint place() const { return m_button->mapTo(m_window.get(), m_button->rect().center()); }
    QTimer* timer() const { return m_button->findChild<QTimer*>(); }

    std::unique_ptr<QWidget> m_window;
    JogPushButton* m_button = nullptr;
    QLineEdit* m_other = nullptr;
    std::unique_ptr<QSignalSpy> m_pressed;
    std::unique_ptr<QSignalSpy> m_released;
};

void JogPushButtonTest::init()
{
    m_window = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(m_window.get());
    m_button = new JogPushButton(m_window.get());
    m_other = new QLineEdit(m_window.get());
    layout->addWidget(m_other);
    layout->addWidget(m_button);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_pressed = std::make_unique<QSignalSpy>(m_button, &JogPushButton::jogPressed);
    m_released = std::make_unique<QSignalSpy>(m_button, &JogPushButton::jogReleased);
}

void JogPushButtonTest::cleanup()
{
    m_window.reset();
}

void JogPushButtonTest::signalsStandInTheirOrder()
{
    const QMetaObject& meta = JogPushButton::staticMetaObject;
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("jogPressed()"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("jogReleased()"));
    QCOMPARE(meta.method(meta.methodOffset() + 2).methodSignature(), QByteArray("onTimeout()"));
    QCOMPARE(meta.method(meta.methodOffset() + 2).access(), QMetaMethod::Private);
}

void JogPushButtonTest::theTimerRunsOnceForTwoHundredMilliseconds()
{
    QVERIFY(timer()->isSingleShot());
    QCOMPARE(timer()->parent(), m_button);
    QTest::mousePress(m_button, Qt::LeftButton);
    QVERIFY(timer()->isActive());
    QCOMPARE(timer()->interval(), 200);
    QTest::mouseRelease(m_button, Qt::LeftButton);
}

void JogPushButtonTest::aHeldPressBeginsOnceAndEndsAtTheRelease()
{
    QTest::mousePress(m_button, Qt::LeftButton);
    QVERIFY(m_pressed->isEmpty());
    QTRY_COMPARE(m_pressed->count(), 1);
    QVERIFY(!timer()->isActive());
    QVERIFY(m_released->isEmpty());
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QCOMPARE(m_pressed->count(), 1);
    QCOMPARE(m_released->count(), 1);
}

void JogPushButtonTest::aTapOnlyEnds()
{
    QTest::mouseClick(m_button, Qt::LeftButton);
    QVERIFY(!timer()->isActive());
    QVERIFY(m_pressed->isEmpty());
    QCOMPARE(m_released->count(), 1);
}

void JogPushButtonTest::aPressThatLosesTheFocusOnlyEnds()
{
    QTest::mousePress(m_button, Qt::LeftButton);
    m_other->setFocus();
    QTRY_VERIFY(!timer()->isActive());
    QVERIFY(m_pressed->isEmpty());
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QCOMPARE(m_released->count(), 1);
}

void JogPushButtonTest::aReleaseAwayFromTheButtonEnds()
{
    QTest::mousePress(m_button, Qt::LeftButton);
    QTRY_COMPARE(m_pressed->count(), 1);
    QTest::mouseMove(m_button, QPoint(-50, -50));
    QTest::mouseRelease(m_button, Qt::LeftButton, Qt::NoModifier, QPoint(-50, -50));
    QCOMPARE(m_released->count(), 1);
}

void JogPushButtonTest::otherButtons()
{
    QTest::addColumn<int>("button");
    QTest::newRow("the right button") << int(Qt::RightButton);
    QTest::newRow("the middle button") << int(Qt::MiddleButton);
}

void JogPushButtonTest::otherButtonsDoNothing_data()
{
    otherButtons();
}

void JogPushButtonTest::otherButtonsDoNothing()
{
    QFETCH(int, button);
    const auto mouseButton = static_cast<Qt::MouseButton>(button);
    QTest::mousePress(m_button, mouseButton);
    QVERIFY(!timer()->isActive());
    QTest::mouseRelease(m_button, mouseButton);
    QVERIFY(m_pressed->isEmpty());
    QVERIFY(m_released->isEmpty());
}

void JogPushButtonTest::theSpaceBarMovesNothing()
{
    QSignalSpy clicked(m_button, &QPushButton::clicked);
    m_button->setFocus();
    QTest::keyClick(m_button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(!timer()->isActive());
    QVERIFY(m_pressed->isEmpty());
    QVERIFY(m_released->isEmpty());
}

void JogPushButtonTest::aDisabledButtonTakesNoPress()
{
    m_button->setEnabled(false);
    QTest::mousePress(m_button, Qt::LeftButton);
    QVERIFY(!timer()->isActive());
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QVERIFY(m_released->isEmpty());
}

void JogPushButtonTest::aDoublePressBeginsAgainOnlyWithItsSecondPress_data()
{
    QTest::addColumn<bool>("doubleClick");
    QTest::newRow("two presses") << false;
    QTest::newRow("a double click") << true;
}

void JogPushButtonTest::aDoublePressBeginsAgainOnlyWithItsSecondPress()
{
    QFETCH(bool, doubleClick);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QVERIFY(!timer()->isActive());
    // The event of a double click stands in the place of the second press.
    if (doubleClick)
        QTest::mouseDClick(m_button, Qt::LeftButton);
    else
        QTest::mousePress(m_button, Qt::LeftButton);
    QVERIFY(timer()->isActive());
    QVERIFY(m_button->isDown());
    QTRY_COMPARE(m_pressed->count(), 1);
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QCOMPARE(m_pressed->count(), 1);
    QCOMPARE(m_released->count(), 2);
}

void JogPushButtonTest::thePressIsThatOfAnyButton()
{
    bool runningThen = false;
    connect(m_button, &QPushButton::pressed, this, [&] { runningThen = timer()->isActive(); });
    QSignalSpy pressed(m_button, &QPushButton::pressed);
    QTest::mousePress(m_button, Qt::LeftButton);
    QVERIFY(m_button->isDown());
    QCOMPARE(pressed.count(), 1);
    QVERIFY(runningThen);
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QVERIFY(!m_button->isDown());
}

void JogPushButtonTest::theEndIsReportedWhileTheButtonIsDown()
{
    bool downThen = false;
    int clicksThen = -1;
    bool runningThen = true;
    QSignalSpy clicked(m_button, &QPushButton::clicked);
    connect(m_button, &JogPushButton::jogReleased, this, [&] {
        downThen = m_button->isDown();
        clicksThen = clicked.count();
        runningThen = timer()->isActive();
    });
    QTest::mouseClick(m_button, Qt::LeftButton);
    QVERIFY(downThen);
    QCOMPARE(clicksThen, 0);
    QVERIFY(!runningThen);
    QVERIFY(!m_button->isDown());
}

void JogPushButtonTest::everyClickIsOneClick()
{
    QSignalSpy clicked(m_button, &QPushButton::clicked);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    QTest::mousePress(m_button, Qt::LeftButton);
    QTRY_COMPARE(m_pressed->count(), 1);
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 2);
    // Nor is it one that is let go elsewhere.
    QTest::mousePress(m_button, Qt::LeftButton);
    QTest::mouseRelease(m_button, Qt::LeftButton, Qt::NoModifier, QPoint(-50, -50));
    QCOMPARE(clicked.count(), 2);
}

void JogPushButtonTest::pressesOfOtherButtonsGoOnToTheWindow_data()
{
    otherButtons();
}

void JogPushButtonTest::pressesOfOtherButtonsGoOnToTheWindow()
{
    QFETCH(int, button);
    const auto mouseButton = static_cast<Qt::MouseButton>(button);
    MouseEvents events(*m_window);
    // What no button takes its parents are asked for.
    QTest::mousePress(m_button, mouseButton);
    QTest::mouseRelease(m_button, mouseButton);
    QCOMPARE(events.types, QVector<QEvent::Type>({ QEvent::MouseButtonPress, QEvent::MouseButtonRelease }));
    events.types.clear();
    QTest::mouseClick(m_button, Qt::LeftButton);
    QVERIFY(events.types.isEmpty());
}

void JogPushButtonTest::theRightButtonLeavesAHoldAlone()
{
    pressInWindow(Qt::LeftButton);
    QTRY_VERIFY(timer()->remainingTime() < 150);
    pressInWindow(Qt::RightButton);
    QVERIFY(timer()->remainingTime() < 150);
    releaseInWindow(Qt::RightButton);
    QVERIFY(m_released->isEmpty());
    QVERIFY(m_button->isDown());
    QTRY_COMPARE(m_pressed->count(), 1);
    pressInWindow(Qt::RightButton);
    QVERIFY(!timer()->isActive());
    // The left button's release ends it, whatever else is held.
    releaseInWindow(Qt::LeftButton);
    QCOMPARE(m_released->count(), 1);
    releaseInWindow(Qt::RightButton);
    QCOMPARE(m_pressed->count(), 1);
    QCOMPARE(m_released->count(), 1);
}

QTEST_MAIN(JogPushButtonTest)
#include "JogPushButtonTest.moc"
