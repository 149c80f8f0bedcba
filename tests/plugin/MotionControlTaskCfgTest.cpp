#include "plugin/MotionControlTaskCfg.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/ProjectModel.h"
#include "tests/plugin/DialogInput.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <memory>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// The dialog on a project that holds a cycle time.
class Dialog {
public:
    explicit Dialog(const QString& cycleTime)
    {
        QString time = cycleTime;
        project.axisModel()->setMotionTaskCfgCycleTime(time);
        host.cookies.setValue(text("Project.Name"), project.name());
        project.save();
        open();
    }
    void open()
    {
        widget = std::make_unique<MotionControlTaskCfg>();
        widget->show();
    }
    QComboBox* box() const { return widget->findChild<QComboBox*>(text("comboBox")); }
    void choose(const QString& entry) const
    {
        box()->setFocus();
        for (int step = 0; step < box()->count(); ++step)
            QTest::keyClick(box(), Qt::Key_Up);
        while (box()->currentText() != entry)
            QTest::keyClick(box(), Qt::Key_Down);
    }
    void press(const char* button) const { DialogInput::click(widget.get(), text(button)); }
    QString stored() const { return project.axisModel()->getMotionTaskCfgCycleTime(); }
    bool written() const { return project.model()->isModified(); }

    TestHost host;
    TestProject project{ text("NV3T_70Q12") };
    std::unique_ptr<MotionControlTaskCfg> widget;
};

} // namespace

class MotionControlTaskCfgTest : public QObject {
    Q_OBJECT

private slots:
    void formIsAsAgreed();
    void sizeIsAsAgreedAndGrowsForItsTexts();
    void choicesRunFromLongToShort();
    void storedTimeIsShown_data();
    void storedTimeIsShown();
    void okWritesAnotherTime_data();
    void okWritesAnotherTime();
    void okWithoutAChoiceWritesNothing_data();
    void okWithoutAChoiceWritesNothing();
    void unknownTimeIsReplacedByTheFirstChoice();
    void cancelWritesNothing();
    void changeIsNeitherStoredNorUndoable();
    void hostsCurrentProjectIsTheOne();
    void withoutProjectOkOnlyCloses_data();
    void withoutProjectOkOnlyCloses();
    void projectThatGoesMeanwhileIsSurvived();
};

void MotionControlTaskCfgTest::formIsAsAgreed()
{
    const Dialog dialog(text("1000"));
    const MotionControlTaskCfg& widget = *dialog.widget;
    QCOMPARE(widget.objectName(), text("MotionControlTaskCfg"));
    QCOMPARE(widget.windowTitle(), text("MotionControlTaskCfg"));
    QVERIFY(!widget.parent());
    const auto* label = widget.findChild<QLabel*>(text("label"));
    QCOMPARE(label->text(), text("Cycle time of motion control task:"));
    QVERIFY(label->alignment().testFlag(Qt::AlignRight) && label->alignment().testFlag(Qt::AlignVCenter));
    QCOMPARE(widget.findChild<QLabel*>(text("label_2"))->text(), text("us"));
    QCOMPARE(dialog.box()->minimumHeight(), 20);
    QCOMPARE(dialog.box()->maximumHeight(), 20);
    const auto* buttons = widget.findChild<QDialogButtonBox*>(text("buttonBox"));
    QCOMPARE(buttons->orientation(), Qt::Horizontal);
    QCOMPARE(buttons->font().family(), text("Arial"));
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    for (const auto which : { QDialogButtonBox::Ok, QDialogButtonBox::Cancel })
        QCOMPARE(buttons->button(which)->property("styleType").toString(), text("sureButton"));
    QCOMPARE(buttons->button(QDialogButtonBox::Ok)->text(), text("OK"));
    QCOMPARE(buttons->button(QDialogButtonBox::Cancel)->text(), text("Cancel"));
}

void MotionControlTaskCfgTest::sizeIsAsAgreedAndGrowsForItsTexts()
{
    const Dialog dialog(text("1000"));
    QCOMPARE(MotionControlTaskCfg().size(), QSize(323, 69));
    const QList<QWidget*> parts = dialog.widget->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(parts.size(), 4);
    for (const QWidget* part : parts) {
        QVERIFY2(part->width() >= part->minimumSizeHint().width(), qPrintable(part->objectName()));
        QVERIFY2(dialog.widget->rect().contains(part->geometry()), qPrintable(part->objectName()));
    }
}

void MotionControlTaskCfgTest::choicesRunFromLongToShort()
{
    const Dialog dialog(text("1000"));
    QStringList entries;
    for (int entry = 0; entry < dialog.box()->count(); ++entry)
        entries.append(dialog.box()->itemText(entry));
    QCOMPARE(entries, (QStringList{ text("4000"), text("2000"), text("1000"), text("750"), text("500") }));
}

void MotionControlTaskCfgTest::storedTimeIsShown_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    for (const char* time : { "4000", "2000", "1000", "750", "500" })
        QTest::newRow(time) << text(time) << text(time);
    QTest::newRow("none") << ""
                          << "1000";
    QTest::newRow("another time") << "250"
                                  << "4000";
    QTest::newRow("blank around it") << " 750"
                                     << "4000";
}

void MotionControlTaskCfgTest::storedTimeIsShown()
{
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    const Dialog dialog(stored);
    QCOMPARE(dialog.box()->currentText(), shown);
    QCOMPARE(dialog.stored(), stored);
}

void MotionControlTaskCfgTest::okWritesAnotherTime_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("shorter") << "1000"
                             << "500";
    QTest::newRow("longer") << "750"
                            << "4000";
    QTest::newRow("after none") << ""
                                << "2000";
}

void MotionControlTaskCfgTest::okWritesAnotherTime()
{
    QFETCH(QString, stored);
    QFETCH(QString, chosen);
    const Dialog dialog(stored);
    dialog.choose(chosen);
    QCOMPARE(dialog.stored(), stored);
    dialog.press("OK");
    QCOMPARE(dialog.stored(), chosen);
    QCOMPARE(dialog.widget->result(), static_cast<int>(QDialog::Accepted));
    QVERIFY(!dialog.widget->isVisible());
}

void MotionControlTaskCfgTest::okWithoutAChoiceWritesNothing_data()
{
    QTest::addColumn<QString>("stored");
    QTest::newRow("a choice") << "750";
    QTest::newRow("none") << "";
}

void MotionControlTaskCfgTest::okWithoutAChoiceWritesNothing()
{
    QFETCH(QString, stored);
    const Dialog dialog(stored);
    QVERIFY(!dialog.written());
    dialog.press("OK");
    QCOMPARE(dialog.stored(), stored);
    QVERIFY(!dialog.written());
    QVERIFY(!dialog.widget->isVisible());
}

void MotionControlTaskCfgTest::unknownTimeIsReplacedByTheFirstChoice()
{
    const Dialog dialog(text("250"));
    dialog.press("OK");
    QCOMPARE(dialog.stored(), text("4000"));
}

void MotionControlTaskCfgTest::cancelWritesNothing()
{
    const Dialog dialog(text("1000"));
    dialog.choose(text("500"));
    dialog.press("Cancel");
    QCOMPARE(dialog.stored(), text("1000"));
    QVERIFY(!dialog.widget->isVisible());
    QCOMPARE(dialog.widget->result(), static_cast<int>(QDialog::Rejected));
}

void MotionControlTaskCfgTest::changeIsNeitherStoredNorUndoable()
{
    Dialog dialog(text("1000"));
    dialog.choose(text("500"));
    dialog.press("OK");
    QVERIFY(dialog.written());
    QCOMPARE(dialog.host.calls.count(text("viewHelper.pushCommand")), 0);
    dialog.project.reopen();
    QCOMPARE(dialog.stored(), text("1000"));
}

void MotionControlTaskCfgTest::hostsCurrentProjectIsTheOne()
{
    Dialog dialog(text("1000"));
    TestProject other(text("NV3T_70Q12"), text("Other"));
    QString time = text("750");
    other.axisModel()->setMotionTaskCfgCycleTime(time);
    dialog.host.cookies.setValue(text("Project.Name"), other.name());
    dialog.host.calls.clear();
    dialog.open();
    QCOMPARE(dialog.host.calls.entries(), QStringList{ text("cookies.value(Project.Name)") });
    QVERIFY(!dialog.host.cookies.lastFallback(text("Project.Name")).isValid());
    QCOMPARE(dialog.box()->currentText(), text("750"));
    dialog.choose(text("500"));
    dialog.press("OK");
    QCOMPARE(other.axisModel()->getMotionTaskCfgCycleTime(), text("500"));
    QCOMPARE(dialog.stored(), text("1000"));
}

void MotionControlTaskCfgTest::withoutProjectOkOnlyCloses_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("the host") << "host";
    QTest::newRow("the cookies") << "ICookies";
    QTest::newRow("the name") << "name";
    QTest::newRow("the project") << "project";
}

void MotionControlTaskCfgTest::withoutProjectOkOnlyCloses()
{
    QFETCH(QString, missing);
    TestProject project(text("NV3T_70Q12"));
    auto host = std::make_unique<TestHost>();
    host->cookies.setValue(text("Project.Name"), project.name());
    if (missing == text("host"))
        host.reset();
    else if (missing == text("name"))
        host->cookies.removeValue(text("Project.Name"));
    else if (missing == text("project"))
        host->cookies.setValue(text("Project.Name"), text("Elsewhere"));
    else
        host->withhold(missing);
    project.save();
    MotionControlTaskCfg dialog;
    dialog.show();
    const auto* box = dialog.findChild<QComboBox*>(text("comboBox"));
    QCOMPARE(box->count(), 5);
    QCOMPARE(box->currentIndex(), 0);
    DialogInput::click(&dialog, text("OK"));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    QVERIFY(!project.model()->isModified());
}

void MotionControlTaskCfgTest::projectThatGoesMeanwhileIsSurvived()
{
    Dialog dialog(text("1000"));
    dialog.choose(text("500"));
    dialog.project.close();
    dialog.press("OK");
    QVERIFY(!dialog.widget->isVisible());
}

QTEST_MAIN(MotionControlTaskCfgTest)
#include "MotionControlTaskCfgTest.moc"
