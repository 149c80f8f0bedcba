#include "host/communication/ControllerProcess.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>

#include <functional>

namespace {
constexpr int patienceMs = 1000;

QByteArray freshToken()
{
    quint32 words[8];
    QRandomGenerator::system()->fillRange(words);
    return QByteArray(reinterpret_cast<const char*>(words), sizeof words).toHex();
}
} // namespace

struct ControllerProcess::Private {
    void readOutput();
    void finished();
    void tellSoon(const std::function<void()>& news);
    void end();

    ControllerProcess* q = nullptr;
    std::unique_ptr<QProcess> process;
    ControllerAddress address;
    QByteArray output;
    bool ready = false;
};

ControllerProcess::ControllerProcess(QObject* parent) : QObject(parent), d(new Private)
{
    d->q = this;
}

ControllerProcess::~ControllerProcess()
{
    d->end();
}

QString ControllerProcess::defaultProgram()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/kestrun-controller");
}

void ControllerProcess::start(const QString& program, const QStringList& arguments)
{
    d->end();
    d->ready = false;
    d->output.clear();
    d->address = ControllerAddress();
    d->address.token = freshToken();
    d->process = std::make_unique<QProcess>();
    connect(d->process.get(), &QProcess::readyReadStandardOutput, this, [this] { d->readOutput(); });
    connect(d->process.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
        [this] { d->finished(); });
    connect(d->process.get(), &QProcess::errorOccurred, this, [this, program](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            d->tellSoon(
                [this, text = tr("The controller %1 cannot be started: %2").arg(program, d->process->errorString())] {
                    emit failed(text);
                });
    });
    d->process->start(program, QStringList{ QStringLiteral("--end-with-input") } + arguments);
    d->process->write(d->address.token + '\n');
}

void ControllerProcess::Private::readOutput()
{
    output += process->readAllStandardOutput();
    static const QByteArray word("listening on ");
    for (int end = output.indexOf('\n'); end >= 0; end = output.indexOf('\n')) {
        const QByteArray line = output.left(end);
        output.remove(0, end + 1);
        QString ignored;
        if (ready || !line.startsWith(word))
            continue;
        ready = address.setHostAndPort(QString::fromUtf8(line.mid(word.size())), &ignored);
        if (ready)
            emit q->ready();
    }
}

void ControllerProcess::Private::finished()
{
    const QString said = QString::fromLocal8Bit(process->readAllStandardError()).trimmed();
    const QString reason = said.isEmpty() ? ControllerProcess::tr("The controller has ended.") : said;
    tellSoon([this, reason] {
        if (ready)
            emit q->ended(reason);
        else
            emit q->failed(reason);
    });
}

// Whoever hears of an end may start or stop the program at once, which must not happen inside a signal of the process.
void ControllerProcess::Private::tellSoon(const std::function<void()>& news)
{
    const auto tell = [this, news, about = process.get()] {
        if (process.get() == about)
            news();
    };
    QMetaObject::invokeMethod(q, tell, Qt::QueuedConnection);
}

void ControllerProcess::Private::end()
{
    if (!process)
        return;
    // It has been asked to, so its end is no news.
    process->disconnect(q);
    if (process->state() != QProcess::NotRunning) {
        process->write("quit\n");
        process->closeWriteChannel();
        if (!process->waitForFinished(patienceMs)) {
            process->kill();
            process->waitForFinished(patienceMs);
        }
    }
    process.reset();
    ready = false;
}

void ControllerProcess::stop()
{
    d->end();
}

bool ControllerProcess::isRunning() const
{
    return d->process && d->process->state() == QProcess::Running;
}

qint64 ControllerProcess::processId() const
{
    return d->process ? d->process->processId() : 0;
}

ControllerAddress ControllerProcess::address() const
{
    return d->address;
}

void ControllerProcess::command(const QString& line)
{
    if (isRunning())
        d->process->write(line.toUtf8() + '\n');
}
