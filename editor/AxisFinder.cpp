#include "editor/AxisFinder.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "editor/AxisNodePath.h"
#include "editor/MotionControlAxisEditor.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"
#include "host/languagecore/SplitPath.h"
#include "sdk/IEditorManager.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"

#include <map>
#include <string>

namespace {

struct SearchablePin {
    QString enableKey;
    QString pinKey;
    /// Key of the view information that holds the object name of the pin's line edit.
    QString controlKey;
    const char* label;
};

const SearchablePin positivePin{ QStringLiteral("PosLimitEnable"), QStringLiteral("PosLimitPin"),
    QStringLiteral("LineEditPosObjectName"), QT_TRANSLATE_NOOP("AxisFinder", "Positive limit:") };
const SearchablePin negativePin{ QStringLiteral("NegsLimitEnable"), QStringLiteral("NegLimitPin"),
    QStringLiteral("LineEditNegObjectName"), QT_TRANSLATE_NOOP("AxisFinder", "Negative limit:") };
const SearchablePin originPin{ QStringLiteral("OrgSignalEnable"), QStringLiteral("OrgSignalPin"),
    QStringLiteral("LineEditOrgObjectName"), QT_TRANSLATE_NOOP("AxisFinder", "Origin signal:") };

const SearchablePin* const searchOrder[] = { &positivePin, &negativePin, &originPin };
const SearchablePin* const referenceOrder[] = { &negativePin, &positivePin, &originPin };

bool isEnabled(const AxisRecord& record, const SearchablePin& pin)
{
    return record.text(pin.enableKey).compare(AxisTrue, Qt::CaseInsensitive) == 0;
}

bool sameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString blank()
{
    return QStringLiteral(" ");
}

QString locationOf(const AxisRecord& record, const QString& control)
{
    return record->getViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), blank()) + QLatin1Char('.') + control;
}

bool isWordCharacter(QChar character)
{
    return character.isLetter() || character.isDigit() || character == QLatin1Char('_');
}

bool isWholeWord(const QString& text, int start, int length)
{
    const int end = start + length;
    return (start == 0 || !isWordCharacter(text.at(start - 1)))
        && (end == text.size() || !isWordCharacter(text.at(end)));
}

std::vector<std::string> symbolPaths(const ac::ACCore& core, const QString& expression)
{
    std::map<int, std::map<int, ac::Language::LogicSymInfo>> symbols;
    std::map<std::string, std::string> types;
    ac::ParseDetails details;
    core.parserVariables(expression.toStdString(), "HiddenAxisVar", 0, symbols, types, details);
    std::vector<std::string> paths;
    for (const auto& statement : symbols) {
        for (const auto& symbol : statement.second)
            paths.push_back(symbol.second.path);
    }
    return paths;
}

} // namespace

AxisFinder::~AxisFinder() = default;

QString AxisFinder::typeKey()
{
    return AxisViewKey;
}

QString AxisFinder::nodePath()
{
    return m_nodePath;
}

bool AxisFinder::bindNode(const QString& path)
{
    const AxisNodePath node = AxisNodePath::parse(path, AxisViewKey);
    m_nodePath = path;
    m_projectName = node.projectName;
    if (!Solution::service(Solution::ServiceKey::view()))
        return false;
    m_axisId = node.axisId;
    return true;
}

void AxisFinder::setFindFlags(int flags)
{
    m_flags = flags;
}

QString AxisFinder::currentPosition()
{
    IEditorManager* manager = Solution::editorManager();
    const auto* editor = manager ? qobject_cast<MotionControlAxisEditor*>(manager->currentEditor()) : nullptr;
    return editor ? editor->currentFindPosition() : QString();
}

QString AxisFinder::startPosition()
{
    return m_startPosition;
}

void AxisFinder::setStartPosition(const QString& position)
{
    buildIndex();
    m_startPosition = position;
    m_currentPosition = position.isEmpty() ? m_index.value(0) : position;
}

QString AxisFinder::endPosition()
{
    return m_endPosition;
}

void AxisFinder::setEndPosition(const QString& position)
{
    if (sameName(m_currentPosition, position))
        m_currentPosition.clear();
    m_endPosition = position;
}

void AxisFinder::buildIndex()
{
    m_index.clear();
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const bool backwards = m_flags & FindBackwards;
    for (const SearchablePin* pin : searchOrder) {
        if (isEnabled(record, *pin))
            m_index.insert(backwards ? 0 : m_index.size(), record->getViewInfo(pin->controlKey, QString()));
    }
}

bool AxisFinder::findNext(const QString& text)
{
    while (!m_currentPosition.isEmpty() && !m_index.isEmpty()) {
        const AxisRecord record(m_projectName, m_axisId);
        if (!record)
            return false;
        m_result = placeAt(record, m_currentPosition);
        advance();
        if (contains(m_result.text, text))
            return true;
    }
    m_result = EditorLocation();
    return true;
}

EditorLocation AxisFinder::placeAt(const AxisRecord& record, const QString& position) const
{
    EditorLocation place;
    for (const SearchablePin* pin : searchOrder) {
        if (!sameName(position, record->getViewInfo(pin->controlKey, QString())))
            continue;
        place.text = record.text(pin->pinKey);
        place.label = tr(pin->label) + place.text;
        break;
    }
    place.matchedText = place.text;
    place.location = locationOf(record, position);
    place.atEnd = false;
    return place;
}

void AxisFinder::advance()
{
    // Names that stand twice in a stored record must not hold the search in one place: the last one counts.
    const int place = m_index.lastIndexOf(m_currentPosition);
    const bool ends
        = place < 0 || sameName(m_currentPosition, m_index.constLast()) || sameName(m_currentPosition, m_endPosition);
    m_currentPosition = ends ? QString() : m_index.value(place + 1);
}

bool AxisFinder::contains(const QString& pin, const QString& text) const
{
    const Qt::CaseSensitivity sensitivity = m_flags & FindCaseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const bool wholeWord = m_flags & FindWholeWord;
    for (int start = 0; start <= pin.size() - text.size(); ++start) {
        const bool equal = pin.midRef(start, text.size()).compare(text, sensitivity) == 0;
        if (equal && (!wholeWord || isWholeWord(pin, start, text.size())))
            return true;
    }
    return false;
}

EditorLocation AxisFinder::result()
{
    return m_result;
}

bool AxisFinder::optionCheckA()
{
    return false;
}

bool AxisFinder::optionCheckB()
{
    return false;
}

bool AxisFinder::optionCheckC()
{
    return false;
}

std::vector<FindResult> AxisFinder::enabledPins(const AxisRecord& record) const
{
    std::vector<FindResult> pins;
    for (const SearchablePin* pin : referenceOrder) {
        if (!isEnabled(record, *pin))
            continue;
        FindResult use;
        use.typeKey = AxisViewKey;
        use.nodePath = m_nodePath;
        use.objectName = record->name();
        use.text = record.text(pin->pinKey);
        use.matchedText = use.text;
        use.dataType = QStringLiteral("BOOL");
        use.label = tr(pin->label) + use.text;
        use.location = locationOf(record, record->getViewInfo(pin->controlKey, blank()));
        use.kind = 1;
        pins.push_back(use);
    }
    return pins;
}

bool AxisFinder::findReferences(const QString& path, QVector<FindResult>& results)
{
    std::vector<FindResult> pins;
    {
        const AxisRecord record(m_projectName, m_axisId);
        if (!record)
            return false;
        pins = enabledPins(record);
    }
    // The guard on the record is gone here: it and the one on the language core are never held together.
    const SafeAccore core(m_projectName.toStdString(), false);
    if (!core)
        return false;
    for (const FindResult& pin : pins) {
        for (const std::string& symbol : symbolPaths(*core.core(), pin.text)) {
            if (ac::SplitPath::isPrefixPath(symbol, path.toStdString()))
                results.append(pin);
        }
    }
    return true;
}
