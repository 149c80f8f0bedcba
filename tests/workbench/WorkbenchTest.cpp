#include "workbench/Workbench.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "host/projectmodel/SourceModel.h"
#include "sdk/IEditor.h"
#include "sdk/PluginInterface.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/ModalDialogDriver.h"
#include "workbench/MessageBar.h"
#include "workbench/OutputPanel.h"
#include "workbench/ProblemsPanel.h"
#include "workbench/ProjectTreeView.h"
#include "workbench/Theme.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// The whole program with the real plug-in: initialise, finish, open a project, drive it, shut down.
class WorkbenchTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void servicesStandUnderTheirKeys_data();
    void servicesStandUnderTheirKeys();
    void thePluginIsInService();
    void aProjectIsToldOnce();
    void aProjectThatCannotBeMadeLeavesTheOpenOne();
    void axesComeIntoTheTree();
    void theProjectNodesAreThere();
    void aDoubleClickOpensAnAxis();
    void anEditThatIsNotStoredIsMarked();
    void closingTheProjectTakesItOut();
    void anotherControllerIsToldAndEmptiesTheStack();
    void savingUnderAnotherNameGoesOnWithTheCopy();
    void aFileThatDoesNotOpenIsNamed_data();
    void aFileThatDoesNotOpenIsNamed();
    void aFailureLeavesTheOpenProject();
    void aDamagedProjectCanBeRescued();
    void leavingWithUnsavedChangesAsks_data();
    void leavingWithUnsavedChangesAsks();
    void anotherLanguageOpensTheEditorsAnew();
    void theLanguageStaysWhileOnline();
    void themeAndLanguageAppliedTogetherReachTheAxes();
    void theThemeStandsInCookiesAndSettings();
    void picturesFollowTheThemeUnlessAnEditorHasChanges();
    void theSessionComesBack();
    void aSourceThatDoesNotParseIsShownWithItsPlace();
    void aSourceOpensAtAPlace();
    void shuttingDownTakesEverythingOut();
    void withoutAPluginFolderTheProgramRuns();

private:
    void make(const QString& pluginDirectory = QStringLiteral(KESTRUN_BUILD_DIR "/bin/plugins"));
    void createProject(const QString& name = QStringLiteral("Line"), int axes = 2);
    QString file(const QString& name) const { return directory->filePath(QString(name + QLatin1String(".kproj"))); }
    QString unitPath() const { return QString(workbench->workspace().configurationPath() + QLatin1String(".Axis")); }
    QString axisPath(int row) { return workbench->tree().childNodes(unitPath()).value(row); }
    IEditor* openAxis(int row) { return workbench->editors().openEditor(axisPath(row), QStringLiteral("AxisView")); }
    QStringList output() const { return workbench->window().output().lines(); }

    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<Workbench> workbench;
};

void WorkbenchTest::initTestCase()
{
    Theme::prepare();
    qRegisterMetaType<Solution::ProjectInfo>();
    qRegisterMetaType<Solution::NodeLevel>();
    qRegisterMetaType<Solution::DataEvent>();
    if (!QFileInfo::exists(QStringLiteral(KESTRUN_BUILD_DIR "/bin/plugins/motioncontrol.axis.plugin.so")))
        QFAIL("the plug-in is not built");
}

void WorkbenchTest::init()
{
    directory = std::make_unique<QTemporaryDir>();
    make();
}

void WorkbenchTest::cleanup()
{
    workbench.reset();
    directory.reset();
}

void WorkbenchTest::make(const QString& pluginDirectory)
{
    const QString settings = directory->filePath(QStringLiteral("settings.ini"));
    if (!QFileInfo::exists(settings))
        Settings(settings).setValue(Solution::ConfigKey::language(), QStringLiteral("en_US"));
    workbench.reset();
    workbench = std::make_unique<Workbench>(
        WorkbenchPaths{ pluginDirectory, QStringLiteral(KESTRUN_CONTROLLER_DIR), settings });
    workbench->start();
    workbench->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&workbench->window()));
}

void WorkbenchTest::createProject(const QString& name, int axes)
{
    ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    QString error;
    QVERIFY2(workbench->workspace().create(file(name), *catalog.find(QStringLiteral("NV3T_70Q12E")), &error),
        qPrintable(error));
    for (int i = 0; i < axes; ++i) {
        AxisTable* axis = workbench->workspace().project()->axisModel()->addAxisTable(QStringLiteral("Axis%1").arg(i));
        QVERIFY(axis && axis->save());
    }
    QVERIFY2(workbench->workspace().save(&error), qPrintable(error));
    workbench->workspace().showAnew();
}

void WorkbenchTest::servicesStandUnderTheirKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("the project tree") << Solution::ServiceKey::view() << QByteArray("Solution::View");
    QTest::newRow("the undo stack") << Solution::ServiceKey::viewHelper() << QByteArray("Solution::ViewHelper");
    QTest::newRow("the cookies") << Solution::ServiceKey::cookies() << QByteArray("IConfiguration");
    QTest::newRow("the settings") << Solution::ServiceKey::settings() << QByteArray("IConfiguration");
    QTest::newRow("the log") << Solution::ServiceKey::logManager() << QByteArray("ILogManager");
    QTest::newRow("the connection") << Solution::ServiceKey::transfer() << QByteArray("Transfer");
    QTest::newRow("the comparison") << Solution::ServiceKey::comparatorManager() << QByteArray("IComparatorMan");
    QTest::newRow("the diagnosis") << Solution::ServiceKey::diagnosisInfo() << QByteArray("DeviceDiagnosiInfo");
    QTest::newRow("the requests in the background")
        << Solution::ServiceKey::backgroundTransaction() << QByteArray("IBackgroundTransaction");
    QTest::newRow("the debug service of the plug-in")
        << Solution::ServiceKey::motionControlDebug() << QByteArray("MotionControlDebug");
}

void WorkbenchTest::servicesStandUnderTheirKeys()
{
    QFETCH(QString, key);
    QFETCH(QByteArray, type);
    QObject* service = Solution::service(key);
    QVERIFY(service);
    QVERIFY(service->inherits(type.constData()));
    QCOMPARE(Solution::editorManager(), &workbench->editors());
}

void WorkbenchTest::thePluginIsInService()
{
    QCOMPARE(int(workbench->plugins().entries().size()), 1);
    const PluginEntry& entry = workbench->plugins().entries().front();
    QCOMPARE(entry.state, PluginEntry::InService);
    QCOMPARE(entry.package.name, QStringLiteral("motioncontrol.axis"));
    QVERIFY(entry.package.forceLoad);
    QCOMPARE(entry.plugin->description, QStringLiteral("Motion control axis"));
    QVERIFY(workbench->comparators().comparator(QStringLiteral("AxisView")));
}

void WorkbenchTest::aProjectIsToldOnce()
{
    int times = 0;
    QObject context;
    connect(&workbench->tree(), &Solution::View::projectOpened, &context,
        [&](const QString& name, const Solution::ProjectInfo& info, Solution::NodeLevel level) {
            ++times;
            QCOMPARE(name, QStringLiteral("Line.ConfigAndSetup"));
            QCOMPARE(int(level), 2);
            QCOMPARE(info.kind, QStringLiteral("NormalProject"));
            QVERIFY(info.current);
            QCOMPARE(info.controller, QStringLiteral("NV3T_70Q12E"));
            QVERIFY(workbench->tree().contains(name));
            const auto* cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
            QCOMPARE(cookies->value(QStringLiteral("Project.Name"), QVariant()).toString(), QStringLiteral("Line"));
        });
    ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    QString error;
    QVERIFY(workbench->workspace().create(
        file(QStringLiteral("Line")), *catalog.find(QStringLiteral("NV3T_70Q12E")), &error));
    QCOMPARE(times, 1);
}

void WorkbenchTest::aProjectThatCannotBeMadeLeavesTheOpenOne()
{
    createProject();
    // Of the same name, in a folder that does not exist.
    const QString wanted = directory->filePath(QStringLiteral("nowhere/Line.kproj"));
    ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    QString error;
    QVERIFY(!workbench->workspace().create(wanted, *catalog.find(QStringLiteral("NV3T_70Q12E")), &error));
    QVERIFY2(error.startsWith(wanted), qPrintable(error));
    QVERIFY(workbench->workspace().project());
    QCOMPARE(workbench->workspace().project()->filePath(), file(QStringLiteral("Line")));
    QCOMPARE(workbench->tree().childNodes(unitPath()).size(), 2);
}

void WorkbenchTest::axesComeIntoTheTree()
{
    createProject();
    QCOMPARE(workbench->tree().childNodes(unitPath()).size(), 2);
    QCOMPARE(workbench->tree().nodeProperty(axisPath(0), QStringLiteral("DisplayName"), QVariant()).toString(),
        QStringLiteral("Axis0"));
    QVERIFY(!workbench->workspace().isModified());
}

void WorkbenchTest::theProjectNodesAreThere()
{
    createProject();
    QCOMPARE(workbench->tree().childNodes(QString()), QStringList(QStringLiteral("Line")));
    QCOMPARE(workbench->tree().childNodes(QStringLiteral("Line")),
        QStringList({ QStringLiteral("Line.ConfigAndSetup"), QStringLiteral("Line.Programs") }));
}

void WorkbenchTest::aDoubleClickOpensAnAxis()
{
    createProject();
    ProjectTreeView& view = workbench->window().tree();
    const QPoint place = view.visualRect(workbench->tree().index(axisPath(1))).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    IEditor* editor = workbench->editors().currentEditor();
    QVERIFY(editor);
    QCOMPARE(editor->nodePath(), axisPath(1));
    QCOMPARE(workbench->editors().tabs()->tabText(0), QStringLiteral("Axis1"));
}

void WorkbenchTest::anEditThatIsNotStoredIsMarked()
{
    createProject();
    IEditor* editor = openAxis(0);
    workbench->editors().activateEditor(editor);
    auto* type = editor->widget()->findChild<QComboBox*>(QStringLiteral("comboBoxAxisType"));
    QVERIFY(type);
    type->setFocus();
    QTest::keyClick(type, Qt::Key_Down);
    QTRY_VERIFY(workbench->editors().tabs()->tabText(0).endsWith(QChar(0x2022)));
    QVERIFY(workbench->window().isWindowModified());
    QTest::keyClick(&workbench->window(), Qt::Key_S, Qt::ControlModifier);
    QTRY_COMPARE(workbench->editors().tabs()->tabText(0), QStringLiteral("Axis0"));
    QVERIFY(!workbench->window().isWindowModified());
}

void WorkbenchTest::closingTheProjectTakesItOut()
{
    createProject();
    openAxis(0);
    QSignalSpy closed(&workbench->tree(), &Solution::View::projectClosed);
    workbench->action(QStringLiteral("file.closeProject"))->trigger();
    QCOMPARE(closed.count(), 1);
    QVERIFY(workbench->editors().editors().isEmpty());
    QVERIFY(workbench->tree().childNodes(QString()).isEmpty());
    QVERIFY(!workbench->workspace().project());
    QVERIFY(!workbench->action(QStringLiteral("file.save"))->isEnabled());
    const auto* cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
    QVERIFY(!cookies->value(QStringLiteral("Project.Name"), QVariant()).isValid());
}

void WorkbenchTest::anotherControllerIsToldAndEmptiesTheStack()
{
    createProject(QStringLiteral("Line"), 9);
    workbench->undo().pushCommand(new QUndoCommand);
    QString model;
    QObject context;
    connect(&workbench->tree(), &Solution::View::displayEvent, &context,
        [&](const QString&, Solution::DataEvent event, const QVariant&) {
            QCOMPARE(int(event), 4);
            model = workbench->workspace().project()->controller().model();
        });
    ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    const ControllerDescription& small = *catalog.find(QStringLiteral("NV3T_50Q4"));
    const QStringList removed = workbench->workspace().changeController(small);
    QCOMPARE(model, QStringLiteral("NV3T_50Q4"));
    QCOMPARE(workbench->undo().stack()->count(), 0);
    const int left = workbench->tree().childNodes(unitPath()).size();
    QCOMPARE(removed.size(), 9 - left);
    QVERIFY(!removed.isEmpty());
    QCOMPARE(removed.last(), QStringLiteral("Axis8"));
}

void WorkbenchTest::savingUnderAnotherNameGoesOnWithTheCopy()
{
    createProject();
    openAxis(1);
    QString error;
    QVERIFY2(workbench->workspace().saveAs(file(QStringLiteral("Other")), &error), qPrintable(error));
    QCOMPARE(workbench->workspace().project()->name(), QStringLiteral("Other"));
    QCOMPARE(workbench->tree().childNodes(QString()), QStringList(QStringLiteral("Other")));
    QCOMPARE(workbench->tree().childNodes(unitPath()).size(), 2);
    QCOMPARE(workbench->editors().editors().size(), 1);
    QCOMPARE(workbench->editors().currentEditor()->nodePath(), axisPath(1));
    QVERIFY(!workbench->workspace().saveAs(file(QStringLiteral("none/Third")), &error));
    QVERIFY2(error.contains(QStringLiteral("Third.kproj")), qPrintable(error));
    QCOMPARE(workbench->tree().childNodes(QString()), QStringList(QStringLiteral("Other")));
    QCOMPARE(workbench->editors().editors().size(), 1);
}

void WorkbenchTest::aFileThatDoesNotOpenIsNamed_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("one that is not there") << QByteArray();
    QTest::newRow("one that is no project") << QByteArray("no project at all");
}

void WorkbenchTest::aFileThatDoesNotOpenIsNamed()
{
    QFETCH(QByteArray, contents);
    if (!contents.isEmpty()) {
        QFile other(file(QStringLiteral("Strange")));
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.write(contents);
    }
    QVERIFY(!workbench->flows().open(file(QStringLiteral("Strange"))));
    const MessageBar& bar = workbench->window().messageBar();
    QVERIFY(bar.isVisible());
    QVERIFY2(bar.text().contains(QStringLiteral("Strange.kproj")), qPrintable(bar.text()));
    QVERIFY(!bar.findChild<QPushButton*>(QStringLiteral("messageOffer"))->isVisible());
    QCOMPARE(output().last(), bar.text());
}

void WorkbenchTest::aFailureLeavesTheOpenProject()
{
    createProject();
    openAxis(0);
    QVERIFY(!workbench->flows().open(file(QStringLiteral("Missing"))));
    QCOMPARE(workbench->workspace().project()->name(), QStringLiteral("Line"));
    QCOMPARE(workbench->editors().editors().size(), 1);
}

void WorkbenchTest::aDamagedProjectCanBeRescued()
{
    createProject();
    workbench->workspace().close();
    QFile damaged(file(QStringLiteral("Line")));
    QVERIFY(damaged.open(QIODevice::ReadWrite));
    QByteArray bytes = damaged.readAll();
    const int place = bytes.lastIndexOf("Axis_Virtual");
    QVERIFY(place > 0);
    bytes[place] = 'B';
    damaged.seek(0);
    damaged.write(bytes);
    damaged.close();
    QVERIFY(!workbench->flows().open(file(QStringLiteral("Line"))));
    const MessageBar& bar = workbench->window().messageBar();
    QVERIFY2(bar.text().contains(QStringLiteral("damaged")), qPrintable(bar.text()));
    QVERIFY(bar.findChild<QPushButton*>(QStringLiteral("messageOffer"))->isVisible());
}

void WorkbenchTest::leavingWithUnsavedChangesAsks_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<bool>("stored");
    QTest::newRow("save") << QStringLiteral("Save") << true << true;
    QTest::newRow("discard") << QStringLiteral("Discard") << true << false;
    QTest::newRow("cancel") << QStringLiteral("Cancel") << false << false;
}

void WorkbenchTest::leavingWithUnsavedChangesAsks()
{
    QFETCH(QString, button);
    QFETCH(bool, closed);
    QFETCH(bool, stored);
    createProject();
    AxisModel* axes = workbench->workspace().project()->axisModel();
    QVERIFY(axes->addAxisTable(QStringLiteral("Third")));
    MessageBoxWatcher watcher;
    watcher.answer(button);
    workbench->action(QStringLiteral("file.closeProject"))->trigger();
    QCOMPARE(watcher.count(), 1);
    QVERIFY(watcher.texts().first().contains(QStringLiteral("Line")));
    QCOMPARE(workbench->workspace().project() == nullptr, closed);
    if (!closed)
        return;
    QVERIFY(workbench->flows().open(file(QStringLiteral("Line"))));
    QCOMPARE(workbench->tree().childNodes(unitPath()).size(), stored ? 3 : 2);
}

void WorkbenchTest::anotherLanguageOpensTheEditorsAnew()
{
    createProject();
    QPointer<IEditor> before = openAxis(0);
    const QString path = before->nodePath();
    workbench->setLanguage(QStringLiteral("zh_CN"));
    QCOMPARE(workbench->language(), QStringLiteral("zh_CN"));
    QTRY_COMPARE(workbench->editors().editors().size(), 1);
    QVERIFY(workbench->editors().currentEditor() != before);
    QCOMPARE(workbench->editors().currentEditor()->nodePath(), path);
    QCOMPARE(workbench->plugins().entries().front().plugin->description, QStringLiteral("运动控制轴"));
    workbench->setLanguage(QStringLiteral("en_US"));
    QTRY_COMPARE(workbench->editors().editors().size(), 1);
}

void WorkbenchTest::theLanguageStaysWhileOnline()
{
    createProject();
    const QPointer<IEditor> editor = openAxis(0);
    workbench->connection().setOnline(true, false);
    workbench->setLanguage(QStringLiteral("zh_CN"));
    QCOMPARE(workbench->language(), QStringLiteral("en_US"));
    QVERIFY(editor);
    QVERIFY(output().last().contains(QStringLiteral("The language stays as it is")));
    workbench->connection().setOnline(false, false);
    workbench->setLanguage(QStringLiteral("zh_CN"));
    QCOMPARE(workbench->language(), QStringLiteral("zh_CN"));
    workbench->setLanguage(QStringLiteral("en_US"));
}

void WorkbenchTest::themeAndLanguageAppliedTogetherReachTheAxes()
{
    createProject();
    const auto iconOf = [this](const QString& path) {
        const QVariant icon = workbench->tree().nodeProperty(path, QStringLiteral("Icon"), QVariant());
        return icon.value<QIcon>().pixmap(16).toImage();
    };
    const QImage light = iconOf(axisPath(0));
    ModalDialogDriver driver([](QDialog* dialog) {
        dialog->findChild<QComboBox*>(QStringLiteral("theme"))->setCurrentIndex(1);
        auto* language = dialog->findChild<QComboBox*>(QStringLiteral("language"));
        language->setCurrentIndex(language->findData(QStringLiteral("zh_CN")));
        dialog->findChild<QDialogButtonBox*>(QStringLiteral("buttons"))->button(QDialogButtonBox::Ok)->click();
    });
    workbench->options().exec(QString());
    QTRY_VERIFY(iconOf(axisPath(0)) != light);
    QCOMPARE(iconOf(axisPath(0)), iconOf(unitPath()));
    workbench->setLanguage(QStringLiteral("en_US"));
    workbench->setTheme(QStringLiteral("default.qss"));
}

void WorkbenchTest::theThemeStandsInCookiesAndSettings()
{
    createProject();
    const auto* cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
    QCOMPARE(cookies->value(Solution::ConfigKey::theme(), QVariant()).toString(), QStringLiteral("default.qss"));
    workbench->setTheme(QStringLiteral("dark.qss"));
    QCOMPARE(cookies->value(Solution::ConfigKey::theme(), QVariant()).toString(), QStringLiteral("dark.qss"));
    QCOMPARE(
        workbench->settings().value(Solution::ConfigKey::theme(), QVariant()).toString(), QStringLiteral("dark.qss"));
    QCOMPARE(qApp->palette().color(QPalette::Window), Theme::palette(false).color(QPalette::Window));
    const QImage light = workbench->tree()
                             .nodeProperty(unitPath(), QStringLiteral("Icon"), QVariant())
                             .value<QIcon>()
                             .pixmap(16)
                             .toImage();
    emit workbench->options().applyOption(QString());
    const QImage dark = workbench->tree()
                            .nodeProperty(unitPath(), QStringLiteral("Icon"), QVariant())
                            .value<QIcon>()
                            .pixmap(16)
                            .toImage();
    QVERIFY(light != dark);
    workbench->setTheme(QStringLiteral("default.qss"));
}

void WorkbenchTest::picturesFollowTheThemeUnlessAnEditorHasChanges()
{
    createProject();
    const auto figure = [this](int row) {
        const auto* page = openAxis(row)->widget()->findChild<QWidget*>(QStringLiteral("DocumentSetWidget"));
        const auto* label = page ? page->findChild<QLabel*>(QStringLiteral("label_18")) : nullptr;
        return label && label->pixmap() ? label->pixmap()->toImage() : QImage();
    };
    const QImage light = figure(0);
    QVERIFY(!light.isNull());
    QCOMPARE(figure(1), light);
    workbench->editors().activateEditor(openAxis(0));
    const QString current = workbench->editors().currentEditor()->nodePath();
    openAxis(1)->widget()->findChild<QCheckBox*>(QStringLiteral("checkBox_Reverse"))->click();
    workbench->setTheme(QStringLiteral("dark.qss"));
    QCOMPARE(workbench->editors().editors().size(), 2);
    QVERIFY(figure(0) != light);
    QCOMPARE(figure(1), light);
    QVERIFY(openAxis(1)->isModified());
    QCOMPARE(workbench->editors().currentEditor()->nodePath(), current);
    const IEditor* before = openAxis(0);
    workbench->setTheme(QStringLiteral("dark.qss"));
    QCOMPARE(openAxis(0), before);
    QVERIFY(openAxis(1)->save());
    workbench->setTheme(QStringLiteral("default.qss"));
    QCOMPARE(figure(1), light);
}

void WorkbenchTest::theSessionComesBack()
{
    createProject();
    const QString path = axisPath(1);
    openAxis(0);
    workbench->editors().activateEditor(openAxis(1));
    QVERIFY(workbench->window().close());
    make();
    workbench->openFirst(QString());
    QVERIFY(workbench->workspace().project());
    QCOMPARE(workbench->editors().editors().size(), 2);
    QCOMPARE(workbench->editors().currentEditor()->nodePath(), path);
}

void WorkbenchTest::aSourceThatDoesNotParseIsShownWithItsPlace()
{
    createProject();
    SourceModel* sources = workbench->workspace().project()->sourceModel();
    sources->setSource(QStringLiteral("Good"), QStringLiteral("PROGRAM Good\nVAR\n a : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    QCOMPARE(workbench->window().problems().count(), 0);
    sources->setSource(QStringLiteral("Bad"), QStringLiteral("PROGRAM Bad\nVAR\n a : : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    QVERIFY(workbench->window().problems().count() > 0);
    const QTreeWidgetItem* item = workbench->window().problems().topLevelItem(0);
    QCOMPARE(item->text(1), QStringLiteral("Bad"));
    QCOMPARE(item->text(2), QStringLiteral("3"));
    QVERIFY(item->text(3).toInt() > 0);
    sources->removeSource(QStringLiteral("Bad"));
    QCOMPARE(workbench->window().problems().count(), 0);
}

void WorkbenchTest::aSourceOpensAtAPlace()
{
    createProject();
    workbench->workspace().project()->sourceModel()->setSource(
        QStringLiteral("Lib.Main"), QStringLiteral("PROGRAM Main\nVAR\nEND_VAR\nEND_PROGRAM\n"));
    workbench->workspace().showSource(QStringLiteral("Lib.Main"), 3, 2);
    IEditor* editor = workbench->editors().currentEditor();
    QVERIFY(editor);
    QCOMPARE(editor->displayName(), QStringLiteral("Lib.Main"));
    const auto* view = qobject_cast<QPlainTextEdit*>(editor->widget());
    QVERIFY(view && view->isReadOnly());
    QCOMPARE(view->textCursor().blockNumber(), 2);
    QCOMPARE(view->textCursor().positionInBlock(), 1);
}

void WorkbenchTest::shuttingDownTakesEverythingOut()
{
    createProject();
    QPointer<IEditor> editor = openAxis(0);
    QPointer<PluginInterface> plugin = workbench->plugins().entries().front().plugin;
    QStringList order;
    QObject context;
    connect(&workbench->editors(), &IEditorManager::editorClosed, &context, [&](IEditor*) {
        order.append(QStringLiteral("editor"));
        QVERIFY(Solution::service(Solution::ServiceKey::view()));
        QVERIFY(plugin);
    });
    connect(plugin, &QObject::destroyed, &context, [&] {
        order.append(QStringLiteral("plug-in"));
        QVERIFY(workbench->application().objectTable.isEmpty());
        QVERIFY(!editor);
        QVERIFY(!workbench->comparators().comparator(QStringLiteral("AxisView")));
        QCOMPARE(Solution::editorManager(), nullptr);
    });
    workbench->shutDown();
    QCOMPARE(order, QStringList({ QStringLiteral("editor"), QStringLiteral("plug-in") }));
    QVERIFY(!plugin);
    workbench->shutDown();
}

void WorkbenchTest::withoutAPluginFolderTheProgramRuns()
{
    make(directory->filePath(QStringLiteral("none")));
    QVERIFY(output().first().contains(QStringLiteral("none")));
    createProject(QStringLiteral("Line"), 1);
    QVERIFY(workbench->tree().childNodes(workbench->workspace().configurationPath()).isEmpty());
}

QTEST_MAIN(WorkbenchTest)
#include "WorkbenchTest.moc"
