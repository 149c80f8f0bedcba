#include "workbench/tour/Tour.h"
#include "workbench/tour/TourParts.h"

const std::vector<TourStep>& tourSteps()
{
    static const std::vector<TourStep> steps{
        { QStringLiteral("The sample project is open"), TourParts::seeTheSample },
        { QStringLiteral("A new axis from the context menu"), TourParts::addAnAxis },
        { QStringLiteral("Its type and its device"), TourParts::setTypeAndDevice },
        { QStringLiteral("Saved"), TourParts::save },
        { QStringLiteral("A number that is not taken"), TourParts::refuseANumber },
        { QStringLiteral("Undo and redo"), TourParts::undoAndRedo },
        { QStringLiteral("Another name, by the keyboard"), TourParts::rename },
        { QStringLiteral("Deleted, and back again"), TourParts::deleteAndUndo },
        { QStringLiteral("A source of the program"), TourParts::readASource },
        { QStringLiteral("The pages of an axis"), TourParts::lookAtThePages },
        { QStringLiteral("Units and modes of a pulse axis"), TourParts::lookAtAPulseAxis },
        { QStringLiteral("Units and modes of an encoder"), TourParts::lookAtAnEncoder },
        { QStringLiteral("Units and modes of an EtherCAT axis"), TourParts::lookAtAnEtherCatAxis },
        { QStringLiteral("Ways to home"), TourParts::lookAtHoming },
        { QStringLiteral("A pin is found"), TourParts::findAndJump },
        { QStringLiteral("The uses of a variable"), TourParts::findReferences },
        { QStringLiteral("Compared with the project as it was delivered"), TourParts::compare },
        { QStringLiteral("The dark theme"), TourParts::goDark },
        { QStringLiteral("Units and modes of a pulse axis, dark"), TourParts::lookAtAPulseAxis },
        { QStringLiteral("Units and modes of an encoder, dark"), TourParts::lookAtAnEncoder },
        { QStringLiteral("Units and modes of an EtherCAT axis, dark"), TourParts::lookAtAnEtherCatAxis },
        { QStringLiteral("Ways to home, dark"), TourParts::lookAtHoming },
        { QStringLiteral("The dark theme in Chinese"), TourParts::goDarkAndChinese },
        { QStringLiteral("The pages of an axis, dark and in Chinese"), TourParts::lookAtThePages },
        { QStringLiteral("Ways to home, dark and in Chinese"), TourParts::lookAtHoming },
        { QStringLiteral("A pin is found, dark and in Chinese"), TourParts::findAndJump },
        { QStringLiteral("A comparison, dark and in Chinese"), TourParts::compare },
        { QStringLiteral("The light theme in Chinese"), TourParts::goLightAndChinese },
        { QStringLiteral("The pages of an axis, in Chinese"), TourParts::lookAtThePages },
        { QStringLiteral("Ways to home, in Chinese"), TourParts::lookAtHoming },
        { QStringLiteral("Back to English"), TourParts::goBack },
        { QStringLiteral("Another controller"), TourParts::changeController },
        { QStringLiteral("Closed and opened again"), TourParts::closeAndOpenAgain },
        { QStringLiteral("A restart of the program"), TourParts::startAgain },
        { QStringLiteral("The plug-ins"), TourParts::lookAtThePlugins },
        { QStringLiteral("The end"), TourParts::leave },
    };
    return steps;
}
