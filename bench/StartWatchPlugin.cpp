#include "sdk/IEditor.h"
#include "sdk/IEditorManager.h"
#include "sdk/PluginInterface.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/SolutionView.h"
#include "sdk/Transfer.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>

#include <chrono>
#include <cstdio>

namespace {

/// A line with what has come about and the nanoseconds of the machine's steady clock.
void note(const char* what)
{
    std::printf("%s %lld\n", what, static_cast<long long>(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::fflush(stdout);
}

QMainWindow* mainWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* main = qobject_cast<QMainWindow*>(window))
            return main;
    }
    return nullptr;
}

/// File name of the first axis below a node; empty when there is none.
QString firstAxis(Solution::View& tree, const QString& path)
{
    const auto property = [&](const char* key) { return tree.nodeProperty(path, QLatin1String(key), {}).toString(); };
    if (property("MimeType") == QLatin1String("AxisView"))
        return property("FileName");
    const QStringList children = tree.childNodes(path);
    for (const QString& child : children) {
        QString file = firstAxis(tree, child);
        if (!file.isEmpty())
            return file;
    }
    return {};
}

} // namespace

/// Loaded into the finished program to tell when it gets where, and to press what a user presses on the way to work on
/// the built-in controller: connect, open an axis, enter debug mode. Ends the program then.
class StartWatchPlugin : public PluginInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KESTRUN_PLUGIN_IID)
    Q_INTERFACES(PluginInterface)

public:
    StartWatchPlugin()
    {
        packageText = QStringLiteral("{ \"name\": \"start.watch\", \"version\": \"1.0.0\", \"descript\": { \"en_US\": "
                                     "\"Start watch\", \"zh_CN\": \"Start watch\" }, \"dependencies\": {}, "
                                     "\"forceLoad\": true }");
        note("loaded");
    }

    bool initialize() override { return true; }

    void finish() override
    {
        note("plugins");
        connect(Solution::serviceAs<Solution::View>(Solution::ServiceKey::view()), &Solution::View::projectOpened, this,
            [this](const QString& path) { m_project = path.section(QLatin1Char('.'), 0, 0); });
        connect(Solution::serviceAs<Transfer>(Solution::ServiceKey::transfer()), &Transfer::onlineState, this,
            [this](bool online) {
                if (online)
                    QTimer::singleShot(0, this, &StartWatchPlugin::work);
            });
        // The window is shown before the project is opened, and the events turn after that only.
        QTimer::singleShot(0, this, &StartWatchPlugin::waitForPainting);
    }

private:
    void waitForPainting()
    {
        m_window = mainWindow();
        m_window->installEventFilter(this);
        m_window->update();
        note("opened");
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && watched == m_window) {
            m_window->removeEventFilter(this);
            QTimer::singleShot(0, this, &StartWatchPlugin::press);
        }
        return false;
    }

    void press()
    {
        note("painted");
        m_window->findChild<QAction*>(QStringLiteral("online.connect"))->trigger();
    }

    void work()
    {
        note("online");
        auto& tree = *Solution::serviceAs<Solution::View>(Solution::ServiceKey::view());
        IEditorManager& editors = *Solution::editorManager();
        IEditor* editor = editors.openEditor(firstAxis(tree, m_project), QStringLiteral("AxisView"));
        editors.activateEditor(editor);
        auto* tabs = editor->widget()->findChild<QTabBar*>();
        tabs->setCurrentIndex(tabs->count() - 1);
        QCoreApplication::processEvents();
        note("page");
        m_controls = editor->widget()->findChild<QWidget*>(QStringLiteral("basicTabWidget"));
        editor->widget()->findChild<QPushButton*>(QStringLiteral("enterDebugButton"))->click();
        auto* look = new QTimer(this);
        connect(look, &QTimer::timeout, this, &StartWatchPlugin::endOnceReady);
        look->start(1);
    }

    void endOnceReady()
    {
        if (!m_controls->isEnabled() || m_ready)
            return;
        m_ready = true;
        note("ready");
        QCoreApplication::quit();
    }

    QString m_project;
    QMainWindow* m_window = nullptr;
    QWidget* m_controls = nullptr;
    bool m_ready = false;
};

#include "StartWatchPlugin.moc"
