#pragma once

#include "sdk/IEditorFinder.h"

#include <QCoreApplication>
#include <QStringList>

#include <vector>

class AxisRecord;

/// Searches the signal pins of one axis: positive limit, negative limit and origin, each while it is enabled. A place
/// is named by the object name of the pin's line edit; the homing page leaves those names in the record's view
/// information.
class AxisFinder : public IEditorFinder {
    Q_DECLARE_TR_FUNCTIONS(AxisFinder)

public:
    AxisFinder() = default;
    ~AxisFinder() override;

    QString typeKey() override;
    QString nodePath() override;
    bool bindNode(const QString& path) override;
    /// Flags (see FindFlag). Their order takes effect with the next setStartPosition.
    void setFindFlags(int flags) override;
    QString currentPosition() override;
    QString startPosition() override;
    /// Also builds the list of searchable places anew.
    void setStartPosition(const QString& position) override;
    QString endPosition() override;
    void setEndPosition(const QString& position) override;
    /// A position that is none of the searchable places is looked at and ends the search.
    bool findNext(const QString& text) override;
    EditorLocation result() override;
    bool optionCheckA() override;
    bool optionCheckB() override;
    bool optionCheckC() override;
    /// Appends the symbols that the enabled pins' expressions name and that begin the path, by the language core.
    bool findReferences(const QString& path, QVector<FindResult>& results) override;

private:
    /// The enabled pins as results that wait for a symbol to match.
    std::vector<FindResult> enabledPins(const AxisRecord& record) const;
    void buildIndex();
    EditorLocation placeAt(const AxisRecord& record, const QString& position) const;
    void advance();
    bool contains(const QString& pin, const QString& text) const;

    quint32 m_axisId = 0;
    /// Not used.
    QString m_spare;
    QString m_nodePath;
    QString m_projectName;
    int m_flags = 0;
    QString m_startPosition;
    QString m_endPosition;
    /// The place that findNext looks at next; empty at the end of the search.
    QString m_currentPosition;
    EditorLocation m_result;
    QStringList m_index;
};
