#include "workbench/RefusalBubble.h"

#include "host/components/DataVerification.h"
#include "sdk/ServiceKeys.h"
#include "workbench/Theme.h"

#include <QDialog>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

/// A window with two fields, the first of which checks its number once it has lost the focus.
class RefusalBubbleTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aTypedNumberThatIsRefusedIsTold();
    void passingThroughAFieldTellsNothing();
    void aSecondPassTellsNothing();
    void anAcceptedNumberTellsNothing();
    void theBubbleStandsBesideTheField();
    void belowTheLastFieldThereIsNoRoomSoTheBubbleStandsAbove();
    void typingTakesTheBubbleAway();
    void aRefusalOutsideAnyFieldTellsNothing();
    void markupInANumberIsShownAsText();
    void aLongNumberLeavesTheRangeInSight_data();
    void aLongNumberLeavesTheRangeInSight();
    void theSymbolIsThatOfTheThemeInUse();
    void comingBackFromAPopupGoesOnWithTheInput();
    void theWheelTakesTheBubbleAway();
    void aFieldOfAnotherWindowIsToldOfWithoutTheBubble();
    void aDialogThatOpensOverTheFieldLetsTheRefusalBeTold();

private:
    void leave() { QTest::keyClick(first, Qt::Key_Tab); }

    std::unique_ptr<QWidget> window;
    QLineEdit* first = nullptr;
    QLineEdit* second = nullptr;
    RefusalBubble* bubble = nullptr;
    QSignalSpy* refusals = nullptr;
};

void RefusalBubbleTest::init()
{
    window = std::make_unique<QWidget>();
    first = new QLineEdit(QStringLiteral("500"), window.get());
    second = new QLineEdit(window.get());
    auto* layout = new QVBoxLayout(window.get());
    layout->addWidget(first);
    layout->addWidget(second);
    layout->addStretch();
    bubble = new RefusalBubble(window.get());
    refusals = new QSignalSpy(bubble, &RefusalBubble::refused);
    connect(first, &QLineEdit::editingFinished, first, [this] {
        if (first->hasFocus())
            return;
        QString text = first->text();
        if (!DataVerification::getInstance().isValidNumber(text, text.toDouble(), 1, 100, false, false))
            first->setText(QStringLiteral("50"));
    });
    window->resize(400, 300);
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    first->setFocus();
    QTRY_VERIFY(first->hasFocus());
}

void RefusalBubbleTest::cleanup()
{
    delete refusals;
    window.reset();
}

void RefusalBubbleTest::aTypedNumberThatIsRefusedIsTold()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    leave();
    QCOMPARE(refusals->count(), 1);
    const QString text = refusals->first().first().toString();
    QVERIFY2(text.contains(QStringLiteral("150")) && text.contains(QStringLiteral("100")), qPrintable(text));
    QVERIFY(bubble->isVisible());
    QCOMPARE(first->text(), QStringLiteral("50"));
}

void RefusalBubbleTest::passingThroughAFieldTellsNothing()
{
    leave();
    QTRY_VERIFY(second->hasFocus());
    QString text = QStringLiteral("500");
    QVERIFY(!DataVerification::getInstance().isValidNumber(text, 500, 1, 100, false, false));
    QCOMPARE(refusals->count(), 0);
    QVERIFY(!bubble->isVisible());
}

void RefusalBubbleTest::aSecondPassTellsNothing()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    leave();
    QCOMPARE(refusals->count(), 1);
    first->setFocus();
    first->setText(QStringLiteral("500"));
    leave();
    QCOMPARE(refusals->count(), 1);
}

void RefusalBubbleTest::anAcceptedNumberTellsNothing()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("99"));
    leave();
    QCOMPARE(refusals->count(), 0);
    QVERIFY(!bubble->isVisible());
    QCOMPARE(first->text(), QStringLiteral("99"));
}

void RefusalBubbleTest::theBubbleStandsBesideTheField()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    leave();
    QVERIFY(!bubble->geometry().intersects(first->geometry()));
    QVERIFY(bubble->y() - first->geometry().bottom() < 12);
    QVERIFY(window->rect().contains(bubble->geometry()));
}

void RefusalBubbleTest::belowTheLastFieldThereIsNoRoomSoTheBubbleStandsAbove()
{
    QLayout* layout = window->layout();
    layout->removeWidget(first);
    layout->addWidget(first);
    layout->activate();
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    leave();
    QVERIFY(bubble->isVisible());
    QVERIFY(window->rect().contains(bubble->geometry()));
    QVERIFY(!bubble->geometry().intersects(first->geometry()));
    QVERIFY(first->y() - bubble->geometry().bottom() < 12);
}

void RefusalBubbleTest::typingTakesTheBubbleAway()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    leave();
    QVERIFY(bubble->isVisible());
    QTest::keyClicks(second, QStringLiteral("1"));
    QVERIFY(!bubble->isVisible());
}

void RefusalBubbleTest::aRefusalOutsideAnyFieldTellsNothing()
{
    QString text = QStringLiteral("500");
    QVERIFY(!DataVerification::getInstance().isValidNumber(text, 500, 1, 100, false, false));
    QCOMPARE(refusals->count(), 0);
}

void RefusalBubbleTest::markupInANumberIsShownAsText()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("<b>1</b>"));
    leave();
    QCOMPARE(refusals->count(), 1);
    for (const QLabel* label : bubble->findChildren<QLabel*>()) {
        if (!label->text().isEmpty())
            QCOMPARE(label->textFormat(), Qt::PlainText);
    }
}

void RefusalBubbleTest::aLongNumberLeavesTheRangeInSight_data()
{
    QTest::addColumn<int>("digits");
    QTest::addColumn<int>("windowWidth");
    QTest::newRow("400 digits") << 400 << 400;
    QTest::newRow("a small window") << 20 << 300;
}

void RefusalBubbleTest::aLongNumberLeavesTheRangeInSight()
{
    QFETCH(int, digits);
    QFETCH(int, windowWidth);
    window->resize(windowWidth, 300);
    QString text(digits, QLatin1Char('9'));
    first->selectAll();
    QTest::keyClicks(first, text);
    leave();
    QCOMPARE(refusals->count(), 1);
    const QString told = refusals->first().first().toString();
    QVERIFY2(told.size() < 120 && told.contains(QStringLiteral("100")), qPrintable(told));
    QVERIFY(window->rect().contains(bubble->geometry()));
    for (const QLabel* label : bubble->findChildren<QLabel*>()) {
        const QRect needed = label->fontMetrics().boundingRect(label->contentsRect(), Qt::TextWordWrap, label->text());
        QVERIFY(bubble->rect().contains(label->geometry()));
        QVERIFY2(label->contentsRect().contains(needed), qPrintable(label->text()));
    }
}

void RefusalBubbleTest::theSymbolIsThatOfTheThemeInUse()
{
    Theme::prepare();
    // The window was there before the first theme.
    for (const QString& theme : { Solution::ThemeName::light(), Solution::ThemeName::dark() }) {
        Theme::apply(theme);
        first->setFocus();
        first->selectAll();
        QTest::keyClicks(first, QStringLiteral("150"));
        leave();
        QVERIFY(bubble->isVisible());
        const auto* symbol = bubble->findChild<QLabel*>(QStringLiteral("refusalSymbol"));
        QVERIFY(symbol->pixmap());
        const QImage wanted = QIcon::fromTheme(QStringLiteral("dialog-warning")).pixmap(16, 16).toImage();
        QVERIFY(!wanted.isNull());
        QCOMPARE(symbol->pixmap()->toImage(), wanted);
    }
}

void RefusalBubbleTest::aDialogThatOpensOverTheFieldLetsTheRefusalBeTold()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    // As file dialogs do it.
    QDialog dialog(window.get());
    auto* name = new QLineEdit(&dialog);
    name->setFocus();
    dialog.show();
    QTRY_VERIFY(name->hasFocus());
    QCOMPARE(refusals->count(), 1);
    QCOMPARE(first->text(), QStringLiteral("50"));
}

void RefusalBubbleTest::comingBackFromAPopupGoesOnWithTheInput()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    QFocusEvent back(QEvent::FocusIn, Qt::PopupFocusReason);
    QApplication::sendEvent(first, &back);
    leave();
    QCOMPARE(refusals->count(), 1);
}

void RefusalBubbleTest::theWheelTakesTheBubbleAway()
{
    first->selectAll();
    QTest::keyClicks(first, QStringLiteral("150"));
    leave();
    QVERIFY(bubble->isVisible());
    QWheelEvent wheel(QPointF(5, 5), second->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, 120), Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(second, &wheel);
    QVERIFY(!bubble->isVisible());
}

void RefusalBubbleTest::aFieldOfAnotherWindowIsToldOfWithoutTheBubble()
{
    QWidget dialog;
    auto* field = new QLineEdit(&dialog);
    connect(field, &QLineEdit::editingFinished, field, [field] {
        QString text = field->text();
        DataVerification::getInstance().isValidNumber(text, text.toDouble(), 1, 100, false, false);
    });
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    field->setFocus();
    QTRY_VERIFY(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("150"));
    field->clearFocus();
    QCOMPARE(refusals->count(), 1);
    QVERIFY(!bubble->isVisible());
}

QTEST_MAIN(RefusalBubbleTest)
#include "RefusalBubbleTest.moc"
