#pragma once

#include "sdk/IVarMonitor.h"
#include "workbench/monitor/CurveStore.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>
#include <set>

class AxisSampler;
class ControllerConnection;

/// Records the axes whose online pages ask for it, for the curves; published as "varMonitor".
///
/// A page makes its axis known and starts it each time that it comes on line, and stops it once when it goes, so an
/// axis is recorded or not, however often it was started. Without a connection it stays among the recorded axes and
/// goes on when the connection is back.
class VariableMonitor : public IVarMonitor {
    Q_OBJECT

public:
    explicit VariableMonitor(QObject* parent = nullptr);
    ~VariableMonitor() override;

    /// Without effect for a negative number.
    void addAxis(int axisNo) override;
    /// Without effect for an axis that is not known. A released axis is forgotten; its curves stay.
    void releaseAxis(int axisNo, bool released) override;

    /// Reads the axes from this connection from now on while it is open. The connection is not owned; it may go before
    /// this object, as the workbench's does, which ends the reading.
    void readFrom(ControllerConnection* connection);
    /// Tells what an axis is called; without that, or for an empty answer, its number stands for it.
    void setAxisNames(std::function<QString(int axisNo)> names);
    QString axisName(int axisNo) const;

    QVector<int> recordedAxes() const;
    const CurveStore& curves() const { return m_curves; }
    /// Another number each time that curves() has changed.
    quint64 revision() const { return m_revision; }

    /// Takes readings in; those of axes that are not recorded are left out.
    void addSamples(const QVector<AxisSample>& samples);
    /// The link is gone: the curves have a gap here.
    void interrupt();
    /// Forgets what has been recorded. Recording goes on.
    void clear();
    /// Stops all axes and forgets what has been recorded: the numbers belong to a project that is closed.
    void forgetAll();

signals:
    /// The recorded axes are others, or their names are.
    void axesChanged();

private:
    void tellSampler();

    std::set<int> m_known;
    std::set<int> m_recorded;
    CurveStore m_curves;
    quint64 m_revision = 0;
    QElapsedTimer m_clock;
    std::function<QString(int)> m_names;
    std::unique_ptr<AxisSampler> m_sampler;
};
