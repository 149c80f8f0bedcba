#include "workbench/monitor/CurveLegend.h"

#include "workbench/monitor/CurveLook.h"
#include "workbench/monitor/CurvePlot.h"

#include <QAction>
#include <QGuiApplication>
#include <QHeaderView>

namespace {

enum Column { NameColumn, ValueColumn, UnitColumn };
constexpr int axisRole = Qt::UserRole;
constexpr int kindRole = Qt::UserRole + 1;
constexpr int valueDecimals = 3;

} // namespace

CurveLegend::CurveLegend(QWidget* parent) : QTreeWidget(parent), m_stop(new QAction(this))
{
    setObjectName(QStringLiteral("curveLegend"));
    setColumnCount(3);
    setUniformRowHeights(true);
    setIconSize({ 32, 16 });
    setFrameShape(NoFrame);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setIndentation(16);
    setMinimumSize(240, 48);
    header()->setStretchLastSection(false);
    // Each new value asks for the width of its column; over all rows, that took seconds with many axes.
    header()->setResizeContentsPrecision(0);
    header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(ValueColumn, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(UnitColumn, QHeaderView::ResizeToContents);
    m_stop->setObjectName(QStringLiteral("curves.stopRecording"));
    m_stop->setShortcut(QKeySequence::Delete);
    m_stop->setShortcutContext(Qt::WidgetShortcut);
    addAction(m_stop);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(m_stop, &QAction::triggered, this, &CurveLegend::stopCurrent);
    connect(this, &QTreeWidget::itemChanged, this, &CurveLegend::note);
    retranslate();
}

CurveLegend::~CurveLegend() = default;

QString CurveLegend::kindName(CurveKind kind)
{
    switch (kind) {
    case SetPosition:
        return tr("Set position");
    case ActualPosition:
        return tr("Actual position");
    case SetVelocity:
        return tr("Set velocity");
    case ActualVelocity:
        break;
    }
    return tr("Actual velocity");
}

QString CurveLegend::unit(CurveKind kind)
{
    return kind == SetPosition || kind == ActualPosition ? tr("Unit") : tr("Unit/s");
}

void CurveLegend::setAxes(const QVector<int>& axes, const std::function<QString(int)>& name)
{
    m_filling = true;
    clear();
    for (const int axisNo : axes) {
        auto* axis = new QTreeWidgetItem(this, { name(axisNo) });
        axis->setData(NameColumn, axisRole, axisNo);
        for (int i = 0; i < curveKinds; ++i) {
            const auto kind = static_cast<CurveKind>(i);
            auto* curve = new QTreeWidgetItem(axis, { kindName(kind), QString(), unit(kind) });
            curve->setData(NameColumn, axisRole, axisNo);
            curve->setData(NameColumn, kindRole, i);
            curve->setTextAlignment(ValueColumn, Qt::AlignRight | Qt::AlignVCenter);
            curve->setFlags(curve->flags() | Qt::ItemIsUserCheckable);
            curve->setCheckState(
                NameColumn, m_hidden.contains(CurvePlot::key(axisNo, kind)) ? Qt::Unchecked : Qt::Checked);
        }
        axis->setFlags(axis->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
    }
    expandAll();
    m_filling = false;
    restyle();
}

void CurveLegend::forEachCurve(const std::function<void(QTreeWidgetItem&, int, CurveKind)>& call) const
{
    for (int i = 0; i < topLevelItemCount(); ++i) {
        QTreeWidgetItem* axis = topLevelItem(i);
        for (int j = 0; j < axis->childCount(); ++j) {
            QTreeWidgetItem& curve = *axis->child(j);
            call(curve, curve.data(NameColumn, axisRole).toInt(),
                static_cast<CurveKind>(curve.data(NameColumn, kindRole).toInt()));
        }
    }
}

void CurveLegend::showValues(const CurveStore& curves, const std::optional<double>& cursor)
{
    m_filling = true;
    const double time = cursor.value_or(curves.end());
    forEachCurve([&](QTreeWidgetItem& item, int axisNo, CurveKind kind) {
        const CurvePoint* point = curves.nearest(axisNo, time);
        item.setText(ValueColumn,
            point ? QString::number(point->values[static_cast<std::size_t>(kind)], 'f', valueDecimals)
                  : QStringLiteral("\u2013"));
    });
    m_filling = false;
}

void CurveLegend::restyle()
{
    m_filling = true;
    const bool light = CurveLook::isLight(QGuiApplication::palette());
    forEachCurve([light](QTreeWidgetItem& item, int axisNo, CurveKind kind) {
        item.setIcon(NameColumn, CurveLook::sample(CurveLook::pen(axisNo, kind, light)));
    });
    m_filling = false;
}

void CurveLegend::retranslate()
{
    setHeaderLabels({ tr("Curve"), tr("Value"), tr("Unit") });
    setAccessibleName(tr("Curves shown"));
    m_stop->setText(tr("Stop recording this axis"));
    m_filling = true;
    forEachCurve([](QTreeWidgetItem& item, int, CurveKind kind) {
        item.setText(NameColumn, kindName(kind));
        item.setText(UnitColumn, unit(kind));
    });
    m_filling = false;
}

void CurveLegend::note(QTreeWidgetItem* item, int column)
{
    if (m_filling || column != NameColumn || !item->parent())
        return;
    const int key = CurvePlot::key(
        item->data(NameColumn, axisRole).toInt(), static_cast<CurveKind>(item->data(NameColumn, kindRole).toInt()));
    if (item->checkState(NameColumn) == Qt::Checked)
        m_hidden.remove(key);
    else
        m_hidden.insert(key);
    emit hiddenChanged();
}

void CurveLegend::stopCurrent()
{
    if (const QTreeWidgetItem* item = currentItem())
        emit stopRequested(item->data(NameColumn, axisRole).toInt());
}
