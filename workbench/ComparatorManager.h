#pragma once

#include "sdk/IComparatorMan.h"

#include <map>
#include <memory>

class IConfiguration;

/// Keeps the comparators of the plug-ins by editor type and tells when a comparison is on; published as
/// "COMPARATORMAN".
class ComparatorManager : public IComparatorMan {
    Q_OBJECT

public:
    /// The cookies carry the state of comparison for editors that are opened while it lasts.
    explicit ComparatorManager(IConfiguration& cookies, QObject* parent = nullptr);
    ~ComparatorManager() override;

    bool addComparator(IComparator* comparator) override;
    /// The comparator of that editor type, or null.
    IComparator* comparator(const QString& typeKey) const;
    /// Deletes all comparators: their code lies in the plug-ins, which go after this.
    void clear();

    bool isComparing() const { return m_comparing; }
    void setComparing(bool comparing);

private:
    IConfiguration& m_cookies;
    std::map<QString, std::unique_ptr<IComparator>> m_comparators;
    bool m_comparing = false;
};
