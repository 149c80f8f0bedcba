#include "workbench/OutputPanel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QtTest>

class OutputPanelTest : public QObject {
    Q_OBJECT

private slots:
    void aLineTellsItsTimeOriginAndText();
    void theOldestLineGoesOnceThereAreTooMany();
    void theNewestLineIsInSightUnlessTheUserReadsFurtherUp();
    void copyingTakesWhatIsChosen();
};

void OutputPanelTest::aLineTellsItsTimeOriginAndText()
{
    OutputPanel panel;
    panel.addLine(LogInfo, QStringLiteral("Axis"), QStringLiteral("one"));
    panel.addLine(LogError, QString(), QStringLiteral("two"));
    QCOMPARE(panel.lines(), QStringList({ QStringLiteral("one"), QStringLiteral("two") }));
    const QTreeWidgetItem* first = panel.topLevelItem(0);
    QVERIFY(QTime::fromString(first->text(0), QStringLiteral("HH:mm:ss")).isValid());
    QCOMPARE(first->text(1), QStringLiteral("Axis"));
    QCOMPARE(panel.topLevelItem(1)->text(1), QStringLiteral("Workbench"));
}

void OutputPanelTest::theOldestLineGoesOnceThereAreTooMany()
{
    OutputPanel panel;
    for (int i = 0; i < 5002; ++i)
        panel.addLine(LogInfo, QString(), QString::number(i));
    const QStringList lines = panel.lines();
    QCOMPARE(lines.size(), 5000);
    QCOMPARE(lines.first(), QStringLiteral("2"));
    QCOMPARE(lines.last(), QStringLiteral("5001"));
}

void OutputPanelTest::theNewestLineIsInSightUnlessTheUserReadsFurtherUp()
{
    OutputPanel panel;
    panel.resize(400, 120);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QScrollBar* bar = panel.verticalScrollBar();
    for (int i = 0; i < 50; ++i)
        panel.addLine(LogInfo, QString(), QString::number(i));
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    bar->setValue(3);
    panel.addLine(LogInfo, QString(), QStringLiteral("news"));
    QCoreApplication::processEvents();
    QCOMPARE(bar->value(), 3);
}

void OutputPanelTest::copyingTakesWhatIsChosen()
{
    OutputPanel panel;
    panel.addLine(LogInfo, QStringLiteral("Axis"), QStringLiteral("one"));
    panel.addLine(LogInfo, QStringLiteral("Axis"), QStringLiteral("two"));
    panel.topLevelItem(1)->setSelected(true);
    QTest::keyClick(&panel, Qt::Key_C, Qt::ControlModifier);
    const QString time = panel.topLevelItem(1)->text(0);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString(time + QStringLiteral("\tAxis\ttwo")));
}

QTEST_MAIN(OutputPanelTest)
#include "OutputPanelTest.moc"
