#include "tests/pages/TypingPage.h"

#include <cmath>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

QVector<QPair<QString, QString>> textsFor(const CheckedField& field, const QString& text)
{
    QVector<QPair<QString, QString>> texts{ { latin(field.key), text } };
    if (field.lowKey)
        texts.append({ latin(field.lowKey), QString::number(field.low) });
    if (field.highKey)
        texts.append({ latin(field.highKey), QString::number(field.high) });
    return texts;
}

} // namespace

bool CheckedField::excludesStored() const
{
    return latin(key).startsWith(QLatin1String("SoftLimit"));
}

bool CheckedField::takes(double number) const
{
    if (!std::isfinite(number) || number < low || number > high)
        return false;
    const double excluded = lowKey ? low : high;
    return !excludesStored() || number < excluded || number > excluded;
}

TypingPage::TypingPage(const QVector<QPair<QString, QString>>& texts, bool rotating)
    : ModePage(QStringLiteral("Axis_EtherCAT"))
{
    store(QStringLiteral("SoftLimitEnable"), QStringLiteral("TRUE"));
    store(QStringLiteral("ModeSet"), rotating ? QStringLiteral("TRUE") : QStringLiteral("FALSE"));
    store(QStringLiteral("CompareOutEnable"), QStringLiteral("TRUE"));
    for (const auto& text : texts)
        store(text.first, text.second);
    openWindow();
    for (const char* hidden : { "lineEdit_5", "lineEdit_13", "lineEdit_14" })
        reveal(hidden);
}

TypingPage::TypingPage(const CheckedField& field, const QString& text)
    : TypingPage(textsFor(field, text), latin(field.key) == QLatin1String("RotationPeriod"))
{
}
