#include "host/projectmodel/AxisTable.h"
#include "plugin/AxisNodes.h"
#include "plugin/MotionControlTaskCfg.h"
#include "plugin/NewAxisDlg.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/PopupMenuDriver.h"
#include "tests/support/RecordingTranslator.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

QStringList inContext(const char* context, std::initializer_list<const char*> words)
{
    QStringList all;
    for (const char* each : words)
        all.append(text(context) + QLatin1Char('|') + text(each));
    return all;
}

QStringList buttonTexts(const QWidget& dialog)
{
    QStringList texts;
    const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
        texts.append(button->text());
    texts.sort();
    return texts;
}

/// Enters a name into the dialog and accepts it.
void enter(QDialog* dialog, const QString& name)
{
    dialog->findChild<QLineEdit*>()->setText(name);
    dialog->accept();
}

/// Runs a command on a node and gives the only box that it shows.
MessageBoxWatcher::Box boxOf(
    PluginFixture& fixture, const QString& path, const char* slot, const ModalDialogDriver::Script& script)
{
    MessageBoxWatcher boxes;
    ModalDialogDriver dialogs(script);
    fixture.send(path, Solution::NodeSelected);
    fixture.call(slot);
    return boxes.count() == 1 ? boxes.boxes.first() : MessageBoxWatcher::Box();
}

QJsonObject withoutAxisLimit()
{
    QJsonObject description = TestProject::description(text("NV3T_70Q12"));
    QJsonObject limits = description.value(text("limits")).toObject();
    limits.remove(text("MaxAxis"));
    description.insert(text("limits"), limits);
    return description;
}

const QStringList plainTitleAndButton{ text("QObject|Kestrun"), text("QObject|OK") };

QStringList titleAndButtons(const MessageBoxWatcher::Box& box)
{
    return QStringList{ box.title } + box.buttons;
}

} // namespace

/// The contexts in which the texts of menus, questions, boxes and dialogs are looked up.
class TranslatedDialogsTest : public QObject {
    Q_OBJECT

private slots:
    void menusBelongToThePlugin();
    void questionsBelongToThePlugin_data();
    void questionsBelongToThePlugin();
    void unitNodeBelongsToThePlugin();
    void fullProjectIsToldInPlainContext();
    void refusedAxisIsToldInPlainContext();
    void refusedNameIsToldInPlainContext();
    void newAxisDialogHasItsOwnTexts();
    void cycleTimeDialogHasItsOwnTexts();
};

void TranslatedDialogsTest::menusBelongToThePlugin()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    const RecordingTranslator translator;
    PopupMenuDriver menus;
    fixture.send(fixture.project.unitPath(), Solution::NodeContextMenu, QPoint(1, 1));
    fixture.send(fixture.pathOf(axis), Solution::NodeContextMenu, QPoint(1, 1));
    QCOMPARE(menus.menus.size(), 2);
    QCOMPARE(menus.menus.first().entries,
        inContext("MotionControlAxisPlugin", { "New Axis", "Motion Control Task CFG", "Delete All Axis" }));
    QCOMPARE(menus.menus.last().entries, inContext("MotionControlAxisPlugin", { "Delete Axis", "Rename" }));
}

void TranslatedDialogsTest::questionsBelongToThePlugin_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("question");
    QTest::newRow("one axis") << QByteArray("deleteAxis") << "MotionControlAxisPlugin|Do you want to delete the axis ?";
    QTest::newRow("all axes") << QByteArray("deleteAllAxis")
                              << "MotionControlAxisPlugin|Do you want to delete all axis ?";
}

void TranslatedDialogsTest::questionsBelongToThePlugin()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, question);
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    const RecordingTranslator translator;
    const MessageBoxWatcher::Box box = boxOf(fixture, fixture.pathOf(axis), slot.constData(), nullptr);
    QCOMPARE(box.text, question);
    QCOMPARE(titleAndButtons(box), inContext("MotionControlAxisPlugin", { "Kestrun", "Yes", "No" }));
}

void TranslatedDialogsTest::unitNodeBelongsToThePlugin()
{
    const RecordingTranslator translator;
    QCOMPARE(AxisNodes::unitNode(true).displayText, text("MotionControlAxisPlugin|Axis Config"));
}

void TranslatedDialogsTest::fullProjectIsToldInPlainContext()
{
    PluginFixture fixture;
    fixture.project.changeController(withoutAxisLimit());
    const RecordingTranslator translator;
    const MessageBoxWatcher::Box box = boxOf(
        fixture, fixture.project.unitPath(), "addNewAxis", [](QDialog* dialog) { enter(dialog, text("feed")); });
    QCOMPARE(box.text, text("QObject|supports up to 0 axis!"));
    QCOMPARE(titleAndButtons(box), plainTitleAndButton);
}

void TranslatedDialogsTest::refusedAxisIsToldInPlainContext()
{
    PluginFixture fixture;
    fixture.addAxis(text("feed"));
    const RecordingTranslator translator;
    const MessageBoxWatcher::Box box = boxOf(
        fixture, fixture.project.unitPath(), "addNewAxis", [](QDialog* dialog) { enter(dialog, text("feed")); });
    QCOMPARE(box.text, text("QObject|add axis error!"));
    QCOMPARE(titleAndButtons(box), plainTitleAndButton);
}

void TranslatedDialogsTest::refusedNameIsToldInPlainContext()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    const RecordingTranslator translator;
    // The accepted name is taken between the check of the dialog and the renaming.
    const MessageBoxWatcher::Box box = boxOf(fixture, fixture.pathOf(axis), "renameAxis", [&fixture](QDialog* dialog) {
        QObject::connect(dialog, &QDialog::accepted, dialog, [&fixture] { fixture.addAxis(text("Lift")); });
        enter(dialog, text("lift"));
    });
    QCOMPARE(box.text, text("QObject|rename axis(feed) error!"));
    QCOMPARE(titleAndButtons(box), plainTitleAndButton);
}

void TranslatedDialogsTest::newAxisDialogHasItsOwnTexts()
{
    const TestProject project(text("NV3T_70Q12"));
    const RecordingTranslator translator;
    const NewAxisDlg dialog(project.name());
    QCOMPARE(dialog.windowTitle(), text("NewAxisDlg|New Axis"));
    QCOMPARE(dialog.findChild<QLabel*>()->text(), text("NewAxisDlg|Name:"));
    QCOMPARE(buttonTexts(dialog), inContext("NewAxisDlg", { "Cancel", "OK" }));
    QCOMPARE(dialog.axisName(), text("Axis_0"));
}

void TranslatedDialogsTest::cycleTimeDialogHasItsOwnTexts()
{
    const RecordingTranslator translator;
    const MotionControlTaskCfg dialog;
    QCOMPARE(dialog.windowTitle(), text("MotionControlTaskCfg|MotionControlTaskCfg"));
    QCOMPARE(dialog.findChild<QLabel*>(text("label"))->text(),
        text("MotionControlTaskCfg|Cycle time of motion control task:"));
    QCOMPARE(dialog.findChild<QLabel*>(text("label_2"))->text(), text("MotionControlTaskCfg|us"));
    QCOMPARE(buttonTexts(dialog), inContext("MotionControlTaskCfg", { "Cancel", "OK" }));
}

QTEST_MAIN(TranslatedDialogsTest)
#include "TranslatedDialogsTest.moc"
