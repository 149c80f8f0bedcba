#include "bench/Measure.h"
#include "editor/DocumentSetWidget.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"
#include "ui_DocumentSetWidget.h"
#include "ui_ModelAndParamtSetWidget.h"

#include <QApplication>

#include <memory>

// What the unit page and the mode page of an axis cost to build beside setting up the same forms and filling the same
// lists with nothing behind them.

namespace {

constexpr double bound = 1.5;
constexpr int rounds = 300;

struct Lists {
    explicit Lists(const AxisModel& model)
    {
        const auto list = [&](const char* name) {
            QString group = QString::fromLatin1(name);
            return model.getAxisBaseSettingList(group);
        };
        probes = list("ProbelInputPoint");
        presets = list("HightSpeedCountInputPoint");
        modes = list("EncoderEncodeMode");
        pins = list("HightSpeedPlusOutputPoint");
        QString group = QStringLiteral("Encoder.") + modes.first();
        inputs = model.getAxisBaseSettingList(group);
    }

    QStringList probes;
    QStringList presets;
    QStringList modes;
    QStringList pins;
    QStringList inputs;
};

double bare(const Lists& lists)
{
    QWidget unit;
    QWidget mode;
    Ui::DocumentSetWidget unitForm;
    Ui::ModelAndParamtSetWidget form;
    return Measure::once([&] {
        unitForm.setupUi(&unit);
        unitForm.label_18->setPixmap(QPixmap(QStringLiteral(":/images/default/workbench_1.jpg")));
        unitForm.label_32->setPixmap(QPixmap(QStringLiteral(":/images/default/workbench_2.jpg")));
        form.setupUi(&mode);
        form.probe1ComboBox->addItems(lists.probes);
        form.probe2ComboBox->addItems(lists.probes);
        form.inputPinComboBox->addItems(lists.presets);
        form.outputMethodComboBox->addItems(lists.modes);
        form.compareOutputPinCheckBox->addItems(lists.pins);
        form.inputSignalComboBox->addItems(lists.inputs);
        const QStringList logic{ QStringLiteral("Positive Logic"), QStringLiteral("Negitive Logic") };
        form.HardLimNegBox->addItems(logic);
        form.HardLimPosBox->addItems(logic);
    });
}

double pages(const QString& project, quint32 axis)
{
    std::unique_ptr<QWidget> unit;
    std::unique_ptr<QWidget> mode;
    return Measure::once([&] {
        unit = std::make_unique<DocumentSetWidget>(project, axis, nullptr);
        mode = std::make_unique<ModelAndParamtSetWidget>(project, axis, nullptr);
    });
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    Q_INIT_RESOURCE(axis_resources);
    const TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12E"));
    const quint32 axis = project.addAxis(QStringLiteral("Feed"), QStringLiteral("Axis_Encoder"))->id();
    const Lists lists(*project.axisModel());
    const Measure::Pair pair = Measure::inTurns(
        rounds, [&] { return bare(lists); }, [&] { return pages(project.name(), axis); });
    return Measure::report("unit and mode page, built", pair, bound) ? 0 : 1;
}
