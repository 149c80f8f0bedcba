#pragma once

#include "sdk/Export.h"

#include <QObject>
#include <QStringList>

class IEditor;
class IEditorFinder;

/// Makes the editors and finders of one editor type. Registered with IEditorManager::addEditorFactory, owned by the
/// plug-in that registers it.
class KESTRUN_SDK_EXPORT IEditorFactory : public QObject {
    Q_OBJECT

public:
    explicit IEditorFactory(QObject* parent = nullptr);
    ~IEditorFactory() override;

    virtual QStringList typeKeys() = 0;
    /// A new editor, opened on the file name, or null for a type that the factory does not make. The result may be an
    /// editor whose open failed. The editor manager deletes it when it is closed.
    virtual IEditor* createEditor(const QString& fileName, const QString& mimeType) = 0;
    virtual IEditor* createEditorForPath(const QString& fileName, const QString& mimeType) = 0;
    virtual QString typeKey() = 0;
    virtual QString typeName() = 0;
    /// True when the factory makes editors of that type. This alone decides which factory is asked.
    virtual bool canCreate(const QString& mimeType) = 0;
    /// A new finder that the caller owns, or null.
    virtual IEditorFinder* createFinder();
};
