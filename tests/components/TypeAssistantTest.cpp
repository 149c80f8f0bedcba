#include "host/components/TypeAssistant.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/TestProject.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

namespace {

/// A project with variables, and a picker on it that is shown.
struct Picker {
    explicit Picker(char mode = TypeAssistant::BooleanVariables, const QString& preset = QString())
    {
        project.addSource(QStringLiteral("Io"),
            QStringLiteral(
                "VAR_GLOBAL ready AT %IX0.0 : BOOL; // safety relay\nspeed : REAL; // <b>bold</b>\nEND_VAR"));
        project.addSource(QStringLiteral("Main"),
            QStringLiteral(
                "PROGRAM Main VAR guard : Guard; doors : ARRAY [1..2] OF Guard; word : WORD; last : BOOL; END_VAR "
                "END_PROGRAM TYPE Guard : STRUCT open : BOOL; count : INT; END_STRUCT END_TYPE"));
        dialog = std::make_unique<TypeAssistant>(project.name(), mode, preset, nullptr);
        tree = dialog->findChild<QTreeWidget*>(QStringLiteral("variableTree"));
        filter = dialog->findChild<QLineEdit*>(QStringLiteral("filterEdit"));
        ok = dialog->findChild<QPushButton*>(QStringLiteral("okButton"));
        cancel = dialog->findChild<QPushButton*>(QStringLiteral("cancelButton"));
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the picker does not become active");
    }

    /// Paths that are not filtered out.
    QString shown() const
    {
        QStringList paths;
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            if (!tree->topLevelItem(i)->isHidden())
                paths.append(tree->topLevelItem(i)->text(0));
        }
        return paths.join(QLatin1Char(' '));
    }

    QTreeWidgetItem* item(const QString& path) const { return tree->findItems(path, Qt::MatchExactly).value(0); }

    TestProject project{ QStringLiteral("NV3T_50Q4") };
    std::unique_ptr<TypeAssistant> dialog;
    QTreeWidget* tree;
    QLineEdit* filter;
    QPushButton* ok;
    QPushButton* cancel;
};

} // namespace

/// The variable picker, with real keys and clicks.
class TypeAssistantTest : public QObject {
    Q_OBJECT

private slots:
    void booleanVariablesByPath();
    void allVariables();
    void columnsTellTypeAndComment();
    void commentsWithMarkupReadAsTheyStand();
    void theFilter_data();
    void theFilter();
    void okChooses();
    void aDoubleClickChooses();
    void returnInTheFilterChooses();
    void arrowDownLeadsIntoTheList();
    void escapeChoosesNothing();
    void cancelChoosesNothing();
    void nothingShownChoosesNothing();
    void theMarkedOneStaysWhileItIsShown();
    void thePresetIsMarked_data();
    void thePresetIsMarked();
    void anUnknownProjectHasNoVariables();
    void asAModalDialog();
    void namesForTestsAndReaders();
};

void TypeAssistantTest::booleanVariablesByPath()
{
    const Picker picker;
    QCOMPARE(
        picker.shown(), QStringLiteral("Io.ready Main.guard.open Main.doors[1].open Main.doors[2].open Main.last"));
    QCOMPARE(
        picker.dialog->findChild<QLabel*>(QStringLiteral("countLabel"))->text(), QStringLiteral("5 of 5 variables"));
}

void TypeAssistantTest::allVariables()
{
    const Picker picker(TypeAssistant::AllVariables);
    QVERIFY(picker.item(QStringLiteral("Io.speed")) != nullptr);
    QVERIFY(picker.item(QStringLiteral("Main.doors")) != nullptr);
    QVERIFY(picker.item(QStringLiteral("Main.doors[2].count")) != nullptr);
    QVERIFY(picker.item(QStringLiteral("Main.word.0")) == nullptr);
    QCOMPARE(picker.item(QStringLiteral("Main.guard"))->text(1), QStringLiteral("Guard"));
}

void TypeAssistantTest::columnsTellTypeAndComment()
{
    const Picker picker;
    QCOMPARE(picker.tree->columnCount(), 3);
    QCOMPARE(picker.item(QStringLiteral("Io.ready"))->text(1), QStringLiteral("BOOL"));
    QCOMPARE(picker.item(QStringLiteral("Io.ready"))->text(2), QStringLiteral("safety relay"));
    QCOMPARE(picker.item(QStringLiteral("Io.ready"))->toolTip(2), QStringLiteral("safety relay"));
}

void TypeAssistantTest::commentsWithMarkupReadAsTheyStand()
{
    const Picker all(TypeAssistant::AllVariables);
    QCOMPARE(all.item(QStringLiteral("Io.speed"))->text(2), QStringLiteral("<b>bold</b>"));
    QVERIFY(all.item(QStringLiteral("Io.speed"))->toolTip(2).contains(QStringLiteral("&lt;b&gt;bold")));
}

void TypeAssistantTest::theFilter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");

    QTest::newRow("a part of a path") << "GUARD"
                                      << "Main.guard.open";
    QTest::newRow("an index") << "[2]"
                              << "Main.doors[2].open";
    QTest::newRow("a comment") << "relay"
                               << "Io.ready";
    QTest::newRow("blanks around") << " last "
                                   << "Main.last";
    QTest::newRow("what is not there") << "nothing"
                                       << "";
    QTest::newRow("a type") << "bool"
                            << "Io.ready Main.guard.open Main.doors[1].open Main.doors[2].open Main.last";
}

void TypeAssistantTest::theFilter()
{
    QFETCH(const QString, text);
    const Picker picker;
    QVERIFY(picker.filter->hasFocus());
    QTest::keyClicks(picker.filter, text);
    QTEST(picker.shown(), "shown");
    picker.filter->clear();
    QCOMPARE(picker.shown().count(QLatin1Char(' ')), 4);
}

void TypeAssistantTest::okChooses()
{
    const Picker picker;
    picker.tree->setCurrentItem(picker.item(QStringLiteral("Main.last")));
    QTest::mouseClick(picker.ok, Qt::LeftButton);
    QCOMPARE(picker.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(picker.dialog->chosenTexts, QStringList{ QStringLiteral("Main.last") });
}

void TypeAssistantTest::aDoubleClickChooses()
{
    const Picker picker;
    const QPoint place = picker.tree->visualItemRect(picker.item(QStringLiteral("Main.guard.open"))).center();
    QTest::mouseClick(picker.tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QVERIFY(picker.dialog->isVisible());
    QTest::mouseDClick(picker.tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QVERIFY(!picker.dialog->isVisible());
    QCOMPARE(picker.dialog->chosenTexts, QStringList{ QStringLiteral("Main.guard.open") });
}

void TypeAssistantTest::returnInTheFilterChooses()
{
    const Picker picker;
    QTest::keyClicks(picker.filter, QStringLiteral("doors"));
    QTest::keyClick(picker.filter, Qt::Key_Return);
    QCOMPARE(picker.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(picker.dialog->chosenTexts, QStringList{ QStringLiteral("Main.doors[1].open") });
}

void TypeAssistantTest::arrowDownLeadsIntoTheList()
{
    const Picker picker;
    QTest::keyClicks(picker.filter, QStringLiteral("doors"));
    QTest::keyClick(picker.filter, Qt::Key_Down);
    QVERIFY(picker.tree->hasFocus());
    QCOMPARE(picker.tree->currentItem()->text(0), QStringLiteral("Main.doors[1].open"));
    QTest::keyClick(picker.tree, Qt::Key_Down);
    QTest::keyClick(picker.tree, Qt::Key_Return);
    QCOMPARE(picker.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(picker.dialog->chosenTexts, QStringList{ QStringLiteral("Main.doors[2].open") });
}

void TypeAssistantTest::escapeChoosesNothing()
{
    const Picker picker;
    QTest::keyClick(picker.filter, Qt::Key_Escape);
    QVERIFY(!picker.dialog->isVisible());
    QCOMPARE(picker.dialog->result(), int(QDialog::Rejected));
    QVERIFY(picker.dialog->chosenTexts.isEmpty());
}

void TypeAssistantTest::cancelChoosesNothing()
{
    const Picker picker;
    QTest::mouseClick(picker.cancel, Qt::LeftButton);
    QCOMPARE(picker.dialog->result(), int(QDialog::Rejected));
    QVERIFY(picker.dialog->chosenTexts.isEmpty());
}

void TypeAssistantTest::nothingShownChoosesNothing()
{
    const Picker picker;
    QTest::keyClicks(picker.filter, QStringLiteral("nothing"));
    QVERIFY(!picker.ok->isEnabled());
    QTest::keyClick(picker.filter, Qt::Key_Return);
    QTest::keyClick(picker.filter, Qt::Key_Down);
    QVERIFY(picker.filter->hasFocus());
    QVERIFY(picker.dialog->isVisible());
    picker.dialog->accept();
    QVERIFY(picker.dialog->isVisible());
    QVERIFY(picker.dialog->chosenTexts.isEmpty());
    picker.filter->clear();
    QVERIFY(picker.ok->isEnabled());
}

void TypeAssistantTest::theMarkedOneStaysWhileItIsShown()
{
    const Picker picker;
    picker.tree->setCurrentItem(picker.item(QStringLiteral("Main.doors[2].open")));
    QTest::keyClicks(picker.filter, QStringLiteral("doors"));
    QCOMPARE(picker.tree->currentItem()->text(0), QStringLiteral("Main.doors[2].open"));
}

void TypeAssistantTest::thePresetIsMarked_data()
{
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QString>("marked");

    QTest::newRow("no preset") << ""
                               << "Io.ready";
    QTest::newRow("a path") << "Main.last"
                            << "Main.last";
    QTest::newRow("a path in other letters") << "main.LAST"
                                             << "Main.last";
    QTest::newRow("a path that is not there") << "%IX0.0"
                                              << "Io.ready";
}

void TypeAssistantTest::thePresetIsMarked()
{
    QFETCH(const QString, preset);
    const Picker picker(TypeAssistant::BooleanVariables, preset);
    QTEST(picker.tree->currentItem()->text(0), "marked");
}

void TypeAssistantTest::anUnknownProjectHasNoVariables()
{
    TypeAssistant dialog(QStringLiteral("Nobody"), TypeAssistant::BooleanVariables, QString(), nullptr);
    QCOMPARE(dialog.findChild<QTreeWidget*>()->topLevelItemCount(), 0);
    QVERIFY(!dialog.findChild<QPushButton*>(QStringLiteral("okButton"))->isEnabled());
}

void TypeAssistantTest::asAModalDialog()
{
    Picker picker;
    picker.dialog->hide();
    ModalDialogDriver driver([](QDialog* dialog) {
        QTest::keyClicks(dialog->findChild<QLineEdit*>(), QStringLiteral("last"));
        QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    });
    TypeAssistant dialog(picker.project.name(), 2, QString(), nullptr);
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QCOMPARE(dialog.chosenTexts.first(), QStringLiteral("Main.last"));
}

void TypeAssistantTest::namesForTestsAndReaders()
{
    const Picker picker;
    QCOMPARE(picker.dialog->objectName(), QStringLiteral("TypeAssistant"));
    QVERIFY(!picker.dialog->windowTitle().isEmpty());
    QVERIFY(!picker.tree->accessibleName().isEmpty());
    QVERIFY(!picker.filter->accessibleName().isEmpty());
    QCOMPARE(picker.ok->property("styleType").toString(), QStringLiteral("sureButton"));
    QCOMPARE(picker.cancel->property("styleType").toString(), QStringLiteral("sureButton"));
}

QTEST_MAIN(TypeAssistantTest)
#include "TypeAssistantTest.moc"
