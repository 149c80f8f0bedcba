#include "tests/pages/TypingPage.h"
#include "tests/support/NumberTyping.h"

#include <QTest>

#include <cmath>

namespace {

/// What is stored before each attempt: inside all bounds but those of the positive limit, and in no normal form.
const QString former = QStringLiteral("0040");

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

/// Text of a field and of its key.
struct Pair {
    QString shown;
    QString stored;

    bool operator==(const Pair& other) const { return shown == other.shown && stored == other.stored; }
};

QByteArray describe(const NumberTyping::Attempt& attempt, const QString& left, const Pair& found)
{
    return attempt.name() + " left " + left.left(20).toUtf8() + ", shown " + found.shown.left(20).toUtf8() + ", stored "
        + found.stored.left(20).toUtf8();
}

/// Puts each piece of rubbish into a field and leaves it by Tab. The function says, for what the field took of it, what
/// field and record hold then; a text that is no finished number commits nothing and stays.
template <typename Expected>
void tryAll(TypingPage& page, const char* name, const char* key, Expected expected)
{
    QLineEdit* edit = page.edit(name);
    for (const NumberTyping::Attempt& attempt : NumberTyping::attempts()) {
        page.store(latin(key), former);
        edit->setText(former);
        const NumberTyping::Taken taken = NumberTyping::enterAndTab(edit, attempt);
        const Pair found{ edit->text(), page.stored(latin(key)) };
        const Pair wanted = taken.finished ? expected(taken.left) : Pair{ taken.left, former };
        QVERIFY2(found == wanted, describe(attempt, taken.left, found).constData());
    }
}

} // namespace

/// What people and clipboards put into numeric fields.
class ModelAndParamtSetWidgetRubbishTest : public QObject {
    Q_OBJECT

private slots:
    void checkedFieldsHoldTheirBounds_data();
    void checkedFieldsHoldTheirBounds();
    void freeFieldsWriteWhatTheyShow_data();
    void freeFieldsWriteWhatTheyShow();
    void filterTimeHoldsItsBounds();
    void widthHoldsItsBounds_data();
    void widthHoldsItsBounds();
    void whatTheFieldTakes_data();
    void whatTheFieldTakes();
};

void ModelAndParamtSetWidgetRubbishTest::checkedFieldsHoldTheirBounds_data()
{
    QTest::addColumn<int>("field");
    for (int i = 0; i < int(std::size(checkedFields)); ++i)
        QTest::newRow(checkedFields[i].key) << i;
}

void ModelAndParamtSetWidgetRubbishTest::checkedFieldsHoldTheirBounds()
{
    QFETCH(int, field);
    const CheckedField& row = checkedFields[field];
    TypingPage page(row, former);
    tryAll(page, row.name, row.key, [&](const QString& left) {
        const double number = left.toDouble();
        const QString normal = QString::number(number, 'f', 6);
        return row.takes(number) ? Pair{ normal, normal } : Pair{ former, former };
    });
}

void ModelAndParamtSetWidgetRubbishTest::freeFieldsWriteWhatTheyShow_data()
{
    QTest::addColumn<QString>("name");
    for (const FreeField& field : freeFields)
        QTest::newRow(field.key) << latin(field.name);
}

void ModelAndParamtSetWidgetRubbishTest::freeFieldsWriteWhatTheyShow()
{
    QFETCH(QString, name);
    TypingPage page;
    QLineEdit* edit = page.edit(name.toLatin1());
    for (const NumberTyping::Attempt& attempt : NumberTyping::attempts()) {
        const QString left = NumberTyping::enterAndTab(edit, attempt).left;
        const Pair found{ edit->text(), page.stored(latin(QTest::currentDataTag())) };
        const Pair wanted{ left, QString::number(left.toDouble(), 'f', 6) };
        QVERIFY2(found == wanted, describe(attempt, left, found).constData());
    }
}

void ModelAndParamtSetWidgetRubbishTest::filterTimeHoldsItsBounds()
{
    TypingPage page;
    tryAll(page, "lineEdit_13", "InputSignalFilterTime", [](const QString& left) {
        const auto number = static_cast<quint32>(left.toLongLong());
        return number <= 150 ? Pair{ left, left } : Pair{ former, former };
    });
}

void ModelAndParamtSetWidgetRubbishTest::widthHoldsItsBounds_data()
{
    QTest::addColumn<bool>("milliseconds");
    QTest::newRow("in user units") << false;
    QTest::newRow("in milliseconds") << true;
}

void ModelAndParamtSetWidgetRubbishTest::widthHoldsItsBounds()
{
    QFETCH(bool, milliseconds);
    TypingPage page({ { latin("CompareOutputWidthUnit"), milliseconds ? latin("TRUE") : latin("FALSE") } });
    tryAll(page, "lineEdit_14", "CompareOutputWidth", [&](const QString& left) {
        const float number = left.toFloat();
        if (!std::isfinite(number) || number < 0 || number > 65535)
            return Pair{ milliseconds ? latin("40") : latin("40.0"), former };
        const QString normal = QString::number(number, 'f', 1);
        return Pair{ milliseconds ? QString(QChar(0)) : normal, normal };
    });
}

void ModelAndParamtSetWidgetRubbishTest::whatTheFieldTakes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("how");
    QTest::addColumn<QString>("real");
    QTest::addColumn<QString>("whole");
    QTest::addColumn<QString>("tenths");
    const auto row = [](const char* name, const QString& text, NumberTyping::How how, const char* real,
                         const char* whole, const char* tenths) {
        QTest::newRow(name) << text << int(how) << latin(real) << latin(whole) << latin(tenths);
    };
    const QString comma = latin("1,5");
    const QString exponent = latin("1e3");
    const QString wide = QStringLiteral("\uff11\uff12\uff13");
    const QString lines = latin("12\n34");
    row("a typed comma is left out", comma, NumberTyping::Keys, "15", "15", "15");
    row("a pasted comma refuses the text", comma, NumberTyping::Paste, "", "", "");
    row("a composed comma refuses the text", comma, NumberTyping::InputMethod, "", "", "");
    row("a typed exponent is left out", exponent, NumberTyping::Keys, "13", "13", "13");
    row("a pasted exponent refuses the text", exponent, NumberTyping::Paste, "", "", "");
    row("typed full-width digits are left out", wide, NumberTyping::Keys, "", "", "");
    row("pasted full-width digits refuse the text", wide, NumberTyping::Paste, "", "", "");
    row("a typed line break is no character", lines, NumberTyping::Keys, "1234", "1234", "1234");
    row("a pasted line break refuses the text", lines, NumberTyping::Paste, "", "", "");
    row("a typed point is for reals", latin("1.55"), NumberTyping::Keys, "1.55", "155", "1.5");
    row("a pasted point is for reals", latin("1.5"), NumberTyping::Paste, "1.5", "", "1.5");
    row("a seventh digit is left out", latin("1.1234567"), NumberTyping::Keys, "1.123456", "11234567", "1.1");
}

void ModelAndParamtSetWidgetRubbishTest::whatTheFieldTakes()
{
    QFETCH(QString, text);
    QFETCH(int, how);
    QFETCH(QString, real);
    QFETCH(QString, whole);
    QFETCH(QString, tenths);
    TypingPage page;
    const auto taken = [&](const char* name) {
        NumberTyping::enter(page.edit(name), text, NumberTyping::How(how));
        return page.edit(name)->text();
    };
    QCOMPARE(taken("lineEdit_3"), real);
    QCOMPARE(taken("lineEdit_9"), real);
    QCOMPARE(taken("lineEdit_13"), whole);
    QCOMPARE(taken("lineEdit_14"), tenths);
}

QTEST_MAIN(ModelAndParamtSetWidgetRubbishTest)
#include "ModelAndParamtSetWidgetRubbishTest.moc"
