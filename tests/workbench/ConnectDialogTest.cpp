#include "workbench/online/ConnectDialog.h"
#include "workbench/Configuration.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

class ConnectDialogTest : public QObject {
    Q_OBJECT

private slots:
    void whatIsMissingIsNamed_data();
    void whatIsMissingIsNamed();
    void whatWasEnteredIsHandedOver();
    void allButTheTokenIsRemembered();
    void aCancelledDialogRemembersNothing();
    void everythingCanBeReachedByKey();

private:
    static QLineEdit* field(const QDialog& dialog, const char* name)
    {
        return dialog.findChild<QLineEdit*>(QLatin1String(name));
    }
    static void type(QLineEdit* field, const QString& text)
    {
        field->clear();
        QTest::keyClicks(field, text);
    }
    static QPushButton* ok(const QDialog& dialog)
    {
        return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    }
};

void ConnectDialogTest::whatIsMissingIsNamed_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("token");
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<QString>("word");
    const QString none;
    QTest::newRow("nothing at all") << none << none << none << QStringLiteral("Enter the controller's address");
    QTest::newRow("an address that is none")
        << QStringLiteral("here") << QStringLiteral("t") << none << QStringLiteral("\"here\" is no address");
    QTest::newRow("no token on this machine")
        << QStringLiteral("127.0.0.1:5") << none << none << QStringLiteral("Enter the token");
    QTest::newRow("no certificates for another machine")
        << QStringLiteral("192.0.2.7:5") << QStringLiteral("t") << none << QStringLiteral("make-certificates");
    QTest::newRow("one of three files") << QStringLiteral("192.0.2.7:5") << none << QStringLiteral("/x.pem")
                                        << QStringLiteral("one of them is not given");
    QTest::newRow("all that is needed") << QStringLiteral("127.0.0.1:5") << QStringLiteral("t") << none << none;
}

void ConnectDialogTest::whatIsMissingIsNamed()
{
    QFETCH(QString, address);
    QFETCH(QString, token);
    QFETCH(QString, certificate);
    QFETCH(QString, word);
    Cookies settings;
    ConnectDialog dialog(settings);
    type(field(dialog, "address"), address);
    type(field(dialog, "token"), token);
    type(field(dialog, "certificate"), certificate);
    const QString objection = dialog.findChild<QLabel*>(QStringLiteral("objection"))->text();
    QVERIFY2(word.isEmpty() ? objection.isEmpty() : objection.contains(word), qPrintable(objection));
    QCOMPARE(ok(dialog)->isEnabled(), word.isEmpty());
}

void ConnectDialogTest::whatWasEnteredIsHandedOver()
{
    QTemporaryDir directory;
    const QString pem = directory.filePath(QStringLiteral("a.pem"));
    QFile file(pem);
    QVERIFY(file.open(QIODevice::WriteOnly));
    Cookies settings;
    ConnectDialog dialog(settings);
    type(field(dialog, "address"), QStringLiteral("[2001:db8::1]:50700"));
    for (const char* name : { "authority", "certificate", "key" })
        type(field(dialog, name), pem);
    dialog.findChild<QCheckBox*>(QStringLiteral("direct"))->setChecked(true);
    QVERIFY(ok(dialog)->isEnabled());
    const ControllerAddress address = dialog.address();
    QCOMPARE(address.text(), QStringLiteral("[2001:db8::1]:50700"));
    QCOMPARE(address.authorityFile, pem);
    QCOMPARE(address.certificateFile, pem);
    QCOMPARE(address.keyFile, pem);
    QVERIFY(dialog.isDirectLogin());
}

void ConnectDialogTest::allButTheTokenIsRemembered()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("settings.ini"));
    {
        Settings settings(file);
        ConnectDialog dialog(settings);
        type(field(dialog, "address"), QStringLiteral("127.0.0.1:50700"));
        type(field(dialog, "token"), QStringLiteral("verysecret"));
        dialog.findChild<QCheckBox*>(QStringLiteral("direct"))->setChecked(true);
        dialog.show();
        QTest::mouseClick(ok(dialog), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(settings.flush());
    }
    QFile stored(file);
    QVERIFY(stored.open(QIODevice::ReadOnly));
    QVERIFY(!stored.readAll().contains("verysecret"));
    Settings settings(file);
    const ConnectDialog dialog(settings);
    QCOMPARE(field(dialog, "address")->text(), QStringLiteral("127.0.0.1:50700"));
    QVERIFY(dialog.isDirectLogin());
    QVERIFY(field(dialog, "token")->text().isEmpty());
    QCOMPARE(field(dialog, "token")->echoMode(), QLineEdit::Password);
}

void ConnectDialogTest::aCancelledDialogRemembersNothing()
{
    Cookies settings;
    {
        ConnectDialog dialog(settings);
        type(field(dialog, "address"), QStringLiteral("127.0.0.1:50700"));
        dialog.reject();
    }
    const ConnectDialog dialog(settings);
    QVERIFY(field(dialog, "address")->text().isEmpty());
}

void ConnectDialogTest::everythingCanBeReachedByKey()
{
    Cookies settings;
    ConnectDialog dialog(settings);
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QStringList visited;
    for (int i = 0; i < 9; ++i) {
        visited.append(dialog.focusWidget()->objectName());
        QTest::keyClick(&dialog, Qt::Key_Tab);
    }
    const QStringList expected{ QStringLiteral("address"), QStringLiteral("token"), QStringLiteral("authority"),
        QStringLiteral("chooseAuthority"), QStringLiteral("certificate"), QStringLiteral("chooseCertificate"),
        QStringLiteral("key"), QStringLiteral("chooseKey"), QStringLiteral("direct") };
    QCOMPARE(visited, expected);
}

QTEST_MAIN(ConnectDialogTest)
#include "ConnectDialogTest.moc"
