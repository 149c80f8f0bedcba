#include "workbench/online/ConnectDialog.h"

#include "sdk/IConfiguration.h"
#include "ui_ConnectDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QVariant>

namespace {

QString addressKey()
{
    return QStringLiteral("Connection/Address");
}
QString authorityKey()
{
    return QStringLiteral("Connection/Authority");
}
QString certificateKey()
{
    return QStringLiteral("Connection/Certificate");
}
QString keyKey()
{
    return QStringLiteral("Connection/Key");
}
QString directKey()
{
    return QStringLiteral("Connection/DirectLogin");
}

} // namespace

ConnectDialog::ConnectDialog(IConfiguration& settings, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_ui(std::make_unique<Ui::ConnectDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    QPushButton* ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    ok->setText(tr("Connect"));
    ok->setProperty("styleType", QStringLiteral("sureButton"));
    ok->setDefault(true);
    m_ui->buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    offerFiles(*m_ui->chooseAuthority, *m_ui->authority, tr("Certificate of the authority"));
    offerFiles(*m_ui->chooseCertificate, *m_ui->certificate, tr("Certificate of this client"));
    offerFiles(*m_ui->chooseKey, *m_ui->key, tr("Key of this client"));
    restore();
    for (const QLineEdit* field : { m_ui->address, m_ui->token, m_ui->authority, m_ui->certificate, m_ui->key })
        connect(field, &QLineEdit::textChanged, this, &ConnectDialog::judge);
    m_ui->address->setFocus();
    judge();
}

ConnectDialog::~ConnectDialog() = default;

void ConnectDialog::restore()
{
    m_ui->address->setText(m_settings.value(addressKey(), QString()).toString());
    m_ui->authority->setText(m_settings.value(authorityKey(), QString()).toString());
    m_ui->certificate->setText(m_settings.value(certificateKey(), QString()).toString());
    m_ui->key->setText(m_settings.value(keyKey(), QString()).toString());
    m_ui->direct->setChecked(m_settings.value(directKey(), false).toBool());
}

void ConnectDialog::offerFiles(QToolButton& button, QLineEdit& field, const QString& title)
{
    connect(&button, &QToolButton::clicked, this, [this, &field, title] {
        const QString file = QFileDialog::getOpenFileName(
            this, title, QFileInfo(field.text()).absolutePath(), tr("PEM files (*.pem *.crt *.key);;All files (*)"));
        if (!file.isEmpty())
            field.setText(file);
    });
}

ControllerAddress ConnectDialog::address() const
{
    ControllerAddress address;
    QString ignored;
    address.setHostAndPort(m_ui->address->text(), &ignored);
    address.token = m_ui->token->text().toUtf8();
    address.authorityFile = m_ui->authority->text().trimmed();
    address.certificateFile = m_ui->certificate->text().trimmed();
    address.keyFile = m_ui->key->text().trimmed();
    return address;
}

bool ConnectDialog::isDirectLogin() const
{
    return m_ui->direct->isChecked();
}

QString ConnectDialog::objection() const
{
    ControllerAddress trial;
    QString error;
    if (!trial.setHostAndPort(m_ui->address->text(), &error))
        return m_ui->address->text().trimmed().isEmpty()
            ? tr("Enter the controller's address, host and port, such as 127.0.0.1:50700.")
            : error;
    QString objection = address().objection();
    if (!objection.isEmpty())
        return objection;
    return !address().usesTls() && address().token.isEmpty() ? tr("Enter the token that the controller was given.")
                                                             : QString();
}

void ConnectDialog::judge()
{
    const QString text = objection();
    m_ui->objection->setText(text);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(text.isEmpty());
}

void ConnectDialog::accept()
{
    m_settings.setValue(addressKey(), m_ui->address->text().trimmed());
    m_settings.setValue(authorityKey(), m_ui->authority->text().trimmed());
    m_settings.setValue(certificateKey(), m_ui->certificate->text().trimmed());
    m_settings.setValue(keyKey(), m_ui->key->text().trimmed());
    m_settings.setValue(directKey(), m_ui->direct->isChecked());
    QDialog::accept();
}
