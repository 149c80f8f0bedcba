#include "axisdata/AxisConstants.h"
#include "bench/Measure.h"
#include "editor/DocumentSetWidget.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "pages/ModelAndParamtSetWidgetVisibility.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"
#include "ui_ModelAndParamtSetWidget.h"

#include <QApplication>

#include <cstdio>
#include <vector>

// What updateWidget costs on an encoder axis with full lists beside clearing and filling the same boxes and setting the
// same visibilities bare; and what a change of the axis type costs, by its parts.

namespace {

constexpr double bound = 3.0;
constexpr int rounds = 300;

QStringList list(const AxisModel& model, const QString& name)
{
    QString group = name;
    return model.getAxisBaseSettingList(group);
}

/// The same controls in the same state, with nothing behind them.
class BarePage {
public:
    explicit BarePage(const AxisModel& model)
        : m_modes(list(model, QStringLiteral("EncoderEncodeMode"))),
          m_pins(list(model, QStringLiteral("HightSpeedPlusOutputPoint"))),
          m_inputs(list(model, QString(QStringLiteral("Encoder.") + m_modes.last())))
    {
        m_form.setupUi(&m_page);
        m_page.show();
        refresh();
        const QList<QWidget*> all = m_page.findChildren<QWidget*>();
        for (const ModeRows part :
            { ModeRows::Plain, ModeRows::InputSignals, ModeRows::CompareOutput, ModeRows::InputFilter })
            applyModeVisibility(m_form, part, ModeAxisKind::Encoder, m_family, 0);
        for (QWidget* widget : all)
            if (isSetByTheUpdate(widget))
                m_visibilities.push_back({ widget, !widget->isHidden() });
    }

    double update()
    {
        return Measure::once([&] { refresh(); });
    }

private:
    struct Visibility {
        QWidget* control;
        bool shown;
    };

    /// The controls with a cell of their own: they have been told whether to show.
    static bool isSetByTheUpdate(const QWidget* widget)
    {
        return widget->testAttribute(Qt::WA_WState_ExplicitShowHide)
            && !widget->objectName().startsWith(QLatin1String("qt_"));
    }

    void refresh()
    {
        fill(m_form.outputMethodComboBox, m_modes);
        fill(m_form.compareOutputPinCheckBox, m_pins);
        fill(m_form.inputSignalComboBox, m_inputs);
        for (const Visibility& visibility : m_visibilities)
            visibility.control->setVisible(visibility.shown);
    }

    static void fill(QComboBox* box, const QStringList& entries)
    {
        box->clear();
        box->addItems(entries);
        box->setCurrentIndex(entries.size() - 1);
    }

    const ControllerFamily m_family{ QStringLiteral("NV3T_70Q12E") };
    QStringList m_modes;
    QStringList m_pins;
    QStringList m_inputs;
    QWidget m_page;
    Ui::ModelAndParamtSetWidget m_form;
    std::vector<Visibility> m_visibilities;
};

/// Parts of a change of type in microseconds, one entry a round.
struct TypeChange {
    std::vector<double> keys;
    std::vector<double> unitPage;
    std::vector<double> modePage;
    std::vector<double> update;

    void run(const TestProject& project, AxisTable* axis)
    {
        DocumentSetWidget unit(project.name(), axis->id(), nullptr);
        ModelAndParamtSetWidget mode(project.name(), axis->id(), nullptr);
        spoil(axis);
        keys.push_back(Measure::once([&] {
            restore(axis, AxisUnitDefaults);
            restore(axis, AxisModeDefaults);
        }));
        spoil(axis);
        unitPage.push_back(Measure::once([&] { unit.axisTypeChanged(); }));
        modePage.push_back(Measure::once([&] { mode.axisTypeChanged(); }));
        update.push_back(Measure::once([&] { mode.updateWidget(); }));
    }

private:
    static void spoil(AxisTable* axis)
    {
        for (const AxisDefaultGroup& group : { AxisUnitDefaults, AxisModeDefaults })
            for (const QString& key : group.keys())
                axis->setProperty(key, QStringLiteral("1"));
    }

    static void restore(AxisTable* axis, const AxisDefaultGroup& group)
    {
        for (auto entry = group.begin(); entry != group.end(); ++entry)
            axis->setProperty(entry.key(), entry.value());
    }
};

bool measureUpdate(TestProject& project, AxisTable* axis)
{
    const AxisModel& model = *project.axisModel();
    const QStringList modes = list(model, QStringLiteral("EncoderEncodeMode"));
    const auto setPosition = [axis](const char* key, int count) {
        axis->setProperty(QString::fromLatin1(key), QString::number(count - 1));
    };
    setPosition("OutputMethod", modes.size());
    setPosition("InputSignal", list(model, QString(QStringLiteral("Encoder.") + modes.last())).size());
    setPosition("CompareOutputPin", list(model, QStringLiteral("HightSpeedPlusOutputPoint")).size());
    BarePage bare(model);
    ModelAndParamtSetWidget page(project.name(), axis->id(), nullptr);
    page.show();
    page.updateWidget();
    const auto updatePage = [&] { return Measure::once([&] { page.updateWidget(); }); };
    const Measure::Pair pair = Measure::inTurns(
        rounds, [&] { return bare.update(); }, updatePage);
    return Measure::report("updateWidget of an encoder axis", pair, bound);
}

void printTypeChange(const TestProject& project, AxisTable* axis)
{
    TypeChange change;
    for (int i = 0; i < rounds / 3; ++i)
        change.run(project, axis);
    std::printf(
        "change of type: 41 keys put back %.1f us; unit page with its 8 keys %.1f us; mode page with its 33 keys "
        "%.1f us, of which an update takes %.1f us\n",
        Measure::median(change.keys), Measure::median(change.unitPage), Measure::median(change.modePage),
        Measure::median(change.update));
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    Q_INIT_RESOURCE(axis_resources);
    const TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12E"));
    AxisTable* axis = project.addAxis(QStringLiteral("Feed"), QStringLiteral("Axis_Encoder"));
    const bool holds = measureUpdate(project, axis);
    printTypeChange(project, axis);
    return holds ? 0 : 1;
}
