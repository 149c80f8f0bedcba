#include "axisdata/NumberRule.h"

#include "axisdata/AxisRecord.h"
#include "axisdata/DoubleValidator.h"
#include "axisdata/RegExpValidator.h"
#include "tests/support/TestProject.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QtTest>

#include <memory>

namespace {

/// A field with its commit rule, as pages wire it, and a neighbour that can take the focus.
struct Form : QWidget {
    Form(const NumberRule& rule, const QString& key, const QString& projectName, quint32 axisId)
        : field(new QLineEdit(this)), neighbour(new QLineEdit(this))
    {
        auto* row = new QHBoxLayout(this);
        row->addWidget(field);
        row->addWidget(neighbour);
        field->setValidator(validatorOf(rule.kind));
        const AxisRecord record(projectName, axisId);
        field->setText(record ? record.text(key) : QString());
        QObject::connect(field, &QLineEdit::editingFinished, this,
            [=] { results.append(commitNumber(*field, rule, key, projectName, axisId)); });
    }

    QValidator* validatorOf(NumberKind kind)
    {
        switch (kind) {
        case NumberKind::Real:
            return new DoubleValidator(6, this);
        case NumberKind::Tenths:
            return new DoubleValidator(1, this);
        case NumberKind::Hexadecimal:
            return new RegExpValidator(RegExpValidator::hexadecimalPattern(), this);
        case NumberKind::Unsigned:
        case NumberKind::NarrowedUnsigned:
            break;
        }
        return new RegExpValidator(RegExpValidator::decimalPattern(), this);
    }

    bool show()
    {
        QWidget::show();
        field->setFocus();
        return QTest::qWaitForWindowActive(this);
    }

    void type(const QString& text)
    {
        field->setFocus();
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
    }

    /// Types a text and leaves the field with Tab.
    void enter(const QString& text)
    {
        type(text);
        QTest::keyClick(field, Qt::Key_Tab);
    }

    QLineEdit* field;
    QLineEdit* neighbour;
    QVector<CommitResult> results;
};

const QString realKey = QStringLiteral("HomeSpeed");

} // namespace

using RulePointer = std::shared_ptr<NumberRule>;
Q_DECLARE_METATYPE(RulePointer)

class NumberRuleTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void commits_data();
    void commits();
    void returnStoresNothing();
    void leavingByAClickCommits();
    void refusalLeavesTheFocusAlone();
    void refusalShowsTheStoredTextUnformatted();
    void boundsComeFromTheRecordNotFromTheOtherField();
    void conflictingPairIsHeldToTheBoundAndNotCorrected();
    void missingRecordEndsSilently();
    void storeOfAPageOfItsOwn();
    void storeIsNotAskedWhileTheFieldHasTheFocus();
    void realsAreWrittenInFixedNotation_data();
    void realsAreWrittenInFixedNotation();

private:
    AxisRecord record() const { return AxisRecord(m_project->name(), m_id); }

    std::unique_ptr<TestProject> m_project;
    quint32 m_id = 0;
};

void NumberRuleTest::init()
{
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_id = m_project->addAxis(QStringLiteral("Feeder"))->id();
}

void NumberRuleTest::cleanup()
{
    m_project.reset();
}

void NumberRuleTest::commits_data()
{
    QTest::addColumn<RulePointer>("rule");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");

    const QString before = QStringLiteral("7");
    const auto accepted = [](const char* name, const NumberRule& rule, const char* typed, const char* stored) {
        QTest::newRow(name) << std::make_shared<NumberRule>(rule) << QString::fromLatin1(typed)
                            << QString::fromLatin1(stored) << QString::fromLatin1(stored);
    };
    const auto refused = [&before](const char* name, const NumberRule& rule, const char* typed) {
        QTest::newRow(name) << std::make_shared<NumberRule>(rule) << QString::fromLatin1(typed) << before << before;
    };

    const NumberRule positive{ NumberKind::Real, 0.01, 9999999 };
    accepted("a real is normalised to six digits", positive, "1.5", "1.500000");
    accepted("a real at the low bound is stored", positive, "0.01", "0.010000");
    accepted("a real at the high bound is stored", positive, "9999999", "9999999.000000");
    refused("a real below the low bound is refused", positive, "0.009999");
    refused("a real above the high bound is refused", positive, "9999999.000001");
    refused("0 is refused by a bound above it", positive, "0");
    refused("a lone minus counts as 0 and is refused", positive, "-");
    refused("a lone point counts as 0 and is refused", positive, ".");
    refused("a lone plus counts as 0 and is refused", positive, "+");
    refused("an empty text counts as 0 and is refused", positive, "");

    const NumberRule fromZero{ NumberKind::Real, 0, 9999999 };
    accepted("0 is stored where it is in range", fromZero, "0", "0.000000");
    accepted("an empty text is stored as 0 where 0 is in range", fromZero, "", "0.000000");
    accepted("a lone minus is stored as 0 where 0 is in range", fromZero, "-", "0.000000");
    refused("a negative real is refused from 0 on", fromZero, "-0.000001");

    const NumberRule symmetric{ NumberKind::Real, -9999999, 9999999 };
    accepted("the lowest negative real is stored", symmetric, "-9999999", "-9999999.000000");
    refused("a real below the lowest is refused", symmetric, "-9999999.000001");

    const NumberRule softNegative{ NumberKind::Real, -9999999,
        NumberBound::stored(QStringLiteral("SoftLimitPos"), true) };
    accepted("a real below an excluded stored bound is stored", softNegative, "999.999999", "999.999999");
    refused("a real at an excluded stored high bound is refused", softNegative, "1000");
    const NumberRule softPositive{ NumberKind::Real, NumberBound::stored(QStringLiteral("SoftLimitNeg"), true),
        9999999 };
    accepted("a real above an excluded stored bound is stored", softPositive, "0.000001", "0.000001");
    refused("a real at an excluded stored low bound is refused", softPositive, "0");
    const NumberRule jog{ NumberKind::Real, 0.01, NumberBound::stored(QStringLiteral("MaxVel")) };
    accepted("a real at an included stored bound is stored", jog, "10", "10.000000");
    refused("a real above an included stored bound is refused", jog, "10.000001");
    const NumberRule homing{ NumberKind::Real, NumberBound::stored(QStringLiteral("HomeCloseSpeed")), 9999999 };
    accepted("a real at an included stored low bound is stored", homing, "1", "1.000000");
    refused("a real below an included stored low bound is refused", homing, "0.999999");
    const NumberRule unreadable{ NumberKind::Real, NumberBound::stored(QStringLiteral("HomeMode")), 10 };
    accepted("a stored bound that is no number counts as 0", unreadable, "0", "0.000000");

    const NumberRule ratio{ NumberKind::Unsigned, 1, 2147483647 };
    accepted("a whole number is stored as typed", ratio, "0012", "0012");
    accepted("the largest whole number is stored", ratio, "2147483647", "2147483647");
    refused("a whole number above the largest is refused", ratio, "2147483648");
    refused("a number past 32 bits counts as 0 and is refused", ratio, "4294967296");
    refused("a minus makes it 0 and is refused", ratio, "-3");
    refused("0 is refused from 1 on", ratio, "0");
    refused("an empty whole number is refused from 1 on", ratio, "");

    const NumberRule hexadecimal{ NumberKind::Hexadecimal, 1, 2147483647 };
    accepted("a hexadecimal number is stored as typed", hexadecimal, "fF", "fF");
    accepted("the largest hexadecimal number is stored", hexadecimal, "7fffffff", "7fffffff");
    refused("a hexadecimal number above the largest is refused", hexadecimal, "80000000");
    refused("an empty hexadecimal number is refused from 1 on", hexadecimal, "");

    const NumberRule tenths{ NumberKind::Tenths, 0.0, 65535.0 };
    accepted("tenths are normalised to one digit", tenths, "2", "2.0");
    accepted("tenths at the high bound are stored", tenths, "65535", "65535.0");
    refused("tenths above the high bound are refused", tenths, "65535.1");
    refused("negative tenths are refused", tenths, "-0.1");

    const NumberRule filter{ NumberKind::NarrowedUnsigned, 0, 150 };
    accepted("a narrowed number is stored as typed", filter, "150", "150");
    refused("a narrowed number above the bound is refused", filter, "151");
    refused("-1 arrives as 4294967295 and is refused", filter, "-1");
    accepted("4294967296 arrives as 0 and is stored as typed", filter, "4294967296", "4294967296");
    accepted("an empty text arrives as 0 and is stored empty", filter, "", "");
    accepted("a lone minus arrives as 0 and is stored as typed", filter, "-", "-");
}

void NumberRuleTest::commits()
{
    QFETCH(RulePointer, rule);
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    record().set(QStringLiteral("HomeTimeOut"), QStringLiteral("7"));
    Form form(*rule, QStringLiteral("HomeTimeOut"), m_project->name(), m_id);
    QVERIFY(form.show());
    form.enter(typed);
    QCOMPARE(form.results.size(), 1);
    QCOMPARE(record().text(QStringLiteral("HomeTimeOut")), stored);
    QCOMPARE(form.field->text(), shown);
    QCOMPARE(form.results.first() == CommitResult::Refused, stored == QLatin1String("7"));
}

void NumberRuleTest::returnStoresNothing()
{
    Form form({ NumberKind::Real, 0, 9999999 }, realKey, m_project->name(), m_id);
    QVERIFY(form.show());
    form.type(QStringLiteral("25"));
    QTest::keyClick(form.field, Qt::Key_Return);
    QCOMPARE(form.results, QVector<CommitResult>{ CommitResult::StillEditing });
    QCOMPARE(record().text(realKey), QStringLiteral("10"));
    QCOMPARE(form.field->text(), QStringLiteral("25"));
    QTest::keyClicks(form.field, QStringLiteral("0"));
    QTest::keyClick(form.field, Qt::Key_Tab);
    QCOMPARE(record().text(realKey), QStringLiteral("250.000000"));
}

void NumberRuleTest::leavingByAClickCommits()
{
    Form form({ NumberKind::Real, 0, 9999999 }, realKey, m_project->name(), m_id);
    QVERIFY(form.show());
    form.type(QStringLiteral("25"));
    QTest::mouseClick(form.neighbour, Qt::LeftButton);
    QCOMPARE(record().text(realKey), QStringLiteral("25.000000"));
    QCOMPARE(form.field->text(), QStringLiteral("25.000000"));
}

void NumberRuleTest::refusalLeavesTheFocusAlone()
{
    Form form({ NumberKind::Real, 0.01, 9999999 }, realKey, m_project->name(), m_id);
    QVERIFY(form.show());
    form.enter(QStringLiteral("0"));
    QVERIFY(form.neighbour->hasFocus());
}

void NumberRuleTest::refusalShowsTheStoredTextUnformatted()
{
    record().set(realKey, QStringLiteral("12.5"));
    Form form({ NumberKind::Real, 0.01, 9999999 }, realKey, m_project->name(), m_id);
    QVERIFY(form.show());
    form.enter(QStringLiteral("0"));
    QCOMPARE(form.field->text(), QStringLiteral("12.5"));
    QCOMPARE(record().text(realKey), QStringLiteral("12.5"));
}

void NumberRuleTest::boundsComeFromTheRecordNotFromTheOtherField()
{
    Form form({ NumberKind::Real, 0.01, NumberBound::stored(QStringLiteral("HomeSpeed")) },
        QStringLiteral("HomeCloseSpeed"), m_project->name(), m_id);
    form.neighbour->setText(QStringLiteral("100"));
    QVERIFY(form.show());
    form.enter(QStringLiteral("50"));
    QCOMPARE(record().text(QStringLiteral("HomeCloseSpeed")), QStringLiteral("1"));
    record().set(QStringLiteral("HomeSpeed"), QStringLiteral("60"));
    form.enter(QStringLiteral("50"));
    QCOMPARE(record().text(QStringLiteral("HomeCloseSpeed")), QStringLiteral("50.000000"));
    QCOMPARE(record().text(QStringLiteral("HomeSpeed")), QStringLiteral("60"));
}

void NumberRuleTest::conflictingPairIsHeldToTheBoundAndNotCorrected()
{
    const QString key = QStringLiteral("JogMaxVel");
    Form form({ NumberKind::Real, 0.01, NumberBound::stored(QStringLiteral("MaxVel")) }, key, m_project->name(), m_id);
    QVERIFY(form.show());
    QCOMPARE(form.field->text(), QStringLiteral("500"));
    form.enter(QStringLiteral("20"));
    QCOMPARE(form.field->text(), QStringLiteral("500"));
    QCOMPARE(record().text(key), QStringLiteral("500"));
    form.enter(QStringLiteral("9"));
    QCOMPARE(record().text(key), QStringLiteral("9.000000"));
    QCOMPARE(record().text(QStringLiteral("MaxVel")), QStringLiteral("10"));
}

void NumberRuleTest::missingRecordEndsSilently()
{
    Form form({ NumberKind::Real, 0.01, 9999999 }, realKey, m_project->name(), 4711);
    QVERIFY(form.show());
    form.enter(QStringLiteral("0"));
    QCOMPARE(form.results, QVector<CommitResult>{ CommitResult::StillEditing });
    QCOMPARE(form.field->text(), QStringLiteral("0"));
}

void NumberRuleTest::storeOfAPageOfItsOwn()
{
    QLineEdit field;
    QString good = QStringLiteral("5");
    const NumberStore store{ [&] { return good; }, [&](const QString& text) { good = text; },
        [](const QString& key) { return key == QLatin1String("Top") ? QStringLiteral("20") : QString(); } };
    const NumberRule rule{ NumberKind::Real, 1, NumberBound::stored(QStringLiteral("Top")) };
    field.setText(QStringLiteral("20"));
    QCOMPARE(commitNumber(field, rule, store), CommitResult::Stored);
    QCOMPARE(good, QStringLiteral("20.000000"));
    QCOMPARE(field.text(), good);
    field.setText(QStringLiteral("21"));
    QCOMPARE(commitNumber(field, rule, store), CommitResult::Refused);
    QCOMPARE(good, QStringLiteral("20.000000"));
    QCOMPARE(field.text(), good);
}

void NumberRuleTest::storeIsNotAskedWhileTheFieldHasTheFocus()
{
    QLineEdit field(QStringLiteral("3"));
    field.show();
    QVERIFY(QTest::qWaitForWindowActive(&field));
    field.setFocus();
    QVERIFY(field.hasFocus());
    int asked = 0;
    const NumberStore store{ [&] { return ++asked, QString(); }, [&](const QString&) { ++asked; },
        [&](const QString&) { return ++asked, QString(); } };
    QCOMPARE(commitNumber(field, { NumberKind::Real, 0, 1 }, store), CommitResult::StillEditing);
    QCOMPARE(asked, 0);
    QCOMPARE(field.text(), QStringLiteral("3"));
}

void NumberRuleTest::realsAreWrittenInFixedNotation_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 1000.0 << QStringLiteral("1000.000000");
    QTest::newRow("large") << 9999999.0 << QStringLiteral("9999999.000000");
    QTest::newRow("small") << 0.000001 << QStringLiteral("0.000001");
    QTest::newRow("rounded") << 0.0000006 << QStringLiteral("0.000001");
    QTest::newRow("negative") << -2.25 << QStringLiteral("-2.250000");
}

void NumberRuleTest::realsAreWrittenInFixedNotation()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(realText(value), text);
    QCOMPARE(realText(value), QString::number(value, 'f', 6));
}

QTEST_MAIN(NumberRuleTest)
#include "NumberRuleTest.moc"
