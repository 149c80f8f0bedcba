#include "workbench/online/CommandLog.h"

#include "sdk/AxisDebugParams.h"

#include <QIcon>

namespace {

/// The fields that a command has, in the order of its parameter record.
enum Field { Value = 1, Timeout = 2, Position = 4, Velocity = 8, Acceleration = 16, Deceleration = 32, Jerk = 64 };

struct CommandEntry {
    int code;
    const char* name;
    int fields;
    /// What the value means, as a text for people; null for a number as it stands.
    const char* valueOn;
    const char* valueOff;
};

constexpr int motionFields = Velocity | Acceleration | Deceleration | Jerk;

const CommandEntry commands[] = {
    { CommandLog::stopAll, QT_TRANSLATE_NOOP("CommandLog", "Stop all axes"), Value,
        QT_TRANSLATE_NOOP("CommandLog", "hold"), QT_TRANSLATE_NOOP("CommandLog", "release") },
    { AxisDebugEnterDebugMode, QT_TRANSLATE_NOOP("CommandLog", "Debug mode"), Value | Timeout,
        QT_TRANSLATE_NOOP("CommandLog", "enter"), QT_TRANSLATE_NOOP("CommandLog", "leave") },
    { AxisDebugSetEnable, QT_TRANSLATE_NOOP("CommandLog", "Enable"), Value, QT_TRANSLATE_NOOP("CommandLog", "on"),
        QT_TRANSLATE_NOOP("CommandLog", "off") },
    { AxisDebugSetPosition, QT_TRANSLATE_NOOP("CommandLog", "Preset position"), Position, nullptr, nullptr },
    { AxisDebugSetHomeOffset, QT_TRANSLATE_NOOP("CommandLog", "Origin offset"), Position, nullptr, nullptr },
    { AxisDebugSetVelRatio, QT_TRANSLATE_NOOP("CommandLog", "Speed multiplier"), Value, nullptr, nullptr },
    { AxisDebugSetHome, QT_TRANSLATE_NOOP("CommandLog", "Home"), 0, nullptr, nullptr },
    { AxisDebugSetStop, QT_TRANSLATE_NOOP("CommandLog", "Stop"), Deceleration | Jerk, nullptr, nullptr },
    { AxisDebugMoveAbs, QT_TRANSLATE_NOOP("CommandLog", "Absolute move"), Position | motionFields, nullptr, nullptr },
    { AxisDebugMoveRel, QT_TRANSLATE_NOOP("CommandLog", "Relative move"), Position | motionFields, nullptr, nullptr },
    { AxisDebugMoveVel, QT_TRANSLATE_NOOP("CommandLog", "Continuous move"), motionFields, nullptr, nullptr },
    { AxisDebugJopPos, QT_TRANSLATE_NOOP("CommandLog", "Jog forwards"), Value | motionFields,
        QT_TRANSLATE_NOOP("CommandLog", "start"), QT_TRANSLATE_NOOP("CommandLog", "end") },
    { AxisDebugJopNeg, QT_TRANSLATE_NOOP("CommandLog", "Jog backwards"), Value | motionFields,
        QT_TRANSLATE_NOOP("CommandLog", "start"), QT_TRANSLATE_NOOP("CommandLog", "end") },
    { AxisDebugReset, QT_TRANSLATE_NOOP("CommandLog", "Reset"), 0, nullptr, nullptr },
};

const CommandEntry* entryOf(int code)
{
    for (const CommandEntry& entry : commands) {
        if (entry.code == code)
            return &entry;
    }
    return nullptr;
}

QString number(const QString& name, double value)
{
    return QString(name + QLatin1Char(' ') + QString::number(value, 'g', 12));
}

QString valueText(const CommandEntry& entry, short value)
{
    if (!entry.valueOn)
        return QStringLiteral("%1 %").arg(value);
    return CommandLog::tr(value != 0 ? entry.valueOn : entry.valueOff);
}

} // namespace

CommandLog::CommandLog(Names names, QObject* parent) : QAbstractTableModel(parent), m_names(std::move(names)) { }

CommandLog::~CommandLog() = default;

QString CommandLog::commandName(const AxisRequest& request)
{
    const CommandEntry* entry = entryOf(request.code);
    return entry ? tr(entry->name) : QString::number(request.code);
}

QString CommandLog::argumentsText(const AxisRequest& request)
{
    const CommandEntry* entry = entryOf(request.code);
    if (!entry)
        return QString();
    QStringList texts;
    if (entry->fields & Value)
        texts.append(valueText(*entry, request.value));
    if (entry->fields & Timeout)
        texts.append(tr("time-out %1 ms").arg(request.timeout));
    if (entry->fields & Position)
        texts.append(number(tr("position"), request.position));
    if (entry->fields & Velocity)
        texts.append(number(tr("velocity"), request.velocity));
    if (entry->fields & Acceleration)
        texts.append(number(tr("acceleration"), request.acceleration));
    if (entry->fields & Deceleration)
        texts.append(number(tr("deceleration"), request.deceleration));
    if (entry->fields & Jerk)
        texts.append(number(tr("jerk"), request.jerk));
    return texts.join(QStringLiteral(", "));
}

void CommandLog::add(const AxisRequest& request, const AxisReply& reply, qint64 microseconds)
{
    const QString name = m_names.axis(request.axisNo);
    append({ QDateTime::currentDateTime(), name.isEmpty() ? QString::number(request.axisNo) : name, request,
        reply.result, microseconds });
}

void CommandLog::addStop(bool hold, short result, qint64 microseconds)
{
    AxisRequest request;
    request.code = stopAll;
    request.axisNo = allAxes;
    request.value = hold ? 1 : 0;
    append({ QDateTime::currentDateTime(), QString(), request, result, microseconds });
}

void CommandLog::append(const Entry& entry)
{
    if (static_cast<int>(m_entries.size()) == capacity) {
        beginRemoveRows(QModelIndex(), 0, 0);
        m_entries.pop_front();
        endRemoveRows();
    }
    const int row = static_cast<int>(m_entries.size());
    beginInsertRows(QModelIndex(), row, row);
    m_entries.push_back(entry);
    endInsertRows();
}

void CommandLog::clear()
{
    beginResetModel();
    m_entries.clear();
    endResetModel();
}

void CommandLog::refresh()
{
    if (!m_entries.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

QString CommandLog::text(const QList<int>& rows) const
{
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (int column = 0; column < ColumnCount; ++column)
            cells.append(cell(m_entries.at(static_cast<std::size_t>(row)), column));
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

int CommandLog::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int CommandLog::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString CommandLog::cell(const Entry& entry, int column) const
{
    switch (column) {
    case TimeColumn:
        return entry.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case AxisColumn:
        return entry.request.axisNo == allAxes ? tr("all") : entry.axis;
    case CommandColumn:
        return commandName(entry.request);
    case ArgumentsColumn:
        return argumentsText(entry.request);
    case AnswerColumn:
        return answerText(entry.result);
    default:
        return QString::number(static_cast<double>(entry.microseconds) / 1000, 'f', 1);
    }
}

QString CommandLog::answerText(short result) const
{
    return result == 0 ? tr("done") : QStringLiteral("%1: %2").arg(result).arg(m_names.error(result));
}

QVariant CommandLog::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    const Entry& entry = m_entries.at(static_cast<std::size_t>(index.row()));
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return cell(entry, index.column());
    if (role == Qt::TextAlignmentRole && index.column() == DurationColumn)
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DecorationRole && index.column() == AnswerColumn)
        return QIcon::fromTheme(
            entry.result == 0 ? QStringLiteral("dialog-ok-apply") : QStringLiteral("dialog-warning"));
    return QVariant();
}

QVariant CommandLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case TimeColumn:
        return tr("Time");
    case AxisColumn:
        return tr("Axis");
    case CommandColumn:
        return tr("Command");
    case ArgumentsColumn:
        return tr("Arguments");
    case AnswerColumn:
        return tr("Answer");
    default:
        return tr("Duration (ms)");
    }
}
