#include "editor/AxisFinder.h"
#include "editor/BasicSetWidget.h"
#include "editor/MotionControlAxisEditor.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/RecordingTranslator.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QTabWidget>
#include <QtTest>

#include <memory>

namespace {

const QString axisView = QStringLiteral("AxisView");

QStringList inContext(const char* context, std::initializer_list<const char*> texts)
{
    QStringList all;
    for (const char* text : texts)
        all.append(QString::fromLatin1(context) + QLatin1Char('|') + QString::fromLatin1(text));
    return all;
}

QStringList labelsOf(const QVector<FindResult>& results)
{
    QStringList labels;
    for (const FindResult& result : results)
        labels.append(result.label);
    return labels;
}

} // namespace

/// The contexts in which the texts of editor, basic page and finder are looked up.
class TranslatedTextsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void editorTitlesItsTabs();
    void basicPageKnowsTabsByItsOwnTitles_data();
    void basicPageKnowsTabsByItsOwnTitles();
    void editorLabelsItsReferences();
    void finderLabelsItsReferences();
    void finderLabelsItsHits();

private:
    QString path() const { return m_project->axisPath(m_axis->id()); }

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    AxisTable* m_axis = nullptr;
    std::unique_ptr<RecordingTranslator> m_translator;
};

void TranslatedTextsTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_project->addSource(
        QStringLiteral("Main"), QStringLiteral("PROGRAM Main\nVAR\n stop : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"), QStringLiteral("Axis_Pulse"));
    for (const char* key : { "PosLimitEnable", "NegsLimitEnable", "OrgSignalEnable" })
        m_axis->setProperty(QString::fromLatin1(key), QStringLiteral("TRUE"));
    for (const char* key : { "PosLimitPin", "NegLimitPin", "OrgSignalPin" })
        m_axis->setProperty(QString::fromLatin1(key), QStringLiteral("Main.stop"));
    m_translator = std::make_unique<RecordingTranslator>();
}

void TranslatedTextsTest::cleanup()
{
    m_translator.reset();
    m_project.reset();
    m_host.reset();
}

void TranslatedTextsTest::editorTitlesItsTabs()
{
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    const auto* tabs = editor.widget()->findChild<QTabWidget*>();
    QStringList titles;
    for (int index = 0; index < tabs->count(); ++index)
        titles.append(tabs->tabText(index));
    QCOMPARE(titles,
        inContext("MotionControlAxisEditor",
            { "basic setting", "document setting", "model and param setting", "origin return setting",
                "online debug setting" }));
}

void TranslatedTextsTest::basicPageKnowsTabsByItsOwnTitles_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QList<bool>>("visible");
    QTest::newRow("virtual") << QStringLiteral("Axis_Virtual") << QList<bool>{ false, true, true };
    QTest::newRow("encoder") << QStringLiteral("Axis_Encoder") << QList<bool>{ true, false, false };
}

void TranslatedTextsTest::basicPageKnowsTabsByItsOwnTitles()
{
    QFETCH(QString, type);
    QFETCH(QList<bool>, visible);
    m_axis->setProperty(QStringLiteral("AxisType"), type);
    const QStringList titles
        = inContext("BasicSetWidget", { "document setting", "origin return setting", "online debug setting" });
    PropertyEditorView view;
    for (const QString& title : titles)
        view.addTab(new QWidget, title);
    const BasicSetWidget page(m_project->name(), m_axis->id(), &view);
    QList<bool> shown;
    for (const QString& title : titles)
        shown.append(view.isTabVisible(title));
    QCOMPARE(shown, visible);
}

void TranslatedTextsTest::editorLabelsItsReferences()
{
    MotionControlAxisEditor editor;
    QVERIFY(editor.open(path(), axisView));
    QVector<FindResult> results;
    QVERIFY(editor.findReferences(QStringLiteral("Main.stop"), results));
    QCOMPARE(labelsOf(results),
        inContext("MotionControlAxisEditor",
            { "Negative limit:Main.stop", "Positive limit:Main.stop", "Origin signal:Main.stop" }));
}

void TranslatedTextsTest::finderLabelsItsReferences()
{
    AxisFinder finder;
    QVERIFY(finder.bindNode(path()));
    QVector<FindResult> results;
    QVERIFY(finder.findReferences(QStringLiteral("Main.stop"), results));
    QCOMPARE(labelsOf(results),
        inContext("AxisFinder", { "Negative limit:Main.stop", "Positive limit:Main.stop", "Origin signal:Main.stop" }));
}

void TranslatedTextsTest::finderLabelsItsHits()
{
    m_axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("pos"));
    m_axis->setViewInfo(QStringLiteral("LineEditNegObjectName"), QStringLiteral("neg"));
    m_axis->setViewInfo(QStringLiteral("LineEditOrgObjectName"), QStringLiteral("org"));
    AxisFinder finder;
    QVERIFY(finder.bindNode(path()));
    finder.setStartPosition(QString());
    QStringList labels;
    while (finder.findNext(QStringLiteral("stop")) && !finder.result().atEnd)
        labels.append(finder.result().label);
    QCOMPARE(labels,
        inContext("AxisFinder", { "Positive limit:Main.stop", "Negative limit:Main.stop", "Origin signal:Main.stop" }));
}

QTEST_MAIN(TranslatedTextsTest)
#include "TranslatedTextsTest.moc"
