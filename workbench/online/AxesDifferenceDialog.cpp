#include "workbench/online/AxesDifferenceDialog.h"

#include "ui_AxesDifferenceDialog.h"

#include <QHeaderView>
#include <QPushButton>
#include <QVariant>

#include <set>

namespace {

enum Column { AxisColumn, ParameterColumn, ProjectColumn, ControllerColumn };

int countAxes(const QVector<AxisDifference>& differences)
{
    std::set<QString> axes;
    for (const AxisDifference& difference : differences)
        axes.insert(difference.axis);
    return static_cast<int>(axes.size());
}

} // namespace

AxesDifferenceDialog::AxesDifferenceDialog(
    const QVector<AxisDifference>& differences, const QString& controller, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::AxesDifferenceDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->summary->setText(tr("The axes of the project and of the controller at %1 are not the same. Axes that differ: "
                              "%2, differences: %3.")
                               .arg(controller)
                               .arg(countAxes(differences))
                               .arg(differences.size()));
    for (const AxisDifference& difference : differences)
        addRow(difference);
    m_ui->differences->verticalHeader()->setDefaultSectionSize(m_ui->differences->fontMetrics().height() + 8);
    m_ui->differences->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_ui->differences->resizeColumnsToContents();
    QPushButton* takeOver = m_ui->buttons->addButton(tr("Take over"), QDialogButtonBox::AcceptRole);
    takeOver->setObjectName(QStringLiteral("takeOver"));
    takeOver->setProperty("styleType", QStringLiteral("sureButton"));
    takeOver->setDefault(true);
    QPushButton* notNow = m_ui->buttons->addButton(tr("Not now"), QDialogButtonBox::RejectRole);
    notNow->setObjectName(QStringLiteral("notNow"));
    takeOver->setFocus();
}

AxesDifferenceDialog::~AxesDifferenceDialog() = default;

void AxesDifferenceDialog::addRow(const AxisDifference& difference)
{
    const QString there = tr("present");
    const QString missing = tr("missing");
    const bool whole = difference.kind != AxisDifference::Parameter;
    const bool mine = difference.kind == AxisDifference::OnlyInProject;
    const int row = m_ui->differences->rowCount();
    m_ui->differences->insertRow(row);
    const QStringList texts{ difference.axis, whole ? tr("whole axis") : difference.key,
        whole ? (mine ? there : missing) : difference.inProject,
        whole ? (mine ? missing : there) : difference.inController };
    for (int column = AxisColumn; column <= ControllerColumn; ++column) {
        auto* item = new QTableWidgetItem(texts.at(column));
        item->setToolTip(texts.at(column));
        m_ui->differences->setItem(row, column, item);
    }
}
