#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/NumberTyping.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>

namespace {

/// A page whose memory is overwritten when it goes, so that whatever still uses it fails at once. One at a time.
class OverwrittenPage : public OnlineDebugWidget {
public:
    using OnlineDebugWidget::OnlineDebugWidget;

    static void* operator new(std::size_t) { return place; }
    static void operator delete(void*)
    {
        volatile char* bytes = place;
        std::fill_n(bytes, sizeof place, '\xa5');
    }

private:
    alignas(std::max_align_t) static char place[sizeof(OnlineDebugWidget)];
};

char OverwrittenPage::place[sizeof(OnlineDebugWidget)];
static_assert(sizeof(OverwrittenPage) == sizeof(OnlineDebugWidget), "the page has to fit into its place");

} // namespace

/// The speed multiplier: its field and its box, the question before a change, and the ratio in force.
class OnlineDebugMultiplierTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }

    void theFieldStaysAsTyped();
    void aHugeNumberCountsAsNought();
    void itIsSetAfterAQuestion();
    void theQuestionStandsAboveItsTwoButtons();
    void cancellingTheQuestionRestoresTheBox_data();
    void cancellingTheQuestionRestoresTheBox();
    void aPageClosedUnderTheQuestionIsSurvived_data();
    void aPageClosedUnderTheQuestionIsSurvived();
    void takingItBackSendsTheDefault();
    void aSuccessWithoutTheBoxEnablesTheField();
    void aFailureTurnsTheBoxBack();
    void aFailedCancellingLeavesTheFieldDisabled();
    void aFailureTurnsTheBoxBackBeforeItsMessage_data();
    void aFailureTurnsTheBoxBackBeforeItsMessage();
    void theMirrorLeavesTheCachedNumber();
    void theMirrorTakesAnyRatio_data();
    void theMirrorTakesAnyRatio();
    void aTextOfTheSameNumberStays_data();
    void aTextOfTheSameNumberStays();
    void theFirstReplyOfANewConnectionLeavesAFieldThatIsNotInForce();

private:
    QLineEdit* field() const { return m->field("speedMultiplierLineEdit"); }
    QCheckBox* box() const { return m->control<QCheckBox>("speedMultiplierCheckBox"); }
    const RecordingDebug::Request& last() const { return m->debug.requests.last(); }
    void enter(const QString& text)
    {
        NumberTyping::replace(field(), text);
        QTest::keyClick(field(), Qt::Key_Tab);
    }
    /// Sets the box without a question.
    void setBox(bool checked)
    {
        const QSignalBlocker blocker(box());
        box()->setChecked(checked);
    }
    void receiveRatio(double ratio)
    {
        AxisRef status = OnlinePageFixture::status(3, true);
        status.speedRatio = ratio;
        m->receive(status);
    }

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugMultiplierTest::init()
{
    m.emplace();
    m->makePage();
    m->receive(OnlinePageFixture::status(3, true));
    m->show();
}

void OnlineDebugMultiplierTest::theFieldStaysAsTyped()
{
    enter(QStringLiteral("007"));
    QCOMPARE(field()->text(), QStringLiteral("007"));
}

void OnlineDebugMultiplierTest::aHugeNumberCountsAsNought()
{
    enter(QStringLiteral("4294967296"));
    QCOMPARE(field()->text(), QStringLiteral("4294967296"));
    ModalDialogDriver dialogs([](QDialog* dialog) { dialog->accept(); });
    box()->click();
    QCOMPARE(last().as<SetVelRatioParam>().ratio, short(0));
}

void OnlineDebugMultiplierTest::itIsSetAfterAQuestion()
{
    enter(QStringLiteral("50"));
    ModalDialogDriver dialogs([](QDialog* dialog) {
        QCOMPARE(dialog->findChild<QLabel*>()->text(), QStringLiteral("Set the current speed multiplier?"));
        QVERIFY(!dialog->parent());
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    QTest::mouseClick(box(), Qt::LeftButton);
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(last().code, int(AxisDebugSetVelRatio));
    QCOMPARE(last().as<SetVelRatioParam>().ratio, short(50));
    QVERIFY(field()->isEnabled());
    m->page->axisDebugSetVelRatio(0);
    QVERIFY(!field()->isEnabled());
}

void OnlineDebugMultiplierTest::theQuestionStandsAboveItsTwoButtons()
{
    ModalDialogDriver dialogs([](QDialog* dialog) {
        const auto* layout = qobject_cast<QVBoxLayout*>(dialog->layout());
        QVERIFY(layout);
        QCOMPARE(layout->count(), 2);
        QVERIFY(qobject_cast<QLabel*>(layout->itemAt(0)->widget()));
        const auto* buttons = qobject_cast<QDialogButtonBox*>(layout->itemAt(1)->widget());
        QVERIFY(buttons);
        QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QCOMPARE(buttons->buttons().size(), 2);
    });
    QTest::mouseClick(box(), Qt::LeftButton);
    QCOMPARE(dialogs.count, 1);
}

void OnlineDebugMultiplierTest::cancellingTheQuestionRestoresTheBox_data()
{
    QTest::addColumn<bool>("checked");
    QTest::newRow("an unset multiplier stays unset") << false;
    QTest::newRow("a set multiplier stays set") << true;
}

void OnlineDebugMultiplierTest::cancellingTheQuestionRestoresTheBox()
{
    QFETCH(bool, checked);
    setBox(checked);
    ModalDialogDriver dialogs([](QDialog* dialog) {
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    });
    QTest::mouseClick(box(), Qt::LeftButton);
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(box()->isChecked(), checked);
    QVERIFY(m->debug.requests.isEmpty());
}

void OnlineDebugMultiplierTest::aPageClosedUnderTheQuestionIsSurvived_data()
{
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("setting it, accepted") << false << true;
    QTest::newRow("setting it, rejected") << false << false;
    QTest::newRow("taking it back, accepted") << true << true;
    QTest::newRow("taking it back, rejected") << true << false;
}

void OnlineDebugMultiplierTest::aPageClosedUnderTheQuestionIsSurvived()
{
    QFETCH(bool, checked);
    QFETCH(bool, accepted);
    m->page = std::make_unique<OverwrittenPage>(m->project.name(), m->axis->id(), nullptr);
    m->receive(OnlinePageFixture::status(3, true));
    m->show();
    setBox(checked);
    ModalDialogDriver dialogs([&](QDialog* dialog) {
        m->page.reset();
        dialog->done(accepted ? QDialog::Accepted : QDialog::Rejected);
    });
    box()->animateClick(0);
    QTRY_COMPARE(dialogs.count, 1);
    QVERIFY(!m->page);
    QVERIFY(m->debug.requests.isEmpty());
    QCOMPARE(m->boxes.count(), 0);
}

void OnlineDebugMultiplierTest::takingItBackSendsTheDefault()
{
    enter(QStringLiteral("50"));
    ModalDialogDriver dialogs([](QDialog* dialog) { dialog->accept(); });
    dialogs.next([](QDialog* dialog) {
        QCOMPARE(dialog->findChild<QLabel*>()->text(), QStringLiteral("Cancel the speed multiplier setting?"));
        dialog->accept();
    });
    QTest::mouseClick(box(), Qt::LeftButton);
    m->page->axisDebugSetVelRatio(0);
    QTest::mouseClick(box(), Qt::LeftButton);
    QCOMPARE(dialogs.count, 2);
    QCOMPARE(last().as<SetVelRatioParam>().ratio, short(100));
    QCOMPARE(field()->text(), QStringLiteral("100"));
    QVERIFY(field()->isEnabled());
    m->page->axisDebugSetVelRatio(0);
    QVERIFY(field()->isEnabled());
}

void OnlineDebugMultiplierTest::aSuccessWithoutTheBoxEnablesTheField()
{
    // As after two quick changes: the field is disabled by the answer to the first, and the second's comes now.
    field()->setEnabled(false);
    m->page->axisDebugSetVelRatio(0);
    QVERIFY(field()->isEnabled());
}

void OnlineDebugMultiplierTest::aFailureTurnsTheBoxBack()
{
    ModalDialogDriver dialogs([](QDialog* dialog) { dialog->accept(); });
    QTest::mouseClick(box(), Qt::LeftButton);
    m->page->axisDebugSetVelRatio(3);
    QCOMPARE(dialogs.count, 1);
    QVERIFY(!box()->isChecked());
    QVERIFY(field()->isEnabled());
    QCOMPARE(m->boxes.texts(), QStringList({ QStringLiteral("Failed to set speed multiplier!,text 3") }));
}

void OnlineDebugMultiplierTest::aFailedCancellingLeavesTheFieldDisabled()
{
    ModalDialogDriver dialogs([](QDialog* dialog) { dialog->accept(); });
    dialogs.next([](QDialog* dialog) { dialog->accept(); });
    QTest::mouseClick(box(), Qt::LeftButton);
    m->page->axisDebugSetVelRatio(0);
    QTest::mouseClick(box(), Qt::LeftButton);
    m->page->axisDebugSetVelRatio(3);
    QVERIFY(box()->isChecked());
    QVERIFY(!field()->isEnabled());
    QCOMPARE(field()->text(), QStringLiteral("100"));
}

void OnlineDebugMultiplierTest::aFailureTurnsTheBoxBackBeforeItsMessage_data()
{
    QTest::addColumn<bool>("checked");
    QTest::newRow("setting it failed") << true;
    QTest::newRow("taking it back failed") << false;
}

void OnlineDebugMultiplierTest::aFailureTurnsTheBoxBackBeforeItsMessage()
{
    QFETCH(bool, checked);
    setBox(checked);
    std::optional<bool> boxThen;
    std::optional<bool> fieldThen;
    m->boxes.meanwhile([&] {
        boxThen = box()->isChecked();
        fieldThen = field()->isEnabled();
    });
    m->page->axisDebugSetVelRatio(3);
    QCOMPARE(m->boxes.count(), 1);
    QCOMPARE(boxThen, std::optional<bool>(!checked));
    QCOMPARE(fieldThen, std::optional<bool>(checked));
}

void OnlineDebugMultiplierTest::theMirrorLeavesTheCachedNumber()
{
    setBox(true);
    m->page->axisDebugSetVelRatio(0);
    receiveRatio(0.4);
    QCOMPARE(field()->text(), QStringLiteral("40"));
    // Cancelled and set again, what was typed counts, not what was shown.
    field()->setEnabled(true);
    setBox(false);
    ModalDialogDriver dialogs([](QDialog* dialog) { dialog->accept(); });
    box()->click();
    QCOMPARE(m->debug.codes(), QVector<int>({ AxisDebugSetVelRatio }));
    QCOMPARE(last().as<SetVelRatioParam>().ratio, short(100));
}

void OnlineDebugMultiplierTest::theMirrorTakesAnyRatio_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QString>("text");
    QTest::newRow("cut off") << 0.999 << "99";
    QTest::newRow("nought") << 0.0 << "0";
    QTest::newRow("negative") << -0.5 << "-50";
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << "0";
    QTest::newRow("past every integer") << 1e300 << "2147483647";
    QTest::newRow("past every negative integer") << -std::numeric_limits<double>::infinity() << "-2147483648";
}

void OnlineDebugMultiplierTest::theMirrorTakesAnyRatio()
{
    QFETCH(double, ratio);
    QFETCH(QString, text);
    setBox(true);
    m->page->axisDebugSetVelRatio(0);
    receiveRatio(ratio);
    QCOMPARE(field()->text(), text);
}

void OnlineDebugMultiplierTest::aTextOfTheSameNumberStays_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QString>("text");
    QTest::newRow("noughts in front") << "007" << 0.07 << "007";
    QTest::newRow("noughts in front of another number") << "007" << 0.08 << "8";
    QTest::newRow("a number too large for the field, which reads as nought") << "4294967296" << 0.0 << "4294967296";
}

void OnlineDebugMultiplierTest::aTextOfTheSameNumberStays()
{
    QFETCH(QString, typed);
    QFETCH(double, ratio);
    QFETCH(QString, text);
    enter(typed);
    setBox(true);
    m->page->axisDebugSetVelRatio(0);
    receiveRatio(ratio);
    QCOMPARE(field()->text(), text);
}

void OnlineDebugMultiplierTest::theFirstReplyOfANewConnectionLeavesAFieldThatIsNotInForce()
{
    enter(QStringLiteral("50"));
    // The answer to the setting is lost with the connection, which leaves the box checked and the field enabled.
    setBox(true);
    m->page->onlineStatechanged(false);
    QVERIFY(!field()->isEnabled());
    m->page->onlineStatechanged(true);
    receiveRatio(0.4);
    QVERIFY(field()->isEnabled());
    QCOMPARE(field()->text(), QStringLiteral("50"));
    receiveRatio(0.4);
    QCOMPARE(field()->text(), QStringLiteral("50"));
}

QTEST_MAIN(OnlineDebugMultiplierTest)
#include "OnlineDebugMultiplierTest.moc"
