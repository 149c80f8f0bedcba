#pragma once

#include <QObject>

#include <memory>
#include <unordered_map>

class AbstractProjectModel;

namespace ac {
class ACCore;
}

/// The language cores of the open projects. One for the process, main thread only.
class CoreRegistry : public QObject {
    Q_OBJECT

public:
    static CoreRegistry& instance();

    /// The core of the project, made or brought up to date if need be. Never null.
    std::shared_ptr<ac::ACCore> coreOf(AbstractProjectModel* project);

private:
    struct Entry {
        std::shared_ptr<ac::ACCore> core;
        bool outdated = true;
    };

    Entry& entryOf(AbstractProjectModel* project);

    /// By project; an entry goes when its project is destroyed.
    std::unordered_map<const QObject*, Entry> m_entries;
};
