#include "online/OnlineMonitorTables.h"

#include <QHeaderView>
#include <QIcon>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

#include <cstring>
#include <limits>

class OnlineMonitorTablesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void valuesAreCutOffAfterTwoDigits_data();
    void valuesAreCutOffAfterTwoDigits();
    void variableModelHasItsRowsAndHeaders();
    void statusModelHasItsColumns();
    void everyValueComesFromItsOffset_data();
    void everyValueComesFromItsOffset();
    void everySignalComesFromItsByte_data();
    void everySignalComesFromItsByte();
    void motionShowsWhenTheAxisMoves();
    void clearingBlanksTextsAndKeepsLamps();
    void viewsAreForReadingOnly();

private:
    static AxisRef emptyStatus()
    {
        AxisRef status;
        std::memset(&status, 0, sizeof status);
        return status;
    }
    static bool sameLamp(const QIcon& icon, const QString& path)
    {
        return icon.pixmap(32, 32).toImage() == QIcon(path).pixmap(32, 32).toImage();
    }

    QWidget m_page;
};

void OnlineMonitorTablesTest::initTestCase()
{
    Q_INIT_RESOURCE(axis_resources);
}

void OnlineMonitorTablesTest::valuesAreCutOffAfterTwoDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << "0.00";
    QTest::newRow("not rounded up") << 0.999 << "0.99";
    QTest::newRow("positive") << 1.239 << "1.23";
    QTest::newRow("negative towards zero") << -1.239 << "-1.23";
    QTest::newRow("small negative loses its sign") << -0.001 << "0.00";
    QTest::newRow("large") << 1000000.0 << "1000000.00";
    QTest::newRow("the binary product decides") << 0.29 << "0.28";
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << "0.00";
    QTest::newRow("beyond 64 bits") << 1e300 << "92233720368547760.00";
    QTest::newRow("infinite downwards") << -std::numeric_limits<double>::infinity() << "-92233720368547760.00";
}

void OnlineMonitorTablesTest::valuesAreCutOffAfterTwoDigits()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(OnlineMonitorTables::valueText(value), text);
}

void OnlineMonitorTablesTest::variableModelHasItsRowsAndHeaders()
{
    const QStandardItemModel& model = *OnlineMonitorTables::makeVariableModel(&m_page);
    QCOMPARE(model.parent(), static_cast<QObject*>(&m_page));
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.columnCount(), 3);
    const QStringList headers{ QStringLiteral("Variable"), QStringLiteral("Set value"),
        QStringLiteral("Actual value") };
    const QStringList rows{ QStringLiteral("Location"), QStringLiteral("Speed"), QStringLiteral("Accelerated speed"),
        QStringLiteral("Torque force") };
    for (int i = 0; i < 3; ++i)
        QCOMPARE(model.headerData(i, Qt::Horizontal).toString(), headers.at(i));
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(model.index(i, 0).data().toString(), rows.at(i));
        QCOMPARE(model.index(i, 1).data().toString(), QString());
    }
}

void OnlineMonitorTablesTest::statusModelHasItsColumns()
{
    const QStandardItemModel& model = *OnlineMonitorTables::makeStatusModel(&m_page);
    QCOMPARE(model.rowCount(), 1);
    const QStringList headers{ QStringLiteral("/"), QStringLiteral("Motion"), QStringLiteral("Hard Limit Pos"),
        QStringLiteral("Hard Limit Neg"), QStringLiteral("Home Switch"), QStringLiteral("Soft Limit Pos"),
        QStringLiteral("Soft Limit Neg") };
    QCOMPARE(model.columnCount(), headers.size());
    for (int i = 0; i < headers.size(); ++i)
        QCOMPARE(model.headerData(i, Qt::Horizontal).toString(), headers.at(i));
    QCOMPARE(model.index(0, 0).data().toString(), QStringLiteral("Status"));
}

void OnlineMonitorTablesTest::everyValueComesFromItsOffset_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("set position") << 12 << 0 << 1;
    QTest::newRow("set velocity") << 20 << 1 << 1;
    QTest::newRow("set acceleration") << 28 << 2 << 1;
    QTest::newRow("set torque") << 36 << 3 << 1;
    QTest::newRow("actual position") << 44 << 0 << 2;
    QTest::newRow("actual velocity") << 52 << 1 << 2;
    QTest::newRow("actual acceleration") << 60 << 2 << 2;
    QTest::newRow("actual torque") << 68 << 3 << 2;
}

void OnlineMonitorTablesTest::everyValueComesFromItsOffset()
{
    QFETCH(int, offset);
    QFETCH(int, row);
    QFETCH(int, column);
    AxisRef status = emptyStatus();
    const double value = 12.5;
    std::memcpy(reinterpret_cast<char*>(&status) + offset, &value, sizeof value);
    QStandardItemModel& model = *OnlineMonitorTables::makeVariableModel(&m_page);
    OnlineMonitorTables::fillVariables(model, status);
    for (int r = 0; r < 4; ++r) {
        for (int c = 1; c < 3; ++c)
            QCOMPARE(model.index(r, c).data(Qt::EditRole).toString(),
                r == row && c == column ? QStringLiteral("12.50") : QStringLiteral("0.00"));
    }
}

void OnlineMonitorTablesTest::everySignalComesFromItsByte_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("lamp");
    const QString on = QStringLiteral(":/images/status_on.png");
    const QString off = QStringLiteral(":/images/status_off.png");
    QTest::newRow("positive hard limit") << 120 << 2 << off;
    QTest::newRow("negative hard limit") << 121 << 3 << off;
    QTest::newRow("home switch") << 122 << 4 << on;
    QTest::newRow("positive soft limit") << 123 << 5 << off;
    QTest::newRow("negative soft limit") << 124 << 6 << off;
}

void OnlineMonitorTablesTest::everySignalComesFromItsByte()
{
    QFETCH(int, offset);
    QFETCH(int, column);
    QFETCH(QString, lamp);
    for (const char value : { '\1', '\x7f', '\xff' }) {
        AxisRef status = emptyStatus();
        reinterpret_cast<char*>(&status)[offset] = value;
        QStandardItemModel& model = *OnlineMonitorTables::makeStatusModel(&m_page);
        OnlineMonitorTables::fillStatus(model, status, false);
        for (int c = 1; c < 7; ++c) {
            const QModelIndex cell = model.index(0, c);
            QCOMPARE(cell.data(Qt::EditRole).toString(), c == column ? QStringLiteral("ON") : QStringLiteral("OFF"));
            const auto icon = cell.data(Qt::DecorationRole).value<QIcon>();
            QCOMPARE(icon.isNull(), c != column);
            if (c == column)
                QVERIFY(sameLamp(icon, lamp));
        }
    }
}

void OnlineMonitorTablesTest::motionShowsWhenTheAxisMoves()
{
    QStandardItemModel& model = *OnlineMonitorTables::makeStatusModel(&m_page);
    OnlineMonitorTables::fillStatus(model, emptyStatus(), true);
    QCOMPARE(model.index(0, 1).data().toString(), QStringLiteral("ON"));
    QVERIFY(
        sameLamp(model.index(0, 1).data(Qt::DecorationRole).value<QIcon>(), QStringLiteral(":/images/status_on.png")));
    OnlineMonitorTables::fillStatus(model, emptyStatus(), false);
    QCOMPARE(model.index(0, 1).data().toString(), QStringLiteral("OFF"));
    QVERIFY(model.index(0, 1).data(Qt::DecorationRole).value<QIcon>().isNull());
}

void OnlineMonitorTablesTest::clearingBlanksTextsAndKeepsLamps()
{
    QStandardItemModel& variables = *OnlineMonitorTables::makeVariableModel(&m_page);
    QStandardItemModel& states = *OnlineMonitorTables::makeStatusModel(&m_page);
    AxisRef status = emptyStatus();
    status.homeSwitch = 1;
    OnlineMonitorTables::fillVariables(variables, status);
    OnlineMonitorTables::fillStatus(states, status, true);
    OnlineMonitorTables::clearVariables(variables);
    OnlineMonitorTables::clearStatus(states);
    for (int row = 0; row < 4; ++row) {
        QVERIFY(!variables.index(row, 0).data().toString().isEmpty());
        QCOMPARE(variables.index(row, 1).data().toString(), QString());
        QCOMPARE(variables.index(row, 2).data().toString(), QString());
    }
    QCOMPARE(states.index(0, 0).data().toString(), QStringLiteral("Status"));
    for (int column = 1; column < 7; ++column)
        QCOMPARE(states.index(0, column).data().toString(), QString());
    QVERIFY(!states.index(0, 1).data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(!states.index(0, 4).data(Qt::DecorationRole).value<QIcon>().isNull());
}

void OnlineMonitorTablesTest::viewsAreForReadingOnly()
{
    QTableView variables;
    QTableView states;
    OnlineMonitorTables::setUpVariableView(variables, *OnlineMonitorTables::makeVariableModel(&m_page));
    OnlineMonitorTables::setUpStatusView(states, *OnlineMonitorTables::makeStatusModel(&m_page));
    for (const QTableView* view : { &variables, &states }) {
        QCOMPARE(view->editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
        QCOMPARE(view->property("styleType").toString(), QStringLiteral("commonTable"));
        QCOMPARE(view->horizontalHeader()->sectionResizeMode(0), QHeaderView::Stretch);
        QCOMPARE(view->verticalHeader()->sectionResizeMode(0), QHeaderView::Stretch);
    }
    QCOMPARE(variables.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(states.selectionMode(), QAbstractItemView::NoSelection);
    variables.show();
    states.show();
    QTest::mouseClick(variables.viewport(), Qt::LeftButton, Qt::NoModifier,
        variables.visualRect(variables.model()->index(1, 1)).center());
    QCOMPARE(variables.selectionModel()->selectedRows().size(), 1);
    QTest::mouseDClick(variables.viewport(), Qt::LeftButton, Qt::NoModifier,
        variables.visualRect(variables.model()->index(1, 1)).center());
    QVERIFY(!variables.findChild<QWidget*>(QStringLiteral("qt_spinbox_lineedit")));
    QCOMPARE(variables.viewport()->findChildren<QWidget*>().size(), 0);
    QTest::mouseClick(
        states.viewport(), Qt::LeftButton, Qt::NoModifier, states.visualRect(states.model()->index(0, 1)).center());
    QVERIFY(!states.selectionModel()->hasSelection());
}

QTEST_MAIN(OnlineMonitorTablesTest)
#include "OnlineMonitorTablesTest.moc"
