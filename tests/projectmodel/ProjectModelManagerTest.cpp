#include "tests/projectmodel/ProjectFacts.h"

#include "host/projectmodel/SourceModel.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class ProjectModelManagerTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void projectNames_data();
    void projectNames();
    void anExistingFileIsNotTouchedByCreating();
    void creatingInAFolderThatIsNotThereFails();
    void aFileOpenedToBeReadStaysAsItIs();
    void aNewFileStandsAlone();
    void aFileIsOpenedOnceOnly();
    void twoProjectsOfOneNameNeedAnAlias();
    void projectsAreListedInTheOrderOfOpening();
    void closingIsAnnouncedBeforeTheModelGoes();
    void unsavedChangesAreLostByClosing();
    void saveAsGoesOnWithTheCopyAndLeavesTheOriginal();
    void saveAsReplacesAnExistingFile();
    void saveAsOnItselfIsASave();
    void saveAsOverAnOpenProjectIsRefused();
    void saveAsToAFolderThatIsNotThereChangesNothing();
    void nothingIsLeftBesideAFileAfterClosing();

private:
    ProjectModelManager* manager() const { return ProjectModelManager::instance(); }
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    ProjectModel* create(const char* name);
    ProjectModel* open(const char* name, const QString& alias = QString());

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_error;
};

void ProjectModelManagerTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_error.clear();
}

void ProjectModelManagerTest::cleanup()
{
    const QVector<ProjectModel*> left = manager()->projects();
    for (ProjectModel* each : left)
        manager()->closeProject(each);
    m_folder.reset();
}

ProjectModel* ProjectModelManagerTest::create(const char* name)
{
    return manager()->createProject(path(name), shippedController(QStringLiteral("KM1_M16")), &m_error);
}

ProjectModel* ProjectModelManagerTest::open(const char* name, const QString& alias)
{
    return manager()->openProject(path(name), &m_error, alias);
}

void ProjectModelManagerTest::projectNames_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("the base name") << "/a/b/Line.kproj"
                                   << "Line";
    QTest::newRow("points would end a segment of a node path") << "/a/Line.v1.2.kproj"
                                                               << "Line_v1_2";
    QTest::newRow("blanks at the ends go") << "/a/ My  line .kproj"
                                           << "My line";
    QTest::newRow("a file without a base name") << "/a/.kproj"
                                                << "Project";
    QTest::newRow("a Chinese name stays") << QStringLiteral("/a/\u4ea7\u7ebf.kproj") << QStringLiteral("\u4ea7\u7ebf");
}

void ProjectModelManagerTest::projectNames()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    QCOMPARE(ProjectModelManager::projectNameForFile(file), name);
}

void ProjectModelManagerTest::anExistingFileIsNotTouchedByCreating()
{
    writeBytes(path("line.kproj"), "mine");
    QVERIFY(!create("line.kproj"));
    QVERIFY(m_error.startsWith(path("line.kproj")));
    QCOMPARE(bytesOf(path("line.kproj")), QByteArray("mine"));
    QVERIFY(manager()->projects().isEmpty());
}

void ProjectModelManagerTest::creatingInAFolderThatIsNotThereFails()
{
    QVERIFY(!create("none/line.kproj"));
    QVERIFY(m_error.startsWith(path("none/line.kproj")));
}

void ProjectModelManagerTest::aFileOpenedToBeReadStaysAsItIs()
{
    manager()->closeProject(create("line.kproj"));
    const QByteArray before = bytesOf(path("line.kproj"));
    ProjectModel* project = manager()->openProjectReadOnly(path("line.kproj"), &m_error, QStringLiteral("Looked at"));
    QVERIFY2(project, qPrintable(m_error));
    QVERIFY(project->isReadOnly());
    QCOMPARE(project->name(), QStringLiteral("Looked at"));
    QCOMPARE(project->filePath(), path("line.kproj"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ QStringLiteral("line.kproj") });
    project->setSetting(QStringLiteral("Author"), QStringLiteral("me"));
    QVERIFY(!project->save(&m_error));
    QVERIFY2(m_error.startsWith(path("line.kproj")), qPrintable(m_error));
    manager()->closeProject(project);
    QCOMPARE(bytesOf(path("line.kproj")), before);
}

void ProjectModelManagerTest::aNewFileStandsAlone()
{
    ProjectModel* project = create("line.kproj");
    QVERIFY2(project, qPrintable(m_error));
    manager()->closeProject(project);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ QStringLiteral("line.kproj") });
    const QByteArray bytes = bytesOf(path("line.kproj"));
    QVERIFY(bytes.startsWith("SQLite format 3"));
    QCOMPARE(bytes.mid(68, 4), QByteArray("KSTP"));
}

void ProjectModelManagerTest::aFileIsOpenedOnceOnly()
{
    QVERIFY(create("line.kproj"));
    QVERIFY(!open("line.kproj"));
    QVERIFY(m_error.startsWith(path("line.kproj")));
    m_error.clear();
    QVERIFY(!open("./line.kproj", QStringLiteral("Other")));
    QVERIFY(!m_error.isEmpty());
}

void ProjectModelManagerTest::twoProjectsOfOneNameNeedAnAlias()
{
    QDir(m_folder->path()).mkdir(QStringLiteral("copy"));
    manager()->closeProject(create("line.kproj"));
    QVERIFY(QFile::copy(path("line.kproj"), path("copy/line.kproj")));
    ProjectModel* first = open("line.kproj");
    QVERIFY(!open("copy/line.kproj"));
    QVERIFY(m_error.contains(QLatin1String("line")));
    ProjectModel* second = open("copy/line.kproj", QStringLiteral("line_2"));
    QVERIFY(second);
    QCOMPARE(second->name(), QStringLiteral("line_2"));
    QCOMPARE(manager()->projectModel("line", false), first);
    QCOMPARE(manager()->projectModel("line_2", false), second);
}

void ProjectModelManagerTest::projectsAreListedInTheOrderOfOpening()
{
    ProjectModel* b = create("b.kproj");
    ProjectModel* a = create("a.kproj");
    QCOMPARE(manager()->projects(), (QVector<ProjectModel*>{ b, a }));
    manager()->closeProject(b);
    QCOMPARE(manager()->projects(), QVector<ProjectModel*>{ a });
    QVERIFY(!manager()->projectModel("b", false));
}

void ProjectModelManagerTest::closingIsAnnouncedBeforeTheModelGoes()
{
    const QPointer<ProjectModel> project = create("line.kproj");
    bool wasThere = false;
    const auto connection = connect(manager(), &ProjectModelManager::projectAboutToClose, this,
        [&](ProjectModel* closing) { wasThere = closing == project && !closing->name().isEmpty(); });
    manager()->closeProject(project);
    disconnect(connection);
    QVERIFY(wasThere);
    QVERIFY(!project);
}

void ProjectModelManagerTest::unsavedChangesAreLostByClosing()
{
    ProjectModel* project = create("line.kproj");
    project->axisModel()->addAxisTable(QStringLiteral("A"));
    manager()->closeProject(project);
    project = open("line.kproj");
    QVERIFY(project);
    QVERIFY(recordsOf(project->axisModel()).empty());
}

void ProjectModelManagerTest::saveAsGoesOnWithTheCopyAndLeavesTheOriginal()
{
    ProjectModel* project = create("line.kproj");
    AxisTable* axis = project->axisModel()->addAxisTable(QStringLiteral("A"));
    QVERIFY(project->save(&m_error));
    axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    project->sourceModel()->setSource(QStringLiteral("Main"), QStringLiteral("x"));
    QVERIFY2(manager()->saveProjectAs(project, path("copy.kproj"), &m_error), qPrintable(m_error));
    QCOMPARE(project->filePath(), path("copy.kproj"));
    QCOMPARE(project->name(), QStringLiteral("copy"));
    QCOMPARE(manager()->projectModel("copy", false), project);
    QVERIFY(!project->isModified() && !axis->modified);
    QVERIFY(!QFile::exists(path("copy.kproj.part")));

    axis->setProperty(QStringLiteral("MaxAcc"), QStringLiteral("88"));
    QVERIFY(axis->save());
    ProjectModel* original = open("line.kproj");
    QVERIFY2(original, qPrintable(m_error));
    QCOMPARE(original->axisModel()->axisTable(1)->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("10"));
    QVERIFY(original->sourceModel()->sourceNames().isEmpty());
    manager()->closeProject(project);
    project = open("copy.kproj");
    QVERIFY2(project, qPrintable(m_error));
    QCOMPARE(project->axisModel()->axisTable(1)->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
    QCOMPARE(project->axisModel()->axisTable(1)->property(QStringLiteral("MaxAcc"), QString()), QStringLiteral("88"));
}

void ProjectModelManagerTest::saveAsReplacesAnExistingFile()
{
    manager()->closeProject(create("old.kproj"));
    ProjectModel* project = create("line.kproj");
    project->axisModel()->addAxisTable(QStringLiteral("A"));
    QVERIFY2(manager()->saveProjectAs(project, path("old.kproj"), &m_error), qPrintable(m_error));
    manager()->closeProject(project);
    project = open("old.kproj");
    QVERIFY2(project, qPrintable(m_error));
    QCOMPARE(namesOf(project->axisModel()), QStringList{ QStringLiteral("A") });
}

void ProjectModelManagerTest::saveAsOnItselfIsASave()
{
    ProjectModel* project = create("line.kproj");
    project->axisModel()->addAxisTable(QStringLiteral("A"));
    QVERIFY(manager()->saveProjectAs(project, path("./line.kproj"), &m_error));
    QVERIFY(!project->isModified());
    QCOMPARE(project->name(), QStringLiteral("line"));
}

void ProjectModelManagerTest::saveAsOverAnOpenProjectIsRefused()
{
    ProjectModel* first = create("first.kproj");
    first->axisModel()->addAxisTable(QStringLiteral("A"));
    ProjectModel* second = create("second.kproj");
    QVERIFY(!manager()->saveProjectAs(first, path("second.kproj"), &m_error));
    QVERIFY(m_error.startsWith(path("second.kproj")));
    QCOMPARE(first->filePath(), path("first.kproj"));
    QVERIFY(first->isModified());
    QVERIFY(second->save(&m_error));
}

void ProjectModelManagerTest::saveAsToAFolderThatIsNotThereChangesNothing()
{
    ProjectModel* project = create("line.kproj");
    project->axisModel()->addAxisTable(QStringLiteral("A"));
    QVERIFY(!manager()->saveProjectAs(project, path("none/copy.kproj"), &m_error));
    QVERIFY(m_error.startsWith(path("none/copy.kproj")));
    QVERIFY(project->isModified());
    QCOMPARE(project->filePath(), path("line.kproj"));
    QVERIFY(project->save(&m_error));
}

void ProjectModelManagerTest::nothingIsLeftBesideAFileAfterClosing()
{
    ProjectModel* project = create("line.kproj");
    project->axisModel()->addAxisTable(QStringLiteral("A"));
    QVERIFY(project->save(&m_error));
    QVERIFY(!QFile::exists(path("line.kproj-shm")));
    manager()->closeProject(project);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ QStringLiteral("line.kproj") });
}

QTEST_GUILESS_MAIN(ProjectModelManagerTest)
#include "ProjectModelManagerTest.moc"
