#pragma once

#include <QDialogButtonBox>
#include <QString>
#include <QStringList>

class QWidget;
class TourDriver;

/// What the steps of the tour have in common. The names are those of the sample project.
namespace TourTools {

/// Places of the pages among the tabs of an axis that hides none.
enum Page { BasicPage, UnitPage, ModePage, HomingPage, OnlinePage };

enum class Look { Light, Dark };
enum class Tongue { English, Chinese };

QString text(const char* latin);
QString projectName();

/// Where the axes stand in the tree, and one of them. In English, as the sample is opened.
QStringList axes();
QStringList axis(const char* name);
/// Opens an axis from the tree, whatever language the tree speaks, and sees it in front.
void openAxis(TourDriver& driver, const QString& name);
void goToPage(TourDriver& driver, int page);
/// Text of a key of an axis's record; a failure when there is no such axis.
QString stored(TourDriver& driver, const QString& axisName, const char* key);

QStringList outputLines(TourDriver& driver);
void clickButton(TourDriver& driver, QWidget* dialog, QDialogButtonBox::StandardButton button);

/// Puts the program into a theme and a language by its window of options.
void setAppearance(TourDriver& driver, Look look, Tongue tongue);
Look look(TourDriver& driver);
Tongue tongue(TourDriver& driver);
/// Theme and language in a short word, for names of pictures.
QString appearanceName(TourDriver& driver);

/// Pulls the border above the panels up (negative) or down.
void pullPanels(TourDriver& driver, int pixels);
/// Sees that a label shows the picture of that resource.
void seePicture(TourDriver& driver, QWidget* parent, const char* label, const QString& path);
/// Sees that a field shows what the record of the axis holds.
void seeStored(TourDriver& driver, QWidget* parent, const char* field, const QString& axisName, const char* key);

} // namespace TourTools
