#pragma once

#include "protocol/AxisRefLayout.h"

#include <QString>

class QStandardItemModel;
class QTableView;
class QWidget;

/// The two live tables of the online page: set and actual values, and the signals of the axis. Texts are translated in
/// the page's context. Main thread only.
namespace OnlineMonitorTables {

/// The empty models with headers and row names, children of the page.
QStandardItemModel* makeVariableModel(QWidget* page);
QStandardItemModel* makeStatusModel(QWidget* page);

/// Attaches the model and sets headers, selection and style; nothing can be edited.
void setUpVariableView(QTableView& view, QStandardItemModel& model);
void setUpStatusView(QTableView& view, QStandardItemModel& model);

void fillVariables(QStandardItemModel& model, const AxisRef& status);
/// The flag tells that the axis moves.
void fillStatus(QStandardItemModel& model, const AxisRef& status, bool moving);

/// Blank the texts. The lamps stay as the last reply left them.
void clearVariables(QStandardItemModel& model);
void clearStatus(QStandardItemModel& model);

/// Two digits behind the point, the rest cut off: 1.239 is "1.23", -0.001 is "0.00".
QString valueText(double value);

} // namespace OnlineMonitorTables
