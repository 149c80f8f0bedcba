#include "workbench/FindFlows.h"

#include "sdk/IEditor.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/FindProgram.h"

#include <QHeaderView>

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

/// What a list says of the places in it once the project has gone on.
class FindListTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aListThatChangesHaveOvertakenSaysSo_data();
    void aListThatChangesHaveOvertakenSaysSo();
    void withoutAListNothingIsOvertaken();
    void whatIsOnlyOpenedOvertakesNothing();
    void whatIsTakenBackOvertakesNothing();
    void aRowWhoseTextHasGoneIsToldOf_data();
    void aRowWhoseTextHasGoneIsToldOf();
    void aRowOfASignalThatIsSwitchedOffLeadsToItsPage_data();
    void aRowOfASignalThatIsSwitchedOffLeadsToItsPage();
    void theStatusIsSeenWhole_data();
    void theStatusIsSeenWhole();

private:
    AxisTable* addAxis(const char* name, const char* pin) const { return program->addAxis(text(name), text(pin)); }
    void setPin(const char* axis, const char* pin) const
    {
        program->axis(text(axis))->setProperty(text("PosLimitPin"), text(pin));
    }
    void ask(bool uses) const { uses ? program->findReferences(text("Main.stop")) : program->search(text("stop")); }
    void open(int row, bool byMouse) const;
    void next() const { program->press(Qt::Key_F3); }
    QString here() const { return program->currentAxis() + QLatin1Char(' ') + FindProgram::focus(); }

    std::unique_ptr<FindProgram> program;
    std::unique_ptr<MessageBoxWatcher> boxes;
    const QString overtaken = text(" The project has changed since; F3 searches again.");
};

void FindListTest::init()
{
    boxes = std::make_unique<MessageBoxWatcher>();
    program = std::make_unique<FindProgram>();
    program->create(text("Line"), {});
    program->project()->sourceModel()->setSource(
        text("Main"), text("PROGRAM Main\nVAR\n  stop, stop2, near, far : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
}

void FindListTest::cleanup()
{
    program.reset();
    const QStringList texts = boxes->texts();
    boxes.reset();
    QCOMPARE(texts, QStringList());
}

void FindListTest::open(int row, bool byMouse) const
{
    auto* list = program->child<QTreeWidget>("results");
    QTreeWidgetItem* item = list->topLevelItem(row);
    QVERIFY(item);
    if (byMouse) {
        const QPoint place(4, list->visualItemRect(item).center().y());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    } else {
        list->setCurrentItem(item);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Return);
    }
}

void FindListTest::aListThatChangesHaveOvertakenSaysSo_data()
{
    QTest::addColumn<bool>("uses");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("a text") << false << text("Places found: 2.") << text("Places found: 1.");
    QTest::newRow("uses") << true << text("Uses of Main.stop: 2.") << text("Uses of Main.stop: 1.");
}

void FindListTest::aListThatChangesHaveOvertakenSaysSo()
{
    QFETCH(bool, uses);
    QFETCH(QString, before);
    QFETCH(QString, after);
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    ask(uses);
    QCOMPARE(program->status(), before);
    setPin("Cut", "Main.far");
    QCOMPARE(program->status(), QString(before + overtaken));
    QVERIFY(program->child<QLabel>("status")->toolTip().contains(overtaken.trimmed()));
    open(1, true);
    QCOMPARE(here(), text("Turn lineEditPos"));
    QCOMPARE(program->status(), QString(before + overtaken));
    next();
    QCOMPARE(program->status(), after);
    setPin("Turn", "Main.far");
    ask(uses);
    QVERIFY2(!program->status().contains(overtaken), qPrintable(program->status()));
}

void FindListTest::withoutAListNothingIsOvertaken()
{
    addAxis("Cut", "Main.stop");
    setPin("Cut", "Main.far");
    QCOMPARE(program->status(), QString());
}

void FindListTest::whatIsOnlyOpenedOvertakesNothing()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->save();
    ask(true);
    open(1, true);
    open(0, false);
    QCOMPARE(here(), text("Cut lineEditPos"));
    QCOMPARE(program->status(), text("Uses of Main.stop: 2."));
}

void FindListTest::whatIsTakenBackOvertakesNothing()
{
    AxisTable* axis = addAxis("Cut", "Main.stop");
    ask(true);
    const QString before = program->status();
    const std::vector<std::function<void(bool)>> changes{
        [this](bool back) { setPin("Cut", back ? "Main.stop" : "Main.far"); },
        [this, axis](bool back) {
            QVERIFY(program->project()->axisModel()->renameAxisTable(axis->id(), text(back ? "Cut" : "Saw")));
        },
        [this](bool back) {
            SourceModel* sources = program->project()->sourceModel();
            back ? void(sources->removeSource(text("Aside")))
                 : sources->setSource(text("Aside"), text("PROGRAM Aside\nEND_PROGRAM\n"));
        },
    };
    for (const auto& change : changes) {
        change(false);
        QCOMPARE(program->status(), QString(before + overtaken));
        change(true);
        QCOMPARE(program->status(), before);
    }
}

void FindListTest::aRowWhoseTextHasGoneIsToldOf_data()
{
    QTest::addColumn<bool>("uses");
    QTest::addColumn<bool>("opened");
    QTest::addColumn<bool>("byMouse");
    QTest::addColumn<QString>("pin");
    for (const bool uses : { false, true }) {
        for (const bool opened : { false, true }) {
            for (const bool byMouse : { false, true }) {
                const char* of = uses ? "of uses" : "of a text";
                const char* axis = opened ? "of an open axis" : "of one never opened";
                const char* by = byMouse ? "by the mouse" : "by Return";
                QTest::addRow("%s, %s, %s", of, axis, by) << uses << opened << byMouse << text("Main.far");
                QTest::addRow("%s, %s, %s, its text goes on", of, axis, by)
                    << uses << opened << byMouse << text("Main.stop2");
            }
        }
    }
}

void FindListTest::aRowWhoseTextHasGoneIsToldOf()
{
    QFETCH(bool, uses);
    QFETCH(bool, opened);
    QFETCH(bool, byMouse);
    QFETCH(QString, pin);
    AxisTable* cut = addAxis("Cut", "Main.near");
    cut->setProperty(text("OrgSignalEnable"), text("TRUE"));
    cut->setProperty(text("OrgSignalPin"), text("Main.stop"));
    addAxis("Turn", "Main.stop");
    IEditor* editor = opened ? program->openAxis(text("Cut")) : nullptr;
    ask(uses);
    const QString before = program->status();
    QCOMPARE(program->results().size(), 2);
    cut->setProperty(text("OrgSignalPin"), pin);
    // Leaving a field stores what it shows.
    if (editor)
        editor->widget()->findChild<QLineEdit*>(text("lineEditOrg"))->setText(pin);
    open(0, byMouse);
    QCOMPARE(here(), text("Cut lineEditOrg"));
    QCOMPARE(program->status(), QString(text("Main.stop is not in use at this place any more.") + overtaken));
    open(1, byMouse);
    QCOMPARE(here(), text("Turn lineEditPos"));
    QCOMPARE(program->status(), QString(before + overtaken));
    // Opening a row does not search anew.
    QCOMPARE(program->results().size(), 2);
}

void FindListTest::aRowOfASignalThatIsSwitchedOffLeadsToItsPage_data()
{
    QTest::addColumn<bool>("uses");
    QTest::addColumn<bool>("opened");
    QTest::newRow("of a text, of an open axis") << false << true;
    QTest::newRow("of a text, of one never opened") << false << false;
    QTest::newRow("of uses, of an open axis") << true << true;
    QTest::newRow("of uses, of one never opened") << true << false;
}

void FindListTest::aRowOfASignalThatIsSwitchedOffLeadsToItsPage()
{
    QFETCH(bool, uses);
    QFETCH(bool, opened);
    AxisTable* cut = addAxis("Cut", "Main.stop");
    if (opened)
        program->openAxis(text("Cut"));
    ask(uses);
    cut->setProperty(text("PosLimitEnable"), text("FALSE"));
    open(0, true);
    QCOMPARE(program->currentAxis(), text("Cut"));
    QVERIFY(QApplication::focusWidget());
    QWidget* view = program->editors().currentEditor()->widget();
    QVERIFY2(view == QApplication::focusWidget() || view->isAncestorOf(QApplication::focusWidget()),
        qPrintable(FindProgram::focus()));
    const auto* page = view->findChild<QWidget*>(text("OriginReturnSetWidget"));
    QVERIFY(page);
    QVERIFY(page->isVisible());
    QCOMPARE(program->status(), QString(text("Main.stop is not in use at this place any more.") + overtaken));
}

void FindListTest::theStatusIsSeenWhole_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("in the window as it comes up") << QSize(1280, 800);
    QTest::newRow("in a small window") << QSize(900, 700);
    QTest::newRow("in a large window") << QSize(1900, 1000);
}

/// The number of uses stands at the end of a long sentence.
void FindListTest::theStatusIsSeenWhole()
{
    QFETCH(QSize, size);
    program->project()->sourceModel()->setSource(text("Main"),
        text("PROGRAM Main\nVAR n : INT; row : ARRAY [1..3] OF Guard; END_VAR\nEND_PROGRAM\n"
             "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE\n"));
    addAxis("Cut", "Main.row[n].open");
    program->workbench->window().resize(size);
    program->press(Qt::Key_F, Qt::ControlModifier);
    program->findReferences(text("Main.row[n].open"));
    setPin("Cut", "Main.far");
    const auto* label = program->child<QLabel>("status");
    QVERIFY2(label->text().endsWith(overtaken), qPrintable(label->text()));
    const auto isSeen = [label] {
        const QRect needed = label->fontMetrics().boundingRect(
            QRect(0, 0, label->contentsRect().width(), 10000), Qt::TextWordWrap, label->text());
        return label->isVisible() && needed.width() <= label->contentsRect().width()
            && needed.height() <= label->contentsRect().height();
    };
    QTRY_VERIFY(isSeen());
    QTRY_VERIFY(program->child<QTreeWidget>("results")->viewport()->height() > 20);
    for (const char* name : { "find", "references" }) {
        const auto* button = program->child<QPushButton>(name);
        QVERIFY2(button->height() >= button->minimumSizeHint().height(),
            qPrintable(QStringLiteral("%1: %2 of %3")
                           .arg(button->text())
                           .arg(button->height())
                           .arg(button->minimumSizeHint().height())));
    }
}

QTEST_MAIN(FindListTest)
#include "FindListTest.moc"
