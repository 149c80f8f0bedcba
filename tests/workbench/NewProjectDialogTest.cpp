#include "workbench/NewProjectDialog.h"
#include "workbench/ControllerCatalog.h"
#include "workbench/ControllerDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

class NewProjectDialogTest : public QObject {
    Q_OBJECT

private slots:
    void aFreePlaceIsAccepted();
    void anObjectionIsNamed_data();
    void anObjectionIsNamed();
    void anEndingIsNotDoubled();
    void withoutControllersThereIsNoProject();
    void thePresentControllerIsNoChange();
    void anotherControllerCanBeChosen();
};

namespace {

template <typename Widget>
Widget* find(const QDialog& dialog, const char* name)
{
    return dialog.findChild<Widget*>(QLatin1String(name));
}

QPushButton* ok(const QDialog& dialog)
{
    return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

ControllerCatalog catalog()
{
    return ControllerCatalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
}

} // namespace

void NewProjectDialogTest::aFreePlaceIsAccepted()
{
    const QTemporaryDir folder;
    const ControllerCatalog controllers = catalog();
    NewProjectDialog dialog(controllers, folder.path());
    QVERIFY(!ok(dialog)->isEnabled());
    QTest::keyClicks(find<QLineEdit>(dialog, "name"), QStringLiteral("Line 1"));
    QVERIFY(ok(dialog)->isEnabled());
    find<QComboBox>(dialog, "controller")->setCurrentText(QStringLiteral("NV3T_50Q4"));
    QCOMPARE(dialog.filePath(), folder.filePath(QStringLiteral("Line 1.kproj")));
    QCOMPARE(dialog.controller()->model(), QStringLiteral("NV3T_50Q4"));
    QVERIFY(find<QLabel>(dialog, "summary")
                ->text()
                .contains(QString::number(dialog.controller()->limits().value(QStringLiteral("MaxAxis")))));
}

void NewProjectDialogTest::anObjectionIsNamed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a slash in the name") << QStringLiteral("a/b") << QString() << QStringLiteral("\"/\"");
    QTest::newRow("a backslash in the name") << QStringLiteral("a\\b") << QString() << QStringLiteral("\"\\\"");
    QTest::newRow("a folder that is not there")
        << QStringLiteral("a") << QStringLiteral("/no/where") << QStringLiteral("folder");
    QTest::newRow("a file that is there") << QStringLiteral("taken") << QString() << QStringLiteral("taken.kproj");
}

void NewProjectDialogTest::anObjectionIsNamed()
{
    QFETCH(QString, name);
    QFETCH(QString, folder);
    QFETCH(QString, reason);
    const QTemporaryDir directory;
    QFile taken(directory.filePath(QStringLiteral("taken.kproj")));
    QVERIFY(taken.open(QIODevice::WriteOnly));
    const ControllerCatalog controllers = catalog();
    NewProjectDialog dialog(controllers, folder.isEmpty() ? directory.path() : folder);
    QTest::keyClicks(find<QLineEdit>(dialog, "name"), name);
    QVERIFY(!ok(dialog)->isEnabled());
    const QString text = find<QLabel>(dialog, "reason")->text();
    QVERIFY2(text.contains(reason), qPrintable(text));
}

void NewProjectDialogTest::anEndingIsNotDoubled()
{
    const QTemporaryDir folder;
    const ControllerCatalog controllers = catalog();
    NewProjectDialog dialog(controllers, folder.path());
    QTest::keyClicks(find<QLineEdit>(dialog, "name"), QStringLiteral("a.kproj"));
    QCOMPARE(dialog.filePath(), folder.filePath(QStringLiteral("a.kproj")));
}

void NewProjectDialogTest::withoutControllersThereIsNoProject()
{
    const QTemporaryDir folder;
    const ControllerCatalog none(folder.path());
    NewProjectDialog dialog(none, folder.path());
    QTest::keyClicks(find<QLineEdit>(dialog, "name"), QStringLiteral("a"));
    QVERIFY(!ok(dialog)->isEnabled());
    QVERIFY(!find<QLabel>(dialog, "reason")->text().isEmpty());
}

void NewProjectDialogTest::thePresentControllerIsNoChange()
{
    const ControllerCatalog controllers = catalog();
    const ControllerDialog dialog(controllers, QStringLiteral("NV3T_50Q4"));
    QCOMPARE(dialog.controller()->model(), QStringLiteral("NV3T_50Q4"));
    QVERIFY(!ok(dialog)->isEnabled());
    QVERIFY(find<QLabel>(dialog, "present")->text().contains(QStringLiteral("NV3T_50Q4")));
}

void NewProjectDialogTest::anotherControllerCanBeChosen()
{
    const ControllerCatalog controllers = catalog();
    ControllerDialog dialog(controllers, QStringLiteral("NV3T_50Q4"));
    dialog.show();
    auto* models = find<QListWidget>(dialog, "models");
    QTest::keyClick(models, Qt::Key_Home);
    QVERIFY(ok(dialog)->isEnabled());
    QVERIFY(dialog.controller()->model() != QStringLiteral("NV3T_50Q4"));
    QTest::mouseClick(ok(dialog), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

QTEST_MAIN(NewProjectDialogTest)
#include "NewProjectDialogTest.moc"
