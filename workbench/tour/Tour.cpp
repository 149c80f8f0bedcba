#include "workbench/tour/Tour.h"

#include "workbench/Workbench.h"
#include "workbench/tour/TourDriver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>

namespace {

class Summary {
public:
    explicit Summary(const QString& directory) : m_file(QDir(directory).filePath(QStringLiteral("summary.md")))
    {
        m_open = m_file.open(QIODevice::WriteOnly | QIODevice::Text);
        m_text.setDevice(&m_file);
        m_text.setCodec("UTF-8");
        m_text << "# A tour of Kestrun\n";
    }

    bool isOpen() const { return m_open; }

    void add(int number, const TourStep& step, TourDriver& driver)
    {
        m_text << "\n## " << number << ". " << step.title << "\n\n";
        const QStringList notes = driver.takeNotes();
        for (const QString& note : notes)
            m_text << "- " << note << "\n";
        const QStringList pictures = driver.takePictures();
        for (const QString& picture : pictures)
            m_text << "\n![" << step.title << "](" << picture << ")\n";
        m_text.flush();
    }

    void close(int done, int all)
    {
        m_text << "\n"
               << (done == all ? "All" : "Not all") << " steps saw what they should: " << done << " of " << all
               << ".\n";
    }

private:
    QFile m_file;
    QTextStream m_text;
    bool m_open = false;
};

int fail(const QString& text)
{
    std::fprintf(stderr, "kestrun: tour: %s\n", qPrintable(text));
    return 1;
}

bool copyTo(const QString& sample, const QString& copy)
{
    QFile::remove(copy);
    return QFile::copy(sample, copy) && QFile(copy).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

/// The tour changes what it works on, so it works on a copy, keeps another one to compare with, and keeps settings of
/// its own.
QString prepare(const QString& sample, const QString& directory)
{
    const QDir folder(directory);
    const QString copy = folder.absoluteFilePath(QFileInfo(sample).fileName());
    QDir().mkpath(directory);
    QFile::remove(folder.filePath(QStringLiteral("settings.ini")));
    return copyTo(sample, copy) && copyTo(sample, folder.filePath(deliveredProject())) ? copy : QString();
}

} // namespace

QString deliveredProject()
{
    return QStringLiteral("as-delivered.kproj");
}

int runTour(WorkbenchPaths paths, const QString& sampleProject, const QString& directory)
{
    const QString project = prepare(sampleProject, directory);
    if (project.isEmpty())
        return fail(QStringLiteral("cannot copy %1 to %2").arg(sampleProject, directory));
    paths.settingsFile = QDir(directory).absoluteFilePath(QStringLiteral("settings.ini"));
    Settings(paths.settingsFile).setValue(QStringLiteral("General/Language"), QStringLiteral("en_US"));
    Summary summary(directory);
    if (!summary.isOpen())
        return fail(QStringLiteral("cannot write to %1").arg(directory));

    TourDriver driver(paths, directory);
    driver.start(project);
    const std::vector<TourStep>& steps = tourSteps();
    int done = 0;
    for (const TourStep& step : steps) {
        step.act(driver);
        driver.see(driver.nothingPending(), QStringLiteral("every window that was expected has opened"), true);
        if (driver.failed())
            driver.pictureOfFailure();
        summary.add(done + 1, step, driver);
        if (driver.failed())
            break;
        ++done;
    }
    summary.close(done, static_cast<int>(steps.size()));
    if (driver.failed())
        return fail(QStringLiteral("step %1, \"%2\", did not see what it should; see %3/summary.md")
                        .arg(done + 1)
                        .arg(steps[static_cast<size_t>(done)].title, directory));
    return 0;
}
