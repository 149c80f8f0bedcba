#include "workbench/tour/TourParts.h"
#include "workbench/tour/TourTools.h"

using namespace TourTools;

void TourParts::goDark(TourDriver& driver)
{
    setAppearance(driver, Look::Dark, Tongue::English);
}

void TourParts::goDarkAndChinese(TourDriver& driver)
{
    setAppearance(driver, Look::Dark, Tongue::Chinese);
}

void TourParts::goLightAndChinese(TourDriver& driver)
{
    setAppearance(driver, Look::Light, Tongue::Chinese);
}

void TourParts::goBack(TourDriver& driver)
{
    setAppearance(driver, Look::Light, Tongue::English);
}
