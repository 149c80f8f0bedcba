#include "host/languagecore/PathResolver.h"

#include "host/languagecore/ElementaryTypes.h"
#include "host/languagecore/Keywords.h"
#include "host/languagecore/Lexical.h"
#include "host/languagecore/SourceParser.h"

#include <algorithm>

namespace ac {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isNumber(const std::string& index)
{
    const auto expression = parseConstExpression(index);
    return expression
        && std::all_of(expression->begin(), expression->end(), [](const ConstTerm& term) { return term.name.empty(); });
}

bool isWithin(const std::optional<std::int64_t>& value, const Bounds& bounds)
{
    return value && *value >= bounds.low && *value <= bounds.high;
}

/// Cuts a path into its steps.
class StepReader {
public:
    explicit StepReader(const std::string& path) : m_path(path) { }

    bool read()
    {
        if (!readName(name))
            return false;
        while (m_at < m_path.size()) {
            PathStep step;
            if (!(m_path[m_at] == '.' ? readMember(step) : readIndex(step)))
                return false;
            steps.push_back(std::move(step));
        }
        return true;
    }

    std::string name;
    std::vector<PathStep> steps;

private:
    bool readName(std::string& text)
    {
        if (m_at >= m_path.size() || !Lexical::isWordStart(m_path[m_at]))
            return false;
        const std::size_t end = Lexical::endOfWord(m_path, m_at);
        text = m_path.substr(m_at, end - m_at);
        m_at = end;
        return true;
    }

    bool readMember(PathStep& step)
    {
        ++m_at;
        if (readName(step.text))
            return true;
        const std::size_t end = Lexical::endOfWord(m_path, m_at);
        step.kind = PathStep::Kind::Bit;
        step.text = m_path.substr(m_at, end - m_at);
        m_at = end;
        return !step.text.empty() && std::all_of(step.text.begin(), step.text.end(), isDigit);
    }

    bool readIndex(PathStep& step)
    {
        if (m_path[m_at] != '[')
            return false;
        step.kind = PathStep::Kind::Index;
        std::size_t begin = ++m_at;
        for (int depth = 1; m_at < m_path.size(); ++m_at) {
            const char c = m_path[m_at];
            depth += (c == '[' || c == '(' ? 1 : 0) - (c == ']' || c == ')' ? 1 : 0);
            if (depth > 0 && !(depth == 1 && c == ','))
                continue;
            step.indices.push_back(m_path.substr(begin, m_at - begin));
            begin = m_at + 1;
            if (depth == 0) {
                ++m_at;
                return c == ']';
            }
        }
        return false;
    }

    const std::string& m_path;
    std::size_t m_at = 0;
};

} // namespace

std::optional<ResolvedType> PathResolver::resolve(const std::string& path) const
{
    StepReader reader(path);
    if (!reader.read())
        return std::nullopt;
    if (!reader.steps.empty() && reader.steps.front().kind == PathStep::Kind::Member) {
        if (const VariableDecl* variable = m_table.variableOf(reader.name, reader.steps.front().text))
            return follow(variable, reader.steps, 1);
    }
    return follow(m_table.globalVariable(reader.name), reader.steps, 0);
}

std::optional<ResolvedType> PathResolver::resolveInner(const std::string& path) const
{
    StepReader reader(path);
    if (!reader.read() || reader.steps.empty() || reader.steps.front().kind != PathStep::Kind::Member)
        return std::nullopt;
    return follow(m_table.declared(reader.name, reader.steps.front().text), reader.steps, 1);
}

bool PathResolver::hasNamedIndex(const std::string& path)
{
    StepReader reader(path);
    reader.read();
    for (const PathStep& step : reader.steps) {
        if (!std::all_of(step.indices.begin(), step.indices.end(), isNumber))
            return true;
    }
    return false;
}

bool PathResolver::hasStrayIndex(const std::string& path) const
{
    StepReader reader(path);
    reader.read();
    const auto stray = [this](const std::string& index) { return isStray(index); };
    return std::any_of(reader.steps.begin(), reader.steps.end(),
        [&stray](const PathStep& step) { return std::any_of(step.indices.begin(), step.indices.end(), stray); });
}

bool PathResolver::isStray(const std::string& index) const
{
    bool isEmpty = true;
    char before = '\0';
    for (std::size_t at = 0; at < index.size();) {
        isEmpty = isEmpty && index[at] == ' ';
        if (!Lexical::isWordPart(index[at])) {
            before = index[at++];
            continue;
        }
        const std::size_t end = std::max(Lexical::endOfWord(index, at), at + 1);
        const std::string word = index.substr(at, end - at);
        // A member is one of what stands before it, and digits may be letters behind a base.
        const bool isName = !isDigit(word.front()) && before != '.' && before != '#';
        if (isName && !Keywords::isReserved(word) && !m_table.isDeclaredAnywhere(word))
            return true;
        before = word.back();
        at = end;
    }
    return isEmpty;
}

std::string PathResolver::withIndexValues(const std::string& path, const std::string& owner) const
{
    StepReader reader(path);
    if (!reader.read())
        return path;
    std::string text = reader.name;
    for (const PathStep& step : reader.steps) {
        if (step.kind != PathStep::Kind::Index) {
            text += '.' + step.text;
            continue;
        }
        char mark = '[';
        for (const std::string& index : step.indices) {
            const auto value = valueOf(index, owner);
            text += mark + (value ? std::to_string(*value) : index);
            mark = ',';
        }
        text += ']';
    }
    return text;
}

std::optional<ResolvedType> PathResolver::follow(
    const VariableDecl* variable, const std::vector<PathStep>& steps, std::size_t from) const
{
    if (variable == nullptr)
        return std::nullopt;
    std::optional<ResolvedType> type = m_table.resolve(variable->type.get());
    for (std::size_t i = from; type && i < steps.size(); ++i) {
        // A bit has nothing below it.
        if (i > from && steps[i - 1].kind == PathStep::Kind::Bit)
            return std::nullopt;
        type = step(*type, steps[i]);
    }
    return type;
}

std::optional<ResolvedType> PathResolver::step(const ResolvedType& type, const PathStep& step) const
{
    switch (step.kind) {
    case PathStep::Kind::Member:
        if (const VariableDecl* member
            = type.declaration == nullptr ? nullptr : m_table.member(*type.declaration, step.text))
            return m_table.resolve(member->type.get());
        return std::nullopt;
    case PathStep::Kind::Index:
        return type.array == nullptr ? std::nullopt : element(*type.array, step.indices);
    case PathStep::Kind::Bit:
        if (isWithin(valueOf(step.text), { 0, bitsOf(type.dataType) - 1 }))
            return ResolvedType{ Bool, "BOOL", nullptr, nullptr };
        return std::nullopt;
    }
    return std::nullopt;
}

std::optional<ResolvedType> PathResolver::element(const TypeSpec& array, const std::vector<std::string>& indices) const
{
    if (indices.size() != array.dimensions.size())
        return std::nullopt;
    if (m_indices != Indices::Any) {
        const auto bounds = m_table.bounds(array);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            if (!mayStand(indices[i], bounds ? &(*bounds)[i] : nullptr))
                return std::nullopt;
        }
    }
    return m_table.resolve(array.element.get());
}

bool PathResolver::mayStand(const std::string& index, const Bounds* bounds) const
{
    const auto value = valueOf(index);
    if (m_indices == Indices::Fitting && (!value || bounds == nullptr))
        return true;
    return bounds != nullptr && isWithin(value, *bounds);
}

std::optional<std::int64_t> PathResolver::valueOf(const std::string& index, const std::string& owner) const
{
    const auto expression = parseConstExpression(index);
    return expression ? m_table.value(*expression, owner) : std::nullopt;
}

} // namespace ac
