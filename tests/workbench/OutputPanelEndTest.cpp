#include "workbench/OutputPanel.h"

#include <QScrollBar>
#include <QtTest>

#include <memory>

/// The end of the output panel, where the newest line stands.
class OutputPanelEndTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void theNewestLineIsInSight();
    void itIsSoAfterLinesThatCameBehindAnotherPanel();
    void itIsSoInAPanelThatHasBecomeLower();
    void itIsSoInAPanelThatHasBecomeLowerBehindAnotherOne();
    void itIsSoAfterRowsHaveBecomeHigher();
    void whoReadsOlderLinesIsLeftInPeace();

private:
    void add(int lines)
    {
        for (int i = 0; i < lines; ++i)
            panel->addLine(LogInfo, QString(), QStringLiteral("line %1").arg(panel->topLevelItemCount()));
    }
    bool isInSight(int line) const
    {
        return panel->viewport()->rect().contains(panel->visualItemRect(panel->topLevelItem(line)));
    }

    std::unique_ptr<OutputPanel> panel;
};

void OutputPanelEndTest::init()
{
    panel = std::make_unique<OutputPanel>();
    panel->resize(900, 120);
    panel->show();
    QVERIFY(QTest::qWaitForWindowExposed(panel.get()));
}

void OutputPanelEndTest::theNewestLineIsInSight()
{
    add(30);
    QTRY_VERIFY(isInSight(29));
    add(1);
    QTRY_VERIFY(isInSight(30));
}

void OutputPanelEndTest::itIsSoAfterLinesThatCameBehindAnotherPanel()
{
    add(30);
    QTRY_VERIFY(isInSight(29));
    panel->hide();
    add(30);
    panel->show();
    QTRY_VERIFY(isInSight(59));
}

void OutputPanelEndTest::itIsSoInAPanelThatHasBecomeLower()
{
    panel->resize(900, 400);
    add(8);
    QTRY_VERIFY(isInSight(7));
    panel->resize(900, 100);
    QTRY_VERIFY(isInSight(7));
}

void OutputPanelEndTest::itIsSoInAPanelThatHasBecomeLowerBehindAnotherOne()
{
    panel->resize(900, 400);
    add(8);
    QTRY_VERIFY(isInSight(7));
    panel->hide();
    panel->resize(900, 100);
    add(1);
    panel->show();
    QTRY_VERIFY(isInSight(8));
}

void OutputPanelEndTest::itIsSoAfterRowsHaveBecomeHigher()
{
    panel->resize(900, 200);
    add(4);
    QTRY_VERIFY(isInSight(3));
    panel->setStyleSheet(QStringLiteral("QTreeView::item { padding: 30px 0 }"));
    QTRY_VERIFY(panel->verticalScrollBar()->maximum() > 0);
    add(1);
    QTRY_VERIFY(isInSight(4));
}

void OutputPanelEndTest::whoReadsOlderLinesIsLeftInPeace()
{
    add(30);
    QTRY_VERIFY(isInSight(29));
    panel->verticalScrollBar()->setValue(0);
    add(1);
    QCoreApplication::processEvents();
    QVERIFY(isInSight(0));
    panel->resize(900, 100);
    QCoreApplication::processEvents();
    QVERIFY(isInSight(0));
    panel->hide();
    add(1);
    panel->show();
    QVERIFY(QTest::qWaitForWindowExposed(panel.get()));
    QCoreApplication::processEvents();
    QVERIFY(isInSight(0));
}

QTEST_MAIN(OutputPanelEndTest)
#include "OutputPanelEndTest.moc"
