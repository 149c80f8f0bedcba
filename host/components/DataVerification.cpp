#include "host/components/DataVerification.h"

#include "host/components/ExactNumber.h"
#include "host/components/IecAddress.h"
#include "host/components/NumberRefusalNotifier.h"
#include "host/components/ProjectVariables.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/Keywords.h"
#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/Symbol.h"
#include "host/projectmodel/AbstractProjectModel.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/SafeProjectModel.h"

#include <QRegularExpression>

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace {

constexpr int longestName = 80;

bool sameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// Is there a symbol of one of the kinds with that name in the project?
bool isSymbol(const QString& name, const QString& projectName, std::initializer_list<ac::SymbolKind> kinds)
{
    const SafeAccore core(projectName.toStdString(), false);
    if (!core)
        return false;
    std::vector<ac::Symbol*> symbols;
    for (const ac::SymbolKind kind : kinds)
        core->allSymbols(kind, symbols);
    return std::any_of(symbols.begin(), symbols.end(),
        [&name](const ac::Symbol* symbol) { return sameName(QString::fromStdString(symbol->name()), name); });
}

bool isWithin(const QVariant& value, const QVariant& low, const QVariant& high, bool lowExcluded, bool highExcluded)
{
    const auto number = ExactNumber::fromVariant(value);
    const auto from = ExactNumber::fromVariant(low);
    const auto to = ExactNumber::fromVariant(high);
    if (!number || !number->isFinite() || !from || !to)
        return false;
    const bool aboveLow = lowExcluded ? *from < *number : !(*number < *from);
    const bool belowHigh = highExcluded ? *number < *to : !(*to < *number);
    return aboveLow && belowHigh;
}

} // namespace

DataVerification& DataVerification::getInstance()
{
    static DataVerification verification;
    return verification;
}

bool DataVerification::isValidName(const QString& name) const
{
    static const QRegularExpression pattern(QStringLiteral("\\A(?:[A-Za-z]|_[A-Za-z0-9])(?:_?[A-Za-z0-9])*\\z"));
    return name.size() <= longestName && pattern.match(name).hasMatch();
}

bool DataVerification::isKeyword(const QString& name, const QString& projectName) const
{
    Q_UNUSED(projectName)
    return ac::Keywords::isReserved(name.toStdString());
}

bool DataVerification::isGlobalVarTable(const QString& name, const QString& projectName) const
{
    return isSymbol(name, projectName, { ac::GlobalVariableListSymbols });
}

bool DataVerification::isPouOrFBOrFCName(const QString& name, const QString& projectName) const
{
    return isSymbol(name, projectName, { ac::ProgramSymbols, ac::FunctionBlockSymbols, ac::FunctionSymbols });
}

bool DataVerification::isStructOrEnumName(const QString& name, const QString& projectName) const
{
    return isSymbol(name, projectName, { ac::StructSymbols, ac::EnumSymbols, ac::OtherTypeSymbols });
}

bool DataVerification::isAxisName(const QString& name, const QString& projectName) const
{
    const SafeProjectModel project(projectName);
    auto* axes = project ? qobject_cast<AxisModel*>(project->subModel("AxisModel")) : nullptr;
    if (axes == nullptr)
        return false;
    std::vector<AxisTable*> tables;
    axes->allAxisTables(tables);
    return std::any_of(
        tables.begin(), tables.end(), [&name](const AxisTable* table) { return sameName(table->name(), name); });
}

bool DataVerification::isAxisGroupName(const QString& name, const QString& projectName) const
{
    return isSymbol(name, projectName, { ac::AxisGroupSymbols });
}

bool DataVerification::isTaskName(const QString& name, const QString& projectName) const
{
    return isSymbol(name, projectName, { ac::TaskSymbols });
}

bool DataVerification::isValidNumber(QString& text, const QVariant& value, const QVariant& low, const QVariant& high,
    bool lowExcluded, bool highExcluded) const
{
    if (isWithin(value, low, high, lowExcluded, highExcluded))
        return true;
    NumberRefusalNotifier::instance()->notify({ text, value, low, high, lowExcluded, highExcluded });
    return false;
}

bool DataVerification::isValidIecAddress(QString& text, bool allowBits, bool allowWords) const
{
    const IecAddress address = IecAddress::parse(text);
    return address.isValid() && (address.isBit() ? allowBits : allowWords);
}

bool DataVerification::isValidAddrAndType(const QString& text, const QString& type) const
{
    const IecAddress address = IecAddress::parse(text);
    return address.isValid() && address.size == IecAddress::sizeOfType(type);
}

bool DataVerification::isProgramStyle(ac::ProgramStyle style) const
{
    const SafeAccore core(ProjectVariables::currentProject().toStdString(), false);
    return core && core->getProgramStyle() == style;
}
