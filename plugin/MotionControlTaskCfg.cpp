#include "plugin/MotionControlTaskCfg.h"

#include "ui_MotionControlTaskCfg.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"

#include <QPair>
#include <QPushButton>
#include <QVector>

#include <algorithm>

namespace {

constexpr quint16 defaultCycleTime = 1000;

/// Longest first.
QStringList cycleTimes()
{
    using Choice = QPair<QString, quint16>;
    QVector<Choice> choices;
    for (auto choice = CycleTimeChoices.begin(); choice != CycleTimeChoices.end(); ++choice)
        choices.append({ choice.key(), choice.value() });
    std::sort(choices.begin(), choices.end(), [](const Choice& a, const Choice& b) { return a.second > b.second; });
    QStringList texts;
    for (const Choice& choice : qAsConst(choices))
        texts.append(choice.first);
    return texts;
}

void setUpButton(QPushButton* button, const QString& text)
{
    button->setText(text);
    button->setProperty("styleType", QStringLiteral("sureButton"));
}

} // namespace

MotionControlTaskCfg::MotionControlTaskCfg(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::MotionControlTaskCfg>())
{
    m_ui->setupUi(this);
    setUpButtons();
    const QStringList choices = cycleTimes();
    m_ui->comboBox->addItems(choices);
    showCycleTime(choices);
}

MotionControlTaskCfg::~MotionControlTaskCfg() = default;

void MotionControlTaskCfg::setUpButtons()
{
    setUpButton(m_ui->buttonBox->button(QDialogButtonBox::Ok), tr("OK"));
    setUpButton(m_ui->buttonBox->button(QDialogButtonBox::Cancel), tr("Cancel"));
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &MotionControlTaskCfg::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &MotionControlTaskCfg::reject);
}

void MotionControlTaskCfg::showCycleTime(const QStringList& choices)
{
    const auto* cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
    if (!cookies)
        return;
    const ProjectAxes axes(cookies->value(Solution::ConfigKey::projectName(), QVariant()).toString());
    if (!axes)
        return;
    m_axisModel = axes.model();
    m_cycleTime = axes->getMotionTaskCfgCycleTime();
    if (m_cycleTime.isEmpty())
        m_cycleTime = CycleTimeChoices.key(defaultCycleTime);
    const int position = choices.indexOf(m_cycleTime);
    if (position >= 0)
        m_ui->comboBox->setCurrentIndex(position);
}

void MotionControlTaskCfg::accept()
{
    if (m_axisModel) {
        const SafeProjectModel guard(m_axisModel->project());
        QString chosen = m_ui->comboBox->currentText();
        if (chosen.compare(m_cycleTime, Qt::CaseInsensitive) != 0)
            m_axisModel->setMotionTaskCfgCycleTime(chosen);
    }
    QDialog::accept();
}
