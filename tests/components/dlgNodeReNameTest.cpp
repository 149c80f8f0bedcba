#include "host/components/dlgNodeReName.h"
#include "tests/support/ModalDialogDriver.h"
#include "tests/support/TestProject.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

/// A project with names in use, and the dialog on its axis "Infeed".
struct Renaming {
    Renaming()
    {
        project.addAxis(QStringLiteral("Infeed"));
        project.addAxis(QStringLiteral("Outfeed"));
        project.addSource(
            QStringLiteral("Io"), QStringLiteral("VAR_GLOBAL ready : BOOL; Gantry : AXES_GROUP_REF; END_VAR"));
        project.addSource(QStringLiteral("Main"),
            QStringLiteral(
                "PROGRAM Main VAR counter : INT; END_VAR END_PROGRAM TYPE Guard : STRUCT a : BOOL; END_STRUCT "
                "END_TYPE CONFIGURATION C TASK Motion(PRIORITY := 1); END_CONFIGURATION"));
        dialog.setCurrentName(QStringLiteral("Infeed"), QString());
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        if (!QTest::qWaitForWindowActive(&dialog))
            qFatal("the dialog does not become active");
    }

    void type(const QString& name)
    {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, name);
    }

    TestProject project{ QStringLiteral("NV3T_50Q4") };
    dlgNodeReName dialog{ project.name(), QStringLiteral("AxisView"), nullptr };
    QLineEdit* edit = dialog.findChild<QLineEdit*>(QStringLiteral("nameEdit"));
    QPushButton* ok = dialog.findChild<QPushButton*>(QStringLiteral("okButton"));
    QPushButton* cancel = dialog.findChild<QPushButton*>(QStringLiteral("cancelButton"));
    QLabel* reason = dialog.findChild<QLabel*>(QStringLiteral("reasonLabel"));
};

} // namespace

/// The dialog that asks for another name, with real keys and clicks.
class dlgNodeReNameTest : public QObject {
    Q_OBJECT

private slots:
    void namesAreJudged_data();
    void namesAreJudged();
    void thePresentNameIsSelected();
    void okAccepts();
    void returnAccepts();
    void aRefusedNameCannotBeAccepted();
    void cancelAcceptsNothing();
    void theExtensionStays();
    void aPresentNameThatIsTakenStaysAllowed();
    void aNameThatStaysRenamesNothing();
    void asAModalDialog();
    void namesForTestsAndReaders();
};

void dlgNodeReNameTest::namesAreJudged_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");

    const QString rule = QStringLiteral(
        "A name begins with a letter or underscore, followed by letters, digits and single underscores.");
    QTest::newRow("a free name") << "Feeder"
                                 << "";
    QTest::newRow("the present name") << "Infeed"
                                      << "";
    QTest::newRow("the present name in other letters") << "INFEED"
                                                       << "";
    QTest::newRow("a variable of a program") << "counter"
                                             << "";
    QTest::newRow("nothing") << ""
                             << "Enter a name.";
    QTest::newRow("a digit in front") << "1st" << rule;
    QTest::newRow("a blank") << "In feed" << rule;
    QTest::newRow("a keyword") << "While"
                               << "While is a reserved word.";
    QTest::newRow("another axis") << "outfeed"
                                  << "There is an axis of the name outfeed already.";
    QTest::newRow("a program") << "MAIN"
                               << "The project uses the name MAIN already.";
    QTest::newRow("a structure") << "Guard"
                                 << "The project uses the name Guard already.";
    QTest::newRow("a global list") << "io"
                                   << "The project uses the name io already.";
    QTest::newRow("a global variable") << "Ready"
                                       << "The project uses the name Ready already.";
    QTest::newRow("a group of axes") << "gantry"
                                     << "The project uses the name gantry already.";
    QTest::newRow("a task") << "motion"
                            << "The project uses the name motion already.";
}

void dlgNodeReNameTest::namesAreJudged()
{
    QFETCH(const QString, name);
    QFETCH(const QString, reason);
    Renaming renaming;
    renaming.type(name);
    QCOMPARE(renaming.reason->text(), reason);
    QCOMPARE(renaming.ok->isEnabled(), reason.isEmpty());
    QVERIFY(renaming.reason->heightForWidth(renaming.reason->width()) <= renaming.reason->height());
}

void dlgNodeReNameTest::thePresentNameIsSelected()
{
    const Renaming renaming;
    QCOMPARE(renaming.edit->text(), QStringLiteral("Infeed"));
    QCOMPARE(renaming.edit->selectedText(), QStringLiteral("Infeed"));
    QVERIFY(renaming.edit->hasFocus());
    QVERIFY(renaming.ok->isEnabled());
    QCOMPARE(renaming.dialog.getRenameName(), QString());
}

void dlgNodeReNameTest::okAccepts()
{
    Renaming renaming;
    renaming.type(QStringLiteral("Feeder"));
    QTest::mouseClick(renaming.ok, Qt::LeftButton);
    QCOMPARE(renaming.dialog.result(), int(QDialog::Accepted));
    QCOMPARE(renaming.dialog.getRenameName(), QStringLiteral("Feeder"));
}

void dlgNodeReNameTest::returnAccepts()
{
    Renaming renaming;
    renaming.type(QStringLiteral("Feeder"));
    QTest::keyClick(renaming.edit, Qt::Key_Return);
    QCOMPARE(renaming.dialog.result(), int(QDialog::Accepted));
    QCOMPARE(renaming.dialog.getRenameName(), QStringLiteral("Feeder"));
}

void dlgNodeReNameTest::aRefusedNameCannotBeAccepted()
{
    Renaming renaming;
    renaming.type(QStringLiteral("Outfeed"));
    QTest::keyClick(renaming.edit, Qt::Key_Return);
    renaming.dialog.accept();
    QVERIFY(renaming.dialog.isVisible());
    QCOMPARE(renaming.dialog.getRenameName(), QString());
}

void dlgNodeReNameTest::cancelAcceptsNothing()
{
    Renaming renaming;
    renaming.type(QStringLiteral("Feeder"));
    QTest::mouseClick(renaming.cancel, Qt::LeftButton);
    QCOMPARE(renaming.dialog.result(), int(QDialog::Rejected));
    QCOMPARE(renaming.dialog.getRenameName(), QString());
}

void dlgNodeReNameTest::theExtensionStays()
{
    Renaming renaming;
    renaming.dialog.setCurrentName(QStringLiteral("Main"), QStringLiteral(".st"));
    QCOMPARE(renaming.edit->text(), QStringLiteral("Main"));
    renaming.type(QStringLiteral("Other"));
    QTest::mouseClick(renaming.ok, Qt::LeftButton);
    QCOMPARE(renaming.dialog.getRenameName(), QStringLiteral("Other.st"));
}

void dlgNodeReNameTest::aPresentNameThatIsTakenStaysAllowed()
{
    Renaming renaming;
    renaming.project.addSource(QStringLiteral("Late"), QStringLiteral("PROGRAM Infeed END_PROGRAM"));
    renaming.type(QStringLiteral("Infeed"));
    QVERIFY(renaming.ok->isEnabled());
}

void dlgNodeReNameTest::aNameThatStaysRenamesNothing()
{
    Renaming renaming;
    renaming.type(QStringLiteral("Infeed"));
    QTest::mouseClick(renaming.ok, Qt::LeftButton);
    QCOMPARE(renaming.dialog.result(), int(QDialog::Rejected));
    QCOMPARE(renaming.dialog.getRenameName(), QString());
}

void dlgNodeReNameTest::asAModalDialog()
{
    ModalDialogDriver driver([](QDialog* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>();
        edit->selectAll();
        QTest::keyClicks(edit, QStringLiteral("Feeder"));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    TestProject project(QStringLiteral("NV3T_50Q4"));
    dlgNodeReName dialog(project.name(), QStringLiteral("AxisView"), nullptr);
    dialog.setCurrentName(QStringLiteral("Infeed"), QString());
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QCOMPARE(dialog.getRenameName(), QStringLiteral("Feeder"));
}

void dlgNodeReNameTest::namesForTestsAndReaders()
{
    const Renaming renaming;
    QCOMPARE(renaming.dialog.objectName(), QStringLiteral("dlgNodeReName"));
    QCOMPARE(renaming.dialog.windowTitle(), QStringLiteral("Rename Axis"));
    QVERIFY(!renaming.edit->accessibleName().isEmpty());
    QCOMPARE(renaming.ok->property("styleType").toString(), QStringLiteral("sureButton"));
    QCOMPARE(renaming.cancel->property("styleType").toString(), QStringLiteral("sureButton"));
    const dlgNodeReName other(renaming.project.name(), QStringLiteral("ProgramView"), nullptr);
    QCOMPARE(other.windowTitle(), QStringLiteral("Rename"));
}

QTEST_MAIN(dlgNodeReNameTest)
#include "dlgNodeReNameTest.moc"
