#include "info/Frm_HelpInfo.h"

#include "info/InfoPictures.h"
#include "runtime/ui/MessageBox.h"

namespace pemlo {

namespace {

using P = ParaKind;

// The wording is the program's documentation and is kept exactly, down to the double
// blanks, the trailing blanks and the closing quotation mark that has no opening one.
constexpr RichParagraph Help[] = {
    {P::Heading, "Help on Using the Program"},
    {P::Blank, ""},
    {P::Bullet, "The program reads cone data files in ASCII format with extensions:  *.txt (the "
                "default extension), *.dat, and *.prn."},
    {P::Blank, ""},
    {P::Bullet, "Cone data in each line should be in the order: depth, tip resistance, and sleeve "
                "resistance."},
    {P::Blank, ""},
    {P::Bullet, "The Readings in each line can be separated by either commas or space."},
    {P::Blank, ""},
    {P::Bullet, "The program discards other columns in the file such as pore pressure readings when "
                "a piezocone is used."},
    {P::Blank, ""},
    {P::Bullet, "The program can be used to view data, plot data, and plot soil classification."},
    {P::Blank, ""},
    {P::Bullet, "To View Data:"},
    {P::SubBullet, "Select \"View Data File\""},
    {P::SubBullet, "Browse to File"},
    {P::SubBullet, "Select File"},
    {P::SubBullet, "Click \"Open\""},
    {P::Blank, ""},
    {P::Bullet, "To Plot Data:"},
    {P::SubBullet, "View data to determine units of measurement and the number of title lines in the "
                   "file. Follow the steps above to view data (", "Optional", ")."},
    {P::SubBullet, "Specify the number of title lines in the file (Default = 10 title lines)."},
    {P::SubBullet, "Specify the units of the data. The program reads CPT data in English units "
                   "(default), SI units, and direct readings from instruments in Millivolts. "},
    {P::SubBullet, "Select \"Load Data File\", Browse to data file, select data file, and Click "
                   "\"Open\" to load the file into the program\""},
    {P::SubBullet, "Specify the preferred display units for output results. The program plots graphs "
                   "in English units (default) and SI units."},
    {P::SubBullet, "Select \"Plot Cone Data\"."},
    {P::SubBullet, "Enter project information (Date/Time, Project Number\xE2\x80\xA6) "},
    {P::SubBullet, "Enter Cone Conversion Factor (", "Only", " for units in Millivolts). "},
    {P::Blank, ""},
    {P::Bullet, "To Plot Soil Classification:"},
    {P::SubBullet, "Follow the steps above to plot data."},
    {P::SubBullet, "Select \"Classify Soil\" from the top menu."},
    {P::Blank, ""},
    {P::Bullet, "To Plot Soil Classification Index U and Soil In-situ State Index V:"},
    {P::SubBullet, "Follow the steps above to plot data."},
    {P::SubBullet, "Select \"Plot U & V\" from the top menu."},
    {P::Blank, ""},
    {P::Blank, ""},
    {P::Note, "", "Note:", "  The SI unit of Depth is meter (m) and of Tip and Sleeve resistance is MPa "
                           "(MN/m2). The English unit of depth is feet (ft) and of Tip and Sleeve "
                           "resistance is TSF (ton/ft2)."},
};

}  // namespace

std::span<const RichParagraph> HelpText()
{
    return Help;
}

Frm_HelpInfo::Frm_HelpInfo(QWidget* parent)
    : InfoWindow(ScreenId::Frm_HelpInfo, AppTitle() + QStringLiteral(" Help"), HelpText(), parent)
{
    AddRightPicture(QStringLiteral("Image2"), DrawHelpPicture(72));
}

void RegisterFrm_HelpInfo()
{
    Screens::Instance().Register(ScreenId::Frm_HelpInfo, [] { return new Frm_HelpInfo; });
}

}  // namespace pemlo
