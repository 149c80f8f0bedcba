#include "tests/online/OnlinePageFixture.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/RecordingTranslator.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

#include <optional>

/// In which context each text of the online page is looked up, and which are shown as they are.
class OnlineDebugTextsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void failuresAreLookedUpForAllObjects_data();
    void failuresAreLookedUpForAllObjects();
    void warningsAreLookedUpForAllObjects();
    void theQuestionIsLookedUpForThePage();
    void typesAreLookedUpForThePageAndSortedAsShown();
    void headersAndRowsAreLookedUpForThePage();
    void textsOfTheFormAreLookedUpForThePage();
    void statesOfTheReplyAreShownAsTheyAre();

private:
    std::optional<RecordingTranslator> translator;
    std::optional<OnlinePageFixture> m;
};

void OnlineDebugTextsTest::init()
{
    translator.emplace();
    m.emplace();
    m->makePage();
}

void OnlineDebugTextsTest::cleanup()
{
    m.reset();
    translator.reset();
}

void OnlineDebugTextsTest::failuresAreLookedUpForAllObjects_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("text");
    const std::pair<const char*, const char*> rows[] = {
        { "axisDebugEnterDebugMode", "Failed to enter Debug menu!,%1" },
        { "axisDebugSetEnable", "Setting enable failed!,%1" },
        { "axisDebugSetPosition", "Failed to set preset position!,%1" },
        { "axisDebugSetHomeOffset", "Failed to set back to original offset!,%1" },
        { "axisDebugSetVelRatio", "Failed to set speed multiplier!,%1" },
        { "axisDebugSetHome", "Returning to the original state failed!,%1" },
        { "axisDebugSetStop", "Stop failed!,%1" },
        { "axisDebugMoveAbs", "FAIL TO START!,%1" },
        { "axisDebugMoveRel", "FAIL TO START!,%1" },
        { "axisDebugMoveVel", "FAIL TO START!,%1" },
        { "axisDebugJopPos", "Forward jog failure!,%1" },
        { "axisDebugJopNeg", "Negative jog failure,%1" },
        { "axisDebugReset", "Reset failed!,%1" },
    };
    for (const auto& [slot, text] : rows)
        QTest::newRow(slot) << QByteArray(slot) << QString::fromLatin1(text);
}

void OnlineDebugTextsTest::failuresAreLookedUpForAllObjects()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, text);
    QVERIFY(QMetaObject::invokeMethod(m->page.get(), slot.constData(), Q_ARG(qint16, 5)));
    QCOMPARE(m->boxes.count(), 1);
    const MessageBoxWatcher::Box& box = m->boxes.boxes.first();
    QCOMPARE(box.text, QString(QLatin1String("QObject|") + text.arg(QStringLiteral("text 5"))));
    QCOMPARE(box.title, QStringLiteral("QObject|Kestrun"));
    QCOMPARE(box.buttons, QStringList({ QStringLiteral("QObject|OK") }));
    QCOMPARE(box.icon, QMessageBox::Information);
    QVERIFY(!box.hasParent);
}

void OnlineDebugTextsTest::warningsAreLookedUpForAllObjects()
{
    m->host.transfer.setDirectLogin(true);
    m->control<QPushButton>("enterDebugButton")->click();
    m->receive(OnlinePageFixture::status(1, true));
    const QString state = m->field("statueLineEdit")->text();
    m->control<QPushButton>("enablePushButton")->click();
    QCOMPARE(m->boxes.texts(),
        QStringList({ QStringLiteral("QObject|Direct login mode does not support axis online debugging."),
            QStringLiteral("QObject|State: %1 ,Please reset first").arg(state) }));
}

void OnlineDebugTextsTest::theQuestionIsLookedUpForThePage()
{
    QStringList questions;
    ModalDialogDriver driver;
    for (int i = 0; i < 2; ++i)
        driver.next([&](QDialog* dialog) {
            questions.append(dialog->findChild<QLabel*>()->text());
            dialog->accept();
        });
    auto* box = m->control<QCheckBox>("speedMultiplierCheckBox");
    m->receive(OnlinePageFixture::status(3, true));
    box->click();
    box->click();
    QCOMPARE(questions,
        QStringList({ QStringLiteral("OnlineDebugWidget|Set the current speed multiplier?"),
            QStringLiteral("OnlineDebugWidget|Cancel the speed multiplier setting?") }));
}

void OnlineDebugTextsTest::typesAreLookedUpForThePageAndSortedAsShown()
{
    const auto textsOf = [this](const char* name) {
        const auto* box = m->control<QComboBox>(name);
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts.append(box->itemText(i));
        return texts;
    };
    QCOMPARE(textsOf("motionTypeComboBox"),
        QStringList({ QStringLiteral("OnlineDebugWidget|Absolute positioning"),
            QStringLiteral("OnlineDebugWidget|Continuous motion"),
            QStringLiteral("OnlineDebugWidget|Relative positioning") }));
    QCOMPARE(textsOf("curveTypeComboBox"),
        QStringList({ QStringLiteral("OnlineDebugWidget|S_type"), QStringLiteral("OnlineDebugWidget|trapezoid") }));
    QCOMPARE(m->control<QComboBox>("motionTypeComboBox")->currentText(),
        QStringLiteral("OnlineDebugWidget|Absolute positioning"));
    QCOMPARE(m->control<QComboBox>("curveTypeComboBox")->currentText(), QStringLiteral("OnlineDebugWidget|trapezoid"));
}

void OnlineDebugTextsTest::headersAndRowsAreLookedUpForThePage()
{
    const QAbstractItemModel& variables = *m->control<QTableView>("varTableView")->model();
    for (int column = 0; column < variables.columnCount(); ++column) {
        const QString header = variables.headerData(column, Qt::Horizontal).toString();
        QVERIFY2(header.isEmpty() || header.startsWith(QLatin1String("OnlineDebugWidget|")), qPrintable(header));
    }
    for (int row = 0; row < variables.rowCount(); ++row)
        QVERIFY(variables.index(row, 0).data().toString().startsWith(QLatin1String("OnlineDebugWidget|")));
    const QAbstractItemModel& states = *m->control<QTableView>("runStatusView")->model();
    for (int column = 0; column < states.columnCount(); ++column) {
        const QString header = states.headerData(column, Qt::Horizontal).toString();
        QVERIFY2(header.startsWith(QLatin1String("OnlineDebugWidget|")), qPrintable(header));
    }
    QCOMPARE(states.index(0, 0).data().toString(), QStringLiteral("OnlineDebugWidget|Status"));
}

void OnlineDebugTextsTest::textsOfTheFormAreLookedUpForThePage()
{
    const QList<QPushButton*> buttons = m->page->findChildren<QPushButton*>();
    QVERIFY(!buttons.isEmpty());
    for (const QPushButton* button : buttons)
        QVERIFY2(button->text().startsWith(QLatin1String("OnlineDebugWidget|")), qPrintable(button->text()));
    const QList<QLabel*> labels = m->page->findChildren<QLabel*>();
    QCOMPARE(labels.size(), 19);
    for (const QLabel* label : labels)
        QVERIFY2(label->text().startsWith(QLatin1String("OnlineDebugWidget|")), qPrintable(label->text()));
    QCOMPARE(m->control<QTabWidget>("basicTabWidget")->tabText(0), QStringLiteral("OnlineDebugWidget|Basic"));
}

void OnlineDebugTextsTest::statesOfTheReplyAreShownAsTheyAre()
{
    AxisRef status = OnlinePageFixture::status(4);
    status.communication = 1;
    status.servoError = 2;
    m->receive(status);
    QCOMPARE(m->field("comLineEdit")->text(), QStringLiteral("ON"));
    QCOMPARE(m->field("servoErrorLineEdit")->text(), QStringLiteral("Error"));
    status.communication = 0;
    status.servoError = 0;
    m->receive(status);
    QCOMPARE(m->field("comLineEdit")->text(), QStringLiteral("OFF"));
    QCOMPARE(m->field("servoErrorLineEdit")->text(), QStringLiteral("No error"));
}

QTEST_MAIN(OnlineDebugTextsTest)
#include "OnlineDebugTextsTest.moc"
