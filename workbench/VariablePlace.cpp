#include "workbench/VariablePlace.h"

#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/Symbol.h"

#include <QStringList>

#include <vector>

namespace {

/// The block or program itself, in front of its members.
const QLatin1String thisObject("THIS^.");

bool isSame(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// "axes" of "axes[3].speed".
QString firstName(const QString& written)
{
    return written.section(QLatin1Char('.'), 0, 0).section(QLatin1Char('['), 0, 0);
}

bool isWordPart(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('_');
}

QString withIndexValues(const ac::ACCore& core, const QString& written, const QString& owner)
{
    return QString::fromStdString(core.withIndexValues(written.toStdString(), owner.toStdString()));
}

bool hasType(const ac::ACCore& core, const QString& path)
{
    return core.type(path.toStdString()) != nullptr;
}

/// A path to a variable, or to an element of one that only the running program knows or that nobody knows.
bool leadsToVariable(const ac::ACCore& core, const QString& path)
{
    const ac::ACCore::Reach reach = core.reachOf(path.toStdString());
    return reach == ac::ACCore::Reach::Variable || reach == ac::ACCore::Reach::Element
        || reach == ac::ACCore::Reach::Stray;
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
        if (found.isEmpty() && isSame(each, owner) && leadsToVariable(core, path))
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
    if (!leadsToVariable(core, written))
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
        return leadsToVariable(core, own) ? projectPath(core, own) : own;
    const QString variable = variableAt(core, local);
    const QString path = variable + written.mid(firstName(written).size());
    return variable.isEmpty() || !leadsToVariable(core, path) ? own : path;
}

QString pathAt(const ac::ACCore& core, const VariablePlace& place, const QString& unit, const QString& written)
{
    const ac::LocalName local
        = core.localName(place.source.toStdString(), place.line, firstName(written).toStdString());
    switch (local.kind) {
    case ac::LocalName::Kind::Own:
        return ownPath(core, local, unit, written);
    case ac::LocalName::Kind::External:
        return globalPath(core, written);
    case ac::LocalName::Kind::None:
        break;
    }
    return projectPath(core, written);
}

/// The path of a member of the block or program around the place, and of nothing else that has its name.
QString memberPath(const ac::ACCore& core, const VariablePlace& place, const QString& unit, const QString& member)
{
    const ac::LocalName local = core.localName(place.source.toStdString(), place.line, firstName(member).toStdString());
    return local.kind == ac::LocalName::Kind::Own ? ownPath(core, local, unit, member) : QString();
}

/// What a pointer leads to: the path to the pointer as it is declared, and the rest as it is written.
NamedVariable behindPointer(const ac::ACCore& core, const QString& name)
{
    const int pointer = name.indexOf(QLatin1Char('^'));
    const QString known = withIndexValues(core, name.left(pointer), firstName(name));
    NamedVariable variable;
    variable.paths.append(name);
    const QString path = projectPath(core, known);
    variable.isBehindPointer = !path.isEmpty();
    if (!variable.isBehindPointer)
        return variable;
    variable.path = QString(path + name.mid(pointer));
    variable.paths.prepend(variable.path);
    variable.paths.removeDuplicates();
    return variable;
}

/// A path as declared, then the others under which the variable may be used.
QStringList spellings(const ac::ACCore& core, const QString& path)
{
    QStringList spellings{ path };
    const QString inList = path.section(QLatin1Char('.'), 1);
    if (isSame(projectPath(core, inList), path))
        spellings.append(inList);
    const QStringList programs = unitsOf(core, ac::ProgramSymbols);
    for (const QString& program : programs) {
        const QString spelling = joined(program, inList);
        if (core.ownerOf(spelling.toStdString()) == ac::ACCore::Owner::Elsewhere
            && isSame(projectPath(core, spelling), path))
            spellings.append(spelling);
    }
    return spellings;
}

/// Those of the texts that are one of the paths as soon as the constants in their indices have their values.
QStringList byConstants(const ac::ACCore& core, const QStringList& texts, const QStringList& paths)
{
    QStringList found;
    for (const QString& text : texts) {
        const QString written = text.contains(QLatin1Char('[')) ? withoutBlanks(text) : QString();
        // A place belongs to no program whose constants it could mean.
        const QString known = written.isEmpty() ? QString() : withIndexValues(core, written, QString());
        if (known != written && paths.contains(known, Qt::CaseInsensitive)
            && !paths.contains(written, Qt::CaseInsensitive))
            found.append(written);
    }
    return found;
}

/// Of each path leaves the first one, in whichever letters.
void removeSame(QStringList* paths)
{
    QStringList left;
    for (const QString& path : qAsConst(*paths)) {
        if (!left.contains(path, Qt::CaseInsensitive))
            left.append(path);
    }
    *paths = left;
}

} // namespace

// Between two names blanks stay, for together those are none.
QString withoutBlanks(const QString& written)
{
    QString text;
    const QString simple = written.simplified();
    for (int i = 0; i < simple.size(); ++i) {
        const bool isBlank = simple.at(i) == QLatin1Char(' ');
        if (!isBlank || (isWordPart(simple.at(i - 1)) && isWordPart(simple.at(i + 1))))
            text.append(simple.at(i));
    }
    return text;
}

QString variablePathAt(const VariablePlace& place)
{
    const SafeAccore core(place.project.toStdString(), false);
    const QString written = withoutBlanks(place.written);
    if (!core || written.isEmpty())
        return {};
    const QString unit = QString::fromStdString(core->unitAt(place.source.toStdString(), place.line));
    const bool isOfThis = written.startsWith(thisObject, Qt::CaseInsensitive);
    const QString path = isOfThis ? written.mid(thisObject.size()) : written;
    const int pointer = path.indexOf(QLatin1Char('^'));
    // Constants of the program or block around the place go before global ones, and have no meaning outside of it.
    const QString known = withIndexValues(*core.core(), path.left(pointer), unit);
    const QString found
        = isOfThis ? memberPath(*core.core(), place, unit, known) : pathAt(*core.core(), place, unit, known);
    return found.isEmpty() || pointer < 0 ? found : QString(found + path.mid(pointer));
}

NamedVariable namedVariable(const QString& project, const QString& written, const QStringList& texts)
{
    const QString name = withoutBlanks(written);
    NamedVariable variable;
    const SafeAccore core(project.toStdString(), false);
    if (!core)
        return variable;
    if (name.contains(QLatin1Char('^')))
        return behindPointer(*core.core(), name);
    const QString known = withIndexValues(*core.core(), name, firstName(name));
    variable.reach = core->reachOf(known.toStdString());
    variable.path = variable.reach == ac::ACCore::Reach::Inner ? known : projectPath(*core.core(), known);
    if (!variable.path.isEmpty())
        variable.paths = spellings(*core.core(), variable.path);
    else if (!name.isEmpty())
        variable.paths.append(name);
    variable.paths += byConstants(*core.core(), texts, variable.paths);
    // Elsewhere the constants of its program do not go before the global ones.
    if (known != name && hasType(*core.core(), name) && isSame(known, withIndexValues(*core.core(), name, QString())))
        variable.paths += spellings(*core.core(), projectPath(*core.core(), name));
    // Places give the names that they use without any blanks, also those between words.
    variable.paths.replaceInStrings(QStringLiteral(" "), QString());
    removeSame(&variable.paths);
    return variable;
}
