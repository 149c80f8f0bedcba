#include "bench/Measure.h"
#include "editor/BasicSetWidget.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/TestProject.h"

#include <QApplication>
#include <QComboBox>

// What the basic page's refresh costs in a project of 255 axes beside reading the same properties and filling the same
// boxes.

namespace {

constexpr double bound = 3.0;
constexpr int rounds = 400;
constexpr int axes = 255;

/// Three boxes and the properties and lists that a refresh reads for an axis that chooses a free device.
class BareBoxes {
public:
    BareBoxes(AxisModel* model, AxisTable* axis, const char* type, const char* freeKey, const char* inputs,
        const char* outputs)
        : m_model(model), m_axis(axis), m_type(QString::fromLatin1(type)), m_freeKey(QString::fromLatin1(freeKey)),
          m_inputList(QString::fromLatin1(inputs)), m_outputList(QString::fromLatin1(outputs))
    {
    }

    double refresh()
    {
        return Measure::once([this] {
            readOthers();
            fill(m_types, QStringLiteral("AxisType"), QStringLiteral("AxisNo"));
            fill(m_inputs, m_inputList, QStringLiteral("InputDevice"));
            fill(m_outputs, m_outputList, QStringLiteral("OutputDevice"));
            m_read += m_axis->property(QStringLiteral("VirtualAxis"), QString()).size();
            m_read += m_model->getMaxAxisNumber().size() + m_model->getAxisTypeNameMap().size();
        });
    }

private:
    void readOthers()
    {
        std::vector<AxisTable*> tables;
        m_model->allAxisTables(tables);
        for (const AxisTable* table : tables) {
            if (table->property(m_typeKey, QString()) == m_type)
                m_read += table->property(m_freeKey, QString()).size();
        }
    }

    void fill(QComboBox& box, QString list, const QString& key)
    {
        box.clear();
        box.insertItems(0, m_model->getAxisBaseSettingList(list));
        box.setCurrentIndex(m_axis->property(key, QString()).toInt());
    }

    AxisModel* m_model;
    AxisTable* m_axis;
    QString m_typeKey = QStringLiteral("AxisType");
    QString m_type;
    QString m_freeKey;
    QString m_inputList;
    QString m_outputList;
    QComboBox m_types;
    QComboBox m_inputs;
    QComboBox m_outputs;
    int m_read = 0;
};

/// A project as an engineer would have it: a few axes on devices, all others virtual.
void fillProject(TestProject& project)
{
    for (int number = 1; number < axes; ++number) {
        const char* type = number < 10 ? "Axis_Pulse" : number < 15 ? "Axis_Encoder" : "Axis_Virtual";
        AxisTable* axis = project.addAxis(QStringLiteral("Axis%1").arg(number), QString::fromLatin1(type));
        axis->setProperty(QStringLiteral("OutputDevice"), QString::number(number % 12));
        axis->setProperty(QStringLiteral("InputDevice"), QString::number(number % 6));
    }
}

bool compare(TestProject& project, AxisTable* axis, const char* what, const char* type, BareBoxes& bare)
{
    axis->setProperty(QStringLiteral("AxisType"), QString::fromLatin1(type));
    PropertyEditorView view;
    BasicSetWidget page(project.name(), axis->id(), &view);
    const auto refresh = [&page] { return Measure::once([&page] { page.refreshFromModel(); }); };
    return Measure::report(what,
        Measure::inTurns(
            rounds, [&bare] { return bare.refresh(); }, refresh),
        bound);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    TestProject project(QStringLiteral("NV3T_70Q12E"));
    AxisTable* axis = project.addAxis(QStringLiteral("Feeder"));
    axis->setProperty(QStringLiteral("InputDevice"), QStringLiteral("5"));
    axis->setProperty(QStringLiteral("OutputDevice"), QStringLiteral("11"));
    fillProject(project);
    BareBoxes pulse(project.axisModel(), axis, "Axis_Pulse", "OutputDevice", "AxisPulseInputDev", "AxisPulseOutputDev");
    BareBoxes encoder(
        project.axisModel(), axis, "Axis_Encoder", "InputDevice", "AxisEncoderInputDev", "AxisEncoderOutputDev");
    const bool pulseHolds = compare(project, axis, "refresh a pulse axis of 255 / bare", "Axis_Pulse", pulse);
    const bool encoderHolds = compare(project, axis, "refresh an encoder axis of 255 / bare", "Axis_Encoder", encoder);
    return pulseHolds && encoderHolds ? 0 : 1;
}
