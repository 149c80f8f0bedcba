#include "tests/online/OnlinePageFixture.h"

#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QScrollArea>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>

#include <functional>

namespace {

/// Runs a function whenever a widget gets another style.
class StyleWatch : public QObject {
public:
    StyleWatch(QWidget& widget, std::function<void()> changed) : m_changed(std::move(changed))
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::StyleChange)
            m_changed();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_changed;
};

} // namespace

/// Where the controls of the online page stand, how they look, and in which order its cells are written.
class OnlineDebugLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m.makePage(); }

    void theUpperPartHasItsFont();
    void labelsBesideTheLiveFieldsAreRightAligned();
    void groupsHaveNoTitlesAndControlsNoToolTips();
    void controlsStandInTheirGroups_data();
    void controlsStandInTheirGroups();
    void groupsStandFromTopToBottom();
    void everythingStandsInTheScrollArea();
    void cellsAreWrittenInTheirOrder();
    void textsOfTheSignalsAreWrittenBeforeTheirLamps();
    void goingOffLineBlanksThePageInItsOrder();

private:
    OnlinePageFixture m;
};

void OnlineDebugLayoutTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void OnlineDebugLayoutTest::theUpperPartHasItsFont()
{
    for (const char* name : { "varTableView", "label_2", "statueLineEdit", "label_3", "comLineEdit", "label_4",
             "axisErrorLineEdit", "label_5", "servoErrorLineEdit", "runStatusView", "enterDebugButton" }) {
        QCOMPARE(m.control(name)->font().family(), QStringLiteral("宋体"));
        QCOMPARE(m.control(name)->font().pointSize(), 9);
    }
}

void OnlineDebugLayoutTest::labelsBesideTheLiveFieldsAreRightAligned()
{
    for (const char* name : { "label_2", "label_3", "label_4", "label_5" })
        QVERIFY2(m.control<QLabel>(name)->alignment().testFlag(Qt::AlignRight), name);
}

void OnlineDebugLayoutTest::groupsHaveNoTitlesAndControlsNoToolTips()
{
    const QList<QGroupBox*> groups = m.page->findChildren<QGroupBox*>();
    QVERIFY(groups.size() >= 3);
    for (const QGroupBox* group : groups)
        QCOMPARE(group->title(), QString());
    const QList<QWidget*> all = m.page->findChildren<QWidget*>();
    for (const QWidget* widget : all)
        QVERIFY2(widget->toolTip().isEmpty(), qPrintable(widget->objectName()));
    QCOMPARE(m.page->windowTitle(), QString());
}

void OnlineDebugLayoutTest::controlsStandInTheirGroups_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QByteArrayList>("controls");
    QTest::newRow("settings") << QByteArray("groupBox_2")
                              << QByteArrayList({ "label", "presetPositionLineEdit", "label_6", "originOffsetLineEdit",
                                     "label_7", "speedMultiplierLineEdit", "label_19", "speedMultiplierCheckBox" });
    QTest::newRow("jogging") << QByteArray("groupBox_3")
                             << QByteArrayList({ "label_8", "posJogSpeedLineEdit", "label_9", "posJogAccLineEdit",
                                    "label_10", "negJogSpeedLineEdit", "label_11", "negJogAccLineEdit" });
    QTest::newRow("moving") << QByteArray("groupBox_4")
                            << QByteArrayList({ "label_12", "motionTypeComboBox", "label_15", "curveTypeComboBox",
                                   "label_13", "positionLineEdit", "label_14", "velocityLineEdit", "label_16",
                                   "accLineEdit", "label_17", "decLineEdit", "label_18", "jerkLineEdit" });
}

void OnlineDebugLayoutTest::controlsStandInTheirGroups()
{
    QFETCH(QByteArray, group);
    QFETCH(QByteArrayList, controls);
    const auto* box = m.control<QGroupBox>(group.constData());
    for (const QByteArray& name : controls)
        QVERIFY2(box->isAncestorOf(m.control(name.constData())), name.constData());
}

void OnlineDebugLayoutTest::groupsStandFromTopToBottom()
{
    m.show();
    int last = -1;
    for (const char* name : { "groupBox_2", "groupBox_3", "groupBox_4", "enablePushButton" }) {
        const int top = m.control(name)->mapTo(m.control("tab"), QPoint()).y();
        QVERIFY2(top > last, name);
        last = top;
    }
    int left = -1;
    for (const char* name : { "enablePushButton", "presetPositionPushButton", "posJogPushButton", "negJogPushButton",
             "motionPushButton", "stopPushButton", "resetPushButton", "homePushButton" }) {
        const QPoint place = m.control(name)->mapTo(m.control("tab"), QPoint());
        QCOMPARE(place.y(), last);
        QVERIFY2(place.x() > left, name);
        left = place.x();
    }
}

void OnlineDebugLayoutTest::everythingStandsInTheScrollArea()
{
    const auto* contents = m.control("scrollAreaWidgetContents");
    QCOMPARE(m.control<QScrollArea>("scrollArea")->widget(), contents);
    for (const char* name : { "varTableView", "runStatusView", "statueLineEdit", "enterDebugButton", "basicTabWidget" })
        QVERIFY2(contents->isAncestorOf(m.control(name)), name);
    const auto* tabs = m.control<QTabWidget>("basicTabWidget");
    QCOMPARE(tabs->count(), 1);
    QCOMPARE(tabs->widget(0), m.control("tab"));
    QCOMPARE(tabs->tabText(0), QStringLiteral("Basic"));
    QVERIFY(!tabs->isEnabled());
}

void OnlineDebugLayoutTest::cellsAreWrittenInTheirOrder()
{
    using Cell = QPair<int, int>;
    const auto cellsOf = [](const QSignalSpy& spy) {
        QVector<Cell> cells;
        for (const QList<QVariant>& each : spy) {
            const auto index = each.first().toModelIndex();
            cells.append({ index.row(), index.column() });
        }
        return cells;
    };
    AxisRef status = OnlinePageFixture::status(4, true);
    status.setPosition = 1;
    status.setVelocity = 2;
    status.setAcceleration = 3;
    status.setTorque = 4;
    status.actualPosition = 5;
    status.actualVelocity = 6;
    status.actualAcceleration = 7;
    status.actualTorque = 8;
    status.positiveHardLimit = 1;
    status.negativeHardLimit = 1;
    status.homeSwitch = 1;
    status.positiveSoftLimit = 1;
    status.negativeSoftLimit = 1;
    QSignalSpy variables(m.control<QTableView>("varTableView")->model(), &QAbstractItemModel::dataChanged);
    QSignalSpy states(m.control<QTableView>("runStatusView")->model(), &QAbstractItemModel::dataChanged);
    m.receive(status);
    QCOMPARE(cellsOf(variables),
        QVector<Cell>({ { 0, 1 }, { 1, 1 }, { 2, 1 }, { 3, 1 }, { 0, 2 }, { 1, 2 }, { 2, 2 }, { 3, 2 } }));
    QVector<Cell> expected;
    for (int pass = 0; pass < 2; ++pass) {
        for (int column = 1; column <= 6; ++column)
            expected.append({ 0, column });
    }
    QCOMPARE(cellsOf(states), expected);
}

void OnlineDebugLayoutTest::textsOfTheSignalsAreWrittenBeforeTheirLamps()
{
    AxisRef status = OnlinePageFixture::status(4);
    for (quint8* flag : { &status.positiveHardLimit, &status.negativeHardLimit, &status.homeSwitch,
             &status.positiveSoftLimit, &status.negativeSoftLimit })
        *flag = 1;
    const QAbstractItemModel* states = m.control<QTableView>("runStatusView")->model();
    QStringList written;
    connect(states, &QAbstractItemModel::dataChanged, this, [&written](const QModelIndex& cell) {
        const bool lit = !cell.data(Qt::DecorationRole).value<QIcon>().isNull();
        written.append(QStringLiteral("%1 %2%3")
                           .arg(cell.column())
                           .arg(cell.data(Qt::EditRole).toString(), lit ? QStringLiteral(" lit") : QString()));
    });
    m.receive(status);
    QStringList expected;
    for (const char* state : { "%1 ON", "%1 ON lit" }) {
        for (int column = 1; column <= 6; ++column)
            expected.append(QString::fromLatin1(state).arg(column));
    }
    QCOMPARE(written, expected);
}

void OnlineDebugLayoutTest::goingOffLineBlanksThePageInItsOrder()
{
    AxisRef status = OnlinePageFixture::status(4, true);
    status.axisError = 9;
    m.receive(status);
    QStringList steps;
    const auto note = [&steps](const QString& step) {
        if (steps.isEmpty() || steps.last() != step)
            steps.append(step);
    };
    for (const char* view : { "varTableView", "runStatusView" })
        connect(m.control<QTableView>(view)->model(), &QAbstractItemModel::dataChanged, this,
            [=] { note(QString::fromLatin1(view)); });
    for (const char* name : { "statueLineEdit", "comLineEdit", "axisErrorLineEdit", "servoErrorLineEdit" })
        connect(m.field(name), &QLineEdit::textChanged, this, [=] { note(QString::fromLatin1(name)); });
    const StyleWatch style(*m.field("axisErrorLineEdit"), [=] { note(QStringLiteral("style")); });
    m.page->onlineStatechanged(false);
    QCOMPARE(steps,
        QStringList({ QStringLiteral("varTableView"), QStringLiteral("statueLineEdit"), QStringLiteral("comLineEdit"),
            QStringLiteral("axisErrorLineEdit"), QStringLiteral("servoErrorLineEdit"), QStringLiteral("runStatusView"),
            QStringLiteral("style") }));
}

QTEST_MAIN(OnlineDebugLayoutTest)
#include "OnlineDebugLayoutTest.moc"
