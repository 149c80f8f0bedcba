#include "workbench/monitor/CurveExport.h"
#include "tests/monitor/Readings.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

/// Readings as comma-separated values.
class CurveExportTest : public QObject {
    Q_OBJECT

private slots:
    void aLineATime();
    void aGapLeavesItsFieldsEmpty();
    void anAxisThatCameLaterLeavesItsFieldsEmpty();
    void numbersHaveAPointInEveryLanguage();
    void titlesAreQuoted();
    void nothingRecordedIsAHeader();
    void aFileIsWrittenWhole();
    void aFileThatCannotBeWrittenIsNamed_data();
    void aFileThatCannotBeWrittenIsNamed();

private:
    static QByteArrayList lines(const CurveStore& curves, const QVector<CurveExport::Column>& columns)
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        const std::atomic<bool> cancelled{ false };
        CurveExport::write(buffer, { curves, columns, CurveExport::timeTitle() }, cancelled);
        QByteArrayList lines = buffer.data().split('\n');
        lines.removeLast();
        return lines;
    }
    static CurveExport::Column column(int axisNo, CurveKind kind) { return { axisNo, kind, QStringLiteral("c") }; }
};

void CurveExportTest::aLineATime()
{
    CurveStore curves;
    curves.append({ AxisSample{ 2, 10, 1.5, 2.5, 3.5, 4.5 } }, 0);
    curves.append({ AxisSample{ 2, 10.01, -1e-7, 1e12, 0.1, 123456789.125 } }, 0.01);
    const QByteArrayList expected{ "\"Time [s]\",\"c\",\"c\",\"c\",\"c\"", "0.000000,1.5,3.5,2.5,4.5",
        "0.010000,-1e-07,0.1,1000000000000,123456789.125" };
    QCOMPARE(
        lines(curves,
            { column(2, SetPosition), column(2, ActualPosition), column(2, SetVelocity), column(2, ActualVelocity) }),
        expected);
}

void CurveExportTest::aGapLeavesItsFieldsEmpty()
{
    CurveStore curves;
    curves.append({ AxisSample{ 0, 1, 1, 1, 1, 1 } }, 0);
    curves.interrupt();
    curves.append({ AxisSample{ 0, 3, 2, 2, 2, 2 } }, 2);
    QCOMPARE(
        lines(curves, { column(0, SetPosition) }).mid(1), QByteArrayList({ "0.000000,1", "0.000000,", "2.000000,2" }));
}

void CurveExportTest::anAxisThatCameLaterLeavesItsFieldsEmpty()
{
    CurveStore curves;
    curves.append({ AxisSample{ 0, 1, 1, 1, 1, 1 } }, 0);
    curves.append({ AxisSample{ 0, 1.01, 2, 2, 2, 2 }, AxisSample{ 5, 1.01, 3, 3, 3, 3 } }, 0.01);
    curves.append({ AxisSample{ 5, 1.02, 4, 4, 4, 4 } }, 0.02);
    QCOMPARE(lines(curves, { column(5, SetPosition), column(0, SetPosition) }).mid(1),
        QByteArrayList({ "0.000000,,1", "0.010000,3,2", "0.020000,4," }));
}

void CurveExportTest::numbersHaveAPointInEveryLanguage()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    CurveStore curves;
    curves.append({ AxisSample{ 0, 1, 1234567.25, 0, 0, 0 } }, 0);
    const QByteArrayList written = lines(curves, { column(0, SetPosition) });
    QLocale::setDefault(before);
    QCOMPARE(written.at(1), QByteArray("0.000000,1234567.25"));
}

void CurveExportTest::titlesAreQuoted()
{
    const QVector<CurveExport::Column> columns{ { 0, SetPosition, QString::fromUtf8("进给, \"A\" [Unit]") } };
    QCOMPARE(QString::fromUtf8(lines(CurveStore(), columns).first()),
        QString::fromUtf8("\"Time [s]\",\"进给, \"\"A\"\" [Unit]\""));
}

void CurveExportTest::nothingRecordedIsAHeader()
{
    QCOMPARE(lines(CurveStore(), { column(0, SetPosition) }).size(), 1);
    QCOMPARE(lines(CurveStore(), {}), QByteArrayList({ "\"Time [s]\"" }));
}

void CurveExportTest::aFileIsWrittenWhole()
{
    const QTemporaryDir directory;
    const QString name = directory.filePath(QStringLiteral("curves.csv"));
    CurveStore curves;
    for (int i = 0; i < 2000; ++i)
        curves.append(Readings::runningAll({ 0, 1 }, i * 0.01), i * 0.01);
    QString reason;
    const std::atomic<bool> cancelled{ false };
    QVERIFY(CurveExport::save(
        name, { curves, { column(0, SetPosition), column(1, SetVelocity) }, {} }, cancelled, &reason));
    QVERIFY(reason.isEmpty());
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList written = file.readAll().split('\n');
    QCOMPARE(written.size(), 2002);
    QCOMPARE(written.at(2000), QByteArray("19.990000,39.98,2"));
}

void CurveExportTest::aFileThatCannotBeWrittenIsNamed_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("in a folder that is not there") << QStringLiteral("nowhere/curves.csv");
    QTest::newRow("in the place of a folder") << QStringLiteral("folder");
}

void CurveExportTest::aFileThatCannotBeWrittenIsNamed()
{
    QFETCH(QString, name);
    const QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("folder")));
    const QString path = directory.filePath(name);
    QString reason;
    const std::atomic<bool> cancelled{ false };
    QVERIFY(!CurveExport::save(path, {}, cancelled, &reason));
    const QString error = CurveExport::failure(path, reason);
    QVERIFY(!reason.isEmpty());
    QVERIFY2(error.contains(QDir::toNativeSeparators(path)), qPrintable(error));
    QVERIFY(error.size() > path.size() + 45);
    QCOMPARE(QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
        QStringList({ QStringLiteral("folder") }));
}

QTEST_APPLESS_MAIN(CurveExportTest)
#include "CurveExportTest.moc"
