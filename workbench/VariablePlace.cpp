#include "workbench/VariablePlace.h"

#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/Symbol.h"

#include <QStringList>

#include <vector>

namespace {

bool isSame(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// "axes" of "axes[3].speed".
QString firstName(const QString& written)
{
    return written.section(QLatin1Char('.'), 0, 0).section(QLatin1Char('['), 0, 0);
}

QString joined(const QString& unit, const QString& rest)
{
    return QString(unit + QLatin1Char('.') + rest);
}

QStringList unitsOf(const ac::ACCore& core, ac::SymbolKind kind)
{
    std::vector<ac::Symbol*> symbols;
    core.allSymbols(kind, symbols);
    QStringList names;
    for (const ac::Symbol* symbol : symbols)
        names.append(QString::fromStdString(symbol->name()));
    return names;
}

/// The program's or list's variable that the path begins with: "Main.axes" of "Main.axes[3].speed".
QString withoutMembers(const QString& path)
{
    const QString unit = path.section(QLatin1Char('.'), 0, 0);
    return joined(unit, firstName(path.section(QLatin1Char('.'), 1)));
}

/// The path in the letters of its declaration. Empty unless the variable is declared there: an external one is not.
QString declaredPath(const ac::ACCore& core, const QString& path)
{
    const QString owner = withoutMembers(path);
    QString found;
    for (const ac::VariableInfo& variable : core.variables()) {
        QString each = QString::fromStdString(variable.path);
        if (isSame(each, path))
            return each;
        // The elements of a large array are not listed.
        if (found.isEmpty() && isSame(each, owner) && core.type(path.toStdString()))
            found = QString(each + path.mid(owner.size()));
    }
    return found;
}

QString globalPath(const ac::ACCore& core, const QString& written)
{
    const QStringList lists = unitsOf(core, ac::GlobalVariableListSymbols);
    for (const QString& list : lists) {
        QString path = declaredPath(core, joined(list, written));
        if (!path.isEmpty())
            return path;
    }
    return {};
}

/// The path of what is not listed where it is written: an external variable, a temporary one as it is written, a
/// global without its list.
QString undeclaredPath(const ac::ACCore& core, const QString& written)
{
    switch (core.ownerOf(written.toStdString())) {
    case ac::ACCore::Owner::Unit:
        return written;
    case ac::ACCore::Owner::Elsewhere:
        return globalPath(core, written.section(QLatin1Char('.'), 1));
    case ac::ACCore::Owner::NoUnit:
        break;
    }
    return globalPath(core, written);
}

QString projectPath(const ac::ACCore& core, const QString& written)
{
    if (!core.type(written.toStdString()))
        return {};
    QString path = declaredPath(core, written);
    if (path.isEmpty())
        path = undeclaredPath(core, written);
    return path.isEmpty() ? written : path;
}

/// The variable at a place of a declaration, wherever the project first has one of it.
QString variableAt(const ac::ACCore& core, const ac::LocalName& place)
{
    for (const ac::VariableInfo& variable : core.variables()) {
        if (variable.line == place.line && variable.column == place.column && variable.source == place.source)
            return QString::fromStdString(variable.path);
    }
    return {};
}

/// The path of a name that the program, list, block or type around it declares. Temporary variables, those of
/// functions, blocks that nothing is made of, and what does not fit a variable's type have none but their own: it must
/// not be taken for that of a global one.
QString ownPath(const ac::ACCore& core, const ac::LocalName& local, const QString& unit, const QString& written)
{
    const QString own = joined(unit, written);
    if (core.ownerOf(own.toStdString()) != ac::ACCore::Owner::NoUnit)
        return core.type(own.toStdString()) ? projectPath(core, own) : own;
    const QString variable = variableAt(core, local);
    const QString path = variable + written.mid(firstName(written).size());
    return variable.isEmpty() || !core.type(path.toStdString()) ? own : path;
}

} // namespace

QString variablePathAt(const VariablePlace& place)
{
    const SafeAccore core(place.project.toStdString(), false);
    if (!core || place.written.isEmpty())
        return {};
    const std::string source = place.source.toStdString();
    const ac::LocalName local = core->localName(source, place.line, firstName(place.written).toStdString());
    switch (local.kind) {
    case ac::LocalName::Kind::Own:
        return ownPath(*core.core(), local, QString::fromStdString(core->unitAt(source, place.line)), place.written);
    case ac::LocalName::Kind::External:
        return globalPath(*core.core(), place.written);
    case ac::LocalName::Kind::None:
        break;
    }
    return projectPath(*core.core(), place.written);
}

QString variablePath(const QString& project, const QString& written)
{
    const SafeAccore core(project.toStdString(), false);
    return core ? projectPath(*core.core(), written) : QString();
}

QStringList pathSpellings(const QString& project, const QString& path)
{
    QStringList spellings{ path };
    const SafeAccore core(project.toStdString(), false);
    if (!core)
        return spellings;
    const QString inList = path.section(QLatin1Char('.'), 1);
    if (isSame(projectPath(*core.core(), inList), path))
        spellings.append(inList);
    const QStringList programs = unitsOf(*core.core(), ac::ProgramSymbols);
    for (const QString& program : programs) {
        const QString spelling = joined(program, inList);
        if (core->ownerOf(spelling.toStdString()) == ac::ACCore::Owner::Elsewhere
            && isSame(projectPath(*core.core(), spelling), path))
            spellings.append(spelling);
    }
    return spellings;
}
