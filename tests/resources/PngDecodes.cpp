#include "tests/resources/PngDecodes.h"

#include <QFile>
#include <QImageIOHandler>
#include <QImageIOPlugin>
#include <QImageReader>
#include <QtPlugin>

namespace {

QStringList decoded;
/// Qt's own reader is being asked.
bool handingOn = false;

class CountingHandler : public QImageIOHandler {
public:
    bool canRead() const override { return true; }

    bool read(QImage* image) override
    {
        const auto* file = qobject_cast<QFile*>(device());
        decoded.append(file ? file->fileName() : QString());
        handingOn = true;
        const bool isRead = QImageReader(device(), "png").read(image);
        handingOn = false;
        return isRead;
    }
};

} // namespace

class CountingPngPlugin : public QImageIOPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "counting_png.json")

public:
    Capabilities capabilities(QIODevice*, const QByteArray& format) const override
    {
        return !handingOn && format == "png" ? Capabilities(CanRead) : Capabilities();
    }

    QImageIOHandler* create(QIODevice* device, const QByteArray& format) const override
    {
        auto* handler = new CountingHandler;
        handler->setDevice(device);
        handler->setFormat(format);
        return handler;
    }
};

Q_IMPORT_PLUGIN(CountingPngPlugin)

QStringList PngDecodes::take()
{
    QStringList names;
    names.swap(decoded);
    return names;
}

#include "PngDecodes.moc"
