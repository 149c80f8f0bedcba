#include "editor/MotionControlAxisFactory.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "pages/OriginReturnSetWidget.h"
#include "resources/HomingMethods.h"
#include "sdk/IEditor.h"
#include "sdk/ServiceKeys.h"
#include "tests/resources/PngDecodes.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QComboBox>
#include <QLabel>
#include <QPixmapCache>
#include <QtTest>

#include <memory>

/// How often the homing page has a picture decoded: whenever its steps load one, and never else. The pixmap cache is
/// off, so that it hides no load, but where the test says that it is on.
class HomePictureDecodeTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void buildingThePageLoadsItTwice_data();
    void buildingThePageLoadsItTwice();
    void withTheCacheItIsDecodedOnce();
    void anEditorLoadsNoMoreThanItsPage();
    void aChoiceOfModeLoadsThatPictureOncePerConnection();
    void anUpdateLoadsItOnce();
    void nothingElseLoadsAny();
    void withoutSettingsNoneIsDecoded();

private:
    static QString picture(int number)
    {
        return QStringLiteral(":/images/default/Homing_en_US/Homing_%1.png").arg(number);
    }
    static QString mode(int number) { return QStringLiteral("Homing_%1").arg(number); }
    /// The decoded homing pictures since the last call.
    static QStringList decoded() { return PngDecodes::take().filter(QStringLiteral("Homing_")); }
    QStringList after(const std::function<void()>& act) const
    {
        PngDecodes::take();
        act();
        return decoded();
    }

    std::unique_ptr<TestHost> host;
    std::unique_ptr<TestProject> project;
    AxisTable* axis = nullptr;
};

void HomePictureDecodeTest::init()
{
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(0);
    host = std::make_unique<TestHost>();
    host->settings.setValue(Solution::ConfigKey::language(), QStringLiteral("en_US"));
    project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12E"));
    axis = project->addAxis(QStringLiteral("Feed"), QStringLiteral("Axis_Pulse"));
    axis->setProperty(QStringLiteral("HomeMode"), mode(23));
}

void HomePictureDecodeTest::cleanup()
{
    project.reset();
    host.reset();
}

void HomePictureDecodeTest::buildingThePageLoadsItTwice_data()
{
    QTest::addColumn<int>("number");
    for (const homing::Method& method : homing::methods())
        QTest::addRow("mode %d", method.number) << method.number;
}

void HomePictureDecodeTest::buildingThePageLoadsItTwice()
{
    QFETCH(int, number);
    axis->setProperty(QStringLiteral("HomeMode"), mode(number));
    const QStringList pictures = after([&] { const OriginReturnSetWidget page(project->name(), axis->id(), nullptr); });
    // Once when the page reads the record, once when it adapts itself to the type of the axis.
    QCOMPARE(pictures, QStringList({ picture(number), picture(number) }));
}

void HomePictureDecodeTest::withTheCacheItIsDecodedOnce()
{
    QPixmapCache::setCacheLimit(10240);
    const auto build = [&] { const OriginReturnSetWidget page(project->name(), axis->id(), nullptr); };
    QCOMPARE(after(build), QStringList(picture(23)));
    QCOMPARE(after(build), QStringList());
}

void HomePictureDecodeTest::anEditorLoadsNoMoreThanItsPage()
{
    MotionControlAxisFactory factory;
    std::unique_ptr<IEditor> editor;
    const QStringList pictures = after([&] {
        editor.reset(factory.createEditor(project->axisPath(axis->id()), QStringLiteral("AxisView")));
        editor->widget()->show();
        QCoreApplication::processEvents();
    });
    QCOMPARE(pictures, QStringList({ picture(23), picture(23) }));
}

void HomePictureDecodeTest::aChoiceOfModeLoadsThatPictureOncePerConnection()
{
    OriginReturnSetWidget page(project->name(), axis->id(), nullptr);
    auto* modes = page.findChild<QComboBox*>(QStringLiteral("comboBox_3"));
    // The page is built with two connections, which the first update brings down to one.
    QCOMPARE(after([&] { modes->setCurrentText(mode(30)); }), QStringList({ picture(30), picture(30) }));
    QCOMPARE(after([&] { modes->setCurrentText(mode(30)); }), QStringList());
    page.updateWidget();
    QCOMPARE(after([&] { modes->setCurrentText(mode(17)); }), QStringList(picture(17)));
}

void HomePictureDecodeTest::anUpdateLoadsItOnce()
{
    OriginReturnSetWidget page(project->name(), axis->id(), nullptr);
    QCOMPARE(after([&] { page.updateWidget(); }), QStringList(picture(23)));
    axis->setProperty(QStringLiteral("AxisType"), QStringLiteral("Axis_Virtual"));
    QCOMPARE(after([&] { page.updateWidget(); }), QStringList(picture(35)));
}

void HomePictureDecodeTest::nothingElseLoadsAny()
{
    OriginReturnSetWidget page(project->name(), axis->id(), nullptr);
    const QStringList pictures = after([&] {
        page.resize(1000, 800);
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
        page.resize(600, 400);
        QTest::mouseClick(page.findChild<QLabel*>(QStringLiteral("label_12")), Qt::LeftButton);
        auto* speed = page.findChild<QWidget*>(QStringLiteral("lineEdit_7"));
        QTest::mouseClick(speed, Qt::LeftButton);
        QTest::keyClicks(speed, QStringLiteral("5"));
        QTest::keyClick(speed, Qt::Key_Tab);
        axis->setProperty(QStringLiteral("HomeAcc"), QStringLiteral("250"));
        page.focusedPinViewInfo();
        page.hide();
        page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page));
    });
    QCOMPARE(pictures, QStringList());
}

void HomePictureDecodeTest::withoutSettingsNoneIsDecoded()
{
    host->withhold(Solution::ServiceKey::settings());
    QCOMPARE(after([&] { const OriginReturnSetWidget page(project->name(), axis->id(), nullptr); }), QStringList());
}

int main(int argc, char** argv)
{
    Q_INIT_RESOURCE(axis_resources);
    QApplication application(argc, argv);
    HomePictureDecodeTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HomePictureDecodeTest.moc"
