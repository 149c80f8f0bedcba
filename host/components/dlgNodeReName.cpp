#include "host/components/dlgNodeReName.h"

#include "host/components/DataVerification.h"
#include "host/components/SureButton.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/CheckUnitHelper.h"
#include "host/languagecore/SafeAccore.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

bool isFreeInPrograms(const QString& name, const QString& projectName)
{
    const SafeAccore core(projectName.toStdString(), false);
    return !core || core->checkUnitHelper()->checkVarName(name.toStdString());
}

} // namespace

dlgNodeReName::dlgNodeReName(const QString& projectName, const QString& typeKey, QWidget* parent)
    : QDialog(parent), m_projectName(projectName), m_edit(new QLineEdit(this)), m_extensionLabel(new QLabel(this)),
      m_reason(new QLabel(this)), m_ok(makeSureButton(tr("OK"), "okButton", this))
{
    setObjectName(QStringLiteral("dlgNodeReName"));
    setWindowTitle(typeKey == QLatin1String("AxisView") ? tr("Rename Axis") : tr("Rename"));
    buildForm();
    connect(m_edit, &QLineEdit::textChanged, this, &dlgNodeReName::onTextChanged);
    connect(m_ok, &QPushButton::clicked, this, &dlgNodeReName::accept);
    onTextChanged(QString());
}

dlgNodeReName::~dlgNodeReName() = default;

void dlgNodeReName::buildForm()
{
    m_edit->setObjectName(QStringLiteral("nameEdit"));
    m_edit->setAccessibleName(tr("Name"));
    m_reason->setObjectName(QStringLiteral("reasonLabel"));
    m_reason->setAccessibleName(tr("Why the name cannot be used"));
    m_reason->setWordWrap(true);
    m_reason->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Room for the longest reason, so that the buttons stay where they are while the user types.
    m_reason->setMinimumHeight(4 * m_reason->fontMetrics().lineSpacing());
    m_extensionLabel->hide();
    auto* label = new QLabel(tr("Name:"), this);
    label->setBuddy(m_edit);
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(label);
    nameRow->addWidget(m_edit);
    nameRow->addWidget(m_extensionLabel);

    auto* cancel = makeSureButton(tr("Cancel"), "cancelButton", this);
    m_ok->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &dlgNodeReName::reject);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch();
    buttonRow->addWidget(m_ok);
    buttonRow->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(nameRow);
    layout->addWidget(m_reason);
    layout->addStretch();
    layout->addLayout(buttonRow);
    resize(420, sizeHint().height());
}

void dlgNodeReName::setCurrentName(const QString& name, const QString& extension)
{
    m_currentName = name;
    m_extension = extension;
    m_extensionLabel->setText(extension);
    m_extensionLabel->setVisible(!extension.isEmpty());
    m_edit->setText(name);
    m_edit->selectAll();
    onTextChanged(name);
}

QString dlgNodeReName::getRenameName() const
{
    return m_acceptedName;
}

void dlgNodeReName::accept()
{
    if (!objection(m_edit->text()).isEmpty())
        return;
    // A name that stays is no renaming, which would close the editor and leave an undo entry.
    if (m_edit->text() == m_currentName) {
        reject();
        return;
    }
    m_acceptedName = m_edit->text() + m_extension;
    QDialog::accept();
}

void dlgNodeReName::onTextChanged(const QString& text)
{
    const QString reason = objection(text);
    m_reason->setText(reason);
    m_ok->setEnabled(reason.isEmpty());
}

QString dlgNodeReName::objection(const QString& name) const
{
    if (name.isEmpty())
        return tr("Enter a name.");
    if (name == m_currentName)
        return {};
    const DataVerification check = DataVerification::getInstance();
    if (!check.isValidName(name))
        return tr("A name begins with a letter or underscore, followed by letters, digits and single underscores.");
    if (check.isKeyword(name, m_projectName))
        return tr("%1 is a reserved word.").arg(name);
    // The same name in other letters clashes with nobody but itself.
    if (name.compare(m_currentName, Qt::CaseInsensitive) == 0)
        return {};
    if (check.isAxisName(name, m_projectName))
        return tr("There is an axis of the name %1 already.").arg(name);
    const bool taken = check.isGlobalVarTable(name, m_projectName) || check.isPouOrFBOrFCName(name, m_projectName)
        || check.isStructOrEnumName(name, m_projectName) || check.isAxisGroupName(name, m_projectName)
        || check.isTaskName(name, m_projectName) || !isFreeInPrograms(name, m_projectName);
    return taken ? tr("The project uses the name %1 already.").arg(name) : QString();
}
