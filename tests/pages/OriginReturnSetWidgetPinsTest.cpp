#include "host/components/TypeAssistant.h"
#include "tests/pages/HomingPageFixture.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/NumberTyping.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QPointer>
#include <QTreeWidget>

/// What a user types, completes or picks as a pin, and the check that it goes through.
class OriginReturnSetWidgetPinsTest : public QObject, private HomingPageFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void pinsCommitThroughTheCheck_data();
    void pinsCommitThroughTheCheck();
    void badTextsAreRefusedInTheField_data();
    void badTextsAreRefusedInTheField();
    void aCompletionGoesThroughTheCheck_data();
    void aCompletionGoesThroughTheCheck();
    void thePickerOffersTheBooleansOfTheProject();
    void thePickerPutsItsChoiceThroughTheCheck();
    void aPickedVariableThatIsNoBoolIsRefused();
    void thePickerChangesNothing_data();
    void thePickerChangesNothing();
    void aPageClosedUnderTheMessageIsSurvived();
    void aProjectClosedUnderTheMessageIsSurvived();
};

void OriginReturnSetWidgetPinsTest::pinsCommitThroughTheCheck_data()
{
    eachSignal();
}

void OriginReturnSetWidgetPinsTest::pinsCommitThroughTheCheck()
{
    QFETCH(int, row);
    const SignalRow& signal = signalRows[row];
    m_axis->setProperty(latin(signal.enableKey), QStringLiteral("TRUE"));
    makePage();
    control<CLineEdit>(signal.pin)->setEnableComplete(false);
    show();
    enter(signal.pin, QStringLiteral("%QX7.3"));
    QCOMPARE(stored(signal.pinKey), QStringLiteral("%QX7.3"));
    enter(signal.pin, QStringLiteral("abc"));
    QCOMPARE(m_boxes->texts(), QStringList({ QStringLiteral(" not a valid bit address!") }));
    QCOMPARE(control<QLineEdit>(signal.pin)->text(), QStringLiteral("%QX7.3"));
    QCOMPARE(stored(signal.pinKey), QStringLiteral("%QX7.3"));
    // Return commits a pin, unlike a number.
    auto* pin = control<QLineEdit>(signal.pin);
    pin->setFocus();
    pin->selectAll();
    QTest::keyClicks(pin, QStringLiteral("Main.flag"));
    QTest::keyClick(pin, Qt::Key_Return);
    QCOMPARE(stored(signal.pinKey), QStringLiteral("Main.flag"));
}

void OriginReturnSetWidgetPinsTest::thePickerPutsItsChoiceThroughTheCheck()
{
    for (const SignalRow& signal : signalRows) {
        m_axis->setProperty(latin(signal.enableKey), QStringLiteral("TRUE"));
        makePage();
        show();
        ModalDialogDriver dialogs([](QDialog* dialog) {
            auto* picker = qobject_cast<TypeAssistant*>(dialog);
            QVERIFY(picker);
            QVERIFY(!picker->parent());
            picker->chosenTexts = QStringList({ QStringLiteral("Main.flag"), QStringLiteral("Main.other") });
            picker->QDialog::done(QDialog::Accepted);
        });
        QTest::mouseClick(control(signal.button), Qt::LeftButton);
        QCOMPARE(dialogs.count, 1);
        QCOMPARE(control<QLineEdit>(signal.pin)->text(), QStringLiteral("Main.flag"));
        QCOMPARE(stored(signal.pinKey), QStringLiteral("Main.flag"));
        QVERIFY(!control(signal.pin)->hasFocus());
    }
    QCOMPARE(m_boxes->count(), 0);
}

void OriginReturnSetWidgetPinsTest::aPickedVariableThatIsNoBoolIsRefused()
{
    m_axis->setProperty(QStringLiteral("OrgSignalEnable"), QStringLiteral("TRUE"));
    makePage();
    show();
    ModalDialogDriver dialogs([](QDialog* dialog) {
        qobject_cast<TypeAssistant*>(dialog)->chosenTexts = QStringList({ QStringLiteral("Main.counter") });
        dialog->QDialog::done(QDialog::Accepted);
    });
    QTest::mouseClick(control("toolButtonOrg"), Qt::LeftButton);
    QCOMPARE(m_boxes->texts(), QStringList({ QStringLiteral("Main.counter is not of Boolean type!") }));
    QCOMPARE(control<QLineEdit>("lineEditOrg")->text(), QStringLiteral("%IX0.0"));
    QCOMPARE(stored("OrgSignalPin"), QStringLiteral("%IX0.0"));
}

void OriginReturnSetWidgetPinsTest::thePickerChangesNothing_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("when it is cancelled") << false;
    QTest::newRow("when it is accepted without a choice") << true;
}

void OriginReturnSetWidgetPinsTest::thePickerChangesNothing()
{
    QFETCH(bool, accepted);
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    makePage();
    show();
    ModalDialogDriver dialogs([accepted](QDialog* dialog) {
        if (!accepted)
            qobject_cast<TypeAssistant*>(dialog)->chosenTexts = QStringList({ QStringLiteral("Main.flag") });
        dialog->QDialog::done(accepted ? QDialog::Accepted : QDialog::Rejected);
    });
    QTest::mouseClick(control("toolButtonPos"), Qt::LeftButton);
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(control<QLineEdit>("lineEditPos")->text(), QStringLiteral("%IX100.0"));
    QCOMPARE(stored("PosLimitPin"), QStringLiteral("%IX100.0"));
}

void OriginReturnSetWidgetPinsTest::aPageClosedUnderTheMessageIsSurvived()
{
    m_axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
    makePage();
    control<QLineEdit>("lineEditPos")->setText(QStringLiteral("abc"));
    m_boxes->meanwhile([this] { m_page.reset(); });
    call("onLineEditPosTextChanged");
    QVERIFY(!m_page);
    QCOMPARE(stored("PosLimitPin"), QStringLiteral("%IX100.0"));
}

void OriginReturnSetWidgetPinsTest::badTextsAreRefusedInTheField_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    const QString noBit = QStringLiteral(" not a valid bit address!");
    const QString incomplete = QStringLiteral("Please enter the complete application path of the variable!");
    QTest::newRow("nothing") << "" << noBit;
    QTest::newRow("blanks") << "   " << noBit;
    QTest::newRow("ten thousand characters") << QString(10000, QLatin1Char('a')) << noBit;
    QTest::newRow("a percent sign") << "%" << noBit;
    QTest::newRow("an area and a size") << "%IX" << noBit;
    QTest::newRow("a number that is too large") << "%IX99999999999.9" << noBit;
    QTest::newRow("an output bit") << "%QX0.0" << QString();
    QTest::newRow("a word") << "%IW0" << noBit;
    QTest::newRow("two points") << ".." << noBit;
    QTest::newRow("a point first") << ".a" << noBit;
    QTest::newRow("a point last") << "a." << noBit;
    QTest::newRow("an empty segment") << "Main..flag" << noBit;
    QTest::newRow("an unknown name") << "abc" << noBit;
    QTest::newRow("other letters") << QStringLiteral("\u5f00\u5173") << noBit;
    QTest::newRow("a line break") << "Main.\nflag" << noBit;
    QTest::newRow("a line break behind an address") << "%IX0.0\n" << noBit;
    QTest::newRow("markup") << "<b>" << noBit;
    QTest::newRow("markup around a variable") << "<b>Main.flag</b>" << noBit;
    QTest::newRow("a picture") << "<img src='x'>" << noBit;
    QTest::newRow("a bare global") << "ready" << QString(QStringLiteral("ready") + incomplete);
    QTest::newRow("a bit of a word") << "IO.word.3" << QString(QStringLiteral("IO.word.3") + incomplete);
    QTest::newRow("an INT") << "Main.counter" << QStringLiteral("Main.counter is not of Boolean type!");
}

void OriginReturnSetWidgetPinsTest::badTextsAreRefusedInTheField()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    m_project->addSource(
        QStringLiteral("IO"), QStringLiteral("VAR_GLOBAL\n  ready : BOOL;\n  word : WORD;\nEND_VAR\n"));
    enable(signalRows[2]);
    makePage();
    control<CLineEdit>("lineEditOrg")->setEnableComplete(false);
    show();
    m_boxes->meanwhile([] {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        QCOMPARE(box->textFormat(), Qt::PlainText);
    });
    auto* field = control<QLineEdit>("lineEditOrg");
    NumberTyping::enter(field, text, NumberTyping::Paste);
    QTest::keyClick(field, Qt::Key_Tab);
    QCOMPARE(m_boxes->texts(), message.isEmpty() ? QStringList() : QStringList(message));
    QCOMPARE(stored("OrgSignalPin"), message.isEmpty() ? text : QStringLiteral("%IX0.0"));
    QCOMPARE(field->text(), stored("OrgSignalPin"));
}

void OriginReturnSetWidgetPinsTest::aCompletionGoesThroughTheCheck_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("taken");
    QTest::newRow("a variable that fits") << "Main.fl"
                                          << "Main.flag";
    QTest::newRow("one that has gone meanwhile") << "Main.go"
                                                 << "%IX100.0";
}

void OriginReturnSetWidgetPinsTest::aCompletionGoesThroughTheCheck()
{
    QFETCH(QString, written);
    QFETCH(QString, taken);
    enable(signalRows[0]);
    makePage();
    control<CLineEdit>("lineEditPos")->setCompletions({ QStringLiteral("Main.flag"), QStringLiteral("Main.gone") });
    show();
    auto* field = control<QLineEdit>("lineEditPos");
    NumberTyping::replace(field, written);
    QVERIFY(field->completer());
    QAbstractItemView* list = field->completer()->popup();
    QTRY_VERIFY(list->isVisible());
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(stored("PosLimitPin"), taken);
    QCOMPARE(field->text(), taken);
    QCOMPARE(m_boxes->count(), taken == QLatin1String("Main.flag") ? 0 : 1);
}

void OriginReturnSetWidgetPinsTest::thePickerOffersTheBooleansOfTheProject()
{
    enable(signalRows[1]);
    store("NegLimitPin", QStringLiteral("Main.flag2"));
    m_project->addSource(QStringLiteral("Main"),
        QStringLiteral("PROGRAM Main\nVAR\n flag : BOOL;\n counter : INT;\n flag2 : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    // Another project is the current one: the picker must not offer its variables.
    TestProject other(QStringLiteral("NV3T_70Q12"), QStringLiteral("Current"));
    other.addSource(
        QStringLiteral("Aside"), QStringLiteral("PROGRAM Aside\nVAR\n far : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    m_host->cookies.setValue(Solution::ConfigKey::projectName(), other.name());
    makePage();
    show();
    QString title;
    QString marked;
    QStringList offered;
    bool hasParent = true;
    ModalDialogDriver dialogs([&](QDialog* dialog) {
        title = dialog->windowTitle();
        hasParent = dialog->parent();
        const auto* list = dialog->findChild<QTreeWidget*>(QStringLiteral("variableTree"));
        for (int row = 0; row < list->topLevelItemCount(); ++row)
            offered.append(list->topLevelItem(row)->text(0));
        marked = list->currentItem()->text(0);
    });
    QTest::mouseClick(control("toolButtonNeg"), Qt::LeftButton);
    QCOMPARE(dialogs.count, 1);
    QVERIFY(!hasParent);
    QCOMPARE(title, QStringLiteral("Choose a Boolean Variable"));
    QCOMPARE(offered, (QStringList{ QStringLiteral("Main.flag"), QStringLiteral("Main.flag2") }));
    // The pin's present text is not handed over, so the list starts at its top.
    QCOMPARE(marked, QStringLiteral("Main.flag"));
}

void OriginReturnSetWidgetPinsTest::aProjectClosedUnderTheMessageIsSurvived()
{
    enable(signalRows[0]);
    makePage();
    control<QLineEdit>("lineEditPos")->setText(QStringLiteral("abc"));
    QPointer<ProjectModel> model = m_project->model();
    bool heldMeanwhile = false;
    m_boxes->meanwhile([&] {
        m_project->close();
        heldMeanwhile = model;
    });
    call("onLineEditPosTextChanged");
    QCOMPARE(m_boxes->count(), 1);
    QVERIFY(heldMeanwhile);
    QVERIFY(!model);
    QCOMPARE(control<QLineEdit>("lineEditPos")->text(), QStringLiteral("%IX100.0"));
    // From now on there is no record: the field is left alone.
    control<QLineEdit>("lineEditPos")->setText(QStringLiteral("abc"));
    call("onLineEditPosTextChanged");
    QCOMPARE(m_boxes->count(), 1);
    QCOMPARE(control<QLineEdit>("lineEditPos")->text(), QStringLiteral("abc"));
}

QTEST_MAIN(OriginReturnSetWidgetPinsTest)
#include "OriginReturnSetWidgetPinsTest.moc"
