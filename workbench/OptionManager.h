#pragma once

#include "sdk/IOptionManager.h"

#include <QPointer>

#include <memory>
#include <vector>

class IOptionFactory;
class QWidget;

/// Shows the options dialog with the pages that were added; published as the manager "option".
class OptionManager : public IOptionManager {
    Q_OBJECT

public:
    explicit OptionManager(QObject* parent = nullptr);
    ~OptionManager() override;

    void addOptionFactory(IOptionFactory* factory) override;
    void exec(QString mimeType) override;
    /// The command is for a page of the plug-in's own and is not read here.
    void exec(QString mimeType, QString cmd) override;

    /// The window over which the dialog opens.
    void setWindow(QWidget* window) { m_window = window; }
    /// Deletes the factories: their code may lie in plug-ins, which go after this.
    void clear();

private:
    std::vector<std::unique_ptr<IOptionFactory>> m_factories;
    QPointer<QWidget> m_window;
};
