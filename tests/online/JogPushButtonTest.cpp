#include "online/JogPushButton.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

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
    void aDoublePressBeginsAgainOnlyWithItsSecondPress();

private:
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

void JogPushButtonTest::otherButtonsDoNothing_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("the right button") << int(Qt::RightButton);
    QTest::newRow("the middle button") << int(Qt::MiddleButton);
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

void JogPushButtonTest::aDoublePressBeginsAgainOnlyWithItsSecondPress()
{
    QTest::mouseClick(m_button, Qt::LeftButton);
    QTest::mousePress(m_button, Qt::LeftButton);
    QTRY_COMPARE(m_pressed->count(), 1);
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QCOMPARE(m_released->count(), 2);
}

QTEST_MAIN(JogPushButtonTest)
#include "JogPushButtonTest.moc"
