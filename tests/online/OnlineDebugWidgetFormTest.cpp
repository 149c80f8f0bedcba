#include "axisdata/DoubleValidator.h"
#include "axisdata/RegExpValidator.h"
#include "sdk/AxisDebugParams.h"
#include "tests/online/OnlinePageFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

#include <optional>

/// The controls of the online page as they stand before any reply.
class OnlineDebugWidgetFormTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m.emplace(); }
    void cleanup() { m.reset(); }

    void slotsStandInTheirOrder();
    void controlsHaveTheirTextsAndStates_data();
    void controlsHaveTheirTextsAndStates();
    void nothingMovesTheAxisBeforeItsFirstReply();
    void fieldsShareTheirValidators();
    void sizesAreFixed();
    void everyPushButtonIsStyled();
    void comboBoxesListTheirTextsInSortOrder();
    void bothTablesShowTheirHeadersAndNames_data();
    void bothTablesShowTheirHeadersAndNames();
    void bothTablesAreForReadingOnly_data();
    void bothTablesAreForReadingOnly();
    void aClickSelectsARowOfTheVariablesAndNoSignal();

private:
    static void bothTables();
    /// Clicks the middle of a cell, as a user does.
    static void click(const QTableView& view, int row, int column)
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
            view.visualRect(view.model()->index(row, column)).center());
    }

    std::optional<OnlinePageFixture> m;
};

void OnlineDebugWidgetFormTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void OnlineDebugWidgetFormTest::slotsStandInTheirOrder()
{
    const QByteArrayList expected{ "axisDebugGetAxisRef(QByteArray)", "axisDebugEnterDebugMode(short)",
        "axisDebugKeepAlive(short)", "axisDebugSetEnable(short)", "axisDebugSetPosition(short)",
        "axisDebugSetHomeOffset(short)", "axisDebugSetVelRatio(short)", "axisDebugSetHome(short)",
        "axisDebugSetStop(short)", "axisDebugMoveAbs(short)", "axisDebugMoveRel(short)", "axisDebugMoveVel(short)",
        "axisDebugJopPos(short)", "axisDebugJopNeg(short)", "axisDebugReset(short)", "onlineStatechanged(bool)",
        "onlineQTimerSlot()" };
    const QMetaObject& meta = OnlineDebugWidget::staticMetaObject;
    for (int i = 0; i < expected.size(); ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + i);
        QCOMPARE(method.methodSignature(), expected.at(i));
        QCOMPARE(method.access(), i < 16 ? QMetaMethod::Public : QMetaMethod::Private);
    }
}

void OnlineDebugWidgetFormTest::controlsHaveTheirTextsAndStates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("hidden");
    const auto row = [](const char* name, const char* text, bool hidden = false) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(text) << hidden;
    };
    row("label_2", "          Status:");
    row("label_3", "          Communication:");
    row("label_4", "        Axis Error:");
    row("label_5", "      Servo Error:");
    row("statueLineEdit", "");
    row("comLineEdit", "");
    row("axisErrorLineEdit", "");
    row("servoErrorLineEdit", "");
    row("enterDebugButton", "Enter debugging");
    row("label", "Preset Position:");
    row("presetPositionLineEdit", "0");
    row("label_6", "Origin Offset:");
    row("originOffsetLineEdit", "0");
    row("label_7", "Speed Multiplier:");
    row("speedMultiplierLineEdit", "100");
    row("label_19", "% ");
    row("speedMultiplierCheckBox", "");
    row("label_8", "Positive Jog Speed:");
    row("posJogSpeedLineEdit", "10");
    row("label_9", "Positive Jog Acc:");
    row("posJogAccLineEdit", "10");
    row("label_10", "Negative Jog Speed:");
    row("negJogSpeedLineEdit", "10");
    row("label_11", "Negative Jog Acc:");
    row("negJogAccLineEdit", "10");
    row("label_12", "Motion Type:");
    row("label_15", "Curve Type:");
    row("label_13", "Position:");
    row("positionLineEdit", "0");
    row("label_14", "Velocity:");
    row("velocityLineEdit", "10");
    row("label_16", "Acceleration:");
    row("accLineEdit", "10");
    row("label_17", "Deceleration:");
    row("decLineEdit", "10");
    row("label_18", "jerk:", true);
    row("jerkLineEdit", "0.000000", true);
    row("enablePushButton", "Enable");
    row("presetPositionPushButton", "Preset Pos");
    row("posJogPushButton", "JOG+");
    row("negJogPushButton", "JOG-");
    row("motionPushButton", "Motion");
    row("stopPushButton", "Stop");
    row("resetPushButton", "Reset");
    row("homePushButton", "Home");
}

void OnlineDebugWidgetFormTest::controlsHaveTheirTextsAndStates()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(bool, hidden);
    m->makePage();
    const auto* control = m->page->findChild<QWidget*>(name);
    QVERIFY(control);
    QCOMPARE(control->property("text").toString(), text);
    QCOMPARE(control->isHidden(), hidden);
    const bool monitorField
        = QStringList({ QStringLiteral("statueLineEdit"), QStringLiteral("comLineEdit"),
                          QStringLiteral("axisErrorLineEdit"), QStringLiteral("servoErrorLineEdit") })
              .contains(name);
    if (monitorField) {
        QVERIFY(!control->isEnabled());
        QVERIFY(control->property("readOnly").toBool());
    }
    QCOMPARE(m->page->windowTitle(), QString());
    QVERIFY(!m->control<QTabWidget>("basicTabWidget")->isEnabled());
    QCOMPARE(m->control<QTabWidget>("basicTabWidget")->tabText(0), QStringLiteral("Basic"));
    QCOMPARE(m->control<QTabWidget>("basicTabWidget")->widget(0)->objectName(), QStringLiteral("tab"));
}

void OnlineDebugWidgetFormTest::nothingMovesTheAxisBeforeItsFirstReply()
{
    m->makePage();
    // By themselves, not only as parts of the disabled tab.
    const QWidget* tab = m->control("tab");
    for (const char* name :
        { "posJogPushButton", "negJogPushButton", "motionPushButton", "stopPushButton", "homePushButton" })
        QVERIFY2(!m->control(name)->isEnabledTo(tab), name);
    for (const char* name : { "enablePushButton", "presetPositionPushButton", "resetPushButton" })
        QVERIFY2(m->control(name)->isEnabledTo(tab), name);
}

void OnlineDebugWidgetFormTest::fieldsShareTheirValidators()
{
    m->makePage();
    const char* reals[] = { "presetPositionLineEdit", "originOffsetLineEdit", "posJogSpeedLineEdit",
        "posJogAccLineEdit", "negJogSpeedLineEdit", "negJogAccLineEdit", "positionLineEdit", "velocityLineEdit",
        "accLineEdit", "decLineEdit", "jerkLineEdit" };
    const QValidator* shared = m->field(reals[0])->validator();
    const auto* real = qobject_cast<const DoubleValidator*>(shared);
    QVERIFY(real);
    QCOMPARE(real->decimals(), 6);
    QCOMPARE(real->notation(), QDoubleValidator::StandardNotation);
    QCOMPARE(real->parent(), m->page.get());
    for (const char* name : reals)
        QCOMPARE(m->field(name)->validator(), shared);
    const auto* integer = qobject_cast<const RegExpValidator*>(m->field("speedMultiplierLineEdit")->validator());
    QVERIFY(integer);
    QCOMPARE(integer->parent(), m->page.get());
    QCOMPARE(integer->regExp().pattern(), QStringLiteral("-?[0-9]*"));
    QCOMPARE(integer->regExp().caseSensitivity(), Qt::CaseSensitive);
}

void OnlineDebugWidgetFormTest::sizesAreFixed()
{
    m->makePage();
    const auto isFixed = [this](const char* name, const QSize& size) {
        const auto* control = m->control(name);
        return control->minimumSize() == size && control->maximumSize() == size;
    };
    QVERIFY(isFixed("varTableView", QSize(300, 200)));
    QVERIFY(isFixed("runStatusView", QSize(875, 50)));
    QVERIFY(isFixed("enterDebugButton", QSize(120, 30)));
    for (const char* name : { "enablePushButton", "presetPositionPushButton", "posJogPushButton", "negJogPushButton",
             "motionPushButton", "stopPushButton", "resetPushButton", "homePushButton" })
        QVERIFY2(isFixed(name, QSize(100, 40)), name);
}

void OnlineDebugWidgetFormTest::everyPushButtonIsStyled()
{
    m->makePage();
    const QList<QPushButton*> buttons = m->page->findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 9);
    for (const QPushButton* button : buttons)
        QCOMPARE(button->property("styleType").toString(), QStringLiteral("defaultButton"));
}

void OnlineDebugWidgetFormTest::comboBoxesListTheirTextsInSortOrder()
{
    m->makePage();
    const auto texts = [this](const char* name) {
        QStringList all;
        const auto* box = m->control<QComboBox>(name);
        for (int i = 0; i < box->count(); ++i)
            all << box->itemText(i);
        return all;
    };
    QCOMPARE(texts("motionTypeComboBox"),
        QStringList({ QStringLiteral("Absolute positioning"), QStringLiteral("Continuous motion"),
            QStringLiteral("Relative positioning") }));
    QCOMPARE(m->control<QComboBox>("motionTypeComboBox")->currentText(), QStringLiteral("Absolute positioning"));
    QCOMPARE(texts("curveTypeComboBox"), QStringList({ QStringLiteral("S_type"), QStringLiteral("trapezoid") }));
    QCOMPARE(m->control<QComboBox>("curveTypeComboBox")->currentText(), QStringLiteral("trapezoid"));
}

void OnlineDebugWidgetFormTest::bothTables()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QStringList>("headers");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("set and actual values")
        << QByteArray("varTableView")
        << QStringList({ QStringLiteral("Variable"), QStringLiteral("Set value"), QStringLiteral("Actual value") })
        << QStringList({ QStringLiteral("Location"), QStringLiteral("Speed"), QStringLiteral("Accelerated speed"),
               QStringLiteral("Torque force") });
    QTest::newRow("signals of the axis") << QByteArray("runStatusView")
                                         << QStringList({ QStringLiteral("/"), QStringLiteral("Motion"),
                                                QStringLiteral("Hard Limit Pos"), QStringLiteral("Hard Limit Neg"),
                                                QStringLiteral("Home Switch"), QStringLiteral("Soft Limit Pos"),
                                                QStringLiteral("Soft Limit Neg") })
                                         << QStringList({ QStringLiteral("Status") });
}

void OnlineDebugWidgetFormTest::bothTablesShowTheirHeadersAndNames_data()
{
    bothTables();
}

void OnlineDebugWidgetFormTest::bothTablesShowTheirHeadersAndNames()
{
    QFETCH(QByteArray, name);
    QFETCH(QStringList, headers);
    QFETCH(QStringList, rows);
    m->makePage();
    const auto* view = m->control<QTableView>(name.constData());
    const auto* model = qobject_cast<QStandardItemModel*>(view->model());
    QVERIFY(model);
    QCOMPARE(model->parent(), m->page.get());
    QVERIFY(!view->horizontalHeader()->isHidden());
    QCOMPARE(view->horizontalHeader()->count(), headers.size());
    for (int column = 0; column < headers.size(); ++column) {
        QCOMPARE(model->headerData(column, Qt::Horizontal).toString(), headers.at(column));
        QCOMPARE(view->horizontalHeader()->sectionResizeMode(column), QHeaderView::Stretch);
    }
    QCOMPARE(view->verticalHeader()->count(), rows.size());
    for (int row = 0; row < rows.size(); ++row) {
        QCOMPARE(model->index(row, 0).data(Qt::EditRole).toString(), rows.at(row));
        QCOMPARE(view->verticalHeader()->sectionResizeMode(row), QHeaderView::Stretch);
        for (int column = 1; column < headers.size(); ++column)
            QCOMPARE(model->index(row, column).data(Qt::EditRole).toString(), QString());
    }
    QCOMPARE(view->property("styleType").toString(), QStringLiteral("commonTable"));
}

void OnlineDebugWidgetFormTest::bothTablesAreForReadingOnly_data()
{
    bothTables();
}

void OnlineDebugWidgetFormTest::bothTablesAreForReadingOnly()
{
    QFETCH(QByteArray, name);
    m->makePage();
    m->show();
    auto* view = m->control<QTableView>(name.constData());
    QCOMPARE(view->editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
    const QModelIndex cell = view->model()->index(0, 1);
    click(*view, cell.row(), cell.column());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(cell).center());
    view->setFocus();
    view->setCurrentIndex(cell);
    QTest::keyClick(view, Qt::Key_F2);
    QTest::keyClicks(view, QStringLiteral("7"));
    QVERIFY(view->viewport()->findChildren<QWidget*>().isEmpty());
    QCOMPARE(cell.data(Qt::EditRole).toString(), QString());
}

void OnlineDebugWidgetFormTest::aClickSelectsARowOfTheVariablesAndNoSignal()
{
    m->makePage();
    m->show();
    const auto& variables = *m->control<QTableView>("varTableView");
    QCOMPARE(variables.selectionBehavior(), QAbstractItemView::SelectRows);
    click(variables, 2, 1);
    const QModelIndexList chosen = variables.selectionModel()->selectedRows();
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().row(), 2);
    QCOMPARE(variables.selectionModel()->selectedIndexes().size(), 3);
    const auto& states = *m->control<QTableView>("runStatusView");
    QCOMPARE(states.selectionMode(), QAbstractItemView::NoSelection);
    click(states, 0, 1);
    QVERIFY(!states.selectionModel()->hasSelection());
}

QTEST_MAIN(OnlineDebugWidgetFormTest)
#include "OnlineDebugWidgetFormTest.moc"
