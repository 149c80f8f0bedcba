#include "examples/SampleProject.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

// make-sample-project FOLDER CONTROLLER_FOLDER PROJECT_FILE
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QString error = QStringLiteral("usage: make-sample-project FOLDER CONTROLLER_FOLDER PROJECT_FILE");
    if (arguments.size() == 4 && makeSampleProject(arguments.at(1), arguments.at(2), arguments.at(3), &error))
        return 0;
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return 1;
}
