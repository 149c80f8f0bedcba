#include "tests/projectmodel/StoreScenario.h"

#include <QCoreApplication>

#include <cstdio>

// A process of its own for tests: "hold FILE" has the project open until its input ends, "save FILE" saves one record
// after the other and tells each state that has been acknowledged, until it is killed.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    StoreScenario scenario(arguments.value(2));
    if (!scenario.open()) {
        std::printf("%s\n", qPrintable(scenario.error()));
        return 1;
    }
    std::printf("open\n");
    std::fflush(stdout);
    if (arguments.value(1) == QLatin1String("hold")) {
        std::getchar();
        return 0;
    }
    for (int state = scenario.stateOf(0) + 1; scenario.saveAxis(0, state); ++state) {
        std::printf("%d\n", state);
        std::fflush(stdout);
    }
    return 1;
}
