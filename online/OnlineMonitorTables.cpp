#include "online/OnlineMonitorTables.h"

#include "online/OnlineDebugWidget.h"

#include <QHeaderView>
#include <QIcon>
#include <QPixmap>
#include <QStandardItemModel>
#include <QTableView>

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr int variableRows = 4;
constexpr int signalCount = 6;

void setUpView(QTableView& view, QStandardItemModel& model)
{
    view.setModel(&model);
    view.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    // The views' sizes are fixed: header and rows share what there is, in the small font of the page's upper part.
    view.horizontalHeader()->setMinimumSectionSize(1);
    view.verticalHeader()->setMinimumSectionSize(1);
    for (QHeaderView* header : { view.horizontalHeader(), view.verticalHeader() })
        header->setFont(view.font());
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setProperty("styleType", QStringLiteral("commonTable"));
}

void setCell(QStandardItemModel& model, int row, int column, const QVariant& value, int role = Qt::EditRole)
{
    model.setData(model.index(row, column), value, role);
}

/// The value times 100 as a whole number, the rest cut off. A value that no 64-bit number can hold goes to the nearest
/// one that can, nan to 0: the controller may send any bits.
qint64 hundredths(double value)
{
    const double scaled = value * 100;
    if (std::isnan(scaled))
        return 0;
    constexpr double limit = 9223372036854775807.0;
    if (scaled >= limit)
        return std::numeric_limits<qint64>::max();
    if (scaled <= -limit)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(scaled);
}

/// An image that is read once a refresh, at its first use. An icon of the file itself would be read and decoded again
/// for every lamp and every drawing.
class Lamp {
public:
    explicit Lamp(QString file) : m_file(std::move(file)) { }

    QIcon icon()
    {
        if (m_image.isNull())
            m_image = QPixmap(m_file);
        return QIcon(m_image);
    }

private:
    QString m_file;
    QPixmap m_image;
};

} // namespace

namespace OnlineMonitorTables {

QStandardItemModel* makeVariableModel(QWidget* page)
{
    auto* model = new QStandardItemModel(page);
    model->setHorizontalHeaderLabels({ OnlineDebugWidget::tr("Variable"), OnlineDebugWidget::tr("Set value"),
        OnlineDebugWidget::tr("Actual value") });
    model->setColumnCount(3);
    model->setRowCount(variableRows);
    const QStringList rows{ OnlineDebugWidget::tr("Location"), OnlineDebugWidget::tr("Speed"),
        OnlineDebugWidget::tr("Accelerated speed"), OnlineDebugWidget::tr("Torque force") };
    for (int row = 0; row < variableRows; ++row)
        setCell(*model, row, 0, rows.at(row));
    return model;
}

QStandardItemModel* makeStatusModel(QWidget* page)
{
    auto* model = new QStandardItemModel(page);
    model->setHorizontalHeaderLabels(
        { OnlineDebugWidget::tr("/"), OnlineDebugWidget::tr("Motion"), OnlineDebugWidget::tr("Hard Limit Pos"),
            OnlineDebugWidget::tr("Hard Limit Neg"), OnlineDebugWidget::tr("Home Switch"),
            OnlineDebugWidget::tr("Soft Limit Pos"), OnlineDebugWidget::tr("Soft Limit Neg") });
    model->setColumnCount(1 + signalCount);
    model->setRowCount(1);
    setCell(*model, 0, 0, OnlineDebugWidget::tr("Status"));
    return model;
}

void setUpVariableView(QTableView& view, QStandardItemModel& model)
{
    setUpView(view, model);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
}

void setUpStatusView(QTableView& view, QStandardItemModel& model)
{
    setUpView(view, model);
    view.setSelectionMode(QAbstractItemView::NoSelection);
}

void fillVariables(QStandardItemModel& model, const AxisRef& status)
{
    const std::array<double, variableRows> set{ status.setPosition, status.setVelocity, status.setAcceleration,
        status.setTorque };
    const std::array<double, variableRows> actual{ status.actualPosition, status.actualVelocity,
        status.actualAcceleration, status.actualTorque };
    for (int row = 0; row < variableRows; ++row)
        setCell(model, row, 1, valueText(set[static_cast<size_t>(row)]));
    for (int row = 0; row < variableRows; ++row)
        setCell(model, row, 2, valueText(actual[static_cast<size_t>(row)]));
}

void fillStatus(QStandardItemModel& model, const AxisRef& status, bool moving)
{
    // An active limit shows the lamp named "off": it is the alarming one of the two.
    Lamp good(QStringLiteral(":/images/status_on.png"));
    Lamp bad(QStringLiteral(":/images/status_off.png"));
    struct Signal {
        bool on;
        Lamp& lamp;
    };
    const std::array<Signal, signalCount> states{ {
        { moving, good },
        { status.positiveHardLimit != 0, bad },
        { status.negativeHardLimit != 0, bad },
        { status.homeSwitch != 0, good },
        { status.positiveSoftLimit != 0, bad },
        { status.negativeSoftLimit != 0, bad },
    } };
    for (int i = 0; i < signalCount; ++i)
        setCell(model, 0, 1 + i, states[static_cast<size_t>(i)].on ? QStringLiteral("ON") : QStringLiteral("OFF"));
    for (int i = 0; i < signalCount; ++i) {
        const Signal& state = states[static_cast<size_t>(i)];
        setCell(model, 0, 1 + i, state.on ? state.lamp.icon() : QIcon(), Qt::DecorationRole);
    }
}

void clearVariables(QStandardItemModel& model)
{
    for (int row = 0; row < variableRows; ++row) {
        setCell(model, row, 1, QString());
        setCell(model, row, 2, QString());
    }
}

void clearStatus(QStandardItemModel& model)
{
    for (int i = 0; i < signalCount; ++i)
        setCell(model, 0, 1 + i, QString());
}

QString valueText(double value)
{
    return QString::number(static_cast<double>(hundredths(value)) / 100.0, 'f', 2);
}

} // namespace OnlineMonitorTables
