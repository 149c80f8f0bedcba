#include "pages/PinCheck.h"

#include "axisdata/UserMessage.h"
#include "host/components/DataVerification.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/Symbol.h"

#include <QObject>
#include <QRegularExpression>

namespace {

bool refuse(const QString& message)
{
    showInformation(message);
    return false;
}

bool checkAddress(const QString& text)
{
    const DataVerification& verification = DataVerification::getInstance();
    QString address = text;
    if (verification.isValidIecAddress(address, true, true)
        && verification.isValidAddrAndType(text, QStringLiteral("BOOL")))
        return true;
    return refuse(QObject::tr(" not a valid bit address!"));
}

/// A bare name, or one that ends in a number, which would be a bit of a word.
bool isIncompletePath(const QString& text)
{
    static const QRegularExpression number(QStringLiteral("^[0-9]+$"));
    return !text.contains(QLatin1Char('.')) || number.match(text.split(QLatin1Char('.')).last()).hasMatch();
}

} // namespace

bool checkPinText(const QString& projectName, const QString& text)
{
    const SafeAccore core(projectName.toStdString(), false);
    if (!core)
        return false;
    const ac::ProgramStyle style = core->getProgramStyle();
    const ac::SymbolDataType* symbol = core->type(text.toStdString());
    if (!symbol || style == ac::AddressStyle)
        return checkAddress(text);
    if (isIncompletePath(text))
        return refuse(text + QObject::tr("Please enter the complete application path of the variable!"));
    if (symbol->dataType() == ac::Bool)
        return true;
    return refuse(text + QObject::tr(" is not of Boolean type!"));
}
