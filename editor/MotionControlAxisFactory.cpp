#include "editor/MotionControlAxisFactory.h"

#include "axisdata/AxisConstants.h"
#include "editor/AxisFinder.h"
#include "editor/MotionControlAxisEditor.h"

MotionControlAxisFactory::MotionControlAxisFactory(QObject* parent) : IEditorFactory(parent) { }

MotionControlAxisFactory::~MotionControlAxisFactory() = default;

QStringList MotionControlAxisFactory::typeKeys()
{
    static const QStringList keys;
    return keys;
}

IEditor* MotionControlAxisFactory::createEditor(const QString& fileName, const QString& mimeType)
{
    if (!canCreate(mimeType))
        return nullptr;
    auto* editor = new MotionControlAxisEditor(this);
    editor->open(fileName, mimeType);
    return editor;
}

IEditor* MotionControlAxisFactory::createEditorForPath(const QString& fileName, const QString& mimeType)
{
    return createEditor(fileName, mimeType);
}

QString MotionControlAxisFactory::typeKey()
{
    return AxisViewKey;
}

QString MotionControlAxisFactory::typeName()
{
    return AxisViewKey;
}

bool MotionControlAxisFactory::canCreate(const QString& mimeType)
{
    return mimeType == AxisViewKey;
}

IEditorFinder* MotionControlAxisFactory::createFinder()
{
    return new AxisFinder;
}
