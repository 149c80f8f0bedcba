#include "workbench/monitor/CurveExporter.h"
#include "tests/monitor/Readings.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

/// Exports on a thread of their own.
class CurveExporterTest : public QObject {
    Q_OBJECT

private slots:
    void theCallersThreadGoesOnTurning();
    void whatIsWrittenIsACopy();
    void anErrorNamesTheFile();
    void anotherOneIsRefusedMeanwhile();
    void whoHearsOfOneMayStartAnother();
    void itsEndGivesTheExportUp();
    void theOldFileStaysWhenGivenUp();

private:
    static constexpr int seconds = 60;

    /// Axes with all their curves.
    static CurveExport::Sheet sheetOf(int axes)
    {
        CurveExport::Sheet sheet;
        sheet.timeTitle = CurveExport::timeTitle();
        QVector<int> numbers;
        for (int axisNo = 0; axisNo < axes; ++axisNo) {
            numbers.append(axisNo);
            for (const CurveKind kind : { SetPosition, ActualPosition, SetVelocity, ActualVelocity })
                sheet.columns.append({ axisNo, kind, QStringLiteral("c") });
        }
        for (int i = 0; i < seconds * 100; ++i)
            sheet.curves.append(Readings::runningAll(numbers, i * 0.01), i * 0.01);
        return sheet;
    }
    QStringList files() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QString path() const { return m_folder->filePath(QStringLiteral("curves.csv")); }
    int writtenLines() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

    std::unique_ptr<QTemporaryDir> m_folder;

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
};

void CurveExporterTest::theCallersThreadGoesOnTurning()
{
    CurveExporter exporter;
    QSignalSpy finished(&exporter, &CurveExporter::finished);
    int ticksMeanwhile = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { ticksMeanwhile += exporter.isBusy() ? 1 : 0; });
    timer.start(1);
    QVERIFY(exporter.start(path(), sheetOf(16)));
    QVERIFY(exporter.isBusy());
    QVERIFY(finished.isEmpty());
    QVERIFY(finished.wait(60000));
    QVERIFY2(ticksMeanwhile >= 10, qPrintable(QString::number(ticksMeanwhile)));
    QVERIFY(!exporter.isBusy());
    QCOMPARE(finished.first(), QVariantList({ path(), QString() }));
    QCOMPARE(writtenLines(), seconds * 100 + 1);
}

void CurveExporterTest::whatIsWrittenIsACopy()
{
    CurveExporter exporter;
    QSignalSpy finished(&exporter, &CurveExporter::finished);
    CurveExport::Sheet sheet = sheetOf(2);
    QVERIFY(exporter.start(path(), sheet));
    sheet.curves.clear();
    for (int i = 0; i < 1000; ++i)
        sheet.curves.append(Readings::runningAll({ 0, 1 }, i * 0.01), i * 0.01);
    QVERIFY(finished.wait(60000));
    QCOMPARE(writtenLines(), seconds * 100 + 1);
}

void CurveExporterTest::anErrorNamesTheFile()
{
    CurveExporter exporter;
    QSignalSpy finished(&exporter, &CurveExporter::finished);
    const QString name = m_folder->filePath(QStringLiteral("nowhere/curves.csv"));
    QVERIFY(exporter.start(name, sheetOf(1)));
    QVERIFY(finished.wait(60000));
    const QString error = finished.first().at(1).toString();
    QVERIFY2(error.contains(QDir::toNativeSeparators(name)), qPrintable(error));
    QVERIFY(error.size() > name.size() + 45);
    // The next one is not disturbed by it.
    QVERIFY(exporter.start(path(), sheetOf(1)));
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.last().at(1).toString(), QString());
}

void CurveExporterTest::anotherOneIsRefusedMeanwhile()
{
    CurveExporter exporter;
    QSignalSpy finished(&exporter, &CurveExporter::finished);
    QVERIFY(exporter.start(path(), sheetOf(2)));
    QVERIFY(!exporter.start(m_folder->filePath(QStringLiteral("other.csv")), sheetOf(1)));
    QVERIFY(finished.wait(60000));
    QCOMPARE(files(), QStringList({ QStringLiteral("curves.csv") }));
    QCOMPARE(finished.size(), 1);
}

void CurveExporterTest::whoHearsOfOneMayStartAnother()
{
    CurveExporter exporter;
    const QString second = m_folder->filePath(QStringLiteral("second.csv"));
    bool started = false;
    connect(&exporter, &CurveExporter::finished, this, [&] {
        if (!started)
            started = exporter.start(second, sheetOf(1));
    });
    QSignalSpy finished(&exporter, &CurveExporter::finished);
    QVERIFY(exporter.start(path(), sheetOf(1)));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 2, 60000);
    QVERIFY(started);
    QCOMPARE(finished.at(0).at(0).toString(), path());
    QCOMPARE(finished.at(1).at(0).toString(), second);
}

void CurveExporterTest::itsEndGivesTheExportUp()
{
    auto exporter = std::make_unique<CurveExporter>();
    QSignalSpy finished(exporter.get(), &CurveExporter::finished);
    QVERIFY(exporter->start(path(), sheetOf(16)));
    exporter.reset();
    QCoreApplication::processEvents();
    QVERIFY(finished.isEmpty());
    QCOMPARE(files(), QStringList());
}

void CurveExporterTest::theOldFileStaysWhenGivenUp()
{
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("old");
    file.close();
    auto exporter = std::make_unique<CurveExporter>();
    QVERIFY(exporter->start(path(), sheetOf(16)));
    QVERIFY(exporter->isBusy());
    exporter.reset();
    QCOMPARE(files(), QStringList({ QStringLiteral("curves.csv") }));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("old"));
}

QTEST_GUILESS_MAIN(CurveExporterTest)
#include "CurveExporterTest.moc"
