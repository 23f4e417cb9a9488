#include "app/AllScreens.h"

#include "info/Frm_About.h"
#include "info/Frm_HelpInfo.h"
#include "info/Frm_Splash.h"
#include "input/ui/Frm_ConeFactors.h"
#include "input/ui/Frm_OpenFile.h"
#include "input/ui/Frm_Titles.h"
#include "input/ui/Frm_ViewFile.h"
#include "views/Frm_CPTData.h"
#include "views/Frm_Pemlo01.h"
#include "views/Frm_UandV.h"

namespace pemlo {

void RegisterAllScreens()
{
    RegisterFrm_Splash();
    RegisterFrm_OpenFile();
    RegisterFrm_ViewFile();
    RegisterFrm_Titles();
    RegisterFrm_ConeFactors();
    RegisterFrm_CPTData();
    RegisterFrm_Pemlo01();
    RegisterFrm_UandV();
    RegisterFrm_About();
    RegisterFrm_HelpInfo();
}

}  // namespace pemlo
