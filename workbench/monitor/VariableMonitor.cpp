#include "workbench/monitor/VariableMonitor.h"

#include "host/communication/ControllerConnection.h"

#include <algorithm>

VariableMonitor::VariableMonitor(QObject* parent) : IVarMonitor(parent)
{
    m_clock.start();
}

VariableMonitor::~VariableMonitor() = default;

void VariableMonitor::addAxis(int axisNo)
{
    if (axisNo >= 0)
        m_known.insert(axisNo);
}

void VariableMonitor::releaseAxis(int axisNo, bool released)
{
    const bool changed
        = released ? m_recorded.erase(axisNo) > 0 : m_known.count(axisNo) > 0 && m_recorded.insert(axisNo).second;
    if (released)
        m_known.erase(axisNo);
    if (!changed)
        return;
    tellSampler();
    emit axesChanged();
}

void VariableMonitor::readFrom(ControllerConnection* connection)
{
    m_sampler = std::make_unique<AxisSampler>(connection);
    connect(m_sampler.get(), &AxisSampler::sampled, this, &VariableMonitor::addSamples);
    connect(connection, &ControllerConnection::lost, this, &VariableMonitor::interrupt);
    connect(connection, &ControllerConnection::closed, this, &VariableMonitor::interrupt);
    connect(connection, &ControllerConnection::failed, this, &VariableMonitor::interrupt);
    tellSampler();
}

void VariableMonitor::setAxisNames(std::function<QString(int)> names)
{
    m_names = std::move(names);
    emit axesChanged();
}

QString VariableMonitor::axisName(int axisNo) const
{
    const QString name = m_names ? m_names(axisNo) : QString();
    return name.isEmpty() ? tr("Axis %1").arg(axisNo) : name;
}

QVector<int> VariableMonitor::recordedAxes() const
{
    QVector<int> axes;
    for (const int axisNo : m_recorded)
        axes.append(axisNo);
    return axes;
}

void VariableMonitor::tellSampler()
{
    if (m_sampler)
        m_sampler->setAxes(recordedAxes(), CurveStore::periodMs);
}

void VariableMonitor::addSamples(const QVector<AxisSample>& samples)
{
    QVector<AxisSample> wanted;
    std::copy_if(samples.begin(), samples.end(), std::back_inserter(wanted),
        [this](const AxisSample& sample) { return m_recorded.count(sample.axisNo) > 0; });
    if (wanted.isEmpty())
        return;
    const int axesBefore = m_curves.axes().size();
    m_curves.append(wanted, static_cast<double>(m_clock.elapsed()) / 1000);
    ++m_revision;
    if (m_curves.axes().size() != axesBefore)
        emit axesChanged();
}

void VariableMonitor::interrupt()
{
    m_curves.interrupt();
    ++m_revision;
}

void VariableMonitor::clear()
{
    m_curves.clear();
    ++m_revision;
    emit axesChanged();
}

void VariableMonitor::forgetAll()
{
    m_known.clear();
    m_recorded.clear();
    tellSampler();
    clear();
}
