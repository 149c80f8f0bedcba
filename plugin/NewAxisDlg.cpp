#include "plugin/NewAxisDlg.h"

#include "host/components/DataVerification.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/CheckUnitHelper.h"
#include "host/languagecore/SafeAccore.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

void setButtonStyle(QPushButton* button)
{
    button->setProperty("styleType", QStringLiteral("sureButton"));
}

} // namespace

NewAxisDlg::NewAxisDlg(const QString& projectName, QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags), m_nameEdit(new QLineEdit(this)), m_okButton(new QPushButton(tr("OK"), this)),
      m_cancelButton(new QPushButton(tr("Cancel"), this)), m_projectName(projectName)
{
    buildForm();
    m_okButton->setEnabled(false);
    connect(m_nameEdit, &QLineEdit::textChanged, this, &NewAxisDlg::onTextChanged);
    connect(m_okButton, &QPushButton::clicked, this, &NewAxisDlg::onOkButtonClicked);
    connect(m_cancelButton, &QPushButton::clicked, this, &NewAxisDlg::reject);
    if (canJudge())
        m_nameEdit->setText(freeName());
}

NewAxisDlg::~NewAxisDlg() = default;

QString NewAxisDlg::axisName() const
{
    return m_nameEdit->text();
}

void NewAxisDlg::onOkButtonClicked()
{
    accept();
}

void NewAxisDlg::onTextChanged(const QString& name)
{
    m_okButton->setEnabled(isValid(name));
}

void NewAxisDlg::buildForm()
{
    setWindowTitle(tr("New Axis"));
    resize(340, 120);
    setButtonStyle(m_okButton);
    setButtonStyle(m_cancelButton);
    m_okButton->setDefault(true);

    auto* label = new QLabel(tr("Name:"), this);
    label->setBuddy(m_nameEdit);
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(label);
    nameRow->addWidget(m_nameEdit);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch();
    buttonRow->addWidget(m_okButton);
    buttonRow->addWidget(m_cancelButton);

    auto* layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addLayout(nameRow);
    layout->addStretch();
    layout->addLayout(buttonRow);
}

/// Without a language core every name is refused, and a search for a free one would never end.
bool NewAxisDlg::canJudge() const
{
    return !m_projectName.isEmpty() && SafeAccore(m_projectName.toStdString(), false);
}

/// There is always a free number: a project holds finitely many names.
QString NewAxisDlg::freeName() const
{
    for (int number = 0;; ++number) {
        QString name = QStringLiteral("Axis_") + QString::number(number);
        if (isValid(name))
            return name;
    }
}

bool NewAxisDlg::isValid(const QString& name) const
{
    if (name.isEmpty() || m_projectName.isEmpty())
        return false;
    const DataVerification verification = DataVerification::getInstance();
    if (!verification.isValidName(name) || isTaken(name))
        return false;
    const SafeAccore core(m_projectName.toStdString(), false);
    return core && core->checkUnitHelper()->checkVarName(name.toStdString());
}

bool NewAxisDlg::isTaken(const QString& name) const
{
    const DataVerification verification = DataVerification::getInstance();
    return verification.isKeyword(name, m_projectName) || verification.isGlobalVarTable(name, m_projectName)
        || verification.isPouOrFBOrFCName(name, m_projectName) || verification.isStructOrEnumName(name, m_projectName)
        || verification.isAxisName(name, m_projectName) || verification.isAxisGroupName(name, m_projectName)
        || verification.isTaskName(name, m_projectName);
}
