#pragma once

class TourDriver;

/// The steps of the tour by what they are about. Each leaves the program so that the next one can begin.
namespace TourParts {

// The project and its axes.
void seeTheSample(TourDriver& driver);
void addAnAxis(TourDriver& driver);
void setTypeAndDevice(TourDriver& driver);
void save(TourDriver& driver);
void refuseANumber(TourDriver& driver);
void undoAndRedo(TourDriver& driver);
void rename(TourDriver& driver);
void deleteAndUndo(TourDriver& driver);
void readASource(TourDriver& driver);
void changeController(TourDriver& driver);
void closeAndOpenAgain(TourDriver& driver);
void startAgain(TourDriver& driver);
void lookAtThePlugins(TourDriver& driver);
void leave(TourDriver& driver);

// The pages of an axis, in the theme and the language that are on.
void lookAtAPulseAxis(TourDriver& driver);
void lookAtAnEncoder(TourDriver& driver);
void lookAtAnEtherCatAxis(TourDriver& driver);
/// Every page once.
void lookAtThePages(TourDriver& driver);
/// The homing page with the modes 17, 23, 30 and 35; the axis is saved with the last one.
void lookAtHoming(TourDriver& driver);

// Find and comparison.
void findAndJump(TourDriver& driver);
void findReferences(TourDriver& driver);
void compare(TourDriver& driver);

// On line, with the built-in controller.
void prepareToTryOut(TourDriver& driver);
void connectToTheController(TourDriver& driver);
void enterDebugMode(TourDriver& driver);
void jog(TourDriver& driver);
void moveAbsolute(TourDriver& driver);
void home(TourDriver& driver);
/// By the page's button, and by STOP.
void stopAMotion(TourDriver& driver);
void failAndReset(TourDriver& driver);
void lookAtTheCommandLog(TourDriver& driver);
void lookAtTheCurvesInTheDark(TourDriver& driver);
void disconnectFromTheController(TourDriver& driver);

// Themes and languages.
void goDark(TourDriver& driver);
void goDarkAndChinese(TourDriver& driver);
void goLightAndChinese(TourDriver& driver);
void goBack(TourDriver& driver);

} // namespace TourParts
