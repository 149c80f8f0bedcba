#pragma once

#include "sdk/IEditorFactory.h"

/// Makes the editors and the finders of axes; editor type "AxisView". It is the QObject parent of its editors.
class MotionControlAxisFactory : public IEditorFactory {
    Q_OBJECT

public:
    explicit MotionControlAxisFactory(QObject* parent = nullptr);
    ~MotionControlAxisFactory() override;

    /// Empty: the factory is asked by type only.
    QStringList typeKeys() override;
    /// An editor on the axis node of that path, or null for any type but "AxisView". The editor is returned even where
    /// its open has failed.
    IEditor* createEditor(const QString& fileName, const QString& mimeType) override;
    IEditor* createEditorForPath(const QString& fileName, const QString& mimeType) override;
    QString typeKey() override;
    QString typeName() override;
    bool canCreate(const QString& mimeType) override;
    /// A finder that is bound to no node yet; the caller owns it.
    IEditorFinder* createFinder() override;
};
