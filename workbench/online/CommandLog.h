#pragma once

#include "host/communication/AxisRequest.h"

#include <QAbstractTableModel>
#include <QDateTime>

#include <deque>
#include <functional>

/// Every command to the controller with its answer, the newest last; beyond its capacity the oldest go. Texts are made
/// when they are shown, so that they follow the language.
class CommandLog : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { TimeColumn, AxisColumn, CommandColumn, ArgumentsColumn, AnswerColumn, DurationColumn, ColumnCount };
    static constexpr int capacity = 2000;
    /// Stands for the axis number of what concerns all axes.
    static constexpr short allAxes = -1;
    /// Stands for the request number of the emergency stop; its value is 1 to hold and 0 to release.
    static constexpr int stopAll = -1;

    /// Texts for axis numbers and for codes that are not 0: name and text.
    struct Names {
        std::function<QString(int axisNo)> axis;
        std::function<QString(short code)> error;
    };

    explicit CommandLog(Names names, QObject* parent = nullptr);
    ~CommandLog() override;

    void add(const AxisRequest& request, const AxisReply& reply, qint64 microseconds);
    void addStop(bool hold, short result, qint64 microseconds);
    void clear();
    /// The texts of these rows, columns parted by tabs, rows by line ends.
    QString text(const QList<int>& rows) const;
    /// Texts are to be made anew.
    void refresh();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    static QString commandName(const AxisRequest& request);
    static QString argumentsText(const AxisRequest& request);

private:
    struct Entry {
        QDateTime time;
        /// The axis's name at that time.
        QString axis;
        AxisRequest request;
        short result = 0;
        qint64 microseconds = 0;
    };

    void append(const Entry& entry);
    QString cell(const Entry& entry, int column) const;
    QString answerText(short result) const;

    Names m_names;
    std::deque<Entry> m_entries;
};
