#include "bench/BareEditor.h"
#include "bench/Measure.h"
#include "editor/MotionControlAxisFactory.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisTable.h"
#include "sdk/IEditor.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QApplication>
#include <QTabWidget>

#include <memory>
#include <string>

// What opening an axis's editor in a tab costs until it is painted, and what closing it costs, beside the same forms
// set up bare with the same fillings, one save, and deleting the same widgets.

namespace {

constexpr double bound = 1.5;
constexpr int rounds = 120;

/// The host's area of open editors.
class EditorArea {
public:
    EditorArea()
    {
        m_tabs.addTab(new QWidget, QStringLiteral("start"));
        m_tabs.resize(1100, 750);
        m_tabs.show();
        QApplication::processEvents();
    }

    void show(QWidget* view)
    {
        m_tabs.setCurrentIndex(m_tabs.addTab(view, QStringLiteral("axis")));
        QApplication::processEvents();
    }

    void remove(QWidget* view)
    {
        m_tabs.removeTab(m_tabs.indexOf(view));
        view->setParent(nullptr);
    }

private:
    QTabWidget m_tabs;
};

struct Times {
    std::vector<double> open;
    std::vector<double> close;
};

void openAndClose(EditorArea& area, MotionControlAxisFactory& factory, const QString& path, Times& times)
{
    IEditor* editor = nullptr;
    times.open.push_back(Measure::once([&] {
        editor = factory.createEditor(path, QStringLiteral("AxisView"));
        area.show(editor->widget());
    }));
    area.remove(editor->widget());
    times.close.push_back(Measure::once([&] {
        delete editor;
        QApplication::processEvents();
    }));
}

void setUpAndDelete(EditorArea& area, const EditorSnapshot& snapshot, AxisTable& axis, Times& times)
{
    auto bare = std::make_unique<BareEditor>();
    double open = bare->setUp();
    bare->lookUp();
    open += bare->fill(snapshot);
    open += Measure::once([&] {
        axis.save();
        area.show(bare->view());
    });
    times.open.push_back(open);
    area.remove(bare->view());
    times.close.push_back(Measure::once([&] {
        bare->clear();
        QApplication::processEvents();
    }));
}

bool compare(EditorArea& area, MotionControlAxisFactory& factory, TestProject& project, const char* type)
{
    AxisTable* axis = project.addAxis(QString::fromLatin1(type), QString::fromLatin1(type));
    const QString path = project.axisPath(axis->id());
    const std::unique_ptr<IEditor> model(factory.createEditor(path, QStringLiteral("AxisView")));
    const EditorSnapshot snapshot(*qobject_cast<PropertyEditorView*>(model->widget()));
    Times floor;
    Times measured;
    for (int round = 0; round < rounds; ++round) {
        setUpAndDelete(area, snapshot, *axis, floor);
        openAndClose(area, factory, path, measured);
    }
    const std::string what(type);
    const bool opens = Measure::report(("open " + what + " / forms, fillings, save").c_str(),
        { Measure::median(floor.open), Measure::median(measured.open) }, bound);
    const bool closes = Measure::report(("close " + what + " / the widgets").c_str(),
        { Measure::median(floor.close), Measure::median(measured.close) }, bound);
    return opens && closes;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Q_INIT_RESOURCE(axis_resources);
    const QApplication application(argc, argv);
    MotionControlAxisFactory factory;
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12E"));
    EditorArea area;
    bool holds = true;
    for (const char* type : { "Axis_Pulse", "Axis_Encoder", "Axis_Virtual", "Axis_EtherCAT" })
        holds = compare(area, factory, project, type) && holds;
    return holds ? 0 : 1;
}
