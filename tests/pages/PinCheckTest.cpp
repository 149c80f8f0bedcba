#include "pages/PinCheck.h"
#include "host/projectmodel/ProjectModel.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QPushButton>
#include <QtTest>

namespace {

const char* const program = R"(PROGRAM Main
VAR
    flag : BOOL;
    counter : INT;
    bits : WORD;
    guard : Guard;
END_VAR
END_PROGRAM
)";

const char* const types = R"(TYPE Guard : STRUCT
    open : BOOL;
    count : INT;
END_STRUCT
END_TYPE
)";

const char* const globals = R"(VAR_GLOBAL
    bare : BOOL;
END_VAR
)";

} // namespace

class PinCheckTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void textsAreJudged_data();
    void textsAreJudged();
    void inAddressStyleOnlyAddressesPass();
    void withoutAProjectEverythingIsRefusedInSilence();
    void aSourceThatDoesNotParseLeavesAddressesValid();
    void theBoxIsTheHousesInformationBox();
    void theOneButtonIsTheDefaultAndEscapeTakesIt_data();
    void theOneButtonIsTheDefaultAndEscapeTakesIt();
    void markupIsShownAsItStands();

private:
    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    std::unique_ptr<MessageBoxWatcher> m_boxes;
};

void PinCheckTest::init()
{
    m_host = std::make_unique<TestHost>();
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_project->addSource(QStringLiteral("Types"), QString::fromLatin1(types));
    m_project->addSource(QStringLiteral("Main"), QString::fromLatin1(program));
    m_project->addSource(QStringLiteral("Signals"), QString::fromLatin1(globals));
    m_boxes = std::make_unique<MessageBoxWatcher>();
}

void PinCheckTest::cleanup()
{
    m_boxes.reset();
    m_project.reset();
    m_host.reset();
}

void PinCheckTest::textsAreJudged_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    const QString noBit = QStringLiteral(" not a valid bit address!");
    const QString incomplete = QStringLiteral("Please enter the complete application path of the variable!");
    const QString noBool = QStringLiteral(" is not of Boolean type!");
    QTest::newRow("a bit address") << "%IX100.0" << QString();
    QTest::newRow("an output bit") << "%QX0.0" << QString();
    QTest::newRow("a word address") << "%IW0" << noBit;
    QTest::newRow("an unknown name") << "abc" << noBit;
    QTest::newRow("an unknown path") << "Main.missing" << noBit;
    QTest::newRow("nothing") << "" << noBit;
    QTest::newRow("blanks") << "   " << noBit;
    QTest::newRow("ten thousand characters") << QString(10000, QLatin1Char('a')) << noBit;
    QTest::newRow("a percent sign") << "%" << noBit;
    QTest::newRow("an area and a size") << "%IX" << noBit;
    QTest::newRow("a number that is too large") << "%IX99999999999.9" << noBit;
    QTest::newRow("two points") << ".." << noBit;
    QTest::newRow("a point first") << ".a" << noBit;
    QTest::newRow("a point last") << "a." << noBit;
    QTest::newRow("an empty segment") << "Main..flag" << noBit;
    QTest::newRow("other letters") << QString::fromUtf8("开关") << noBit;
    QTest::newRow("a line break") << "Main.\nflag" << noBit;
    QTest::newRow("a BOOL of a program") << "Main.flag" << QString();
    QTest::newRow("a BOOL in a structure") << "Main.guard.open" << QString();
    QTest::newRow("a BOOL of a global list") << "Signals.bare" << QString();
    QTest::newRow("a bare BOOL global") << "bare" << QString(QStringLiteral("bare") + incomplete);
    QTest::newRow("an INT") << "Main.counter" << QString(QStringLiteral("Main.counter") + noBool);
    QTest::newRow("a structure") << "Main.guard" << QString(QStringLiteral("Main.guard") + noBool);
    QTest::newRow("a bit of a word") << "Main.bits.3" << QString(QStringLiteral("Main.bits.3") + incomplete);
}

void PinCheckTest::textsAreJudged()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    QCOMPARE(checkPinText(m_project->name(), text), message.isEmpty());
    QCOMPARE(m_boxes->texts(), message.isEmpty() ? QStringList() : QStringList(message));
}

void PinCheckTest::inAddressStyleOnlyAddressesPass()
{
    m_project->model()->setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
    QVERIFY(checkPinText(m_project->name(), QStringLiteral("%IX1.7")));
    QVERIFY(!checkPinText(m_project->name(), QStringLiteral("Main.flag")));
    QVERIFY(!checkPinText(m_project->name(), QStringLiteral("bare")));
    QCOMPARE(m_boxes->texts(),
        QStringList({ QStringLiteral(" not a valid bit address!"), QStringLiteral(" not a valid bit address!") }));
}

void PinCheckTest::withoutAProjectEverythingIsRefusedInSilence()
{
    QVERIFY(!checkPinText(QStringLiteral("Nowhere"), QStringLiteral("%IX0.0")));
    QCOMPARE(m_boxes->count(), 0);
}

void PinCheckTest::aSourceThatDoesNotParseLeavesAddressesValid()
{
    m_project->addSource(QStringLiteral("Broken"), QStringLiteral("PROGRAM Broken VAR x : ; ((("));
    QVERIFY(checkPinText(m_project->name(), QStringLiteral("%IX1.7")));
    QVERIFY(checkPinText(m_project->name(), QStringLiteral("Main.flag")));
}

void PinCheckTest::theBoxIsTheHousesInformationBox()
{
    checkPinText(m_project->name(), QStringLiteral("abc"));
    const MessageBoxWatcher::Box box = m_boxes->boxes.first();
    QCOMPARE(box.title, QStringLiteral("Kestrun"));
    QCOMPARE(box.buttons, QStringList({ QStringLiteral("OK") }));
    QCOMPARE(box.icon, QMessageBox::Information);
    QVERIFY(!box.hasParent);
}

void PinCheckTest::theOneButtonIsTheDefaultAndEscapeTakesIt_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return presses the default button") << int(Qt::Key_Return);
    QTest::newRow("Escape takes the only one there is") << int(Qt::Key_Escape);
}

void PinCheckTest::theOneButtonIsTheDefaultAndEscapeTakesIt()
{
    QFETCH(int, key);
    bool isDefault = false;
    bool isPressed = false;
    bool isOpen = true;
    m_boxes->meanwhile([&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        QAbstractButton* ok = box->buttons().first();
        isDefault = box->defaultButton() == ok;
        connect(ok, &QAbstractButton::clicked, this, [&] { isPressed = true; });
        QTest::keyClick(box, Qt::Key(key));
        isOpen = box->isVisible();
    });
    QVERIFY(!checkPinText(m_project->name(), QStringLiteral("abc")));
    QVERIFY(isDefault);
    QVERIFY(isPressed);
    QVERIFY(!isOpen);
}

void PinCheckTest::markupIsShownAsItStands()
{
    // No name of a variable can hold markup, so the text is shown by way of a known one.
    m_boxes->meanwhile([] {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        QCOMPARE(box->textFormat(), Qt::PlainText);
    });
    checkPinText(m_project->name(), QStringLiteral("Main.counter"));
    QCOMPARE(m_boxes->count(), 1);
}

QTEST_MAIN(PinCheckTest)
#include "PinCheckTest.moc"
